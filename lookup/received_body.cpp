#include "lookup/received_body.h"

#include <algorithm>
#include <new>

namespace sondrel {

void ReceivedBody::reserve(qsizetype size)
{
    m_memory.reserve(std::min(size, LongestInMemory));
}

void ReceivedBody::append(QByteArrayView bytes)
{
    if (m_memory.size() + bytes.size() > LongestInMemory && !m_memory.isEmpty() && fileMemory())
        m_memory.resize(0); // keeps its room
    m_memory.append(bytes);
}

void ReceivedBody::clear()
{
    *this = ReceivedBody();
}

// Where it cannot be done, everything that follows stays in memory.
bool ReceivedBody::fileMemory()
{
    if (m_fileFails)
        return false;
    m_fileFails = true;
    if (!m_file) {
        m_file = std::make_unique<QTemporaryFile>();
        if (!m_file->open())
            return false;
    }
    if (m_file->write(m_memory) != m_memory.size() || !m_file->flush())
        return false;
    m_filed += m_memory.size();
    m_fileFails = false;
    return true;
}

QByteArray ReceivedBody::bytes() const
{
    if (m_filed == 0)
        return m_memory;
    try {
        QByteArray all(size(), Qt::Uninitialized);
        if (!m_file->seek(0) || m_file->read(all.data(), m_filed) != m_filed || !m_file->seek(m_filed))
            return {};
        std::copy(m_memory.begin(), m_memory.end(), all.begin() + m_filed);
        return all;
    } catch (const std::bad_alloc &) {
        return {};
    }
}

} // namespace sondrel
