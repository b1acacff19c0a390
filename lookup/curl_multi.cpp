#include "lookup/curl_multi.h"

#include "core/failure.h"

#include <QMetaObject>

#include <unistd.h>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// Idle connections that are kept for the next transfer: one for each handle and some for hosts met on the
// way.
constexpr long KeptConnections = 2L * CurlMulti::MostHandles;

// Requests that go out together wake a server once: it is still at work on the first when the others arrive.
// More of them would let a server far away wait for its next request.
constexpr std::size_t MostWaiting = 4;

constexpr std::chrono::milliseconds LongestWait = 24h;

CurlMulti::Client *clientOf(CURL *easy)
{
    CurlMulti::Client *client = nullptr;
    curl_easy_getinfo(easy, CURLINFO_PRIVATE, &client);
    return client;
}

// Whether bytes that stood behind the last page of a kept connection have been taken for this answer. Servers
// send such where they count a page too short; libcurl sees them only if they come together with its end.
bool readsBytesBehindAPage(CURL *easy, CURLcode result)
{
    if (result != CURLE_UNSUPPORTED_PROTOCOL)
        return false;
    long opened = 0;
    long sent = 0;
    long status = 0;
    curl_easy_getinfo(easy, CURLINFO_NUM_CONNECTS, &opened);
    curl_easy_getinfo(easy, CURLINFO_REQUEST_SIZE, &sent);
    curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status);
    return opened == 0 && sent > 0 && status == 0;
}

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
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
        m_rings = Clock::time_point::max();
        act(CURL_SOCKET_TIMEOUT, 0);
    });
    m_starter.setSingleShot(true);
    m_starter.setInterval(0);
    QObject::connect(&m_starter, &QTimer::timeout, &m_starter, [this] {
        handOver();
        act(CURL_SOCKET_TIMEOUT, 0);
    });
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
    curl_easy_setopt(easy, CURLOPT_SOCKOPTFUNCTION, &CurlMulti::onOpen);
    curl_easy_setopt(easy, CURLOPT_SOCKOPTDATA, this);
    curl_easy_setopt(easy, CURLOPT_CLOSESOCKETFUNCTION, &CurlMulti::onClose);
    curl_easy_setopt(easy, CURLOPT_CLOSESOCKETDATA, this);
    return easy;
}

void CurlMulti::closeHandle(CURL *easy, Client &client)
{
    takeBack(easy);
    curl_easy_cleanup(easy);
    std::erase(m_ended, &client);
    --m_handles;
}

void CurlMulti::start(CURL *easy)
{
    curl_easy_setopt(easy, CURLOPT_FRESH_CONNECT, 0L);
    m_toStart.push_back(easy);
    if (m_toStart.size() < MostWaiting) {
        m_starter.start();
    } else {
        handOver();
        setTimer(); // they are due now: they begin with what else happens next
    }
}

void CurlMulti::handOver()
{
    m_starter.stop();
    for (CURL *easy : std::exchange(m_toStart, {})) {
        if (curl_multi_add_handle(m_multi, easy) != CURLM_OK)
            endLater(*clientOf(easy));
    }
}

void CurlMulti::stop(CURL *easy, Client &client)
{
    if (std::find(m_ended.begin(), m_ended.end(), &client) != m_ended.end())
        return;
    takeBack(easy);
    endLater(client);
}

void CurlMulti::takeBack(CURL *easy)
{
    std::erase(m_toStart, easy);
    curl_multi_remove_handle(m_multi, easy);
}

void CurlMulti::endLater(Client &client)
{
    m_ended.push_back(&client);
    tellLater();
}

void CurlMulti::tellLater()
{
    if (std::exchange(m_toTell, true))
        return;
    QMetaObject::invokeMethod(
        &m_timer,
        [this] {
            const auto alive = shared_from_this();
            m_toTell = false;
            tellEnded();
        },
        Qt::QueuedConnection);
}

void CurlMulti::act(curl_socket_t socket, int events)
{
    const auto alive = shared_from_this();
    perform(socket, events);
    tellEnded();
}

void CurlMulti::perform(curl_socket_t socket, int events)
{
    int running = 0;
    curl_multi_socket_action(m_multi, socket, events, &running);
    int left = 0;
    while (CURLMsg *message = curl_multi_info_read(m_multi, &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        CURL *easy = message->easy_handle; // the message goes with the handle
        const bool again = readsBytesBehindAPage(easy, message->data.result);
        curl_multi_remove_handle(m_multi, easy);
        if (!again || !startAnew(easy))
            m_ended.push_back(clientOf(easy));
    }
    setTimer();
}

// The same transfer on a new connection.
bool CurlMulti::startAnew(CURL *easy)
{
    curl_easy_setopt(easy, CURLOPT_FRESH_CONNECT, 1L);
    return curl_multi_add_handle(m_multi, easy) == CURLM_OK;
}

void CurlMulti::tellEnded()
{
    // Those that have ended by now. One that its client starts again, and that ends at once, waits for the
    // next turn of the event loop, or the loop would not turn any more.
    for (auto left = m_ended.size(); left > 0 && !m_ended.empty(); --left) {
        Client *client = m_ended.front();
        m_ended.pop_front();
        client->transferEnded();
    }
    if (!m_ended.empty())
        tellLater();
}

int CurlMulti::onSocket(CURL *, curl_socket_t socket, int what, void *self, void *) noexcept
{
    try {
        static_cast<CurlMulti *>(self)->watch(socket, what == CURL_POLL_IN || what == CURL_POLL_INOUT,
                                              what == CURL_POLL_OUT || what == CURL_POLL_INOUT);
        return 0;
    } catch (const std::exception &) {
        return -1; // libcurl then ends all its transfers
    }
}

int CurlMulti::onOpen(void *self, curl_socket_t socket, curlsocktype) noexcept
{
    try {
        static_cast<CurlMulti *>(self)->m_sockets[socket].isConnection = true;
        return CURL_SOCKOPT_OK;
    } catch (const std::exception &) {
        return CURL_SOCKOPT_ERROR;
    }
}

int CurlMulti::onClose(void *self, curl_socket_t socket) noexcept
{
    auto &sockets = static_cast<CurlMulti *>(self)->m_sockets;
    if (const auto watched = sockets.find(socket); watched != sockets.end()) {
        watched->second.isConnection = false;
        watched->second.ignore();
    }
    return ::close(socket);
}

void CurlMulti::Socket::ignore()
{
    awaitsReading = false;
    for (QSocketNotifier *notifier : {reading.get(), writing.get()}) {
        if (notifier)
            notifier->setEnabled(false);
    }
}

int CurlMulti::onTimer(CURLM *, long wait, void *self) noexcept
{
    auto *multi = static_cast<CurlMulti *>(self);
    multi->m_due = wait < 0 ? Clock::time_point::max() : Clock::now() + std::chrono::milliseconds(wait);
    return 0;
}

// A timer that rings too early does no harm, so it is set anew only to ring earlier.
void CurlMulti::setTimer()
{
    if (m_due >= m_rings)
        return;
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(m_due - Clock::now());
    m_timer.start(std::clamp(wait, 0ms, LongestWait));
    m_rings = m_due;
}

void CurlMulti::watch(curl_socket_t socket, bool reading, bool writing)
{
    Socket &watched = m_sockets[socket];
    // What is no connection is closed without a word when libcurl lets go of it.
    if (!watched.isConnection && !reading && !writing)
        return watched.ignore();
    watched.awaitsReading = reading;
    // Left on when a transfer is over: as a rule the next one on this connection follows at once.
    if (reading)
        enable(socket, watched.reading, QSocketNotifier::Read);
    if (writing)
        enable(socket, watched.writing, QSocketNotifier::Write);
    else if (watched.writing)
        watched.writing->setEnabled(false);
}

void CurlMulti::enable(curl_socket_t socket, std::unique_ptr<QSocketNotifier> &notifier,
                       QSocketNotifier::Type type)
{
    if (notifier)
        return notifier->setEnabled(true);
    notifier = std::make_unique<QSocketNotifier>(socket, type);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, &m_timer,
                     [this, socket, type] { onActivated(socket, type); });
}

void CurlMulti::onActivated(curl_socket_t socket, QSocketNotifier::Type type)
{
    const Socket &watched = m_sockets.at(socket);
    if (type == QSocketNotifier::Write)
        act(socket, CURL_CSELECT_OUT);
    else if (watched.awaitsReading)
        act(socket, CURL_CSELECT_IN);
    else
        watched.reading->setEnabled(false); // an idle connection whose other side has closed it
}

} // namespace sondrel
