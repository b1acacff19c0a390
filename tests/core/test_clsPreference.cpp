#include "core/clsPreference.h"

#include "core/file_settings_store.h"
#include "core/modBase64Encode.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QFile>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class Preference : public testing::Test
{
protected:
    World world;
    ApplicationContext &app = world.app;

    clsPreference read()
    {
        clsPreference preference;
        preference.GetSettings(app);
        return preference;
    }
    QString stored(const QString &name) const
    {
        return world.settings.value(app.RegPreference, name).value_or(QVariant()).toString();
    }

    static clsPreference defaults()
    {
        clsPreference preference;
        preference.Port = u"8080"_s;
        preference.TimeOut = u"30"_s;
        preference.ConfirmConnection = u"1"_s;
        preference.SMTPPort = u"25"_s;
        preference.AccessType = 1;
        preference.MaxListing = u"100"_s;
        preference.LogoPosition = u"Top"_s;
        preference.SchedulerEnable = true;
        preference.LastUpdate = u"11/15/2026"_s;
        return preference;
    }

    static clsPreference changed()
    {
        clsPreference preference;
        preference.Proxy = u"proxy.example"_s;
        preference.Port = u"3128"_s;
        preference.TimeOut = u"10"_s;
        preference.ConfirmConnection = u"0"_s;
        preference.SMTPServer = u"mail.example"_s;
        preference.SMTPPort = u"587"_s;
        preference.HTTPUserName = u"ann"_s;
        preference.HTTPPassword = u"p\u00e4ss"_s;
        preference.AccessType = 2;
        preference.MaxListing = u"50"_s;
        preference.SMTPAuthenticate = 1;
        preference.SMTPUsername = u"ann@mail"_s;
        preference.SMTPPassword = u"secret"_s;
        preference.ReporterName = u"Ann"_s;
        preference.CompanyName = u"Acme & Co"_s;
        preference.Email = u"ann@acme.example"_s;
        preference.WebSite = u"http://www.acme.example"_s;
        preference.LogoURL = u"http://www.acme.example/logo.gif"_s;
        preference.LogoPosition = u"Top&Bottom"_s;
        preference.SchedulerEnable = false;
        preference.UpdateEngineData = 1;
        preference.LastUpdate = u"1/2/2026"_s;
        return preference;
    }
};

} // namespace

TEST_F(Preference, isEmptyBeforeItIsRead)
{
    const clsPreference preference;
    EXPECT_EQ(preference.Port, u""_s);
    EXPECT_EQ(preference.AccessType, 0);
    EXPECT_FALSE(preference.SchedulerEnable);
}

TEST_F(Preference, hasItsDefaultsAtTheFirstStart)
{
    EXPECT_EQ(read(), defaults());
    EXPECT_TRUE(app.FirstRun);
    EXPECT_EQ(stored(u"Version"_s), u"4.0.0"_s);
    EXPECT_EQ(stored(u"Location"_s), app.AppPath);
    EXPECT_EQ(stored(u"LastUpdate"_s), u"11/15/2026"_s);
    EXPECT_EQ(world.takeLog(), u""_s);
}

TEST_F(Preference, isNoFirstRunOnceAVersionIsStored)
{
    world.setPreference(u"Version"_s, u"3.9.12"_s);
    read();
    EXPECT_FALSE(app.FirstRun);
    EXPECT_EQ(stored(u"Version"_s), u"4.0.0"_s);
}

TEST_F(Preference, isAFirstRunWhenTheVersionIsEmpty)
{
    world.setPreference(u"Version"_s, u""_s);
    read();
    EXPECT_TRUE(app.FirstRun);
}

TEST_F(Preference, staysAFirstRunWhenItIsReadAgain)
{
    read();
    read();
    EXPECT_TRUE(app.FirstRun);
}

TEST_F(Preference, writesTheVersionOnlyWhenItIsAnother)
{
    world.setPreference(u"Version"_s, u"4.0.0"_s);
    world.setPreference(u"LastUpdate"_s, u"1/2/2026"_s);
    world.settings.written.clear();
    read();
    EXPECT_EQ(world.settings.written, QStringList{u"Location"_s});
}

TEST_F(Preference, readsBackWhatWasSaved)
{
    clsPreference preference = changed();
    preference.SaveSettings(app);
    preference.HTTPLogin = Base64Encode(app, u"ann:p\u00e4ss"_s);
    EXPECT_EQ(read(), preference);
    EXPECT_EQ(world.takeLog(), u""_s);
}

TEST_F(Preference, savesItsValuesInOrder)
{
    changed().SaveSettings(app);
    const QStringList order{u"Location"_s,       u"AccessType"_s,        u"Proxy"_s,        u"Port"_s,
                            u"TimeOut"_s,        u"ConfirmConnection"_s, u"SMTPServer"_s,   u"SMTPPort"_s,
                            u"Auth_Username"_s,  u"Auth_Password"_s,     u"SMTPUsername"_s, u"SMTPPassword"_s,
                            u"Authentication"_s, u"MaxListing"_s,        u"ReporterName"_s, u"CompanyName"_s,
                            u"Email"_s,          u"WebSite"_s,           u"LogoURL"_s,      u"LogoPosition"_s,
                            u"SchedlerEnable"_s, u"UpdateEngineData"_s,  u"LastUpdate"_s};
    EXPECT_EQ(world.settings.written, order);
    EXPECT_EQ(stored(u"Location"_s), app.AppPath);
    EXPECT_EQ(stored(u"SchedlerEnable"_s), u"False"_s);
    EXPECT_EQ(stored(u"AccessType"_s), u"2"_s);
}

TEST_F(Preference, savesAllValuesInOneWrite)
{
    changed().SaveSettings(app);
    EXPECT_EQ(world.settings.stores, 1);
}

TEST_F(Preference, savesNoLogin)
{
    clsPreference preference = changed();
    preference.HTTPLogin = u"YW5u"_s;
    preference.SaveSettings(app);
    EXPECT_FALSE(world.settings.value(app.RegPreference, u"HTTPLogin"_s));
}

TEST_F(Preference, hasALoginOnlyWithUserAndPassword)
{
    world.setPreference(u"Auth_Username"_s, u"Aladdin"_s);
    EXPECT_EQ(read().HTTPLogin, u""_s);
    world.setPreference(u"Auth_Password"_s, u"open sesame"_s);
    EXPECT_EQ(read().HTTPLogin, Base64Encode(app, u"Aladdin:open sesame"_s));
    EXPECT_FALSE(read().HTTPLogin.isEmpty());
    world.setPreference(u"Auth_Username"_s, u""_s);
    EXPECT_EQ(read().HTTPLogin, u""_s);
}

TEST_F(Preference, takesTheDefaultForAnEmptyValue)
{
    world.setPreference(u"Port"_s, u""_s);
    world.setPreference(u"AccessType"_s, u""_s);
    world.setPreference(u"SchedlerEnable"_s, u""_s);
    const auto preference = read();
    EXPECT_EQ(preference.Port, u"8080"_s);
    EXPECT_EQ(preference.AccessType, 1);
    EXPECT_TRUE(preference.SchedulerEnable);
}

TEST_F(Preference, readsTheSchedulersSwitchAsABoolean)
{
    world.setPreference(u"SchedlerEnable"_s, u"0"_s);
    EXPECT_FALSE(read().SchedulerEnable);
    world.setPreference(u"SchedlerEnable"_s, u"-1"_s);
    EXPECT_TRUE(read().SchedulerEnable);
    world.setPreference(u"SchedlerEnable"_s, u"FALSE"_s);
    EXPECT_FALSE(read().SchedulerEnable);
}

TEST_F(Preference, keepsTheDateOfTheLastUpdate)
{
    world.setPreference(u"LastUpdate"_s, u"1/2/2026"_s);
    EXPECT_EQ(read().LastUpdate, u"1/2/2026"_s);
    EXPECT_EQ(stored(u"LastUpdate"_s), u"1/2/2026"_s);
}

TEST_F(Preference, stopsAtAnAccessTypeThatIsNoNumber)
{
    world.setPreference(u"AccessType"_s, u"direct"_s);
    EXPECT_EQ(read(), clsPreference());
    EXPECT_EQ(world.takeLog(), u"clsPreference_GetsettingType mismatch"_s);
    EXPECT_EQ(stored(u"Version"_s), u"4.0.0"_s);
    EXPECT_FALSE(world.settings.value(app.RegPreference, u"LastUpdate"_s));
}

TEST_F(Preference, stopsAtAnAccessTypeBeyondTheRange)
{
    world.setPreference(u"AccessType"_s, u"40000"_s);
    EXPECT_EQ(read(), clsPreference());
    EXPECT_EQ(world.takeLog(), u"clsPreference_GetsettingOverflow"_s);
}

TEST_F(Preference, stopsAtAnAuthenticationThatIsNoNumber)
{
    world.setPreference(u"Authentication"_s, u"yes"_s);
    world.setPreference(u"Auth_Username"_s, u"ann"_s);
    clsPreference wanted = defaults();
    wanted.LogoPosition.clear();
    wanted.SchedulerEnable = false;
    wanted.LastUpdate.clear();
    EXPECT_EQ(read(), wanted);
    EXPECT_EQ(world.takeLog(), u"clsPreference_GetsettingType mismatch"_s);
}

TEST_F(Preference, stopsAtASchedulersSwitchThatIsNoBoolean)
{
    world.setPreference(u"SchedlerEnable"_s, u"perhaps"_s);
    world.setPreference(u"UpdateEngineData"_s, u"1"_s);
    clsPreference wanted = defaults();
    wanted.SchedulerEnable = false;
    wanted.LastUpdate.clear();
    EXPECT_EQ(read(), wanted);
    EXPECT_EQ(world.takeLog(), u"clsPreference_GetsettingType mismatch"_s);
}

TEST_F(Preference, stopsAtAnUpdateOptionThatIsNoNumber)
{
    world.setPreference(u"UpdateEngineData"_s, u"on"_s);
    clsPreference wanted = defaults();
    wanted.LastUpdate.clear();
    EXPECT_EQ(read(), wanted);
    EXPECT_EQ(world.takeLog(), u"clsPreference_GetsettingType mismatch"_s);
}

TEST_F(Preference, forgetsWhatItHeldWhenItIsReadAnew)
{
    clsPreference preference = changed();
    preference.GetSettings(app);
    EXPECT_EQ(preference, defaults());
}

TEST_F(Preference, hasItsDefaultsWhenTheSettingsCannotBeRead)
{
    world.settings.broken = true;
    EXPECT_EQ(read(), defaults());
    EXPECT_TRUE(
        world.takeLog().startsWith(u"RegistryAPI_GetRegistryValue: The settings cannot be read\r\n"_s));
}

TEST_F(Preference, logsSettingsThatCannotBeStored)
{
    const QString file = world.folder.filePath(u"config/settings.ini"_s);
    FileSettingsStore settings(file);
    ApplicationContext context(app.AppPath, app.SystemDirectory,
                               Doors{world.clock, world.desktop, settings, world.http}, app.locale);
    QFile(world.folder.filePath(u"config"_s)).open(QIODevice::WriteOnly);
    changed().SaveSettings(context);
    EXPECT_TRUE(world.takeLog().contains(u"RegistryAPI_CreateRegistryKey:  Cannot read the settings file"_s));
}

TEST_F(Preference, logsWhatKeepsItFromSaving)
{
    const QString file = world.folder.filePath(u"settings.ini"_s);
    FileSettingsStore settings(file);
    settings.createKey(app.RegPreference);
    ASSERT_TRUE(QFile::setPermissions(file, QFileDevice::ReadOwner));
    ApplicationContext context(app.AppPath, app.SystemDirectory,
                               Doors{world.clock, world.desktop, settings, world.http}, app.locale);
    EXPECT_TRUE(asOrdinaryUser(world.folder.path(), [&] {
        changed().SaveSettings(context);
        return true;
    }));
    EXPECT_EQ(world.takeLog(), u"clsPreference_SaveSettings: Cannot write the settings file \""_s + file +
                                   u"\": it is read-only"_s);
}
