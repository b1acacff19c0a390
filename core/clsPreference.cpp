#include "core/clsPreference.h"

#include "core/modBase64Encode.h"
#include "core/modStartUp.h"
#include "core/registry.h"
#include "core/values.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// The values under RegPreference.
class Preferences
{
public:
    explicit Preferences(ApplicationContext &app) : m_app(app) {}

    QString read(const QString &name, const QString &fallback = QString()) const
    {
        return GetRegistryText(m_app, m_app.RegPreference, name, fallback);
    }
    void write(const QString &name, const QString &value) const
    {
        SetRegistryValue(m_app, m_app.RegPreference, name, RegistryString, value);
    }
    void createKey() const { CreateRegistryKey(m_app, m_app.RegPreference); }

private:
    ApplicationContext &m_app;
};

QString loginOf(ApplicationContext &app, const QString &user, const QString &password)
{
    return user.isEmpty() || password.isEmpty() ? QString() : Base64Encode(app, user + u':' + password);
}

// Tells what has run on this machine, and where.
void noteThisRun(ApplicationContext &app, const Preferences &stored)
{
    const QString version = stored.read(u"Version"_s);
    if (version.isEmpty())
        app.FirstRun = true;
    if (version != versionText()) {
        stored.createKey();
        stored.write(u"Version"_s, versionText());
    }
    stored.createKey();
    stored.write(u"Location"_s, app.AppPath);
}

void readFields(ApplicationContext &app, const Preferences &stored, clsPreference &fields)
{
    fields.AccessType = toInt16(stored.read(u"AccessType"_s, u"1"_s));
    fields.Proxy = stored.read(u"Proxy"_s);
    fields.Port = stored.read(u"Port"_s, u"8080"_s);
    fields.TimeOut = stored.read(u"TimeOut"_s, u"30"_s);
    fields.SMTPServer = stored.read(u"SMTPServer"_s);
    fields.SMTPPort = stored.read(u"SMTPPort"_s, u"25"_s);
    fields.ConfirmConnection = stored.read(u"ConfirmConnection"_s, u"1"_s);
    fields.MaxListing = stored.read(u"MaxListing"_s, u"100"_s);
    fields.SMTPAuthenticate = toInt16(stored.read(u"Authentication"_s, u"0"_s));
    fields.HTTPUserName = stored.read(u"Auth_Username"_s);
    fields.HTTPPassword = stored.read(u"Auth_Password"_s);
    fields.HTTPLogin = loginOf(app, fields.HTTPUserName, fields.HTTPPassword);
    fields.SMTPUsername = stored.read(u"SMTPUsername"_s);
    fields.SMTPPassword = stored.read(u"SMTPPassword"_s);
    fields.ReporterName = stored.read(u"ReporterName"_s);
    fields.CompanyName = stored.read(u"CompanyName"_s);
    fields.Email = stored.read(u"Email"_s);
    fields.WebSite = stored.read(u"WebSite"_s);
    fields.LogoURL = stored.read(u"LogoURL"_s);
    fields.LogoPosition = stored.read(u"LogoPosition"_s, u"Top"_s);
    fields.SchedulerEnable = toBoolean(stored.read(u"SchedlerEnable"_s, u"True"_s));
    fields.UpdateEngineData = toInt16(stored.read(u"UpdateEngineData"_s, u"0"_s));
    fields.LastUpdate = stored.read(u"LastUpdate"_s);
}

void writeFields(const Preferences &stored, const clsPreference &fields)
{
    stored.write(u"AccessType"_s, QString::number(fields.AccessType));
    stored.write(u"Proxy"_s, fields.Proxy);
    stored.write(u"Port"_s, fields.Port);
    stored.write(u"TimeOut"_s, fields.TimeOut);
    stored.write(u"ConfirmConnection"_s, fields.ConfirmConnection);
    stored.write(u"SMTPServer"_s, fields.SMTPServer);
    stored.write(u"SMTPPort"_s, fields.SMTPPort);
    stored.write(u"Auth_Username"_s, fields.HTTPUserName);
    stored.write(u"Auth_Password"_s, fields.HTTPPassword);
    stored.write(u"SMTPUsername"_s, fields.SMTPUsername);
    stored.write(u"SMTPPassword"_s, fields.SMTPPassword);
    stored.write(u"Authentication"_s, QString::number(fields.SMTPAuthenticate));
    stored.write(u"MaxListing"_s, fields.MaxListing);
    stored.write(u"ReporterName"_s, fields.ReporterName);
    stored.write(u"CompanyName"_s, fields.CompanyName);
    stored.write(u"Email"_s, fields.Email);
    stored.write(u"WebSite"_s, fields.WebSite);
    stored.write(u"LogoURL"_s, fields.LogoURL);
    stored.write(u"LogoPosition"_s, fields.LogoPosition);
    stored.write(u"SchedlerEnable"_s, booleanText(fields.SchedulerEnable));
    stored.write(u"UpdateEngineData"_s, QString::number(fields.UpdateEngineData));
    stored.write(u"LastUpdate"_s, fields.LastUpdate);
}

} // namespace

void clsPreference::GetSettings(ApplicationContext &app)
{
    *this = clsPreference();
    reportFailure(app, u"clsPreference_Getsetting"_s, [&] {
        app.settings.storeTogether([&] {
            const Preferences stored(app);
            noteThisRun(app, stored);
            readFields(app, stored, *this);
            if (LastUpdate.isEmpty()) {
                LastUpdate = app.today();
                stored.write(u"LastUpdate"_s, LastUpdate);
            }
        });
    });
}

void clsPreference::SaveSettings(ApplicationContext &app) const
{
    reportFailure(app, u"clsPreference_SaveSettings: "_s, [&] {
        app.settings.storeTogether([&] {
            const Preferences stored(app);
            stored.createKey();
            stored.write(u"Location"_s, app.AppPath);
            writeFields(stored, *this);
        });
    });
}

} // namespace sondrel
