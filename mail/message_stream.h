// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/native_file.h"

#include <QByteArray>
#include <QString>

#include <deque>
#include <variant>

namespace sondrel {

/// The bytes of a composed message, read once from front to back, by one thread at a time. Attached files are
/// held open and encoded as they are read, so that a message takes little memory whatever it carries, and
/// carries the files as they were when it was composed.
class MessageStream
{
public:
    void add(const QByteArray &bytes);
    /// The file in base64, in lines of 76 characters. Throws Failure when it cannot be opened.
    void addFile(const QString &path);

    /// How many bytes there are in all.
    qint64 size() const { return m_size; }
    /// The next bytes; 0 at the end. Throws Failure when a file cannot be read, or has become shorter.
    qsizetype read(char *bytes, qsizetype size);
    QByteArray readAll();

private:
    struct OpenFile
    {
        NativeFile file;
        QString path;
        qint64 left; // bytes not yet read
    };

    QByteArray nextLines(OpenFile &source) const;

    std::deque<std::variant<QByteArray, OpenFile>> m_pieces;
    QByteArray m_current;
    qsizetype m_taken = 0; // of the current piece
    qint64 m_size = 0;
};

} // namespace sondrel
