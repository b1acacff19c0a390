// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

#include <memory>

namespace sondrel {

/// The door to HTTP: one transfer at a time, started by Get or Post, watched through State. Calls return at
/// once; the end of a transfer is told by stateChanged with State already 0, so the next transfer may start
/// from inside the handler. The control may be destroyed from inside the handler too.
class HttpControl : public QObject
{
    Q_OBJECT

public:
    /// Closed and idle; counts as finished for cancellation; any other value is busy.
    enum : int { Closed = 0, Connecting = 1, Closing = 11 };

    QString UserAgent;
    /// Host and port joined by ":"; empty for a direct connection.
    QString ProxyServer;
    QString ProxyUsername;
    QString ProxyPassword;
    /// Address of the next transfer, as composed; the control trims and percent-escapes it as needed.
    QString Url;
    /// Follow redirects, to http and https only.
    bool FollowOption = true;
    bool Blocking = false;
    /// Own time limit in ms; 0 is none.
    int Timeout = 0;

    virtual int State() const = 0;
    virtual bool Busy() const = 0;
    /// Response status of the last transfer, 0 when there was none.
    virtual int ResponseCode() const = 0;
    /// The body of the last transfer as received and decoded; what had arrived when it was cut short.
    virtual QByteArray Body() const = 0;

    virtual void Get() = 0;
    virtual void Post(const QByteArray &postData) = 0;
    /// Ends the transfer; stateChanged follows.
    virtual void Abort() = 0;

Q_SIGNALS:
    void stateChanged();
};

/// Makes the controls of one connection pool: they share connections and cookies, and live no longer than it.
class HttpPool
{
public:
    virtual ~HttpPool() = default;
    virtual std::unique_ptr<HttpControl> createControl() = 0;
};

/// Makes connection pools.
class HttpTransport
{
public:
    virtual ~HttpTransport() = default;
    virtual std::unique_ptr<HttpPool> createPool() = 0;
};

} // namespace sondrel
