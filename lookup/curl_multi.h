// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QSocketNotifier>
#include <QTimer>

#include <curl/curl.h>

#include <chrono>
#include <deque>
#include <memory>
#include <unordered_map>
#include <vector>

namespace sondrel {

/// libcurl's multi interface on the Qt event loop: the sockets of its transfers are watched by notifiers, its
/// time limits by one timer. Transfers share connections, cookies and TLS sessions. It must be owned by a
/// shared_ptr: a client may let go of it, and of everything else, while it is told of the end of its
/// transfer.
class CurlMulti final : public std::enable_shared_from_this<CurlMulti>
{
public:
    static constexpr int MostHandles = 10;

    /// Who runs transfers on an easy handle.
    class Client
    {
    public:
        /// The transfer is over and its handle free for the next one. Called from the event loop only.
        virtual void transferEnded() = 0;

    protected:
        ~Client() = default;
    };

    CurlMulti();
    ~CurlMulti();
    CurlMulti(const CurlMulti &) = delete;
    CurlMulti &operator=(const CurlMulti &) = delete;

    /// A new easy handle; throws Failure when there are ten already.
    CURL *openHandle(Client &client);
    /// Ends what the handle does, without telling its client, and frees it.
    void closeHandle(CURL *easy, Client &client);

    /// Starts the transfer that the handle has been set up for: with others that are started in this turn of
    /// the event loop, at the latest in the next one.
    void start(CURL *easy);
    /// Cuts the transfer off; the client is told later. Once it has ended by itself this does nothing.
    void stop(CURL *easy, Client &client);
    /// Lets the client be told of an end without a transfer.
    void endLater(Client &client);

private:
    using Clock = std::chrono::steady_clock;

    struct Socket
    {
        std::unique_ptr<QSocketNotifier> reading;
        std::unique_ptr<QSocketNotifier> writing;
        bool awaitsReading = false; // the notifier may be on without that
        bool isConnection = false;  // else it wakes libcurl when a name has been looked up

        void ignore();
    };

    static int onSocket(CURL *easy, curl_socket_t socket, int what, void *self, void *data) noexcept;
    static int onOpen(void *self, curl_socket_t socket, curlsocktype purpose) noexcept;
    static int onClose(void *self, curl_socket_t socket) noexcept;
    static int onTimer(CURLM *multi, long wait, void *self) noexcept;

    void watch(curl_socket_t socket, bool reading, bool writing);
    void enable(curl_socket_t socket, std::unique_ptr<QSocketNotifier> &notifier, QSocketNotifier::Type type);
    void onActivated(curl_socket_t socket, QSocketNotifier::Type type);
    void setTimer();
    void handOver();
    void takeBack(CURL *easy);
    void perform(curl_socket_t socket, int events);
    bool startAnew(CURL *easy);
    void act(curl_socket_t socket, int events);
    void tellLater();
    void tellEnded();

    CURLM *m_multi;
    CURLSH *m_share;
    int m_handles = 0;
    QTimer m_timer;
    QTimer m_starter;                                     // rings in the next turn of the event loop
    Clock::time_point m_rings = Clock::time_point::max(); // when the timer is set to ring
    Clock::time_point m_due = Clock::time_point::max();   // when libcurl wants to be called
    // Switched off rather than destroyed when libcurl lets go of a socket: the number is soon used again.
    std::unordered_map<curl_socket_t, Socket> m_sockets;
    std::vector<CURL *> m_toStart; // libcurl does not have them yet
    std::deque<Client *> m_ended;  // over, their clients not yet told
    bool m_toTell = false;         // they will be told in the next turn of the event loop
};

} // namespace sondrel
