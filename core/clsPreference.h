// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// The program's settings. Everybody who needs them makes an object of his own and reads it.
struct clsPreference
{
    QString Proxy;
    QString Port;
    QString TimeOut; // seconds
    QString ConfirmConnection;
    QString SMTPServer;
    QString SMTPPort;
    QString HTTPUserName;
    QString HTTPPassword;
    /// Base64 of proxy user, ":" and password; empty when either is. Not stored.
    QString HTTPLogin;
    /// 1 direct, 2 through the proxy.
    qint16 AccessType = 0;
    QString MaxListing;
    qint16 SMTPAuthenticate = 0;
    QString SMTPUsername;
    QString SMTPPassword;
    QString ReporterName;
    QString CompanyName;
    QString Email;
    QString WebSite;
    QString LogoURL;
    /// "Top", "Bottom" or "Top&Bottom".
    QString LogoPosition;
    bool SchedulerEnable = false;
    qint16 UpdateEngineData = 0;
    QString LastUpdate;

    bool operator==(const clsPreference &) const = default;

    /// Reads all fields anew and stores the running version, the application folder and, when there was none,
    /// the date of the last update. A value that cannot be converted ends it: what would have been read
    /// behind it stays empty.
    void GetSettings(ApplicationContext &app);
    /// Stores all fields.
    void SaveSettings(ApplicationContext &app) const;
};

} // namespace sondrel
