// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/http_control.h"

namespace sondrel {

/// What a user's own choice may replace.
inline constexpr auto UsualUserAgent = "Mozilla/4.0 (compatible; MSIE 6.0; Windows NT 5.1)";

/// The settings of a connection: the way to the net and the time limit.
struct SocketSetting
{
    qint16 AccessType = 1; // 2: through the proxy
    QString Proxy;
    QString Port;
    qint16 TimeOut = 30; // seconds; 0 is no limit
    QString Auth_Username;
    QString Auth_Password;
    QString AuthToken; // kept only; the credentials go to the control as they are

    /// Reads one value after the other; throws Failure at the first that is no number where one is needed,
    /// and leaves the rest.
    void read(ApplicationContext &app);

    /// Interval of the time-out timer in ms. From 63 seconds on it is one minute.
    int timeOutInterval() const;
    /// Gives the control its proxy and credentials, or takes them away.
    void applyProxy(HttpControl &control) const;
};

/// What is done with a transfer that has ended.
enum class SlotStatus : qint16 { Running = -1, UnloadWhenClosed = 0, Cancelled = 1 };

/// What goes out as the User-Agent.
QString userAgent(ApplicationContext &app);

} // namespace sondrel
