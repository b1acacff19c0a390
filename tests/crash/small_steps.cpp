#include "optimizer/optimizer_run.h"
#include "optimizer/remembered_addresses.h"
#include "project/clsKeywords.h"
#include "reports/text_report.h"
#include "shell/list_file.h"
#include "tests/crash/step.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString Garden = u"Garden"_s;
const QString Finder = u"Finder"_s;

class NoView final : public OptimizerView
{
public:
    void showProgress(int) override {}
    void showStatus(const QString &) override {}
};

clsAccount garden(ApplicationContext &app)
{
    clsAccount account(app);
    account.Name = Garden;
    account.NextLookup = QDate(2026, 12, 8); // as state 0 leaves it
    account.StartTime = u"09:00:00 AM"_s;
    account.URLs.emplace();
    account.URLs->Add({u"site.example"_s, false}, u"site.example"_s);
    account.Engine.emplace();
    account.Engine->Add(Finder, Finder);
    return account;
}

void writeAdvice(ApplicationContext &app, int state)
{
    OptimizerRun run;
    run.siteURL = u"http://site.example/page.html"_s;
    run.pageText = u"<html><head><title>State %1</title></head><body>"_s.arg(state) +
                   u"<p>some text"_s.repeated(50 + 500 * state) + u"</body></html>"_s;
    NoView view;
    processPage(app, run, view);
}

void writeAddresses(ApplicationContext &app, int state)
{
    QStringList addresses;
    for (int i = 0; i < MostAddresses; ++i)
        addresses.append(u"http://site%1-%2.example/"_s.arg(i).arg(state));
    saveListToFile(app, addresses, u"Domains"_s);
}

void writeTextReport(ApplicationContext &app, int state)
{
    Collection<clsKeyword> rows;
    for (int i = 0; i < 50 + 500 * state; ++i) {
        clsKeyword row;
        row.Keyword = u"keyword %1 of state %2"_s.arg(i).arg(state);
        row.CurPos = QString::number(i + 1);
        rows.Add(row, row.Keyword);
    }
    CreateTextReport(app, garden(app), Finder, rows, {});
}

void writeList(ApplicationContext &app, const QString &file, int state)
{
    QByteArray list;
    for (int i = 0; i < 1000; ++i)
        list += "keyword " + QByteArray::number(i) + " of " + QByteArray::number(state) + "\r\n";
    overwriteListFile(app, file, list);
}

} // namespace

std::vector<Step> smallSteps(ApplicationContext &app, const QString &listFile)
{
    garden(app).SaveSettings();
    return {
        {u"advice"_s, [&app](int state) { writeAdvice(app, state); }},
        {u"addresses"_s, [&app](int state) { writeAddresses(app, state); }},
        {u"text report"_s, [&app](int state) { writeTextReport(app, state); }},
        {u"next date"_s,
         [&app](int state) { garden(app).SetNextLookupDate(QDate(2026, 12, 1).addDays(state)); }},
        {u"list"_s, [&app, listFile](int state) { writeList(app, listFile, state); }},
    };
}

} // namespace sondrel
