#include "automation/scheduler.h"
#include "core/text_fold.h"
#include "engines/clsEngine.h"
#include "lookup/lookup_session.h"
#include "lookup/ranking_query.h"
#include "probe/operations.h"
#include "project/clsMain.h"
#include "reports/html_report.h"
#include "reports/report_files.h"
#include "reports/report_pages.h"
#include "reports/report_set.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

namespace {

// Loads the catalogue for the length of one call.
class LoadedCatalogue
{
public:
    explicit LoadedCatalogue(ApplicationContext &app) : m_app(app), m_engines(app)
    {
        m_engines.loadEngineData();
        m_app.EngineCatalogue = &m_engines;
    }
    ~LoadedCatalogue() { m_app.EngineCatalogue = nullptr; }
    LoadedCatalogue(const LoadedCatalogue &) = delete;
    LoadedCatalogue &operator=(const LoadedCatalogue &) = delete;

private:
    ApplicationContext &m_app;
    clsEngine m_engines;
};

QJsonObject queryAddress(const Call &call)
{
    writeFixture(call.app, call.app.EngineDataFile, call.app.toBytes(call.text(0)));
    const LoadedCatalogue catalogue(call.app);
    const RankingQuery query = rankingQuery(call.app, call.text(1), call.text(2));
    return {
        {u"result"_s, query.URL},
        {u"PostData"_s, query.PostData},
        {u"SubmitMethod"_s, query.SubmitMethod},
    };
}

std::vector<SelectedRow> selectedRows(const clsKeywords &keywords, const QJsonArray &wanted)
{
    std::vector<SelectedRow> rows;
    for (const clsKeyword &row : keywords.Keywords) {
        for (const QJsonValue keyword : wanted) {
            if (equalsIgnoringCase(row.Keyword, keyword.toString())) {
                rows.push_back({row.Keyword, row.Optimize});
                break;
            }
        }
    }
    return rows;
}

// The project as it is on disk.
void open(LookupSession &session, ApplicationContext &app, const QString &project)
{
    session.Account = std::make_shared<clsAccount>(app);
    session.Account->Name = project;
    session.Account->GetSettings();
}

QJsonObject lookup(const Call &call)
{
    const LoadedCatalogue catalogue(call.app);
    LookupSession session(call.app);
    open(session, call.app, call.text(0));
    session.EngineName = call.text(1);
    session.open();
    session.writeReport = [&] {
        CreateHTMLReport(call.app, *session.Account, session.EngineName, session.Keywords->Keywords, {});
    };

    QEventLoop loop;
    bool cancelled = false;
    int progress = 0;
    QObject::connect(&session, &LookupSession::progressChanged, &loop, [&](int value) {
        if (value > 0)
            ++progress;
    });
    QObject::connect(&session, &LookupSession::ended, &loop, [&](bool finished) {
        cancelled = !finished;
        loop.quit();
    });
    QTimer stop;
    stop.setSingleShot(true);
    QObject::connect(&stop, &QTimer::timeout, &session, &LookupSession::Disconnect);

    QElapsedTimer elapsed;
    elapsed.start();
    // Once the loop runs, so that a run that ends at once ends inside it.
    QTimer::singleShot(0, &session, [&] {
        const QJsonValue which = call.args.at(2);
        if (which.isArray())
            session.LookUpSelectedKeyword(session.Keywords->Count() > 0,
                                          selectedRows(*session.Keywords, which.toArray()));
        else
            session.LookupALLKeyword();
        const QJsonValue after = call.request.value(u"cancel_after_ms"_s);
        if (!session.Online())
            loop.quit();
        else if (after.isDouble())
            stop.start(after.toInt());
    });
    loop.exec();
    const qint64 ms = elapsed.elapsed();

    return {
        {u"result"_s, cancelled ? u"cancelled"_s : u"completed"_s},
        {u"rows"_s, rowsAsJson(session.Keywords->Keywords)},
        {u"progress"_s, progress},
        {u"ms"_s, ms},
    };
}

// The pages of a project's report, from what its lookups have left; the first engine is the one on show.
QJsonObject writeReportSet(const Call &call)
{
    const LoadedCatalogue catalogue(call.app);
    LookupSession session(call.app);
    open(session, call.app, call.text(0));
    if (session.Account->Engine && !session.Account->Engine->isEmpty())
        session.EngineName = session.Account->Engine->at(1);
    session.open();
    ReportSet set(call.app);
    set.ResetReporter();
    set.writePages(*session.Account, session.Keywords->Keywords);
    set.CreateHTMLReportIndex(session.Account->Name);
    const auto index = existingReport(call.app, session.Account->Name, indexFileName());
    return answer(index ? QJsonValue(*call.app.files.find(*index)) : QJsonValue());
}

// The projects of the list, and no window that shows one.
class UnseenView final : public SchedulerView
{
public:
    QStringList names;

    QStringList projects() const override { return names; }
    std::shared_ptr<clsAccount> CurrentAccount() const override { return nullptr; }
    QString CurrentEngine() const override { return {}; }
    LookupSession *shownSession() const override { return nullptr; }
    void showResults(const std::shared_ptr<clsAccount> &) override {}
    void showAutoRun(const QString &) override {}
    QStringList nodeKeys() const override { return {}; }
    void openNode(int) override {}
};

// The scheduler of a process: one scan goes on where the last one stopped.
struct Automation
{
    explicit Automation(ApplicationContext &app) : reports(app), scheduler(app, view, reports) {}

    UnseenView view;
    ReportSet reports;
    Scheduler scheduler;
};

QJsonObject dueLookups(const Call &call, Automation &automation)
{
    const LoadedCatalogue catalogue(call.app);
    automation.view.names.clear();
    clsMain(call.app).loadAccount(automation.view.names);
    automation.reports.ResetReporter();
    Scheduler &scheduler = automation.scheduler;

    QEventLoop loop;
    QJsonValue project(QJsonValue::Null);
    const auto quitAtTheEnd = [&] {
        if (!scheduler.AutoRunning() && !scheduler.isMailing())
            loop.quit();
    };
    QObject::connect(&scheduler, &Scheduler::runFinished, &loop, [&](const QString &name) {
        project = name;
        quitAtTheEnd();
    });
    QObject::connect(&scheduler, &Scheduler::mailsFinished, &loop, quitAtTheEnd);
    QTimer::singleShot(0, &loop, [&] {
        scheduler.scan();
        quitAtTheEnd();
    });
    loop.exec();
    return answer(project);
}

} // namespace

void addLookupOperations(Operations &operations)
{
    operations.insert(u"QueryAddress"_s, queryAddress);
    operations.insert(u"Lookup"_s, lookup);
    operations.insert(u"DueLookups"_s,
                      [automation = std::shared_ptr<Automation>()](const Call &call) mutable {
                          if (!automation)
                              automation = std::make_shared<Automation>(call.app);
                          return dueLookups(call, *automation);
                      });
    operations.insert(u"WriteReportSet"_s, writeReportSet);
}

} // namespace sondrel::probe
