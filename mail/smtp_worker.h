// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "mail/curl_smtp_session.h"
#include "mail/protocol_line.h"
#include "mail/smtp_session.h"

#include <curl/curl.h>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <set>

namespace sondrel {

/// What a conversation is made with, taken from the session when it begins.
struct SmtpTarget
{
    QString server;
    qint32 port = 0;
    bool login = false;
    QString user;
    QString password;
    QString proxy;
    qint32 proxyPort = 0;
    QString proxyUser;
    QString proxyPassword;
};

/// One conversation, on a thread of its own: it connects, then does what it is given. Whoever listens is
/// called on the thread of the given object, from its event loop, and never after abort().
class SmtpWorker
{
public:
    struct Listener
    {
        QObject *place; // lives until abort()
        std::function<void(const QString &line)> debug;
        std::function<void(qint32 task, qint16 error, const QString &text)> done;
    };

    SmtpWorker(SmtpTarget target, SmtpOptions options, Listener listener);
    ~SmtpWorker();
    SmtpWorker(const SmtpWorker &) = delete;
    SmtpWorker &operator=(const SmtpWorker &) = delete;

    /// The thread's work, from connecting to the end.
    void run() noexcept;
    bool isOver() const { return m_over; }

    void send(std::shared_ptr<OutgoingMessage> message);
    void leave();
    /// Breaks the connection off, whatever waits on it.
    void abort();

private:
    struct Job
    {
        qint32 task;
        std::shared_ptr<OutgoingMessage> message; // to send
    };
    struct Result
    {
        qint16 error = 0;
        QString text;
    };

    void add(Job job);
    std::optional<Job> nextJob();
    void setUp();
    bool setTarget();
    Result connect();
    Result transmit(OutgoingMessage &message);
    void quit();
    Result perform();
    Result failed(CURLcode code) const;
    void command(const char *text);
    void breakOff();
    void tellDone(qint32 task, const Result &result);
    void tellLines(const QByteArrayList &lines);
    void post(std::function<void(const Listener &)> call);

    static int onDebug(CURL *easy, curl_infotype type, char *bytes, std::size_t size, void *self) noexcept;
    static std::size_t onRead(char *buffer, std::size_t size, std::size_t count, void *self) noexcept;
    static int onProgress(void *self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) noexcept;
    static curl_socket_t onOpen(void *self, curlsocktype, curl_sockaddr *address) noexcept;
    static int onClose(void *self, curl_socket_t socket) noexcept;

    const SmtpTarget m_target;
    const SmtpOptions m_options;
    std::shared_ptr<const Listener> m_listener; // gone once aborted
    std::mutex m_mutex;                         // guards what the two threads share
    std::condition_variable m_wake;
    std::deque<Job> m_jobs;
    std::set<curl_socket_t> m_sockets;
    std::atomic<bool> m_aborted = false;
    std::atomic<bool> m_over = false;

    // Of the worker's thread alone.
    CURL *m_easy = nullptr;
    ProtocolLines m_lines;
    bool m_mayConnect = false;
    MessageStream *m_content = nullptr;
    QString m_readProblem;
    char m_error[CURL_ERROR_SIZE] = {};
};

} // namespace sondrel
