// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/http_control.h"

#include <QPointer>

#include <functional>
#include <vector>

namespace sondrel {

/// A transport without a network: requests wait until the test answers them.
class ScriptedHttp final : public HttpTransport
{
public:
    class Control;

    /// Every request so far, in order; the control is gone once its pool is.
    struct Request
    {
        QString url;
        QByteArray postData;
        bool post = false;
        QString userAgent;
        QString proxyServer;
        QString proxyUsername;
        QString proxyPassword;
        QPointer<Control> control;
    };
    std::vector<Request> requests;
    int pools = 0; // made so far
    int controlsAlive = 0;
    /// When set, answers a request from the event loop (never from inside Get or Post).
    std::function<QByteArray(const Request &)> autoAnswer;
    /// When set, Get and Post throw Failure with this text.
    QString failStart;
    /// When set, making a control, or Abort, throws Failure with this text.
    QString failControl;
    QString failAbort;

    std::unique_ptr<HttpPool> createPool() override;

    /// Ends the given request with a body.
    void answer(std::size_t request, const QByteArray &body, int status = 200);
    /// Requests still under way.
    int pending() const;
};

class ScriptedHttp::Control final : public HttpControl
{
    Q_OBJECT

public:
    explicit Control(ScriptedHttp &owner);
    ~Control() override;

    int State() const override { return state; }
    bool Busy() const override { return state != Closed; }
    int ResponseCode() const override { return status; }
    QByteArray Body() const override { return body; }
    void Get() override;
    void Post(const QByteArray &postData) override;
    void Abort() override;

    /// Ends the transfer: state first, then the event.
    void finish(const QByteArray &received, int code);

    int state = Closed;
    int status = 0;
    QByteArray body;
    /// While set, Abort leaves the transfer in the closing state, without an event.
    bool hangsOnAbort = false;

private:
    void start(bool post, const QByteArray &postData);

    ScriptedHttp &m_owner;
};

} // namespace sondrel
