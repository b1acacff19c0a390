#include "tests/reports/report_world.h"

#include "project/clsKeywords.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const char *const EngineData =
    "[Markets]\r\n1=USA\r\n2=UK\r\n3=Norge\r\n"
    "[USA]\r\n1=Finder\r\n2=Zeta\r\n3=Lycos (dmoz)\r\n4=Quest.net\r\n5=Questnet\r\n"
    "[UK]\r\n1=Seeker(UK)\r\n2=Lookfar\r\n"
    "[Norge]\r\n1=Perla\r\n"
    "[Finder]\r\nEngineURL=http://finder.example/\r\n[Zeta]\r\nEngineURL=http://zeta.example/\r\n"
    "[Lycos (dmoz)]\r\nEngineURL=http://lycos.example/\r\n[Quest.net]\r\nEngineURL=http://quest.example/\r\n"
    "[Questnet]\r\nEngineURL=http://questnet.example/\r\n[Seeker(UK)]\r\nEngineURL=http://seeker.example/\r\n"
    "[Lookfar]\r\nEngineURL=http://lookfar.example/\r\n[Perla]\r\nEngineURL=http://perla.example/\r\n";

} // namespace

ReportWorld::ReportWorld() : engines(app), account(app)
{
    writeEngineData(EngineData);
    engines.loadEngineData();
    app.EngineCatalogue = &engines;
    takeLog(); // loading tells of the empty table once
    account.Name = u"Demo"_s;
    account.LinksNum = 100;
    setEngines({u"Finder"_s});
    setUrls({{u"http://www.site.example"_s, false}, {u"rival.example"_s, true}});
    status.panel = [this](const QString &text) { panels.append(text); };
    status.progress = [this](int value, int maximum) { progress.emplace_back(value, maximum); };
}

void ReportWorld::setEngines(const QStringList &names)
{
    account.Engine.emplace();
    for (const QString &name : names)
        account.Engine->Add(name, name);
}

void ReportWorld::setUrls(const QList<clsURL> &urls)
{
    account.URLs.emplace();
    for (const clsURL &url : urls)
        account.URLs->Add(url, url.URL);
}

void ReportWorld::writeResults(const QString &engine,
                               const std::vector<std::pair<QString, QString>> &positions) const
{
    QString text;
    for (const auto &[keyword, position] : positions)
        text += keyword + u";100;"_s + position + u";1;;;http://site.example/;11/15/2026\r\n"_s;
    write(u"Projects/Demo/"_s + clsKeywords::resultFileName(engine), app.toBytes(text));
}

clsKeyword ReportWorld::row(const QString &keyword, const QString &position, const QString &url,
                            const QString &count)
{
    clsKeyword row;
    row.Keyword = keyword;
    row.CurPos = position;
    row.URL = url;
    row.Count = count;
    return row;
}

Collection<clsKeyword> ReportWorld::rows(const std::vector<clsKeyword> &rows)
{
    Collection<clsKeyword> result;
    for (const clsKeyword &row : rows)
        result.Add(row, row.Keyword);
    return result;
}

QString ReportWorld::report(const QString &name) const
{
    return app.fromBytes(read(u"reports/Demo/"_s + name));
}

bool ReportWorld::hasReport(const QString &name) const
{
    return has(u"reports/Demo/"_s + name);
}

void ReportWorld::writeReportFile(const QString &name, const QByteArray &bytes) const
{
    write(u"reports/Demo/"_s + name, bytes);
}

} // namespace sondrel
