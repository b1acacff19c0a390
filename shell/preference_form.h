// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/clsPreference.h"

#include <optional>

// What the configuration dialog shows, what it accepts and what it makes of it.

namespace sondrel {

/// Indexes of the buttons that choose the way to the internet.
inline constexpr int DirectAccess = 1;
inline constexpr int ProxyAccess = 2;

/// The texts and states of the configuration dialog's controls.
struct PreferenceForm
{
    std::optional<int> Access; // which button is chosen
    QString Proxy;
    QString Port;
    QString HTTPUsername;
    QString HTTPPassword;
    QString MailServer;
    QString SMTPPort;
    bool SMTPAuthentication = false;
    QString SMTPUserName;
    QString SMTPPassword;
    QString ReporterName;
    QString CompanyName;
    QString ReporterEmail;
    QString ReporterWeb;
    QString LogoURL;
    bool LogoOnTop = false;
    bool LogoAtBottom = false;
    bool SchedulerEnable = false;
    bool UpdateEngineData = false;
    QString TimeOut;
    bool ConfirmConnection = false;

    bool operator==(const PreferenceForm &) const = default;
};

enum class PreferenceTab : int { Server, MailServer, Profile, Option };
enum class PreferenceField { Proxy, Port, SMTPPort, SMTPUserName, SMTPPassword, TimeOut };

/// Why settings cannot be taken as the dialog shows them, and where.
struct PreferenceFault
{
    QString Message;
    PreferenceTab Tab = PreferenceTab::Server;
    PreferenceField Focus = PreferenceField::Proxy;

    bool operator==(const PreferenceFault &) const = default;
};

/// What the dialog shows of the settings. One that its control cannot show leaves that empty, with a line in
/// the log.
PreferenceForm preferenceForm(ApplicationContext &app, const clsPreference &preference);

/// Which controls can be used.
struct PreferenceEnabled
{
    bool Proxy = false;     // address and port
    bool SMTPLogin = false; // account name and password

    bool operator==(const PreferenceEnabled &) const = default;
};
PreferenceEnabled preferenceEnabled(const PreferenceForm &form);

/// Takes over what the dialog shows, all of it or, when something is wrong, nothing.
std::optional<PreferenceFault> assignPreference(const PreferenceForm &form, clsPreference &preference);

} // namespace sondrel
