#include "shell/preference_form.h"

#include "tests/support/printing.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

clsPreference stored()
{
    clsPreference preference;
    preference.Proxy = u"proxy.example"_s;
    preference.Port = u"3128"_s;
    preference.TimeOut = u"45"_s;
    preference.ConfirmConnection = u"1"_s;
    preference.SMTPServer = u"mail.example"_s;
    preference.SMTPPort = u"587"_s;
    preference.HTTPUserName = u"user"_s;
    preference.HTTPPassword = u"secret"_s;
    preference.AccessType = 2;
    preference.MaxListing = u"100"_s;
    preference.SMTPAuthenticate = 1;
    preference.SMTPUsername = u"mailuser"_s;
    preference.SMTPPassword = u"mailsecret"_s;
    preference.ReporterName = u"Ann"_s;
    preference.CompanyName = u"Ann & Co"_s;
    preference.Email = u"ann@co.example"_s;
    preference.WebSite = u"www.co.example"_s;
    preference.LogoURL = u"www.co.example/logo.png"_s;
    preference.LogoPosition = u"Top&Bottom"_s;
    preference.SchedulerEnable = true;
    preference.UpdateEngineData = 1;
    preference.LastUpdate = u"11/15/2026"_s;
    return preference;
}

PreferenceForm goodForm()
{
    World world;
    return preferenceForm(world.app, stored());
}

TEST(PreferenceForm, showsEverything)
{
    const PreferenceForm form = goodForm();
    EXPECT_EQ(form.Access, ProxyAccess);
    EXPECT_EQ(form.Proxy, u"proxy.example"_s);
    EXPECT_EQ(form.Port, u"3128"_s);
    EXPECT_EQ(form.HTTPUsername, u"user"_s);
    EXPECT_EQ(form.HTTPPassword, u"secret"_s);
    EXPECT_EQ(form.MailServer, u"mail.example"_s);
    EXPECT_EQ(form.SMTPPort, u"587"_s);
    EXPECT_TRUE(form.SMTPAuthentication);
    EXPECT_EQ(form.SMTPUserName, u"mailuser"_s);
    EXPECT_EQ(form.SMTPPassword, u"mailsecret"_s);
    EXPECT_EQ(form.ReporterName, u"Ann"_s);
    EXPECT_EQ(form.CompanyName, u"Ann & Co"_s);
    EXPECT_EQ(form.ReporterEmail, u"ann@co.example"_s);
    EXPECT_EQ(form.ReporterWeb, u"www.co.example"_s);
    EXPECT_EQ(form.LogoURL, u"www.co.example/logo.png"_s);
    EXPECT_TRUE(form.SchedulerEnable && form.UpdateEngineData && form.ConfirmConnection);
    EXPECT_EQ(form.TimeOut, u"45"_s);
}

TEST(PreferenceForm, givesBackWhatItShows)
{
    clsPreference preference = stored();
    EXPECT_FALSE(assignPreference(goodForm(), preference));
    EXPECT_EQ(preference, stored());
}

struct AccessCase
{
    qint16 stored;
    int button;
};

class AccessTypes : public testing::TestWithParam<AccessCase>
{
};

TEST_P(AccessTypes, chooseTheirButton)
{
    World world;
    clsPreference preference = stored();
    preference.AccessType = GetParam().stored;
    EXPECT_EQ(preferenceForm(world.app, preference).Access, GetParam().button);
}

INSTANTIATE_TEST_SUITE_P(Numbers, AccessTypes,
                         testing::Values(AccessCase{0, DirectAccess}, AccessCase{1, DirectAccess},
                                         AccessCase{2, ProxyAccess}));

struct LogoCase
{
    QString position;
    bool top;
    bool bottom;
    QString again;
};

class LogoPositions : public testing::TestWithParam<LogoCase>
{
};

TEST_P(LogoPositions, checkTheirBoxesAndComeBack)
{
    World world;
    clsPreference preference = stored();
    preference.LogoPosition = GetParam().position;
    const PreferenceForm form = preferenceForm(world.app, preference);
    EXPECT_EQ(form.LogoOnTop, GetParam().top);
    EXPECT_EQ(form.LogoAtBottom, GetParam().bottom);
    assignPreference(form, preference);
    EXPECT_EQ(preference.LogoPosition, GetParam().again);
}

INSTANTIATE_TEST_SUITE_P(Texts, LogoPositions,
                         testing::Values(LogoCase{u"Top"_s, true, false, u"Top"_s},
                                         LogoCase{u"Bottom"_s, false, true, u"Bottom"_s},
                                         LogoCase{u"Top&Bottom"_s, true, true, u"Top&Bottom"_s},
                                         LogoCase{u"Left"_s, false, false, u"Bottom"_s},
                                         LogoCase{QString(), false, false, u"Bottom"_s}));

TEST(PreferenceForm, logsValuesThatNoControlCanShowAndShowsTheRest)
{
    World world;
    clsPreference preference = stored();
    preference.AccessType = 7;
    preference.UpdateEngineData = 5;
    preference.ConfirmConnection = u"perhaps"_s;
    const PreferenceForm form = preferenceForm(world.app, preference);
    EXPECT_EQ(form.Access, std::nullopt);
    EXPECT_FALSE(form.UpdateEngineData || form.ConfirmConnection);
    EXPECT_TRUE(form.SMTPAuthentication);
    EXPECT_EQ(form.Proxy, u"proxy.example"_s);
    EXPECT_EQ(world.takeLog(), u"frmPrefence_Form_Load error:  No way to the internet has the number 7\r\n"
                               "frmPrefence_Form_Load error:  Invalid property value: 5\r\n"
                               "frmPrefence_Form_Load error:  Type mismatch"_s);
}

TEST(PreferenceForm, enablesProxyAndLoginByTheirChoices)
{
    PreferenceForm form;
    EXPECT_EQ(preferenceEnabled(form), (PreferenceEnabled{false, false}));
    form.Access = DirectAccess;
    EXPECT_EQ(preferenceEnabled(form), (PreferenceEnabled{false, false}));
    form.Access = ProxyAccess;
    EXPECT_EQ(preferenceEnabled(form), (PreferenceEnabled{true, false}));
    form.SMTPAuthentication = true;
    EXPECT_EQ(preferenceEnabled(form), (PreferenceEnabled{true, true}));
}

struct ProxyCase
{
    const char *name;
    QString typed;
    QString proxy;
};

class ProxyTexts : public testing::TestWithParam<ProxyCase>
{
};

TEST_P(ProxyTexts, loseTheLengthOfTheirScheme)
{
    clsPreference preference = stored();
    PreferenceForm form = goodForm();
    form.Proxy = GetParam().typed;
    EXPECT_FALSE(assignPreference(form, preference));
    EXPECT_EQ(preference.Proxy, GetParam().proxy);
}

INSTANTIATE_TEST_SUITE_P(Texts, ProxyTexts,
                         testing::Values(ProxyCase{"bare", u"proxy.example"_s, u"proxy.example"_s},
                                         ProxyCase{"scheme", u"http://proxy.example"_s, u"proxy.example"_s},
                                         ProxyCase{"capitals", u"HTTP://proxy.example"_s, u"proxy.example"_s},
                                         ProxyCase{"schemeWithin", u"a.example/http://b"_s, u"le/http://b"_s},
                                         ProxyCase{"schemeAlone", u"http://"_s, QString()},
                                         ProxyCase{"secure", u"https://proxy"_s, u"https://proxy"_s}),
                         [](const auto &info) { return info.param.name; });

TEST(PreferenceForm, keepsProxyAndPortOfADirectWay)
{
    clsPreference preference = stored();
    PreferenceForm form = goodForm();
    form.Access = DirectAccess;
    form.Proxy.clear();
    form.Port = u"no number"_s;
    EXPECT_FALSE(assignPreference(form, preference));
    EXPECT_EQ(preference.AccessType, 1);
    EXPECT_EQ(preference.Proxy, u"proxy.example"_s);
    EXPECT_EQ(preference.Port, u"3128"_s);
}

TEST(PreferenceForm, goesDirectlyWithNoButtonChosen)
{
    clsPreference preference = stored();
    PreferenceForm form = goodForm();
    form.Access.reset();
    EXPECT_FALSE(assignPreference(form, preference));
    EXPECT_EQ(preference.AccessType, 1);
}

TEST(PreferenceForm, takesTwentyFiveForAnEmptyMailPort)
{
    clsPreference preference = stored();
    PreferenceForm form = goodForm();
    form.SMTPPort.clear();
    EXPECT_FALSE(assignPreference(form, preference));
    EXPECT_EQ(preference.SMTPPort, u"25"_s);
}

TEST(PreferenceForm, needsNoLoginWithoutAuthentication)
{
    clsPreference preference = stored();
    PreferenceForm form = goodForm();
    form.SMTPAuthentication = false;
    form.SMTPUserName.clear();
    form.SMTPPassword.clear();
    EXPECT_FALSE(assignPreference(form, preference));
    EXPECT_EQ(preference.SMTPAuthenticate, 0);
}

TEST(PreferenceForm, storesCheckBoxesAsNumbers)
{
    clsPreference preference = stored();
    PreferenceForm form = goodForm();
    form.UpdateEngineData = form.ConfirmConnection = form.SchedulerEnable = false;
    EXPECT_FALSE(assignPreference(form, preference));
    EXPECT_EQ(preference.UpdateEngineData, 0);
    EXPECT_EQ(preference.ConfirmConnection, u"0"_s);
    EXPECT_FALSE(preference.SchedulerEnable);
}

struct FaultCase
{
    const char *name;
    std::function<void(PreferenceForm &)> spoil;
    QString message;
    PreferenceTab tab;
    PreferenceField focus;
};

class PreferenceFaults : public testing::TestWithParam<FaultCase>
{
};

TEST_P(PreferenceFaults, stopAtTheirTabAndFieldAndChangeNothing)
{
    clsPreference preference = stored();
    PreferenceForm form = goodForm();
    form.HTTPUsername = u"other"_s;
    GetParam().spoil(form);
    const auto fault = assignPreference(form, preference);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->Message, GetParam().message);
    EXPECT_EQ(fault->Tab, GetParam().tab);
    EXPECT_EQ(fault->Focus, GetParam().focus);
    EXPECT_EQ(preference, stored());
}

// Every step is spoiled together with all behind it, so that the order shows.
void spoilTimeOut(PreferenceForm &form)
{
    form.TimeOut = u"soon"_s;
}
void spoilPassword(PreferenceForm &form)
{
    spoilTimeOut(form);
    form.SMTPPassword.clear();
}
void spoilUser(PreferenceForm &form)
{
    spoilPassword(form);
    form.SMTPUserName.clear();
}
void spoilMailPort(PreferenceForm &form)
{
    spoilUser(form);
    form.SMTPPort = u"x"_s;
}
void spoilPort(PreferenceForm &form)
{
    spoilMailPort(form);
    form.Port.clear();
}
void spoilProxy(PreferenceForm &form)
{
    spoilPort(form);
    form.Proxy.clear();
}

INSTANTIATE_TEST_SUITE_P(
    Order, PreferenceFaults,
    testing::Values(FaultCase{"noProxy", spoilProxy, u"Invalid Proxy Server address."_s,
                              PreferenceTab::Server, PreferenceField::Proxy},
                    FaultCase{"noPort", spoilPort, u"Invalid Proxy Port Number."_s, PreferenceTab::Server,
                              PreferenceField::Port},
                    FaultCase{"portBehindAScheme",
                              [](PreferenceForm &f) {
                                  spoilPort(f);
                                  f.Proxy = u"http://proxy.example"_s;
                              },
                              u"Invalid Proxy Port Number."_s, PreferenceTab::Server, PreferenceField::Port},
                    FaultCase{"mailPort", spoilMailPort, u"InVaid SMTP Port number."_s,
                              PreferenceTab::MailServer, PreferenceField::SMTPPort},
                    FaultCase{"noUser", spoilUser, u"Please enter a user name for SMTP server."_s,
                              PreferenceTab::MailServer, PreferenceField::SMTPUserName},
                    FaultCase{"noPassword", spoilPassword, u"Please enter a password for SMTP server."_s,
                              PreferenceTab::MailServer, PreferenceField::SMTPPassword},
                    FaultCase{"timeOut", spoilTimeOut, u"Invaid Time out Valid."_s, PreferenceTab::Option,
                              PreferenceField::TimeOut},
                    FaultCase{"noTimeOut", [](PreferenceForm &f) { f.TimeOut.clear(); },
                              u"Invaid Time out Valid."_s, PreferenceTab::Option, PreferenceField::TimeOut}),
    [](const auto &info) { return info.param.name; });

} // namespace
} // namespace sondrel
