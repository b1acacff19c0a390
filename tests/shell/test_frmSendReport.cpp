#include "shell/frmSendReport.h"

#include "tests/shell/dialog_test.h"

#include <QAccessible>
#include <QCheckBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

#include <gmock/gmock.h>

using namespace Qt::Literals::StringLiterals;
using testing::ElementsAre;

namespace sondrel {
namespace {

class SendReportDialog : public testing::Test
{
protected:
    SendReportDialog() : account(std::make_shared<clsAccount>(world.app)), dialog(world.app)
    {
        account->Name = u"Shop"_s;
        account->ReportTo = u"client@site.example"_s;
        account->Subject = u"Ranks"_s;
        account->CC = u"boss@site.example"_s;
        account->Engine.emplace();
        for (const QString &engine : {u"Zeta"_s, u"Alpha"_s})
            account->Engine->Add(engine, engine);
        dialog.setAccount(account);
        world.setPreference(u"Email"_s, u"ann@sender.example"_s);
        world.setPreference(u"SMTPServer"_s, u"mail.example"_s);
    }
    void writeReports()
    {
        for (const char *name : {"EngineSummary.html", "keywordsummary.html", "keywordurl.html",
                                 "rankingdetail.html", "ZetaDetails.html", "AlphaDetails.html"})
            world.write(u"reports/Shop/"_s + QString::fromLatin1(name), name);
        world.write(u"reports/Shop/menu.html"_s, "<a href=enginesummary.html>");
    }
    // Until the mail is over and its boxes have come up.
    void run()
    {
        for (int i = 0; i < 20; ++i)
            QCoreApplication::processEvents();
        world.clock.advance(1000);
    }
    QString text(const QString &name) { return control<QLineEdit>(dialog, name).text(); }
    bool checked(const QString &name) { return control<QCheckBox>(dialog, name).isChecked(); }
    QString status() { return control<QLabel>(dialog, u"lblMessage"_s).text(); }
    const RecordingSmtp::Conversation &mail() { return world.smtp.conversations.at(0); }
    QList<QByteArray> attached()
    {
        QList<QByteArray> names;
        for (const QByteArray &part : mail().message.split('\n')) {
            if (part.startsWith(" filename="))
                names.append(part.sliced(11).chopped(2));
        }
        return names;
    }

    World world;
    std::shared_ptr<clsAccount> account;
    frmSendReport dialog;
};

TEST_F(SendReportDialog, comesUpWithTheProjectsValues)
{
    account->EngineSummaryReport = true;
    account->RankingDetailReport = true;
    account->ExcludeUnRanking = true;
    dialog.show();
    EXPECT_EQ(dialog.windowTitle(), u"Send Report"_s);
    EXPECT_EQ(text(u"txtFrom"_s), u"ann@sender.example"_s);
    EXPECT_EQ(text(u"txtEmail"_s), u"client@site.example"_s);
    EXPECT_EQ(text(u"txtSubject"_s), u"Ranks"_s);
    EXPECT_EQ(text(u"txtCC"_s), u"boss@site.example"_s);
    EXPECT_EQ(control<QPlainTextEdit>(dialog, u"txtMessage"_s).toPlainText(),
              u"Your Sondrel reports have been attached. Please save all the attachment files  in to a "
              "directory, and view your reports by opening the report menu file menu.html with your web "
              "browser."_s);
    EXPECT_TRUE(checked(u"chkEngineSummary"_s));
    EXPECT_FALSE(checked(u"chkKeywordSummary"_s));
    EXPECT_FALSE(checked(u"chkKeywordURLSummary"_s));
    EXPECT_TRUE(checked(u"chkRankingDetails"_s));
    EXPECT_TRUE(checked(u"chkRemoveUnRanking"_s));
    EXPECT_TRUE(control<QPushButton>(dialog, u"cmdSend"_s).isDefault());
}

TEST_F(SendReportDialog, namesTheReporter)
{
    world.setPreference(u"ReporterName"_s, u"Ann"_s);
    dialog.show();
    EXPECT_EQ(text(u"txtFrom"_s), u"Ann<ann@sender.example>"_s);
}

TEST_F(SendReportDialog, showsTheBeginningOfLongTexts)
{
    account->Subject = u"Ranks "_s.repeated(100);
    dialog.show();
    EXPECT_EQ(control<QLineEdit>(dialog, u"txtSubject"_s).cursorPosition(), 0);
}

TEST_F(SendReportDialog, isReadWithoutScrollingSideways)
{
    dialog.show();
    dialog.resize(dialog.width(), dialog.height() / 2);
    QCoreApplication::processEvents();
    const auto &page = *dialog.findChild<QScrollArea *>();
    EXPECT_TRUE(page.verticalScrollBar()->isVisible());
    EXPECT_FALSE(page.horizontalScrollBar()->isVisible());
}

TEST_F(SendReportDialog, isWalkedThroughByTheKeyboard)
{
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    QStringList walked;
    while (QWidget *field = dialog.focusWidget()) {
        if (walked.contains(field->objectName()))
            break;
        walked.append(field->objectName());
        EXPECT_FALSE(QAccessible::queryAccessibleInterface(field)->text(QAccessible::Name).isEmpty())
            << field->objectName().toStdString();
        QTest::keyClick(field, Qt::Key_Tab);
    }
    EXPECT_THAT(walked, ElementsAre(u"txtFrom"_s, u"txtEmail"_s, u"txtCC"_s, u"txtSubject"_s, u"txtMessage"_s,
                                    u"chkEngineSummary"_s, u"chkKeywordSummary"_s, u"chkKeywordURLSummary"_s,
                                    u"chkRankingDetails"_s, u"chkRemoveUnRanking"_s, u"optReportFormat0"_s,
                                    u"cmdSend"_s, u"cmdCancel"_s));
}

TEST_F(SendReportDialog, sendsTheCheckedReports)
{
    writeReports();
    dialog.show();
    for (const QString &box :
         {u"chkEngineSummary"_s, u"chkKeywordSummary"_s, u"chkKeywordURLSummary"_s, u"chkRankingDetails"_s})
        click(dialog, box);
    click(dialog, u"cmdSend"_s);
    run();
    EXPECT_THAT(attached(),
                ElementsAre("menu.html", "enginesummary.html", "keywordsummary.html", "keywordurl.html",
                            "rankingdetail.html", "ZetaDetails.html", "AlphaDetails.html"));
    EXPECT_THAT(mail().recipients, ElementsAre("client@site.example", "boss@site.example"));
    EXPECT_TRUE(mail().message.contains("\r\nSubject: Ranks\r\n"));
    EXPECT_TRUE(mail().message.contains("\r\nX-Priority: 1\r\n"));
    EXPECT_THAT(world.desktop.boxes,
                ElementsAre(MessageBox{u"Send Report"_s, u"Report has been sent successfully."_s}));
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(SendReportDialog, givesADefaultSubjectForBlanks)
{
    dialog.show();
    type(dialog, u"txtSubject"_s, u"   "_s);
    click(dialog, u"cmdSend"_s);
    run();
    EXPECT_TRUE(mail().message.contains("\r\nSubject: Sondrel Report for Shop\r\n"));
}

TEST_F(SendReportDialog, takesWhatIsPasted)
{
    dialog.show();
    paste(dialog, u"txtEmail"_s, u" ann@site.example\r\nbob@site.example\r\n"_s);
    paste(dialog, u"txtCC"_s, u"\n"_s);
    paste(dialog, u"txtSubject"_s, u"Weekly\r\nreport"_s);
    click(dialog, u"cmdSend"_s);
    run();
    EXPECT_THAT(mail().recipients, ElementsAre("ann@site.example", "bob@site.example"));
    EXPECT_TRUE(mail().message.contains("\r\nSubject: Weekly report\r\n"));
}

TEST_F(SendReportDialog, refusesAnAddressThatIsNone)
{
    dialog.show();
    dialog.activateWindow();
    type(dialog, u"txtEmail"_s, u"client"_s);
    click(dialog, u"cmdSend"_s);
    EXPECT_THAT(world.desktop.boxes,
                ElementsAre(MessageBox{u"Account"_s, u"Please enter a valid email address."_s}));
    EXPECT_EQ(dialog.focusWidget(), &control<QLineEdit>(dialog, u"txtEmail"_s));
    EXPECT_TRUE(world.smtp.conversations.empty());
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(SendReportDialog, waitsWhileItSends)
{
    world.smtp.silentTask = SmtpSession::SendTask;
    dialog.show();
    click(dialog, u"cmdSend"_s);
    run();
    EXPECT_EQ(status(), u"Please wait while sending ranking report ..."_s);
    EXPECT_FALSE(isEnabled(dialog, u"cmdSend"_s));
    EXPECT_FALSE(isEnabled(dialog, u"cmdCancel"_s));
    EXPECT_EQ(world.desktop.waiting, 1);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(SendReportDialog, stopsTheMailWhenItsWindowIsClosed)
{
    world.smtp.silentTask = SmtpSession::SendTask;
    dialog.show();
    click(dialog, u"cmdSend"_s);
    run();
    dialog.close();
    run();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(world.smtp.sessionsAlive, 0);
    EXPECT_EQ(world.desktop.waiting, 0);
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(SendReportDialog, staysForAnotherTryAfterARefusal)
{
    world.smtp.sending = {550, u"550 no such user"_s};
    world.desktop.answer = MessageAnswer::No;
    dialog.show();
    click(dialog, u"cmdSend"_s);
    run();
    EXPECT_THAT(world.desktop.boxes,
                ElementsAre(MessageBox{u"Send Report"_s,
                                       u"Error: Error on SendMail <client@site.example>: 550 no such user "
                                       "server: mail.example\r\nReport can not been sent. Do you want to "
                                       "close 'Send Report' screen?"_s,
                                       MessageIcon::Question, MessageButtons::YesNo}));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(status(), QString());
    EXPECT_TRUE(isEnabled(dialog, u"cmdSend"_s));
    EXPECT_TRUE(isEnabled(dialog, u"cmdCancel"_s));

    world.smtp.sending = {};
    click(dialog, u"cmdSend"_s);
    run();
    EXPECT_EQ(world.desktop.boxes.back().text, u"Report has been sent successfully."_s);
}

TEST_F(SendReportDialog, closesAfterAFailureWhenToldTo)
{
    world.smtp.connecting = {7, u"Connection refused"_s};
    dialog.show();
    click(dialog, u"cmdSend"_s);
    run();
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_TRUE(world.desktop.boxes[0].text.startsWith(
        u"Error: Error on Connect: Connection refused server: mail.example\r\n"_s));
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(SendReportDialog, showsItsBoxesOutsideTheMailsEvent)
{
    dialog.show();
    click(dialog, u"cmdSend"_s);
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
    EXPECT_TRUE(world.desktop.boxes.empty());
    EXPECT_FALSE(isEnabled(dialog, u"cmdSend"_s));
}

TEST_F(SendReportDialog, keepsTheLastLineOfAnAccentedMessage)
{
    dialog.show();
    control<QPlainTextEdit>(dialog, u"txtMessage"_s).setPlainText(u"Voil\u00E0\nles r\u00E9sultats"_s);
    click(dialog, u"cmdSend"_s);
    run();
    EXPECT_TRUE(mail().message.contains("Voil=E0\r\nles r=E9sultats\r\n"));
}

TEST_F(SendReportDialog, usesTheServerAndLoginOfTheSettings)
{
    world.setPreference(u"SMTPPort"_s, u"587"_s);
    world.setPreference(u"Authentication"_s, u"1"_s);
    world.setPreference(u"SMTPUsername"_s, u"ann"_s);
    world.setPreference(u"SMTPPassword"_s, u"secret"_s);
    dialog.show();
    click(dialog, u"cmdSend"_s);
    run();
    EXPECT_EQ(mail().server, u"mail.example"_s);
    EXPECT_EQ(mail().port, 587);
    EXPECT_EQ(mail().user, u"ann"_s);
    EXPECT_EQ(mail().password, u"secret"_s);
}

TEST_F(SendReportDialog, isCancelled)
{
    dialog.show();
    click(dialog, u"cmdCancel"_s);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_TRUE(world.smtp.conversations.empty());
}

TEST_F(SendReportDialog, logsAFailureOfItsCheck)
{
    dialog.show();
    type(dialog, u"txtEmail"_s, u"client"_s);
    world.desktop.failing = true;
    click(dialog, u"cmdSend"_s);
    EXPECT_TRUE(world.takeLog().startsWith(u"frmSendReport_ValidForm error: "_s));
}

TEST_F(SendReportDialog, logsAFailureToCompose)
{
    account->Name = u"a/b"_s; // no folder can be called that
    dialog.show();
    click(dialog, u"cmdSend"_s);
    EXPECT_TRUE(world.takeLog().startsWith(u"frmSendReport_SentReport Error: "_s));
    EXPECT_TRUE(isEnabled(dialog, u"cmdSend"_s));
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(SendReportDialog, logsAFailureToTellTheEnd)
{
    dialog.show();
    click(dialog, u"cmdSend"_s);
    world.desktop.failing = true;
    run();
    EXPECT_TRUE(world.takeLog().startsWith(u"DisplayMessage error: "_s));
}

} // namespace
} // namespace sondrel
