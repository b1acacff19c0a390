#include "lookup/socket_setting.h"

#include "core/modBase64Encode.h"
#include "core/registry.h"
#include "core/text_fold.h"
#include "core/values.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int LongestTimeOut = 62000;
constexpr int CappedTimeOut = 60000;

} // namespace

void SocketSetting::read(ApplicationContext &app)
{
    const auto text = [&app](const QString &name, const QString &fallback) {
        return GetRegistryText(app, app.RegPreference, name, fallback);
    };
    AccessType = toInt16(text(u"AccessType"_s, u"1"_s));
    Proxy = text(u"Proxy"_s, QString());
    Port = text(u"Port"_s, u"8080"_s);
    TimeOut = toInt16(text(u"TimeOut"_s, u"30"_s));
    Auth_Username = text(u"Auth_Username"_s, QString());
    Auth_Password = text(u"Auth_Password"_s, QString());
    AuthToken = Auth_Username.isEmpty() || Auth_Password.isEmpty()
                    ? QString()
                    : Base64Encode(app, Auth_Username + u':' + Auth_Password);
}

int SocketSetting::timeOutInterval() const
{
    const int milliseconds = std::max(0, TimeOut * 1000);
    return milliseconds <= LongestTimeOut ? milliseconds : CappedTimeOut;
}

void SocketSetting::applyProxy(HttpControl &control) const
{
    const bool proxied = AccessType == 2 && !Proxy.isEmpty();
    const bool credentials = !Auth_Username.isEmpty() && !Auth_Password.isEmpty();
    control.ProxyServer =
        proxied ? trimBlanks(Proxy).toString() + u':' + trimBlanks(Port).toString() : QString();
    control.ProxyPassword = credentials ? Auth_Password : QString();
    control.ProxyUsername = credentials ? Auth_Username : QString();
}

QString userAgent(ApplicationContext &app)
{
    return GetRegistryText(app, app.RegPreference, u"UserAgent"_s, QString::fromLatin1(UsualUserAgent));
}

} // namespace sondrel
