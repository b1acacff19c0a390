// Years of scheduled runs in minutes: the clock runs fast, the sockets are real. SONDREL_SOAK_RUNS tells how
// many runs there are to be.
#include "tests/automation/scheduler_world.h"
#include "tests/automation/soak_figures.h"

#include "lookup/curl_http_control.h"
#include "mail/curl_smtp_session.h"
#include "tests/support/loopback_server.h"
#include "tests/support/smtp_server.h"

#include <QTimer>

#include <iomanip>
#include <iostream>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

constexpr int Projects = 10;
constexpr qint64 Step = 100;                     // ms of the program's clock
constexpr qint64 IdleTime = qint64{16} * 60'000; // in which the scheduler scans in vain, between two weeks

QByteArray engine(const QByteArray &name, const QString &address)
{
    return "[" + name + "]\r\nEngineKey=" + name.toLower() + "\r\nEngineURL=" + address.toLatin1() +
           "\r\nQueryKeyword1=?q=\r\nSubmitMethod=GET\r\nResultStartString=<ol>\r\nResultEndString=</ol>\r\n"
           "Sectionstart=<li>\r\nSectionEnd=</li>\r\nbeginTitle=<b>\r\nendTitle=</b>\r\nbeginURL=href=\"\r\n"
           "endURL=\"\r\nbeginMatches=Results\r\nendMatches=</p>\r\nNextPage1=Next page\r\n";
}

// The program with its real sockets, on servers of this process.
class Soak : public testing::Test
{
protected:
    static void SetUpTestSuite() { countObjects(); }

    Soak()
        : http([this](QStringView text) { return world.app.toBytes(text); }),
          app(world.folder.filePath(u"app"_s), world.folder.filePath(u"system"_s),
              Doors{world.clock, world.desktop, world.settings, http, &smtp}, world.app.locale),
          engines(app),
          reports(app),
          view(app),
          scheduler(app, view, reports)
    {
        pages.handler = [this](const LoopbackServer::Request &request, const LoopbackServer::Peer &peer) {
            answer(request, peer);
        };
        mails.answer = [this](const QByteArray &command) -> std::optional<QByteArray> {
            return refusesMail && command.startsWith("RCPT") ? std::optional<QByteArray>("550 not now\r\n")
                                                             : std::nullopt;
        };
        world.writeEngineData("[Markets]\r\n1=Global\r\n[Global]\r\n1=Finder\r\n2=Seeker\r\n" +
                              engine("Finder", pages.url(u"/find"_s)) +
                              engine("Seeker", pages.url(u"/seek"_s)));
        engines.loadEngineData();
        app.EngineCatalogue = &engines;
        world.write(u"menutemplate.html"_s, "<a href=enginesummary.html>[AccountName]</a>");
        world.setPreference(u"SMTPServer"_s, u"127.0.0.1"_s);
        world.setPreference(u"SMTPPort"_s, QString::number(mails.port()));
        world.setPreference(u"Email"_s, u"ann@sender.example"_s);
        reports.ResetReporter();
        for (int i = 0; i < Projects; ++i)
            addProject(u"Shop %1"_s.arg(i));
        QObject::connect(&scheduler, &Scheduler::runFinished, [this] { ++runs; });
    }

    void addProject(const QString &name)
    {
        auto project = std::make_shared<clsAccount>(app);
        project->Name = name;
        project->LinksNum = 20;
        project->SchedulerEnable = true;
        project->NextLookup = world.clock.today();
        project->StartTime = u"09:00:00 AM"_s;
        project->SentReport = true;
        project->ReportTo = u"client@site.example"_s;
        project->EngineSummaryReport = project->KeywordURL = project->KeywordSummaryReport =
            project->RankingDetailReport = true;
        project->URLs.emplace();
        project->URLs->Add({u"site.example"_s, false}, u"site.example"_s);
        project->Engine.emplace();
        for (const QString &engineName : {u"Finder"_s, u"Seeker"_s})
            project->Engine->Add(engineName, engineName);
        project->SaveSettings();
        world.write(u"Projects/%1/Keywords.dat"_s.arg(name), "shoes;-1\r\nboots;-1\r\nsocks;-1\r\n");
        view.names.append(name);
        if (!view.account) { // shown while all of them run
            view.account = project;
            view.show(u"Finder"_s);
        }
    }

    // Two pages for each keyword; some connections break.
    void answer(const LoopbackServer::Request &request, const LoopbackServer::Peer &peer)
    {
        if (breaksPages && request.target.contains("boots")) {
            peer.reset();
            return;
        }
        const bool isFirst = !request.target.contains("from=10");
        const QByteArray page =
            LookupWorld::page(isFirst ? LookupWorld::fillers() : QByteArrayList{"http://site.example/a"},
                              isFirst ? request.target + "&from=10" : QByteArray());
        peer.send(LoopbackServer::response(page, "Content-Type: text/html\r\nSet-Cookie: a=b\r\n"));
    }

    // Real time passes for the sockets, and little of the clock's time while they are at work.
    void turn()
    {
        const LookupSession *session = scheduler.autoSession();
        world.clock.advance(session && session->Online() ? 1 : Step);
        QTimer limit;
        limit.start(2);
        QCoreApplication::processEvents(scheduler.AutoRunning() || scheduler.isMailing()
                                            ? QEventLoop::WaitForMoreEvents
                                            : QEventLoop::AllEvents);
    }

    // One week: every project is due once.
    void runWeek()
    {
        const int wanted = runs + Projects;
        for (int i = 0; i < 200'000 && (runs < wanted || scheduler.isMailing()); ++i) {
            breaksPages = runs % 5 == 1;
            refusesMail = runs % 7 == 3;
            turn();
        }
        ASSERT_EQ(runs, wanted);
        ASSERT_FALSE(scheduler.isMailing());
        for (qint64 passed = 0; passed < IdleTime; passed += 60'000) {
            world.clock.advance(60'000);
            QCoreApplication::processEvents();
        }
        ASSERT_EQ(runs, wanted) << "nothing is due twice a week";
        forget();
        world.clock.set(QDateTime(world.clock.today().addDays(7), QTime(10, 0)));
    }

    // What the servers and the view remember is not the program's.
    void forget()
    {
        waitUntil([this] { return mails.open == 0; });
        pageCount += pages.requests.size();
        mailCount += mails.commands.count("QUIT");
        pages.requests.clear();
        pages.requests.shrink_to_fit();
        mails.commands.clear();
        mails.data.clear();
        view.refreshed.clear();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    SoakFigures figures() const { return soakFigures(world.clock.timers()); }

    LookupWorld world;
    LoopbackServer pages;
    SmtpServer mails;
    CurlTransport http;
    CurlSmtpTransport smtp;
    ApplicationContext app;
    clsEngine engines;
    ReportSet reports;
    PlainView view;
    Scheduler scheduler;
    int runs = 0;
    std::size_t pageCount = 0;
    qsizetype mailCount = 0;
    bool breaksPages = false;
    bool refusesMail = false;
};

int wantedRuns()
{
    bool given = false;
    const int runs = qEnvironmentVariableIntValue("SONDREL_SOAK_RUNS", &given);
    return given ? runs : 50;
}

TEST_F(Soak, growsInNothing)
{
    const int wanted = wantedRuns();
    const int warm = wanted / 3; // caches and pools fill in the first runs
    SoakFigures first;
    std::cout << "  runs   rss kB  heap kB  descriptors  threads  timers  objects\n";
    scheduler.setEnabled(true);
    while (runs < wanted) {
        ASSERT_NO_FATAL_FAILURE(runWeek());
        if (runs >= warm && first.descriptors == 0)
            first = figures();
        std::cout << std::setw(6) << runs << figures() << std::endl;
    }
    const SoakFigures last = figures();
    std::cout << pageCount << " pages, " << mailCount << " mails, the clock shows "
              << world.clock.now().toString(Qt::ISODate).toStdString() << '\n';
    EXPECT_LE(last.descriptors, first.descriptors);
    EXPECT_LE(last.threads, first.threads);
    EXPECT_EQ(last.timers, first.timers);
    EXPECT_LE(last.objects, first.objects);
#ifndef __SANITIZE_ADDRESS__ // which keeps freed memory for a while
    EXPECT_LE(last.heapKilobytes, first.heapKilobytes + 256);
    EXPECT_LE(last.residentKilobytes, first.residentKilobytes + 2048);
#endif
    EXPECT_GE(pageCount, static_cast<std::size_t>(runs) * 8);
    EXPECT_GE(mailCount, runs);
}

} // namespace
