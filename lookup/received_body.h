// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QTemporaryFile>

#include <memory>

namespace sondrel {

/// What a transfer has received so far. Pages are kept in memory; the greater part of an endless one is put
/// into a temporary file, or ten of them at once would fill the memory.
class ReceivedBody
{
public:
    /// The most that is kept in memory.
    static constexpr qsizetype LongestInMemory = qsizetype{2} * 1024 * 1024;

    qsizetype size() const { return m_filed + m_memory.size(); }
    bool isEmpty() const { return size() == 0; }
    void reserve(qsizetype size);
    void append(QByteArrayView bytes);
    void clear();
    /// All of it; nothing when the file cannot be read or there is no memory for it.
    QByteArray bytes() const;

private:
    bool fileMemory();

    std::unique_ptr<QTemporaryFile> m_file; // the first part of a long body
    qsizetype m_filed = 0;
    bool m_fileFails = false;
    QByteArray m_memory; // the rest
};

} // namespace sondrel
