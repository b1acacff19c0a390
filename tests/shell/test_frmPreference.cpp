#include "shell/frmPreference.h"

#include "core/registry.h"
#include "tests/shell/dialog_test.h"

#include <QLabel>
#include <QTabWidget>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

class PreferenceDialog : public testing::Test
{
protected:
    PreferenceDialog() : dialog(world.app) {}

    // Settings of someone behind a proxy, with a login at the mail server.
    void open()
    {
        const std::pair<QString, QString> values[] = {
            {u"AccessType"_s, u"2"_s},
            {u"Proxy"_s, u"proxy.example"_s},
            {u"Port"_s, u"3128"_s},
            {u"TimeOut"_s, u"45"_s},
            {u"ConfirmConnection"_s, u"0"_s},
            {u"SMTPServer"_s, u"mail.example"_s},
            {u"SMTPPort"_s, u"587"_s},
            {u"Auth_Username"_s, u"user"_s},
            {u"Auth_Password"_s, u"secret"_s},
            {u"Authentication"_s, u"1"_s},
            {u"SMTPUsername"_s, u"mailuser"_s},
            {u"SMTPPassword"_s, u"mailsecret"_s},
            {u"ReporterName"_s, u"Ann"_s},
            {u"CompanyName"_s, u"Ann & Co"_s},
            {u"Email"_s, u"ann@co.example"_s},
            {u"WebSite"_s, u"www.co.example"_s},
            {u"LogoURL"_s, u"www.co.example/logo.png"_s},
            {u"LogoPosition"_s, u"Bottom"_s},
            {u"SchedlerEnable"_s, u"False"_s},
            {u"UpdateEngineData"_s, u"1"_s},
        };
        for (const auto &[name, value] : values)
            world.setPreference(name, value);
        dialog.show();
    }
    QTabWidget &tabs() { return control<QTabWidget>(dialog, u"SSTab1"_s); }
    QLineEdit &text(const QString &name) { return control<QLineEdit>(dialog, name); }
    bool checked(const QString &name) { return control<QAbstractButton>(dialog, name).isChecked(); }
    QString stored(const QString &name)
    {
        return GetRegistryText(world.app, world.app.RegPreference, name, u"(none)"_s);
    }

    World world;
    frmPreference dialog;
};

TEST_F(PreferenceDialog, isTitledAndHasFourTabs)
{
    tabs().setCurrentIndex(2);
    dialog.show();
    QStringList captions;
    for (int tab = 0; tab < tabs().count(); ++tab)
        captions.append(tabs().tabText(tab));
    EXPECT_EQ(captions.join(u'/'), u"Server/Mail Server/Profile/Option"_s);
    EXPECT_EQ(dialog.windowTitle(), u"Configuration"_s);
    EXPECT_EQ(tabs().currentIndex(), 0);
}

struct CaptionCase
{
    const char *name;
    QStringView caption;
};

TEST_F(PreferenceDialog, labelsItsFields)
{
    const CaptionCase cases[] = {
        {"txtMailServer", u"Outgoing Mail (SMTP) Server"},
        {"txtSMTPPort", u"Port:"},
        {"txtSMTPUserName", u"Account Name"},
        {"txtSMTPPassword", u"Password"},
        {"txtReporterName", u"Name:"},
        {"txtCompanyName", u"Company name:"},
        {"txtReporterEmail", u"Email:"},
        {"txtReporterWeb", u"Web site:"},
        {"txtLogoURL", u"Logo URL:"},
        {"txtTimeOut", u"Waiting time for a server to respond: "},
        {"txtProxy", u"Address:"},
        {"txtPort", u"Port:"},
        {"txtHTTPUsername", u"User name:"},
        {"txtHTTPPassword", u"Password:"},
    };
    for (const CaptionCase &field : cases) {
        const auto &widget = control<QWidget>(dialog, QString::fromLatin1(field.name));
        QString caption;
        for (const QLabel *label : dialog.findChildren<QLabel *>()) {
            if (label->buddy() == &widget)
                caption = label->text();
        }
        EXPECT_EQ(caption, field.caption.toString()) << field.name;
    }
}

TEST_F(PreferenceDialog, captionsItsButtons)
{
    const CaptionCase cases[] = {
        {"optProxy1", u"Direct to internet"},
        {"optProxy2", u"Proxy Server"},
        {"chkSMTPAuthentication", u"My send mail server requires authentication"},
        {"chkLogoPosition0", u"Top"},
        {"chkLogoPosition1", u"Bottom"},
        {"chkSchedulerEnable", u"Enable scheduler"},
        {"chkUpdateEngineData", u"Check for new Engine Data update every time you re-start the program"},
        {"chkConfirmConnection", u"Confirm connection before searching"},
    };
    for (const CaptionCase &button : cases)
        EXPECT_EQ(control<QAbstractButton>(dialog, QString::fromLatin1(button.name)).text(),
                  button.caption.toString());
}

TEST_F(PreferenceDialog, hidesTheDefaultWay)
{
    open();
    const auto &hidden = control<QAbstractButton>(dialog, u"optProxy0"_s);
    EXPECT_EQ(hidden.text(), u"Default"_s);
    EXPECT_FALSE(hidden.isVisible());
}

TEST_F(PreferenceDialog, showsTheSettings)
{
    open();
    const std::pair<QString, QString> fields[] = {
        {u"txtProxy"_s, u"proxy.example"_s},
        {u"txtPort"_s, u"3128"_s},
        {u"txtHTTPUsername"_s, u"user"_s},
        {u"txtHTTPPassword"_s, u"secret"_s},
        {u"txtMailServer"_s, u"mail.example"_s},
        {u"txtSMTPPort"_s, u"587"_s},
        {u"txtSMTPUserName"_s, u"mailuser"_s},
        {u"txtSMTPPassword"_s, u"mailsecret"_s},
        {u"txtReporterName"_s, u"Ann"_s},
        {u"txtCompanyName"_s, u"Ann & Co"_s},
        {u"txtReporterEmail"_s, u"ann@co.example"_s},
        {u"txtReporterWeb"_s, u"www.co.example"_s},
        {u"txtLogoURL"_s, u"www.co.example/logo.png"_s},
        {u"txtTimeOut"_s, u"45"_s},
    };
    for (const auto &[name, wanted] : fields)
        EXPECT_EQ(text(name).text(), wanted) << name.toStdString();
    EXPECT_TRUE(checked(u"optProxy2"_s) && checked(u"chkSMTPAuthentication"_s) &&
                checked(u"chkLogoPosition1"_s) && checked(u"chkUpdateEngineData"_s));
    EXPECT_FALSE(checked(u"chkLogoPosition0"_s) || checked(u"chkSchedulerEnable"_s) ||
                 checked(u"chkConfirmConnection"_s));
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(PreferenceDialog, opensWithTheDefaultsOfAFirstStart)
{
    dialog.show();
    EXPECT_TRUE(checked(u"optProxy1"_s) && checked(u"chkLogoPosition0"_s) &&
                checked(u"chkSchedulerEnable"_s) && checked(u"chkConfirmConnection"_s));
    EXPECT_EQ(text(u"txtPort"_s).text(), u"8080"_s);
    EXPECT_EQ(text(u"txtSMTPPort"_s).text(), u"25"_s);
    EXPECT_EQ(text(u"txtTimeOut"_s).text(), u"30"_s);
    EXPECT_FALSE(isEnabled(dialog, u"txtProxy"_s) || isEnabled(dialog, u"txtPort"_s) ||
                 isEnabled(dialog, u"txtSMTPUserName"_s) || isEnabled(dialog, u"txtSMTPPassword"_s));
}

TEST_F(PreferenceDialog, showsPasswordsAsDots)
{
    for (const auto &name : {u"txtHTTPPassword"_s, u"txtSMTPPassword"_s})
        EXPECT_EQ(text(name).echoMode(), QLineEdit::Password);
}

TEST_F(PreferenceDialog, enablesTheProxyByItsButton)
{
    open();
    for (const bool proxy : {false, true}) {
        click(dialog, proxy ? u"optProxy2"_s : u"optProxy1"_s);
        EXPECT_EQ(isEnabled(dialog, u"txtProxy"_s), proxy);
        EXPECT_EQ(isEnabled(dialog, u"txtPort"_s), proxy);
        EXPECT_TRUE(isEnabled(dialog, u"txtHTTPUsername"_s) && isEnabled(dialog, u"txtHTTPPassword"_s));
    }
}

TEST_F(PreferenceDialog, enablesTheMailLoginByItsCheckBox)
{
    open();
    tabs().setCurrentIndex(1);
    for (const bool login : {false, true}) {
        click(dialog, u"chkSMTPAuthentication"_s);
        EXPECT_EQ(isEnabled(dialog, u"txtSMTPUserName"_s), login);
        EXPECT_EQ(isEnabled(dialog, u"txtSMTPPassword"_s), login);
    }
}

TEST_F(PreferenceDialog, storesWhatIsTypedAndClicked)
{
    open();
    type(dialog, u"txtProxy"_s, u"http://new.example"_s);
    type(dialog, u"txtPort"_s, u"8081"_s);
    tabs().setCurrentIndex(1);
    type(dialog, u"txtSMTPPort"_s, {});
    tabs().setCurrentIndex(2);
    click(dialog, u"chkLogoPosition0"_s);
    tabs().setCurrentIndex(3);
    click(dialog, u"chkSchedulerEnable"_s);
    click(dialog, u"chkConfirmConnection"_s);
    click(dialog, u"chkUpdateEngineData"_s);
    type(dialog, u"txtTimeOut"_s, u"60"_s);
    click(dialog, u"cmdOK"_s);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(stored(u"Proxy"_s), u"new.example"_s);
    EXPECT_EQ(stored(u"Port"_s), u"8081"_s);
    EXPECT_EQ(stored(u"SMTPPort"_s), u"25"_s);
    EXPECT_EQ(stored(u"LogoPosition"_s), u"Top&Bottom"_s);
    EXPECT_EQ(stored(u"SchedlerEnable"_s), u"True"_s);
    EXPECT_EQ(stored(u"ConfirmConnection"_s), u"1"_s);
    EXPECT_EQ(stored(u"UpdateEngineData"_s), u"0"_s);
    EXPECT_EQ(stored(u"TimeOut"_s), u"60"_s);
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(PreferenceDialog, takesWhatIsPasted)
{
    open();
    const std::pair<QString, QString> fields[] = {
        {u"txtProxy"_s, u" http://new.example\r\n"_s},
        {u"txtPort"_s, u"8081 "_s},
        {u"txtHTTPUsername"_s, u" me\n"_s},
        {u"txtHTTPPassword"_s, u" my secret \n"_s},
        {u"txtMailServer"_s, u"\tmx.example\n"_s},
        {u"txtSMTPPort"_s, u"465\r\n"_s},
        {u"txtSMTPUserName"_s, u"ann\u00a0"_s},
        {u"txtSMTPPassword"_s, u" \tmail\r\n"_s},
        {u"txtReporterName"_s, u" Bob "_s},
        {u"txtReporterEmail"_s, u"bob@co.example\n"_s},
        {u"txtReporterWeb"_s, u"\nbob.example"_s},
        {u"txtTimeOut"_s, u" 60\n"_s},
    };
    for (const auto &[name, pasted] : fields)
        paste(dialog, name, pasted);
    click(dialog, u"cmdOK"_s);
    EXPECT_TRUE(world.desktop.boxes.empty());
    const std::pair<QString, QString> wanted[] = {
        {u"Proxy"_s, u"new.example"_s},     {u"Port"_s, u"8081"_s},
        {u"Auth_Username"_s, u"me"_s},      {u"Auth_Password"_s, u" my secret "_s},
        {u"SMTPServer"_s, u"mx.example"_s}, {u"SMTPPort"_s, u"465"_s},
        {u"SMTPUsername"_s, u"ann"_s},      {u"SMTPPassword"_s, u" \tmail"_s},
        {u"ReporterName"_s, u"Bob"_s},      {u"Email"_s, u"bob@co.example"_s},
        {u"WebSite"_s, u"bob.example"_s},   {u"TimeOut"_s, u"60"_s},
    };
    for (const auto &[name, value] : wanted)
        EXPECT_EQ(stored(name), value) << name.toStdString();
}

TEST_F(PreferenceDialog, goesDirectlyAndKeepsTheProxy)
{
    open();
    type(dialog, u"txtProxy"_s, u"other.example"_s);
    click(dialog, u"optProxy1"_s);
    click(dialog, u"cmdOK"_s);
    EXPECT_EQ(stored(u"AccessType"_s), u"1"_s);
    EXPECT_EQ(stored(u"Proxy"_s), u"proxy.example"_s);
}

TEST_F(PreferenceDialog, storesNothingWhenCancelled)
{
    open();
    click(dialog, u"optProxy1"_s);
    type(dialog, u"txtHTTPUsername"_s, u"other"_s);
    click(dialog, u"cmdCancel"_s);
    EXPECT_TRUE(dialog.Cancelled());
    EXPECT_EQ(stored(u"AccessType"_s), u"2"_s);
    EXPECT_EQ(stored(u"Auth_Username"_s), u"user"_s);
}

struct FaultCase
{
    const char *name;
    QString field; // that is spoiled by this text, and gets the focus
    QString text;
    QString message;
    int tab;
};

class PreferenceDialogFaults : public PreferenceDialog, public testing::WithParamInterface<FaultCase>
{
};

TEST_P(PreferenceDialogFaults, areToldWithTheirTabAndFieldInFront)
{
    open();
    text(GetParam().field).setText(GetParam().text);
    text(u"txtReporterName"_s).setText(u"Bob"_s);
    tabs().setCurrentIndex(GetParam().tab == 0 ? 2 : 0);
    click(dialog, u"cmdOK"_s);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0], (MessageBox{u"Preference"_s, GetParam().message}));
    EXPECT_EQ(tabs().currentIndex(), GetParam().tab);
    EXPECT_EQ(dialog.focusWidget()->objectName(), GetParam().field);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(stored(u"ReporterName"_s), u"Ann"_s);
}

INSTANTIATE_TEST_SUITE_P(
    All, PreferenceDialogFaults,
    testing::Values(
        FaultCase{"noProxy", u"txtProxy"_s, {}, u"Invalid Proxy Server address."_s, 0},
        FaultCase{"noPort", u"txtPort"_s, {}, u"Invalid Proxy Port Number."_s, 0},
        FaultCase{"mailPort", u"txtSMTPPort"_s, u"25a"_s, u"InVaid SMTP Port number."_s, 1},
        FaultCase{"noUser", u"txtSMTPUserName"_s, {}, u"Please enter a user name for SMTP server."_s, 1},
        FaultCase{"noPassword", u"txtSMTPPassword"_s, {}, u"Please enter a password for SMTP server."_s, 1},
        FaultCase{"timeOut", u"txtTimeOut"_s, u"soon"_s, u"Invaid Time out Valid."_s, 3}),
    [](const auto &info) { return info.param.name; });

TEST_F(PreferenceDialog, logsASettingThatItCannotShow)
{
    world.setPreference(u"AccessType"_s, u"7"_s);
    dialog.show();
    EXPECT_EQ(world.takeLog(), u"frmPrefence_Form_Load error:  No way to the internet has the number 7"_s);
    EXPECT_EQ(text(u"txtTimeOut"_s).text(), u"30"_s);
}

TEST_F(PreferenceDialog, logsAMessageThatCannotBeShown)
{
    open();
    type(dialog, u"txtPort"_s, {});
    world.desktop.failing = true;
    click(dialog, u"cmdOK"_s);
    EXPECT_EQ(world.takeLog(), u"frmPrefence_cmdOK_Click error:  The message cannot be shown"_s);
    EXPECT_TRUE(dialog.isVisible());
}

} // namespace
} // namespace sondrel
