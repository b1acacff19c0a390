#include "probe/catalogue_fixture.h"
#include "probe/operations.h"
#include "project/clsKeywords.h"
#include "reports/column_letters.h"
#include "reports/engine_summary.h"
#include "reports/html_report.h"
#include "reports/ranking_reports.h"
#include "reports/report_files.h"
#include "reports/report_set.h"
#include "reports/text_report.h"

#include <QDirIterator>
#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

namespace {

clsAccount projectFrom(ApplicationContext &app, const QJsonValue &value)
{
    const QJsonObject fields = value.toObject();
    clsAccount project(app);
    project.Name = fields.value(u"Name"_s).toString();
    project.LinksNum = static_cast<qint16>(fields.value(u"LinksNum"_s).toInt());
    project.ExcludeUnRanking = fields.value(u"ExcludeUnRanking"_s).toBool();
    if (const QJsonValue engines = fields.value(u"Engine"_s); engines.isArray()) {
        project.Engine.emplace();
        for (const QJsonValue engine : engines.toArray())
            project.Engine->Add(engine.toString());
    }
    if (const QJsonValue urls = fields.value(u"URLs"_s); urls.isArray()) {
        project.URLs.emplace();
        for (const QJsonValue url : urls.toArray())
            project.URLs->Add({url[u"URL"_s].toString(), url[u"IsCompetitor"_s].toBool()});
    }
    return project;
}

clsReporter reporterFrom(const QJsonValue &identity)
{
    clsReporter reporter;
    reporter.Name = identity[u"Name"_s].toString();
    reporter.Email = identity[u"Email"_s].toString();
    reporter.URL = identity[u"URL"_s].toString();
    reporter.Company = identity[u"Company"_s].toString();
    reporter.LogoURL = identity[u"LogoURL"_s].toString();
    reporter.LogoPosition = identity[u"LogoPosition"_s].toString();
    reporter.TutorialPage = identity[u"TutorialPage"_s].toString();
    return reporter;
}

// Every line of a results file as a row, further hits and unknown terms too.
Collection<clsKeyword> rowsOfResults(const QString &text)
{
    Collection<clsKeyword> rows;
    for (const QString &line : text.split(u"\r\n"_s, Qt::SkipEmptyParts)) {
        const QStringList fields = line.split(u';');
        clsKeyword row;
        row.Keyword = fields.value(0);
        row.Count = fields.value(1);
        row.CurPos = fields.value(2);
        row.Page = fields.value(3);
        row.LastPosition = fields.value(4);
        row.Change = fields.value(5);
        row.URL = fields.value(6);
        row.Status = fields.value(7);
        if (rows.HasKey(row.Keyword))
            rows.Add(row);
        else
            rows.Add(row, row.Keyword);
    }
    return rows;
}

// The names of the files in a folder; links are passed over.
QStringList filesIn(ApplicationContext &app, const QString &folder)
{
    QStringList names;
    QDirIterator it(app.files.find(folder).value_or(QString()), QDir::Files | QDir::NoSymLinks);
    while (it.hasNext()) {
        it.next();
        names.append(it.fileName());
    }
    return names;
}

void removeFilesIn(ApplicationContext &app, const QString &folder)
{
    for (const QString &name : filesIn(app, folder))
        removeFixture(app, folder + u'\\' + name);
}

// The project with these results and nothing else of it on disk.
void prepareProject(ApplicationContext &app, const QString &project, const QJsonObject &results)
{
    const QString folder = app.appFile({u"Projects"_s, project});
    removeFilesIn(app, folder);
    removeFilesIn(app, reportFolder(app, project));
    for (auto it = results.begin(); it != results.end(); ++it)
        writeFixture(app, folder + u'\\' + clsKeywords::resultFileName(it.key()),
                     app.toBytes(it.value().toString()));
}

QJsonObject reportCol(const Call &call)
{
    const auto columns = GetReportcol(call.app, projectFrom(call.app, call.args.at(0)),
                                      rowsFromJson(call.args.at(2).toArray()));
    if (!columns)
        return answer(QJsonValue());
    QJsonArray result;
    for (const ReportColumn &column : *columns) {
        QJsonArray elements{column.Keyword, column.Count};
        for (const QString &position : column.Positions)
            elements.append(position);
        result.append(elements);
    }
    return answer(result);
}

QJsonObject textReport(const Call &call)
{
    const QJsonValue identity = call.args.at(3);
    clsPreference preference;
    preference.ReporterName = identity[u"ReporterName"_s].toString();
    preference.CompanyName = identity[u"CompanyName"_s].toString();
    preference.WebSite = identity[u"WebSite"_s].toString();
    return answer(TextReport(call.app, projectFrom(call.app, call.args.at(0)), call.text(1),
                             rowsFromJson(call.args.at(2).toArray()), preference));
}

QJsonObject engineSummaryReport(const Call &call)
{
    const CatalogueFixture catalogue(call.app, call.optionalText(0));
    const clsAccount project = projectFrom(call.app, call.args.at(1));
    prepareProject(call.app, project.Name, call.args.at(2).toObject());
    QJsonArray result;
    for (const MarketTable &table : GetEngineSummaryReport(call.app, project, {})) {
        QJsonArray rows;
        for (const QStringList &row : table.Rows)
            rows.append(QJsonArray::fromStringList(row));
        result.append(QJsonArray{table.Market, rows});
    }
    return answer(result);
}

QJsonObject engineSummaryFile(const Call &call)
{
    const CatalogueFixture catalogue(call.app, call.optionalText(0));
    const clsAccount project = projectFrom(call.app, call.args.at(1));
    prepareProject(call.app, project.Name, call.args.at(2).toObject());
    ReportSet(call.app).CreateEngineSummaryReport(project);
    const auto bytes = readReport(call.app, project.Name, u"EngineSummary.dat"_s);
    return answer(bytes ? QJsonValue(call.app.fromBytes(*bytes)) : QJsonValue());
}

QJsonObject reportSet(const Call &call)
{
    ApplicationContext &app = call.app;
    const CatalogueFixture catalogue(app, call.optionalText(0));
    const clsAccount project = projectFrom(app, call.args.at(1));
    const QJsonObject results = call.args.at(2).toObject();
    prepareProject(app, project.Name, results);
    for (auto it = results.begin(); it != results.end(); ++it)
        CreateHTMLReport(app, project, it.key(), rowsOfResults(it.value().toString()), {});
    const bool hasEngine = project.Engine && !project.Engine->isEmpty();
    const QString shown = hasEngine ? results.value(project.Engine->at(1)).toString() : QString();
    ReportSet set(app);
    set.Reporter = reporterFrom(call.args.at(3));
    set.writePages(project, rowsOfResults(shown));
    set.CreateHTMLReportIndex(project.Name);
    QJsonObject files;
    for (const QString &name : filesIn(app, reportFolder(app, project.Name)))
        files.insert(name, app.fromBytes(app.files.readAll(reportFile(app, project.Name, name))));
    return answer(files);
}

} // namespace

void addReportOperations(Operations &operations)
{
    operations[u"SummaryReport"_s] = [](const Call &call) {
        return answer(SummaryReport(call.app, projectFrom(call.app, call.args.at(0)), call.text(1),
                                    rowsFromJson(call.args.at(2).toArray())));
    };
    operations[u"KeywordURLReport"_s] = [](const Call &call) {
        return answer(KeywordURLReport(call.app, projectFrom(call.app, call.args.at(0)), call.text(1),
                                       rowsFromJson(call.args.at(2).toArray())));
    };
    operations[u"GetReportcol"_s] = reportCol;
    operations[u"TextReport"_s] = textReport;
    operations[u"TrimBracketString"_s] = [](const Call &call) {
        return answer(TrimBracketString(call.text(0)));
    };
    operations[u"GetEngineSummaryReport"_s] = engineSummaryReport;
    operations[u"EngineSummaryData"_s] = engineSummaryFile;
    operations[u"ReportSet"_s] = reportSet;
    operations[u"getColumn"_s] = [](const Call &call) { return answer(getColumn(call.number(0))); };
}

} // namespace sondrel::probe
