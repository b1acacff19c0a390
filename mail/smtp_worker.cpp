#include "mail/smtp_worker.h"

#include "core/failure.h"

#include <QPointer>

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qint32 HighestPort = 65535;
constexpr qint32 UsualProxyPort = 8080;
constexpr long UploadBuffer = 256L * 1024;
constexpr long LongestPause = 24L * 60 * 60; // s between two steps of a conversation

// Writing to a connection that is gone must not end the program: the TLS library writes without the flag
// that libcurl uses.
void blockBrokenPipeSignal()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

bool isThisMachine(const QString &host)
{
    return host.compare("localhost"_L1, Qt::CaseInsensitive) == 0 || host.startsWith("127."_L1) ||
           host == "::1"_L1 || host == "[::1]"_L1;
}

// Built by libcurl's own parser, so that no part of a host can become another part of the address.
QByteArray addressOf(const QString &scheme, const QString &server, qint32 port)
{
    QByteArray host = server.trimmed().toUtf8();
    if (host.contains(':') && !host.startsWith('['))
        host = '[' + host + ']';
    const std::unique_ptr<CURLU, void (*)(CURLU *)> url(curl_url(), curl_url_cleanup);
    char *text = nullptr;
    const bool made =
        url && curl_url_set(url.get(), CURLUPART_SCHEME, scheme.toLatin1().constData(), 0) == CURLUE_OK &&
        curl_url_set(url.get(), CURLUPART_HOST, host.constData(), 0) == CURLUE_OK &&
        (port == 0 ||
         curl_url_set(url.get(), CURLUPART_PORT, QByteArray::number(port).constData(), 0) == CURLUE_OK) &&
        curl_url_get(url.get(), CURLUPART_URL, &text, 0) == CURLUE_OK;
    QByteArray address(made ? text : "");
    curl_free(text);
    return address;
}

QByteArrayList secretsOf(const SmtpTarget &target)
{
    return {target.password.toUtf8(), target.proxyPassword.toUtf8()};
}

} // namespace

SmtpWorker::SmtpWorker(SmtpTarget target, SmtpOptions options, Listener listener)
    : m_target(std::move(target)),
      m_options(std::move(options)),
      m_listener(std::make_shared<const Listener>(std::move(listener))),
      m_lines(secretsOf(m_target))
{
}

SmtpWorker::~SmtpWorker() = default;

void SmtpWorker::add(Job job)
{
    const std::lock_guard lock(m_mutex);
    m_jobs.push_back(std::move(job));
    m_wake.notify_one();
}

void SmtpWorker::send(std::shared_ptr<OutgoingMessage> message)
{
    add({SmtpSession::SendTask, std::move(message)});
}

void SmtpWorker::leave()
{
    add({SmtpSession::DisconnectTask, nullptr});
}

void SmtpWorker::abort()
{
    const std::lock_guard lock(m_mutex);
    m_aborted = true;
    m_listener.reset();
    for (const curl_socket_t socket : m_sockets)
        ::shutdown(socket, SHUT_RDWR);
    m_wake.notify_one();
}

std::optional<SmtpWorker::Job> SmtpWorker::nextJob()
{
    std::unique_lock lock(m_mutex);
    m_wake.wait(lock, [this] { return m_aborted || !m_jobs.empty(); });
    if (m_aborted)
        return std::nullopt;
    Job job = std::move(m_jobs.front());
    m_jobs.pop_front();
    return job;
}

void SmtpWorker::run() noexcept
{
    blockBrokenPipeSignal();
    try {
        const Result connected = connect();
        tellDone(SmtpSession::ConnectTask, connected);
        bool going = connected.error == 0;
        while (going) {
            const std::optional<Job> job = nextJob();
            if (!job)
                break;
            if (job->task == SmtpSession::SendTask) {
                tellDone(job->task, transmit(*job->message));
            } else {
                quit();
                going = false;
            }
        }
        breakOff();
    } catch (const std::exception &) {
        // No memory even to tell so: the connection goes, and with it the conversation.
        breakOff();
    }
    m_over = true;
}

void SmtpWorker::breakOff()
{
    if (!m_easy)
        return;
    {
        // libcurl would say QUIT once more and wait for an answer.
        const std::lock_guard lock(m_mutex);
        for (const curl_socket_t socket : m_sockets)
            ::shutdown(socket, SHUT_RDWR);
    }
    curl_easy_cleanup(std::exchange(m_easy, nullptr));
}

void SmtpWorker::setUp()
{
    curl_easy_setopt(m_easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(m_easy, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
    curl_easy_setopt(m_easy, CURLOPT_ERRORBUFFER, m_error);
    curl_easy_setopt(m_easy, CURLOPT_QUICK_EXIT, 1L); // a name that is still looked up holds nobody up
    curl_easy_setopt(m_easy, CURLOPT_CONNECTTIMEOUT, long{m_options.connectSeconds});
    curl_easy_setopt(m_easy, CURLOPT_SERVER_RESPONSE_TIMEOUT, long{m_options.answerSeconds});
    curl_easy_setopt(m_easy, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(m_easy, CURLOPT_LOW_SPEED_TIME, long{m_options.answerSeconds});
    curl_easy_setopt(m_easy, CURLOPT_MAXAGE_CONN, LongestPause);
    curl_easy_setopt(m_easy, CURLOPT_UPLOAD_BUFFERSIZE, UploadBuffer);
    curl_easy_setopt(m_easy, CURLOPT_READFUNCTION, &SmtpWorker::onRead);
    curl_easy_setopt(m_easy, CURLOPT_READDATA, this);
    curl_easy_setopt(m_easy, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(m_easy, CURLOPT_XFERINFOFUNCTION, &SmtpWorker::onProgress);
    curl_easy_setopt(m_easy, CURLOPT_XFERINFODATA, this);
    curl_easy_setopt(m_easy, CURLOPT_OPENSOCKETFUNCTION, &SmtpWorker::onOpen);
    curl_easy_setopt(m_easy, CURLOPT_OPENSOCKETDATA, this);
    curl_easy_setopt(m_easy, CURLOPT_CLOSESOCKETFUNCTION, &SmtpWorker::onClose);
    curl_easy_setopt(m_easy, CURLOPT_CLOSESOCKETDATA, this);
    curl_easy_setopt(m_easy, CURLOPT_VERBOSE, 1L);
    curl_easy_setopt(m_easy, CURLOPT_DEBUGFUNCTION, &SmtpWorker::onDebug);
    curl_easy_setopt(m_easy, CURLOPT_DEBUGDATA, this);
    if (!m_options.caFile.isEmpty())
        curl_easy_setopt(m_easy, CURLOPT_CAINFO, m_options.caFile.toUtf8().constData());
}

bool SmtpWorker::setTarget()
{
    const bool implicitTls = m_target.port == m_options.implicitTlsPort;
    const QByteArray address =
        addressOf(implicitTls ? u"smtps"_s : u"smtp"_s, m_target.server, m_target.port);
    if (address.isEmpty() || m_target.port < 0 || m_target.port > HighestPort)
        return false;
    curl_easy_setopt(m_easy, CURLOPT_URL, address.constData());
    const bool insist = m_target.login && !isThisMachine(m_target.server.trimmed());
    curl_easy_setopt(m_easy, CURLOPT_USE_SSL, long{insist ? CURLUSESSL_ALL : CURLUSESSL_TRY});
    if (m_target.login) {
        curl_easy_setopt(m_easy, CURLOPT_USERNAME, m_target.user.toUtf8().constData());
        curl_easy_setopt(m_easy, CURLOPT_PASSWORD, m_target.password.toUtf8().constData());
    }
    // An empty proxy, unlike none, keeps libcurl from asking the environment.
    curl_easy_setopt(m_easy, CURLOPT_PROXY, m_target.proxy.toUtf8().constData());
    curl_easy_setopt(m_easy, CURLOPT_NOPROXY, "");
    if (m_target.proxy.isEmpty())
        return true;
    curl_easy_setopt(m_easy, CURLOPT_PROXYPORT,
                     long{m_target.proxyPort > 0 ? m_target.proxyPort : UsualProxyPort});
    curl_easy_setopt(m_easy, CURLOPT_HTTPPROXYTUNNEL, 1L);
    curl_easy_setopt(m_easy, CURLOPT_PROXYAUTH, CURLAUTH_BASIC);
    if (!m_target.proxyUser.isEmpty()) {
        curl_easy_setopt(m_easy, CURLOPT_PROXYUSERNAME, m_target.proxyUser.toUtf8().constData());
        curl_easy_setopt(m_easy, CURLOPT_PROXYPASSWORD, m_target.proxyPassword.toUtf8().constData());
    }
    return true;
}

void SmtpWorker::command(const char *text)
{
    curl_easy_setopt(m_easy, CURLOPT_UPLOAD, 0L);
    curl_easy_setopt(m_easy, CURLOPT_MAIL_FROM, nullptr);
    curl_easy_setopt(m_easy, CURLOPT_MAIL_RCPT, nullptr);
    curl_easy_setopt(m_easy, CURLOPT_NOBODY, 1L);
    curl_easy_setopt(m_easy, CURLOPT_CUSTOMREQUEST, text);
}

SmtpWorker::Result SmtpWorker::connect()
{
    m_easy = curl_easy_init();
    if (!m_easy)
        return failed(CURLE_FAILED_INIT);
    setUp();
    if (!setTarget())
        return failed(CURLE_URL_MALFORMAT);
    command("NOOP");
    m_mayConnect = true;
    Result result = perform();
    m_mayConnect = false;
    return result;
}

SmtpWorker::Result SmtpWorker::transmit(OutgoingMessage &message)
{
    struct ListDeleter
    {
        void operator()(curl_slist *list) const { curl_slist_free_all(list); }
    };
    std::unique_ptr<curl_slist, ListDeleter> recipients;
    for (const QByteArray &recipient : std::as_const(message.recipients)) {
        curl_slist *longer = curl_slist_append(recipients.get(), recipient.constData());
        if (!longer)
            return failed(CURLE_OUT_OF_MEMORY);
        static_cast<void>(recipients.release()); // the longer list holds it
        recipients.reset(longer);
    }
    m_content = &message.content;
    m_readProblem.clear();
    curl_easy_setopt(m_easy, CURLOPT_CUSTOMREQUEST, nullptr);
    curl_easy_setopt(m_easy, CURLOPT_NOBODY, 0L);
    curl_easy_setopt(m_easy, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(m_easy, CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(message.content.size()));
    curl_easy_setopt(m_easy, CURLOPT_MAIL_FROM, message.sender.constData());
    curl_easy_setopt(m_easy, CURLOPT_MAIL_RCPT, recipients.get());
    Result result = perform();
    m_content = nullptr;
    command("NOOP"); // lets go of the list
    return result;
}

void SmtpWorker::quit()
{
    curl_easy_setopt(m_easy, CURLOPT_SERVER_RESPONSE_TIMEOUT, long{m_options.leaveSeconds});
    command("QUIT");
    perform();
    // Nothing more is to be told once the connection is gone.
    breakOff();
    tellDone(SmtpSession::DisconnectTask, {});
}

SmtpWorker::Result SmtpWorker::perform()
{
    m_error[0] = '\0';
    m_lines.forgetReply();
    const CURLcode code = curl_easy_perform(m_easy);
    return code == CURLE_OK ? Result() : failed(code);
}

SmtpWorker::Result SmtpWorker::failed(CURLcode code) const
{
    constexpr int FirstRefusal = 400;
    if (!m_readProblem.isEmpty())
        return {static_cast<qint16>(code), m_readProblem};
    if (m_lines.lastCode() >= FirstRefusal)
        return {static_cast<qint16>(m_lines.lastCode()), QString::fromUtf8(m_lines.lastReply())};
    // Without a connection libcurl tries to make another one, which it may not.
    if (!m_mayConnect && code == CURLE_COULDNT_CONNECT)
        return {CURLE_RECV_ERROR, u"The server has closed the connection"_s};
    const QByteArray text(m_error[0] != '\0' ? m_error : curl_easy_strerror(code));
    return {static_cast<qint16>(code), QString::fromUtf8(m_lines.masked(text))};
}

void SmtpWorker::post(std::function<void(const Listener &)> call)
{
    const std::lock_guard lock(m_mutex);
    if (!m_listener)
        return;
    // The listener is asked for again when the call's turn has come: it may be gone by then.
    QMetaObject::invokeMethod(
        m_listener->place,
        [weak = std::weak_ptr(m_listener), call = std::move(call)] {
            if (const auto listener = weak.lock())
                call(*listener);
        },
        Qt::QueuedConnection);
}

void SmtpWorker::tellDone(qint32 task, const Result &result)
{
    post([task, result](const Listener &listener) { listener.done(task, result.error, result.text); });
}

void SmtpWorker::tellLines(const QByteArrayList &lines)
{
    for (const QByteArray &line : lines)
        post([text = QString::fromUtf8(line)](const Listener &listener) { listener.debug(text); });
}

int SmtpWorker::onDebug(CURL *, curl_infotype type, char *bytes, std::size_t size, void *self) noexcept
{
    try {
        auto &worker = *static_cast<SmtpWorker *>(self);
        const QByteArrayView piece(bytes, static_cast<qsizetype>(size));
        if (type == CURLINFO_HEADER_IN)
            worker.tellLines(worker.m_lines.received(piece));
        else if (type == CURLINFO_HEADER_OUT)
            worker.tellLines(worker.m_lines.sent(piece));
    } catch (const std::exception &) {
        // A line that cannot be shown is no reason to stop.
    }
    return 0;
}

std::size_t SmtpWorker::onRead(char *buffer, std::size_t size, std::size_t count, void *self) noexcept
{
    auto &worker = *static_cast<SmtpWorker *>(self);
    try {
        if (!worker.m_content)
            return 0;
        return static_cast<std::size_t>(
            worker.m_content->read(buffer, static_cast<qsizetype>(size) * static_cast<qsizetype>(count)));
    } catch (const std::exception &error) {
        worker.m_readProblem = errorText(error);
        return CURL_READFUNC_ABORT;
    }
}

int SmtpWorker::onProgress(void *self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) noexcept
{
    return static_cast<SmtpWorker *>(self)->m_aborted ? 1 : 0;
}

curl_socket_t SmtpWorker::onOpen(void *self, curlsocktype, curl_sockaddr *address) noexcept
{
    auto &worker = *static_cast<SmtpWorker *>(self);
    try {
        const std::lock_guard lock(worker.m_mutex);
        if (worker.m_aborted || !worker.m_mayConnect)
            return CURL_SOCKET_BAD;
        const curl_socket_t socket =
            ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
        if (socket >= 0)
            worker.m_sockets.insert(socket);
        return socket >= 0 ? socket : CURL_SOCKET_BAD;
    } catch (const std::exception &) {
        return CURL_SOCKET_BAD;
    }
}

int SmtpWorker::onClose(void *self, curl_socket_t socket) noexcept
{
    auto &worker = *static_cast<SmtpWorker *>(self);
    const std::lock_guard lock(worker.m_mutex);
    worker.m_sockets.erase(socket);
    return ::close(socket);
}

} // namespace sondrel
