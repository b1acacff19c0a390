#include "shell/preference_form.h"

#include "core/text_fold.h"
#include "core/values.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto Scheme = u"http://";
constexpr qsizetype SchemeLength = 7;

const QString Top = u"Top"_s;
const QString Bottom = u"Bottom"_s;
const QString TopAndBottom = u"Top&Bottom"_s;

bool checkState(qint16 value)
{
    if (value != 0 && value != 1)
        throw Failure(u"Invalid property value: "_s + QString::number(value));
    return value == 1;
}

std::optional<int> accessButton(qint16 accessType)
{
    if (accessType == 0 || accessType == DirectAccess)
        return DirectAccess;
    if (accessType == ProxyAccess)
        return ProxyAccess;
    throw Failure(u"No way to the internet has the number "_s + QString::number(accessType));
}

qint16 stored(bool checked)
{
    return checked ? 1 : 0;
}

std::optional<PreferenceFault> assignProxy(const PreferenceForm &form, clsPreference &preference)
{
    if (form.Access != ProxyAccess) {
        preference.AccessType = DirectAccess;
        return std::nullopt;
    }
    preference.AccessType = ProxyAccess;
    if (containsIgnoringCase(form.Proxy, Scheme))
        preference.Proxy = form.Proxy.mid(SchemeLength); // wherever the scheme stands
    else if (form.Proxy.isEmpty())
        return PreferenceFault{u"Invalid Proxy Server address."_s, PreferenceTab::Server,
                               PreferenceField::Proxy};
    else
        preference.Proxy = form.Proxy;
    if (!isNumeric(form.Port))
        return PreferenceFault{u"Invalid Proxy Port Number."_s, PreferenceTab::Server, PreferenceField::Port};
    preference.Port = form.Port;
    return std::nullopt;
}

std::optional<PreferenceFault> assignMail(const PreferenceForm &form, clsPreference &preference)
{
    using Field = PreferenceField;
    preference.SMTPServer = form.MailServer;
    if (!form.SMTPPort.isEmpty() && !isNumeric(form.SMTPPort))
        return PreferenceFault{u"InVaid SMTP Port number."_s, PreferenceTab::MailServer, Field::SMTPPort};
    preference.SMTPPort = form.SMTPPort.isEmpty() ? u"25"_s : form.SMTPPort;
    if (form.SMTPAuthentication && form.SMTPUserName.isEmpty())
        return PreferenceFault{u"Please enter a user name for SMTP server."_s, PreferenceTab::MailServer,
                               Field::SMTPUserName};
    if (form.SMTPAuthentication && form.SMTPPassword.isEmpty())
        return PreferenceFault{u"Please enter a password for SMTP server."_s, PreferenceTab::MailServer,
                               Field::SMTPPassword};
    preference.SMTPAuthenticate = stored(form.SMTPAuthentication);
    preference.SMTPUsername = form.SMTPUserName;
    preference.SMTPPassword = form.SMTPPassword;
    return std::nullopt;
}

void assignProfile(const PreferenceForm &form, clsPreference &preference)
{
    preference.ReporterName = form.ReporterName;
    preference.CompanyName = form.CompanyName;
    preference.Email = form.ReporterEmail;
    preference.WebSite = form.ReporterWeb;
    preference.LogoURL = form.LogoURL;
    if (form.LogoOnTop)
        preference.LogoPosition = form.LogoAtBottom ? TopAndBottom : Top;
    else
        preference.LogoPosition = Bottom;
}

} // namespace

PreferenceForm preferenceForm(ApplicationContext &app, const clsPreference &preference)
{
    PreferenceForm form;
    form.Proxy = preference.Proxy;
    form.Port = preference.Port;
    form.HTTPUsername = preference.HTTPUserName;
    form.HTTPPassword = preference.HTTPPassword;
    form.MailServer = preference.SMTPServer;
    form.SMTPPort = preference.SMTPPort;
    form.SMTPUserName = preference.SMTPUsername;
    form.SMTPPassword = preference.SMTPPassword;
    form.ReporterName = preference.ReporterName;
    form.CompanyName = preference.CompanyName;
    form.ReporterEmail = preference.Email;
    form.ReporterWeb = preference.WebSite;
    form.LogoURL = preference.LogoURL;
    const bool both = equalsIgnoringCase(preference.LogoPosition, TopAndBottom);
    form.LogoOnTop = both || equalsIgnoringCase(preference.LogoPosition, Top);
    form.LogoAtBottom = both || equalsIgnoringCase(preference.LogoPosition, Bottom);
    form.SchedulerEnable = preference.SchedulerEnable;
    form.TimeOut = preference.TimeOut;
    // Each on its own: a value that cannot be shown keeps none of the others from the person who is to mend
    // it.
    const auto show = [&](auto &&step) { reportFailure(app, u"frmPrefence_Form_Load error:  "_s, step); };
    show([&] { form.Access = accessButton(preference.AccessType); });
    show([&] { form.SMTPAuthentication = checkState(preference.SMTPAuthenticate); });
    show([&] { form.UpdateEngineData = checkState(preference.UpdateEngineData); });
    show([&] { form.ConfirmConnection = checkState(toInt16(preference.ConfirmConnection)); });
    return form;
}

PreferenceEnabled preferenceEnabled(const PreferenceForm &form)
{
    return {form.Access == ProxyAccess, form.SMTPAuthentication};
}

std::optional<PreferenceFault> assignPreference(const PreferenceForm &form, clsPreference &preference)
{
    clsPreference changed = preference;
    if (auto fault = assignProxy(form, changed))
        return fault;
    changed.HTTPUserName = form.HTTPUsername;
    changed.HTTPPassword = form.HTTPPassword;
    if (auto fault = assignMail(form, changed))
        return fault;
    assignProfile(form, changed);
    changed.SchedulerEnable = form.SchedulerEnable;
    changed.UpdateEngineData = stored(form.UpdateEngineData);
    if (!isNumeric(form.TimeOut))
        return PreferenceFault{u"Invaid Time out Valid."_s, PreferenceTab::Option, PreferenceField::TimeOut};
    changed.TimeOut = form.TimeOut;
    changed.ConfirmConnection = QString::number(stored(form.ConfirmConnection));
    preference = changed;
    return std::nullopt;
}

} // namespace sondrel
