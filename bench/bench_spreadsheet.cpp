// How long spreadsheet reports take, with an office that is started for one and with one that is there.
#include "reports/excel_report.h"
#include "reports/spreadsheet_plugin.h"
#include "tests/doors/offline_program.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

#include <csignal>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

// A project "Demo" on five engines, with five tracked URLs.
class BenchWorld : public TemporaryProgram
{
public:
    explicit BenchWorld(int count) : account(app)
    {
        account.Name = u"Demo"_s;
        account.URLs.emplace();
        for (int i = 0; i < 5; ++i)
            account.URLs->Add({u"http://www.site%1.example"_s.arg(i), i > 2});
        QByteArray summary = "[USA]\r\nEnginesKeyword;A;B;C;D;E\r\n";
        for (int i = 0; i < count; ++i) {
            const QString term = u"search term %1"_s.arg(i);
            const QString place = QString::number(i % 97 + 1);
            const QString url = u"http://www.site%1.example/shop/page%2.html"_s.arg(i % 5).arg(i);
            grid.push_back({term, place, u"1"_s, u"12"_s, u"+3"_s, url, u"11/15/2026"_s});
            clsKeyword row;
            row.Keyword = term;
            row.CurPos = place;
            row.Count = u"1240"_s;
            row.URL = url;
            keywords.Add(row, term);
            summary += term.toLatin1() + ";1;2;3;;5\r\n";
        }
        QFile::copy(QStringLiteral(SONDREL_TEMPLATE), filePath(u"report.xlt"_s));
        app.files.makeFolder(app.appFile({u"reports"_s, u"Demo"_s}));
        app.files.writeAll(app.appFile({u"reports"_s, u"Demo"_s, u"EngineSummary.dat"_s}), summary);
    }

    bool make(SpreadsheetFactory &spreadsheets)
    {
        app.Spreadsheets = &spreadsheets;
        ExcelReport(app, {u"Demo"_s, u"A"_s, account, keywords, grid}, {});
        return desktop.boxes.empty();
    }

    clsAccount account;
    Collection<clsKeyword> keywords;
    std::vector<GridCells> grid;
};

const QString Plugin = QStringLiteral(SONDREL_CALC_PLUGIN);

// An event loop for the time of a benchmark: the office's steps need one.
class Application
{
public:
    Application() : m_application(m_count, m_arguments)
    {
        // As in the program: an office that has gone fails a step and does not end the process.
        std::signal(SIGPIPE, SIG_IGN);
    }

private:
    char m_name[6] = "bench";
    char *m_arguments[2] = {m_name, nullptr};
    int m_count = 1;
    QCoreApplication m_application;
};

void cold(benchmark::State &state)
{
    const Application application;
    BenchWorld world(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        PluginSpreadsheets spreadsheets(Plugin);
        if (!world.make(spreadsheets))
            state.SkipWithError(qPrintable(world.desktop.boxes.back().text));
    }
}

void warm(benchmark::State &state)
{
    const Application application;
    BenchWorld world(static_cast<int>(state.range(0)));
    PluginSpreadsheets spreadsheets(Plugin);
    world.make(spreadsheets);
    for (auto _ : state) {
        if (!world.make(spreadsheets))
            state.SkipWithError(qPrintable(world.desktop.boxes.back().text));
    }
}

} // namespace

BENCHMARK(cold)->Unit(benchmark::kMillisecond)->UseRealTime()->Arg(1000)->Iterations(3);
BENCHMARK(warm)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Arg(1000)
    ->Arg(5000)
    ->Arg(10000)
    ->Iterations(3);
