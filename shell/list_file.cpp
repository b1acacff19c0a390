#include "shell/list_file.h"

#include "core/existing_file.h"

namespace sondrel {

ListFileReader::ListFileReader(ApplicationContext &app, const QString &path)
    : m_app(app), m_bytes(app.files.readAll(path))
{
}

std::optional<QString> ListFileReader::next()
{
    if (m_position >= m_bytes.size())
        return std::nullopt;
    const qsizetype begin = m_position;
    qsizetype end = begin;
    while (end < m_bytes.size() && m_bytes[end] != '\r' && m_bytes[end] != '\n')
        ++end;
    m_position = end < m_bytes.size() ? end + 1 : end;
    if (end < m_bytes.size() && m_bytes[end] == '\r' && m_position < m_bytes.size() &&
        m_bytes[m_position] == '\n')
        ++m_position;
    return m_app.fromBytes(QByteArrayView(m_bytes).sliced(begin, end - begin));
}

void overwriteListFile(ApplicationContext &app, const QString &path, const QByteArray &list)
{
    const QByteArray before = readIfThere(app.files, path).value_or(QByteArray());
    app.files.writeAll(path, list + before.mid(list.size()));
}

} // namespace sondrel
