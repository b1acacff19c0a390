// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QByteArray>

#include <optional>

namespace sondrel {

/// The lines of a list file, one after the other.
class ListFileReader
{
public:
    /// Throws Failure when the file cannot be read.
    ListFileReader(ApplicationContext &app, const QString &path);

    /// The next line; nothing behind the last one.
    std::optional<QString> next();
    qint64 length() const { return m_bytes.size(); }
    /// How many bytes have been read.
    qint64 position() const { return m_position; }

private:
    ApplicationContext &m_app;
    QByteArray m_bytes;
    qsizetype m_position = 0;
};

/// A list that holds more entries takes no further line.
inline constexpr int MostListEntries = 32000;

/// Writes a list over the beginning of a file; what an existing file holds behind it stays. Throws Failure.
void overwriteListFile(ApplicationContext &app, const QString &path, const QByteArray &list);

} // namespace sondrel
