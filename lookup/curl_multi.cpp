#include "lookup/curl_multi.h"

#include "core/failure.h"

#include <QMetaObject>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// Idle connections that are kept for the next transfer: one for each handle and some for hosts met on the
// way.
constexpr long KeptConnections = 2L * CurlMulti::MostHandles;

} // namespace

CurlMulti::CurlMulti() : m_multi(curl_multi_init()), m_share(curl_share_init())
{
    if (!m_multi || !m_share) {
        curl_share_cleanup(m_share);
        curl_multi_cleanup(m_multi);
        throw Failure(u"Cannot start libcurl"_s);
    }
    curl_multi_setopt(m_multi, CURLMOPT_SOCKETFUNCTION, &CurlMulti::onSocket);
    curl_multi_setopt(m_multi, CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(m_multi, CURLMOPT_TIMERFUNCTION, &CurlMulti::onTimer);
    curl_multi_setopt(m_multi, CURLMOPT_TIMERDATA, this);
    curl_multi_setopt(m_multi, CURLMOPT_MAXCONNECTS, KeptConnections);
    curl_share_setopt(m_share, CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE);
    curl_share_setopt(m_share, CURLSHOPT_SHARE, CURL_LOCK_DATA_SSL_SESSION);

    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { act(CURL_SOCKET_TIMEOUT, 0); });
}

CurlMulti::~CurlMulti()
{
    // Closing its connections it still calls back for their sockets.
    curl_multi_cleanup(m_multi);
    curl_share_cleanup(m_share);
}

CURL *CurlMulti::openHandle(Client &client)
{
    if (m_handles == MostHandles)
        throw Failure(u"A connection pool has at most %1 connections"_s.arg(MostHandles));
    CURL *easy = curl_easy_init();
    if (!easy)
        throw Failure(u"Cannot make a libcurl handle"_s);
    ++m_handles;
    curl_easy_setopt(easy, CURLOPT_PRIVATE, &client);
    curl_easy_setopt(easy, CURLOPT_SHARE, m_share);
    return easy;
}

void CurlMulti::closeHandle(CURL *easy, Client &client)
{
    curl_multi_remove_handle(m_multi, easy);
    curl_easy_cleanup(easy);
    std::erase(m_ended, &client);
    --m_handles;
}

void CurlMulti::start(CURL *easy, Client &client)
{
    // libcurl asks for a tick at once, and also sends what is due whenever a socket wakes it: a transfer that
    // is started in the handler of one end is on its way before the next end is told.
    if (curl_multi_add_handle(m_multi, easy) != CURLM_OK)
        endLater(client);
}

void CurlMulti::stop(CURL *easy, Client &client)
{
    if (std::find(m_ended.begin(), m_ended.end(), &client) != m_ended.end())
        return;
    curl_multi_remove_handle(m_multi, easy);
    endLater(client);
}

void CurlMulti::endLater(Client &client)
{
    m_ended.push_back(&client);
    QMetaObject::invokeMethod(
        &m_timer,
        [this] {
            const auto alive = shared_from_this();
            tellEnded();
        },
        Qt::QueuedConnection);
}

void CurlMulti::act(curl_socket_t socket, int events)
{
    const auto alive = shared_from_this();
    int running = 0;
    curl_multi_socket_action(m_multi, socket, events, &running);
    int left = 0;
    while (CURLMsg *message = curl_multi_info_read(m_multi, &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        CURL *easy = message->easy_handle; // the message goes with the handle
        Client *client = nullptr;
        curl_easy_getinfo(easy, CURLINFO_PRIVATE, &client);
        curl_multi_remove_handle(m_multi, easy);
        m_ended.push_back(client);
    }
    tellEnded();
}

void CurlMulti::tellEnded()
{
    // Those that have ended by now. One that its client starts again, and that fails at once, waits for the
    // next turn of the event loop, or the loop would not turn any more.
    for (auto left = m_ended.size(); left > 0 && !m_ended.empty(); --left) {
        Client *client = m_ended.front();
        m_ended.pop_front();
        client->transferEnded();
    }
}

int CurlMulti::onSocket(CURL *, curl_socket_t socket, int what, void *self, void *) noexcept
{
    try {
        auto *multi = static_cast<CurlMulti *>(self);
        Socket &watched = multi->m_sockets[socket];
        multi->watch(socket, watched.reading, QSocketNotifier::Read,
                     what == CURL_POLL_IN || what == CURL_POLL_INOUT);
        multi->watch(socket, watched.writing, QSocketNotifier::Write,
                     what == CURL_POLL_OUT || what == CURL_POLL_INOUT);
        return 0;
    } catch (const std::exception &) {
        return -1; // libcurl then ends all its transfers
    }
}

int CurlMulti::onTimer(CURLM *, long milliseconds, void *self) noexcept
{
    auto *multi = static_cast<CurlMulti *>(self);
    if (milliseconds < 0)
        multi->m_timer.stop();
    else
        multi->m_timer.start(static_cast<int>(std::min<long>(milliseconds, 24L * 60 * 60 * 1000)));
    return 0;
}

void CurlMulti::watch(curl_socket_t socket, std::unique_ptr<QSocketNotifier> &notifier,
                      QSocketNotifier::Type type, bool wanted)
{
    if (notifier) {
        notifier->setEnabled(wanted);
    } else if (wanted) {
        notifier = std::make_unique<QSocketNotifier>(socket, type);
        const int events = type == QSocketNotifier::Read ? CURL_CSELECT_IN : CURL_CSELECT_OUT;
        QObject::connect(notifier.get(), &QSocketNotifier::activated, &m_timer,
                         [this, socket, events] { act(socket, events); });
    }
}

} // namespace sondrel
