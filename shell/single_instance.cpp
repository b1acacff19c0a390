#include "shell/single_instance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int Patience = 5000; // ms
constexpr char Heard = 'h';

// One spelling for every way to write the folder, which must be there for that.
QByteArray nameFor(const QString &folder)
{
    QDir().mkpath(folder);
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    const QByteArray text = (canonical.isEmpty() ? folder : canonical).toUtf8();
    const QByteArray hash = QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex().first(32);
    return "marovia-sondrel-" + QByteArray::number(::getuid()) + '-' + hash;
}

// A name without a file: no crash leaves one behind.
struct Address
{
    explicit Address(const QByteArray &name)
        : size(static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1) +
               static_cast<socklen_t>(name.size()))
    {
        address.sun_family = AF_UNIX;
        std::copy(name.begin(), name.end(), address.sun_path + 1);
    }

    const sockaddr *data() const { return reinterpret_cast<const sockaddr *>(&address); }

    sockaddr_un address = {};
    socklen_t size;
};

NativeFile newSocket(int flags)
{
    return NativeFile(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | flags, 0));
}

// Any user of the machine can take a name without a file; only one's own processes count.
bool isOwn(const NativeFile &socket)
{
    ucred peer = {};
    socklen_t size = sizeof peer;
    return ::getsockopt(socket.descriptor(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == ::getuid();
}

bool hears(const NativeFile &socket)
{
    pollfd answer{socket.descriptor(), POLLIN, 0};
    char said = 0;
    return ::poll(&answer, 1, Patience) == 1 && ::recv(socket.descriptor(), &said, 1, MSG_DONTWAIT) == 1 &&
           said == Heard;
}

} // namespace

SingleInstance::SingleInstance(const QString &folder)
    : m_name(nameFor(folder)), m_server(newSocket(SOCK_NONBLOCK))
{
}

bool SingleInstance::claim()
{
    const Address address(m_name);
    // The other one may end between the two steps.
    for (int attempt = 0; attempt < 3; ++attempt) {
        if (::bind(m_server.descriptor(), address.data(), address.size) == 0 &&
            ::listen(m_server.descriptor(), SOMAXCONN) == 0) {
            m_callers.emplace(m_server.descriptor(), QSocketNotifier::Read);
            connect(&*m_callers, &QSocketNotifier::activated, this, &SingleInstance::serve);
            return true;
        }
        if (errno != EADDRINUSE)
            return true; // a system without such names; better without the check than not at all
        switch (tellOther()) {
        case Other::Told:
            return false;
        case Other::Foreign:
            return true;
        case Other::Silent:
            break;
        }
    }
    return false;
}

// To call is to ask that its window come forward.
SingleInstance::Other SingleInstance::tellOther()
{
    const NativeFile socket = newSocket(0);
    const timeval patience{Patience / 1000, 0};
    ::setsockopt(socket.descriptor(), SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
    const Address address(m_name);
    if (::connect(socket.descriptor(), address.data(), address.size) != 0)
        return Other::Silent;
    if (!isOwn(socket))
        return Other::Foreign;
    m_heard = hears(socket);
    return Other::Told;
}

void SingleInstance::serve()
{
    for (;;) {
        const NativeFile caller(::accept4(m_server.descriptor(), nullptr, nullptr, SOCK_CLOEXEC));
        if (!caller.isOpen())
            return;
        if (!isOwn(caller))
            continue;
        ::send(caller.descriptor(), &Heard, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
        Q_EMIT raiseWanted();
    }
}

} // namespace sondrel
