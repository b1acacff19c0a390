#include "core/text_fold.h"
#include "engines/clsEngine.h"
#include "lookup/lookup_session.h"
#include "lookup/ranking_query.h"
#include "probe/operations.h"
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
        for (const QJsonValue &keyword : wanted) {
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
    if (const QJsonValue after = call.request.value(u"cancel_after_ms"_s); after.isDouble())
        stop.start(after.toInt());

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
        if (!session.Online())
            loop.quit();
    });
    loop.exec();

    return {
        {u"result"_s, cancelled ? u"cancelled"_s : u"completed"_s},
        {u"rows"_s, rowsAsJson(session.Keywords->Keywords)},
        {u"progress"_s, progress},
        {u"ms"_s, elapsed.elapsed()},
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

} // namespace

void addLookupOperations(Operations &operations)
{
    operations.insert(u"QueryAddress"_s, queryAddress);
    operations.insert(u"Lookup"_s, lookup);
    operations.insert(u"WriteReportSet"_s, writeReportSet);
}

} // namespace sondrel::probe
