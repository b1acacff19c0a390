#include "core/error_log.h"

#include "core/native_file.h"

#include <QByteArray>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace sondrel {

ErrorLog::ErrorLog(QString path) : m_path(std::move(path)) {}

ErrorLog::~ErrorLog()
{
    if (m_handle >= 0)
        ::close(m_handle);
}

void ErrorLog::write(QByteArrayView text) noexcept
{
    try {
        if (m_handle < 0) {
            // Not blocking, should a pipe stand in the file's place.
            m_handle = ::open(NativePath(m_path).text(),
                              O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK | O_CLOEXEC, 0644);
            if (m_handle < 0)
                return;
        }
        QByteArray record("\r\n");
        record.append(text);
        qsizetype done = 0;
        while (done < record.size()) {
            const auto count =
                ::write(m_handle, record.constData() + done, static_cast<std::size_t>(record.size() - done));
            if (count < 0 && errno == EINTR)
                continue;
            if (count <= 0)
                return;
            done += count;
        }
    } catch (const std::exception &) {
        // Out of memory while logging: there is nobody left to tell.
        return;
    }
}

} // namespace sondrel
