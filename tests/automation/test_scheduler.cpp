#include "tests/automation/scheduler_world.h"

#include "core/values.h"
#include "tests/support/ordinary_user.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr qint64 Minute = 60000;

using Unattended = SchedulerTest;

TEST_F(Unattended, looksEveryEngineOfADueProjectUp)
{
    addProject(u"Shop"_s, {u"Finder"_s, u"Poster"_s});
    scheduler.setEnabled(true);
    pass(Minute);
    EXPECT_TRUE(scheduler.AutoRunning());
    ASSERT_TRUE(scheduler.autoSession());
    EXPECT_EQ(scheduler.autoSession()->EngineName, u"Finder"_s);
    pass(1500);
    EXPECT_TRUE(world.has(u"Projects/Shop/Finder.dat"_s));
    EXPECT_FALSE(world.has(u"Projects/Shop/Poster.dat"_s));
    pass(5000);
    EXPECT_TRUE(world.has(u"Projects/Shop/Poster.dat"_s));
    EXPECT_FALSE(scheduler.AutoRunning());
    EXPECT_FALSE(scheduler.autoSession());
    EXPECT_FALSE(scheduler.AutoAccount());
    EXPECT_THAT(finished, ElementsAre(u"Shop"_s));
    EXPECT_TRUE(world.app.LookupRequested);
}

TEST_F(Unattended, writesTheReportSet)
{
    addProject(u"Shop"_s, {u"Finder"_s});
    scheduler.scan();
    pass(5000);
    for (const QString &file : {u"Finder.html"_s, u"Finderku.html"_s, u"EngineSummary.html"_s,
                                u"EngineSummary.dat"_s, u"keywordurl.html"_s, u"keywordsummary.html"_s,
                                u"rankingdetail.html"_s, u"FinderDetails.html"_s, u"menu.html"_s})
        EXPECT_TRUE(world.has(u"reports/Shop/"_s + file)) << file.toStdString();
    EXPECT_TRUE(world.read(u"reports/Shop/FinderDetails.html"_s).contains("site.example"));
}

TEST_F(Unattended, leavesItsTraceInTheLog)
{
    addProject(u"Shop"_s, {u"Finder"_s});
    scheduler.scan();
    pass(3000);
    scheduler.scan();
    const QStringList log = world.takeLog().split(u"\r\n"_s);
    EXPECT_THAT(
        log, ElementsAre(u"Account 'Shop': SchedulerEnable=True, NextLookup=11/15/2026, Time=09:00:00 AM"_s,
                         u"Scheduler start auto ranking at 11/15/2026 10:00:00 AM"_s,
                         u"Start auto look up ...sEngine=Finder"_s, u"Scheduler timer start ..."_s,
                         u"Start ranking at 11/15/2026 10:00:01 AM"_s,
                         testing::AllOf(testing::Property(&QString::toStdString,
                                                          testing::StartsWith("Lookup Connect start"))),
                         testing::Property(&QString::toStdString,
                                           testing::StartsWith("Scheduler start auto ranking at "))));
}

TEST_F(Unattended, movesTheDateBeforeTheRun)
{
    addProject(u"Shop"_s, {u"Finder"_s});
    scheduler.scan();
    EXPECT_EQ(nextLookup(u"Shop"_s), QDate(2026, 11, 22));
}

TEST_F(Unattended, movesTheDateAgainBehindTheRun)
{
    addProject(u"Shop"_s, {u"Finder"_s});
    scheduler.scan();
    world.clock.set(QDateTime(QDate(2026, 11, 16), QTime(0, 0)));
    pass(5000);
    EXPECT_THAT(finished, ElementsAre(u"Shop"_s));
    EXPECT_EQ(nextLookup(u"Shop"_s), QDate(2026, 11, 23));
}

TEST_F(Unattended, doesNotRunTheSameProjectTwice)
{
    addProject(u"Shop"_s, {u"Finder"_s});
    scheduler.setEnabled(true);
    pass(4 * Minute);
    EXPECT_EQ(finished.size(), 1);
}

TEST_F(Unattended, runsOnceADayWhileItsDateCannotBeMoved)
{
    addProject(u"Shop"_s, {u"Finder"_s});
    const QString folder = world.path(u"Projects/Shop"_s);
    EXPECT_TRUE(asOrdinaryUser(world.folder.path(), [&] {
        QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        scheduler.setEnabled(true);
        pass(4 * Minute);
        const qsizetype firstDay = finished.size();
        world.clock.set(world.clock.now().addDays(1));
        pass(4 * Minute);
        QFile::setPermissions(folder,
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        return firstDay == 1 && finished.size() == 2;
    }));
    EXPECT_TRUE(world.takeLog().contains(u"clsAccount_SetNextLookupDate: Cannot write"_s));
}

// Such a date has been moved, if only to one that is past.
TEST_F(Unattended, runsAProjectOfAnUnknownFrequencyAtEveryScan)
{
    addProject(u"Shop"_s, {}, [](clsAccount &account) { account.Frequency = 7; });
    for (int i = 0; i < 3; ++i)
        scheduler.scan();
    EXPECT_EQ(nextLookup(u"Shop"_s), clsAccount::ZeroDate);
    EXPECT_EQ(finished.size(), 3);
}

TEST_F(Unattended, waitsForTheStartTime)
{
    addProject(u"Shop"_s, {u"Finder"_s}, [](clsAccount &account) { account.StartTime = u"10:02:30 AM"_s; });
    scheduler.setEnabled(true);
    pass(2 * Minute);
    EXPECT_FALSE(scheduler.AutoRunning());
    pass(Minute);
    EXPECT_TRUE(scheduler.AutoRunning());
}

TEST_F(Unattended, runsOnceAfterDaysOfSleep)
{
    addProject(u"Shop"_s, {u"Finder"_s},
               [](clsAccount &account) { account.NextLookup = QDate(2026, 11, 16); });
    scheduler.setEnabled(true);
    world.clock.set(QDateTime(QDate(2026, 12, 20), QTime(10, 0)));
    pass(3 * Minute);
    EXPECT_EQ(finished.size(), 1);
    EXPECT_EQ(nextLookup(u"Shop"_s), QDate(2026, 12, 27));
}

TEST_F(Unattended, takesTheFirstDueProjectAndTheNextOneLater)
{
    addProject(u"Shop"_s, {u"Finder"_s});
    addProject(u"Garden"_s, {u"Finder"_s});
    scheduler.scan();
    EXPECT_EQ(scheduler.AutoAccount()->Name, u"Shop"_s);
    scheduler.scan();
    EXPECT_EQ(scheduler.AutoAccount()->Name, u"Shop"_s);
    pass(5000);
    EXPECT_THAT(finished, ElementsAre(u"Shop"_s));
    scheduler.scan();
    pass(5000);
    EXPECT_THAT(finished, ElementsAre(u"Shop"_s, u"Garden"_s));
}

TEST_F(Unattended, goesOnWhereTheLastScanStopped)
{
    addProject(u"Shop"_s, {u"Finder"_s});
    addProject(u"Garden"_s, {u"Finder"_s});
    scheduler.scan();
    pass(5000);
    // Due again at once, but the one behind it has its turn.
    clsAccount shop(world.app);
    shop.Name = u"Shop"_s;
    shop.SetNextLookupDate(QDate(2020, 1, 1));
    scheduler.scan();
    EXPECT_EQ(scheduler.AutoAccount()->Name, u"Garden"_s);
    pass(5000);
    scheduler.scan();
    EXPECT_EQ(scheduler.AutoAccount()->Name, u"Shop"_s);
}

TEST_F(Unattended, beginsAnewWhenTheListHasBecomeShorter)
{
    addProject(u"Shop"_s, {u"Finder"_s}, [](clsAccount &account) { account.SchedulerEnable = false; });
    addProject(u"Garden"_s, {u"Finder"_s}, [](clsAccount &account) { account.SchedulerEnable = false; });
    scheduler.scan();
    view.names = QStringList{u"Shop"_s};
    addProject(u"Late"_s, {u"Finder"_s});
    view.names = QStringList{u"Late"_s};
    scheduler.scan();
    EXPECT_TRUE(scheduler.AutoRunning());
}

TEST_F(Unattended, reachesTheEndOfAVeryLongList)
{
    view.names = QStringList(40'000, u"/"_s); // no name of a file, so that nothing is read
    addProject(u"Last"_s, {u"Finder"_s});
    scheduler.scan();
    EXPECT_TRUE(scheduler.AutoRunning());
}

TEST_F(Unattended, doesNothingWithoutProjects)
{
    scheduler.scan();
    EXPECT_FALSE(scheduler.AutoRunning());
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(Unattended, tellsOfTheFirstProjectOnce)
{
    addProject(u"Shop"_s, {u"Finder"_s}, [](clsAccount &account) { account.SchedulerEnable = false; });
    addProject(u"Garden"_s, {u"Finder"_s}, [](clsAccount &account) { account.SchedulerEnable = false; });
    scheduler.scan();
    scheduler.scan();
    EXPECT_EQ(world.takeLog(),
              u"Account 'Shop': SchedulerEnable=False, NextLookup=11/15/2026, Time=09:00:00 AM"_s);
}

TEST_F(Unattended, writesEmptyReportsOfAProjectWithoutEngines)
{
    addProject(u"Shop"_s, {});
    scheduler.scan();
    EXPECT_FALSE(scheduler.AutoRunning());
    EXPECT_THAT(finished, ElementsAre(u"Shop"_s));
    EXPECT_TRUE(world.has(u"reports/Shop/keywordurl.html"_s));
    EXPECT_EQ(nextLookup(u"Shop"_s), QDate(2026, 11, 22));
}

TEST_F(Unattended, passesAnEngineWithoutKeywords)
{
    addProject(u"Shop"_s, {u"Finder"_s, u"Poster"_s});
    world.write(u"Projects/Shop/Keywords.dat"_s, "");
    scheduler.scan();
    pass(5000);
    EXPECT_THAT(finished, ElementsAre(u"Shop"_s));
    EXPECT_TRUE(world.http.requests.empty());
}

TEST_F(Unattended, goesOnWhenAnEngineFails)
{
    addProject(u"Shop"_s, {u"Finder"_s, u"Poster"_s});
    world.http.autoAnswer = [](const ScriptedHttp::Request &) { return QByteArray(); };
    scheduler.scan();
    pass(8000);
    EXPECT_THAT(finished, ElementsAre(u"Shop"_s));
    EXPECT_TRUE(world.read(u"Projects/Shop/Poster.dat"_s).contains(";Failed\r\n"));
}

TEST_F(Unattended, goesOnBehindAnEngineThatIsUnknown)
{
    addProject(u"Shop"_s, {u"Finder"_s, u"Poster"_s});
    world.writeEngineData("[Markets]\r\n1=Global\r\n[Global]\r\n1=Poster\r\n");
    scheduler.scan();
    pass(8000);
    EXPECT_THAT(finished, ElementsAre(u"Shop"_s));
}

TEST_F(Unattended, goesOnWhenItIsSwitchedOffInTheMiddle)
{
    addProject(u"Shop"_s, {u"Finder"_s, u"Poster"_s});
    scheduler.setEnabled(true);
    pass(Minute);
    scheduler.setEnabled(false);
    pass(8000);
    EXPECT_THAT(finished, ElementsAre(u"Shop"_s));
}

TEST_F(Unattended, tellsWhatAHungRunWaitsFor)
{
    addProject(u"Shop"_s, {u"Finder"_s});
    world.http.autoAnswer = nullptr;
    world.setPreference(u"TimeOut"_s, u"100000"_s);
    scheduler.setEnabled(true);
    pass(Minute + 2000);
    world.takeLog();
    for (int i = 0; i < 60; ++i)
        scheduler.scan();
    EXPECT_EQ(
        world.takeLog(),
        u"Scheduler waits for the look up of 'Shop' on 'Finder', which runs since 11/15/2026 10:01:00 AM"_s);
    EXPECT_TRUE(scheduler.AutoRunning());
}

TEST_F(Unattended, refreshesTheViewOfTheSameEngine)
{
    view.account = addProject(u"Shop"_s, {u"Finder"_s, u"Poster"_s});
    view.show(u"Poster"_s);
    scheduler.scan();
    pass(3000);
    EXPECT_TRUE(view.refreshed.empty());
    pass(3000);
    ASSERT_EQ(view.refreshed.size(), 1U);
    EXPECT_EQ(view.refreshed[0]->Name, u"Shop"_s);
    EXPECT_EQ(view.session->Keywords->Keywords.at(1).CurPos, u"1"_s);
}

TEST_F(Unattended, leavesTheViewOfAnotherProject)
{
    view.account =
        addProject(u"Shop"_s, {u"Finder"_s}, [](clsAccount &account) { account.SchedulerEnable = false; });
    addProject(u"Garden"_s, {u"Finder"_s});
    view.show(u"Finder"_s);
    scheduler.scan();
    pass(5000);
    EXPECT_THAT(finished, ElementsAre(u"Garden"_s));
    EXPECT_TRUE(view.refreshed.empty());
}

TEST_F(Unattended, waitsForTheUsersRunBeforeItRefreshes)
{
    view.account = addProject(u"Shop"_s, {u"Finder"_s});
    view.show(u"Finder"_s);
    world.http.autoAnswer = nullptr;
    view.session->LookUpSelectedKeyword(true, {{u"boots"_s, true}});
    settle();
    const std::size_t users = world.http.requests.size();
    ASSERT_EQ(users, 1U);
    scheduler.scan();
    pass(1500);
    ASSERT_EQ(world.http.requests.size(), 3U);
    world.http.answer(1, LookupWorld::page({"http://site.example/"}));
    world.http.answer(2, LookupWorld::page({"http://site.example/"}));
    pass(3000);
    EXPECT_THAT(finished, ElementsAre(u"Shop"_s));
    EXPECT_TRUE(view.refreshed.empty());
    world.http.answer(0, LookupWorld::page(LookupWorld::fillers(1) + QByteArrayList{"http://site.example/"}));
    settle();
    EXPECT_EQ(view.refreshed.size(), 1U);
    const auto &rows = view.session->Keywords->Keywords;
    EXPECT_EQ(rows.at(u"shoes"_s).CurPos, u"1"_s) << "found by the scheduler's run";
    EXPECT_EQ(rows.at(u"boots"_s).CurPos, u"2"_s) << "found by the user's run, which ended later";
}

TEST_F(Unattended, keepsWhatTheUserFoundWhileItRan)
{
    view.account = addProject(u"Shop"_s, {u"Finder"_s});
    view.show(u"Finder"_s);
    world.http.autoAnswer = nullptr;
    scheduler.scan();
    pass(1500);
    ASSERT_EQ(world.http.requests.size(), 2U);
    world.write(u"Projects/Shop/Keywords.dat"_s, "shoes;-1\r\nboots;-1\r\nsocks;-1\r\n");
    view.session->open();
    view.session->LookUpSelectedKeyword(true, {{u"socks"_s, true}});
    settle();
    for (const std::size_t request : {2, 0, 1})
        world.http.answer(request, LookupWorld::page({"http://site.example/"}));
    pass(3000);
    const QByteArray stored = world.read(u"Projects/Shop/Finder.dat"_s);
    for (const char *keyword : {"shoes;", "boots;", "socks;"})
        EXPECT_TRUE(stored.contains(QByteArray(keyword) + "2,340;1;1;")) << stored.constData();
}

TEST_F(Unattended, showsHowTheProjectOnShowStands)
{
    view.account = addProject(u"Shop"_s, {u"Finder"_s, u"Poster"_s});
    view.show(u"Finder"_s);
    scheduler.ShowAutoRunState();
    EXPECT_EQ(view.autoRun, u"Auto LookUp is in queue"_s);
    scheduler.scan();
    EXPECT_EQ(view.autoRun, u"LookUp is running..."_s);
    pass(3000);
    EXPECT_EQ(scheduler.autoSession()->EngineName, u"Poster"_s);
    EXPECT_EQ(view.autoRun, u"Next LookUp: 11/22/2026"_s);
    pass(3000);
    EXPECT_EQ(view.autoRun, u"Next LookUp: 11/22/2026"_s);
}

TEST_F(Unattended, letsGoOfItsSession)
{
    addProject(u"Shop"_s, {u"Finder"_s});
    world.http.autoAnswer = nullptr;
    scheduler.scan();
    pass(1500);
    EXPECT_TRUE(scheduler.autoSession()->Online());
    scheduler.unload();
    EXPECT_FALSE(scheduler.autoSession());
    EXPECT_EQ(world.http.controlsAlive, 0);
}

TEST_F(Unattended, logsAScanThatFails)
{
    view.failProjects = u"broken"_s;
    scheduler.scan();
    EXPECT_EQ(world.takeLog(), u"tmrScheduler_Timer: broken"_s);
}

TEST_F(Unattended, logsReportsThatFail)
{
    addProject(u"Shop"_s, {});
    view.failShown = u"broken"_s;
    scheduler.scan();
    EXPECT_THAT(world.takeLog().toStdString(), testing::EndsWith("frmMain_ClearAutoBidAcct error: broken"));
    EXPECT_FALSE(scheduler.AutoRunning());
}

TEST_F(Unattended, logsAStepToTheNextEngineThatFails)
{
    addProject(u"Shop"_s, {u"Finder"_s});
    scheduler.scan();
    view.failShown = u"broken"_s;
    pass(5000);
    EXPECT_THAT(world.takeLog().toStdString(), testing::EndsWith("tmrNext_Timer error: broken"));
}

TEST_F(Unattended, logsAPanelThatCannotBeWritten)
{
    view.account = addProject(u"Shop"_s, {u"Finder"_s});
    view.failAutoRun = u"broken"_s;
    scheduler.ShowAutoRunState();
    EXPECT_EQ(world.takeLog(), u"frmMain_ShowAutoRunState error: broken"_s);
}

TEST_F(Unattended, mailsTheReports)
{
    world.setPreference(u"SMTPServer"_s, u"mail.example"_s);
    addProject(u"Shop"_s, {u"Finder"_s}, [](clsAccount &account) {
        account.SentReport = true;
        account.ReportTo = u"client@site.example"_s;
        account.RankingDetailReport = true;
    });
    scheduler.scan();
    pass(5000);
    ASSERT_EQ(world.smtp.conversations.size(), 1U);
    const auto &mail = world.smtp.conversations[0];
    EXPECT_EQ(mail.server, u"mail.example"_s);
    EXPECT_TRUE(mail.left);
    for (const char *name : {"menu.html", "rankingdetail.html", "FinderDetails.html"})
        EXPECT_TRUE(mail.message.contains("filename=\"" + QByteArray(name) + "\"")) << name;
    EXPECT_FALSE(scheduler.isMailing());
    EXPECT_EQ(world.smtp.sessionsAlive, 0);
}

TEST_F(Unattended, mailsNothingWithoutARecipient)
{
    addProject(u"Shop"_s, {u"Finder"_s}, [](clsAccount &account) { account.SentReport = true; });
    scheduler.scan();
    pass(5000);
    EXPECT_TRUE(world.smtp.conversations.empty());
    EXPECT_FALSE(world.takeLog().contains(u"SentReport"_s));
}

TEST_F(Unattended, mailsNothingUnlessTold)
{
    addProject(u"Shop"_s, {u"Finder"_s},
               [](clsAccount &account) { account.ReportTo = u"client@site.example"_s; });
    scheduler.scan();
    pass(5000);
    EXPECT_TRUE(world.smtp.conversations.empty());
}

TEST_F(Unattended, logsAMailThatCannotGo)
{
    world.smtp.connecting = {7, u"Connection refused"_s};
    addProject(u"Shop"_s, {}, [](clsAccount &account) {
        account.SentReport = true;
        account.ReportTo = u"client@site.example"_s;
    });
    scheduler.scan();
    settle();
    EXPECT_THAT(world.takeLog().toStdString(),
                HasSubstr("SentReport_Error: Error on Connect: Connection refused server: "));
    EXPECT_TRUE(world.desktop.boxes.empty());
}

} // namespace
