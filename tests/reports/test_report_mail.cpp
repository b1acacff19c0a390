#include "reports/report_mail.h"

#include "tests/support/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using testing::ElementsAre;

namespace sondrel {
namespace {

class AutomaticMail : public testing::Test
{
protected:
    AutomaticMail() : account(world.app)
    {
        account.Name = u"Shop"_s;
        account.ReportTo = u"client@site.example"_s;
        account.Engine.emplace();
        for (const QString &engine : {u"Zeta"_s, u"Alpha"_s})
            account.Engine->Add(engine, engine);
        account.EngineSummaryReport = true;
        account.KeywordURL = true;
        account.KeywordSummaryReport = true;
        account.RankingDetailReport = true;
    }
    void write(const QStringList &names)
    {
        for (const QString &name : names)
            world.write(u"reports/Shop/"_s + name, "x");
    }
    // Names of the attachments.
    QStringList attached()
    {
        const auto mail = newReportMail(world.app, account);
        QStringList names;
        for (const QString &path : *mail->Attachment)
            names.append(path.section(u'\\', -1));
        return names;
    }

    World world;
    clsAccount account;
};

TEST_F(AutomaticMail, isNoneWithoutARecipient)
{
    account.ReportTo.clear();
    EXPECT_FALSE(newReportMail(world.app, account));
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(AutomaticMail, carriesTheWantedReportsInOrder)
{
    write({u"EngineSummary.html"_s, u"keywordurl.html"_s, u"keywordsummary.html"_s, u"rankingdetail.html"_s,
           u"ZetaDetails.html"_s, u"AlphaDetails.html"_s});
    EXPECT_THAT(attached(), ElementsAre(u"menu.html"_s, u"enginesummary.html"_s, u"Keywordurl.html"_s,
                                        u"keywordsummary.html"_s, u"rankingdetail.html"_s,
                                        u"ZetaDetails.html"_s, u"AlphaDetails.html"_s));
}

TEST_F(AutomaticMail, spellsReportsAsTheIndexLinksToThem)
{
    write({u"EngineSummary.html"_s, u"keywordurl.html"_s});
    world.write(u"reports/Shop/menu.html"_s, "<a href=ENGINEsummary.html> <a href=KeywordURL.html>");
    EXPECT_THAT(attached(), ElementsAre(u"menu.html"_s, u"ENGINEsummary.html"_s, u"KeywordURL.html"_s));
}

TEST_F(AutomaticMail, carriesTheIndexEvenWhenThereIsNone)
{
    EXPECT_THAT(attached(), ElementsAre(u"menu.html"_s));
}

TEST_F(AutomaticMail, leavesOutWhatIsNotWanted)
{
    write({u"EngineSummary.html"_s, u"keywordurl.html"_s, u"keywordsummary.html"_s, u"rankingdetail.html"_s,
           u"ZetaDetails.html"_s});
    account.EngineSummaryReport = account.KeywordURL = false;
    account.KeywordSummaryReport = account.RankingDetailReport = false;
    EXPECT_THAT(attached(), ElementsAre(u"menu.html"_s));
}

TEST_F(AutomaticMail, carriesNoDetailsWithoutTheirOverview)
{
    write({u"ZetaDetails.html"_s});
    EXPECT_THAT(attached(), ElementsAre(u"menu.html"_s));
}

TEST_F(AutomaticMail, saysWhatIsTold)
{
    account.CC = u"boss@site.example"_s;
    const auto mail = newReportMail(world.app, account);
    EXPECT_EQ(mail->ToRecipient(), u"client@site.example"_s);
    EXPECT_EQ(mail->EmailToSend, u"client@site.example"_s);
    EXPECT_EQ(mail->CC, u"boss@site.example"_s);
    EXPECT_EQ(mail->Subject, u"Sondrel Report for Shop"_s);
    EXPECT_EQ(mail->MsgFormat, u"text"_s);
    EXPECT_EQ(mail->Priority(), 1);
    EXPECT_EQ(mail->BodyTEXT,
              u"Your Sondrel reports have been attached. Please save all the attachment files "
              "in to a directory, and view your reports by opening the report menu file "
              "menu.html with your web browser."_s);
}

TEST_F(AutomaticMail, keepsABlankSubject)
{
    account.Subject = u" "_s;
    EXPECT_EQ(newReportMail(world.app, account)->Subject, u" "_s);
}

TEST_F(AutomaticMail, comesFromTheReporter)
{
    EXPECT_EQ(newReportMail(world.app, account)->From, u"client@site.example"_s);
    world.setPreference(u"Email"_s, u"ann@sender.example"_s);
    EXPECT_EQ(newReportMail(world.app, account)->From, u"ann@sender.example"_s);
    world.setPreference(u"ReporterName"_s, u"Ann"_s);
    EXPECT_EQ(newReportMail(world.app, account)->From, u"\"Ann\" <ann@sender.example>"_s);
}

TEST_F(AutomaticMail, goesThroughAProxyToTheMailPort)
{
    world.setPreference(u"Proxy"_s, u"wall.example"_s);
    world.setPreference(u"Port"_s, u"3128"_s);
    world.setPreference(u"AccessType"_s, u"2"_s);
    world.setPreference(u"Auth_Username"_s, u"ann"_s);
    world.setPreference(u"Auth_Password"_s, u"secret"_s);
    world.setPreference(u"SMTPPort"_s, u"2525"_s);
    const auto mail = newReportMail(world.app, account);
    EXPECT_EQ(mail->Proxy, u"wall.example"_s);
    EXPECT_EQ(mail->ProxyPort, QString());
    EXPECT_EQ(mail->Port, u"2525"_s);
    EXPECT_EQ(mail->Username, u"ann"_s);
    EXPECT_EQ(mail->Password, u"secret"_s);
}

TEST_F(AutomaticMail, goesDirectlyWhenTheAccessIsDirect)
{
    world.setPreference(u"Proxy"_s, u"wall.example"_s);
    EXPECT_EQ(newReportMail(world.app, account)->Proxy, QString());
}

TEST_F(AutomaticMail, logsInWhenTheSettingsSaySo)
{
    world.setPreference(u"SMTPUsername"_s, u"ann"_s);
    EXPECT_FALSE(newReportMail(world.app, account)->Authentication);
    EXPECT_EQ(newReportMail(world.app, account)->SMTPUsername, QString());
    world.setPreference(u"Authentication"_s, u"1"_s);
    EXPECT_TRUE(newReportMail(world.app, account)->Authentication);
    EXPECT_EQ(newReportMail(world.app, account)->SMTPUsername, u"ann"_s);
}

TEST_F(AutomaticMail, logsWhatFails)
{
    account.Name = u"a/b"_s; // no folder can be called that
    EXPECT_FALSE(newReportMail(world.app, account));
    EXPECT_TRUE(world.takeLog().startsWith(u"SentReport_Error: "_s));
}

} // namespace
} // namespace sondrel
