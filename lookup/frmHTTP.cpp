#include "lookup/frmHTTP.h"

#include "core/text_fold.h"

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int ConnectInterval = 100;
constexpr int CloseInterval = 40000;
constexpr int MostRetries = 3;

// Everything through the first "//" dropped.
QStringView behindScheme(QStringView url)
{
    const qsizetype slashes = url.indexOf(u"//");
    return slashes < 0 ? url : url.sliced(slashes + 2);
}

// A number from 0 to 255 as it is written plainly: without sign, blank or leading zero.
bool isPlainByte(QStringView text)
{
    const auto isDigit = [](QChar character) { return character >= u'0' && character <= u'9'; };
    return !text.isEmpty() && text.size() <= 3 && std::all_of(text.begin(), text.end(), isDigit) &&
           (text.size() == 1 || text.front() != u'0') && text.toInt() <= 255;
}

} // namespace

frmHTTP::frmHTTP(ApplicationContext &app)
    : m_app(app),
      m_pool(app.http.createPool()),
      m_http(m_pool->createControl()),
      m_tmrHttpTimeout(app.clock.createTimer(0, [this] { onHttpTimeout(); })),
      m_timerConnect(app.clock.createTimer(ConnectInterval, [this] { onConnect(); })),
      m_timerClose(app.clock.createTimer(CloseInterval, [this] { m_timerClose->setEnabled(false); }))
{
    m_http->UserAgent = userAgent(app);
    connect(m_http.get(), &HttpControl::stateChanged, this, [this] { onState(); });
}

frmHTTP::~frmHTTP() = default;

void frmHTTP::getSocketSetting()
{
    reportFailure(m_app, u"frmHTTP_GetsocketSetting error :  "_s, [this] { m_setting.read(m_app); });
}

void frmHTTP::resetSocket1()
{
    m_status = SlotStatus::Running;
}

void frmHTTP::Connect1(const QString &url)
{
    reportFailure(m_app, u"frmHTTP_Connect1_Error: "_s, [&] {
        if (m_http->State() != HttpControl::Closed)
            return;
        resetSocket1();
        m_body.clear();
        getSocketSetting();
        m_tmrHttpTimeout->setInterval(m_setting.timeOutInterval());
        m_lastUrl = url;
        m_http->FollowOption = true;
        m_http->Url = url;
        m_http->Blocking = false;
        m_http->Timeout = 0;
        m_setting.applyProxy(*m_http);
        m_tmrHttpTimeout->setEnabled(true);
        if (equalsIgnoringCase(SubmitMethod, u"POST"))
            m_http->Post(m_app.toBytes(PostData));
        else
            m_http->Get();
    });
}

void frmHTTP::onState()
{
    if (m_http->State() != HttpControl::Closed)
        return;
    m_tmrHttpTimeout->setEnabled(false);
    m_app.desktop.resetPointer();
    m_body = m_http->Body();
    switch (m_status) {
    case SlotStatus::UnloadWhenClosed:
        if (close())
            Q_EMIT Unloaded();
        return;
    case SlotStatus::Cancelled:
        if (Object)
            Object->setDisconnected(true);
        return;
    case SlotStatus::Running:
        break;
    }
    if (m_body.isEmpty() && m_retries < MostRetries) {
        ++m_retries;
        m_timerConnect->setEnabled(true);
        return;
    }
    m_retries = 0;
    if (Object) {
        const QByteArray body = m_body; // the client may start the next transfer, or destroy this
        Object->ProcessData(m_http->ResponseCode(), body);
    }
}

void frmHTTP::onHttpTimeout()
{
    m_tmrHttpTimeout->setEnabled(false);
    m_http->Abort();
}

void frmHTTP::onConnect()
{
    m_timerConnect->setEnabled(false);
    Connect1(QString(m_lastUrl));
}

void frmHTTP::Disconnect()
{
    m_status = SlotStatus::Cancelled;
    if (m_http->State() != HttpControl::Closed) {
        m_http->Abort();
    } else if (m_timerConnect->isEnabled()) {
        // Between two tries there is no transfer whose end could tell the client.
        m_timerConnect->setEnabled(false);
        if (Object)
            Object->setDisconnected(true);
    }
}

bool frmHTTP::close()
{
    if (m_http->Busy()) {
        m_status = SlotStatus::UnloadWhenClosed; // first: the end may be told from inside Abort
        m_http->Abort();
        return false;
    }
    m_timerConnect->setEnabled(false);
    Object = nullptr;
    return true;
}

QString frmHTTP::GetHostFromURL(const QString &url)
{
    const QStringView address = behindScheme(url);
    const qsizetype slash = address.indexOf(u'/');
    return (slash < 0 ? address : address.first(slash)).toString();
}

QString frmHTTP::GetFileFromURL(const QString &url)
{
    const QStringView address = behindScheme(url);
    const qsizetype slash = address.indexOf(u'/');
    return slash < 0 ? QString() : address.sliced(slash + 1).toString();
}

bool frmHTTP::IsDotAddress(const QString &host)
{
    const QList<QStringView> parts = trimBlanks(host).split(u'.');
    return parts.size() == 4 && std::all_of(parts.begin(), parts.end(), isPlainByte);
}

} // namespace sondrel
