// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/http_control.h"
#include "lookup/socket_setting.h"

#include <QObject>

#include <memory>

namespace sondrel {

/// Who has a page fetched by frmHTTP.
class HttpClient
{
public:
    virtual ~HttpClient() = default;

    /// The page is there; an empty one after all retries. status is the response status, 0 when there was
    /// none; body the bytes as received. The client may start the next transfer or destroy the transfer unit
    /// from here.
    virtual void ProcessData(int status, const QByteArray &body) = 0;
    /// Set to true when a cancel has come to its end.
    virtual void setDisconnected(bool disconnected) = 0;
};

/// A single connection for one client: fetches a page, asks again up to three times when it comes empty, and
/// hands it to the client. It has no window; it hosts timers and a control.
class frmHTTP final : public QObject
{
    Q_OBJECT

public:
    explicit frmHTTP(ApplicationContext &app);
    ~frmHTTP() override;

    QString ConnectType;          // kept only
    HttpClient *Object = nullptr; // outlives the transfer, or is taken away before it goes
    QString URL;                  // kept only
    QString SubmitMethod;         // "POST" in any case; everything else is GET
    QString PostData;

    /// Starts the transfer; dropped without a word while one is under way.
    void Connect1(const QString &url);
    /// Cancels the transfer, also one that waits for its retry. The client's Disconnected is set when it has
    /// ended.
    void Disconnect();
    /// Nothing is under way, nor about to be.
    bool isIdle() const { return !m_http->Busy() && !m_timerConnect->isEnabled(); }
    void resetSocket1();
    void getSocketSetting();
    /// Closes the unit: true, and the client is let go of, when nothing was under way. Otherwise the transfer
    /// is aborted, and Unloaded emitted once it has ended.
    bool close();

    /// Nothing turns this timer on; its tick turns it off.
    ClockTimer &TimerClose1() { return *m_timerClose; }

    /// What stands behind the first "/" after the host; empty when there is none.
    static QString GetFileFromURL(const QString &url);
    /// What stands behind the first "//" and before the next "/": port and user stay.
    static QString GetHostFromURL(const QString &url);
    /// True for four plain decimal numbers from 0 to 255 with dots between them.
    static bool IsDotAddress(const QString &host);

Q_SIGNALS:
    void Unloaded();

private:
    void onState();
    void onHttpTimeout();
    void onConnect();

    ApplicationContext &m_app;
    SocketSetting m_setting;
    std::unique_ptr<HttpPool> m_pool;
    std::unique_ptr<HttpControl> m_http;
    std::unique_ptr<ClockTimer> m_tmrHttpTimeout;
    std::unique_ptr<ClockTimer> m_timerConnect;
    std::unique_ptr<ClockTimer> m_timerClose;
    QString m_lastUrl;
    QByteArray m_body;
    SlotStatus m_status = SlotStatus::Running;
    int m_retries = 0;
};

} // namespace sondrel
