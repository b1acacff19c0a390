#include "shell/single_instance.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>

#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int Patience = 5000; // ms
constexpr char Request = 'r';
constexpr char Heard = 'h';

// One spelling for every way to write the folder, which must be there for that.
QString nameFor(const QString &folder)
{
    QDir().mkpath(folder);
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    const QByteArray text = (canonical.isEmpty() ? folder : canonical).toUtf8();
    const QByteArray hash = QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex().first(32);
    return u"marovia-sondrel-%1-%2"_s.arg(::getuid()).arg(QString::fromLatin1(hash));
}

// Any user of the machine can take a name without a file; only one's own processes count.
bool isOwn(const QLocalSocket &socket)
{
    ucred peer = {};
    socklen_t size = sizeof peer;
    return ::getsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &peer, &size) ==
               0 &&
           peer.uid == ::getuid();
}

} // namespace

SingleInstance::SingleInstance(const QString &folder)
    : m_name(nameFor(folder)), m_server(std::make_unique<QLocalServer>())
{
    // A name without a file: no crash leaves one behind.
    m_server->setSocketOptions(QLocalServer::AbstractNamespaceOption);
    connect(m_server.get(), &QLocalServer::newConnection, this, &SingleInstance::serve);
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::claim()
{
    // The other one may end between the two steps.
    for (int attempt = 0; attempt < 3; ++attempt) {
        if (m_server->listen(m_name))
            return true;
        if (m_server->serverError() != QAbstractSocket::AddressInUseError)
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

SingleInstance::Other SingleInstance::tellOther()
{
    QLocalSocket socket;
    socket.setSocketOptions(QLocalSocket::AbstractNamespaceOption);
    socket.connectToServer(m_name);
    if (!socket.waitForConnected(Patience))
        return Other::Silent;
    if (!isOwn(socket))
        return Other::Foreign;
    socket.write(&Request, 1);
    socket.waitForBytesWritten(Patience);
    m_heard = socket.waitForReadyRead(Patience);
    return Other::Told;
}

void SingleInstance::serve()
{
    while (QLocalSocket *socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        if (!isOwn(*socket)) {
            socket->abort();
            continue;
        }
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
            if (!socket->readAll().contains(Request))
                return;
            socket->write(&Heard, 1);
            socket->flush();
            Q_EMIT raiseWanted();
        });
    }
}

} // namespace sondrel
