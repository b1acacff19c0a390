// How long the reports take and how much memory they need, beside the text that they write.
#include "engines/clsEngine.h"
#include "project/clsKeywords.h"
#include "reports/html_report.h"
#include "reports/ranking_reports.h"
#include "reports/report_files.h"
#include "reports/report_set.h"
#include "reports/text_report.h"
#include "tests/doors/offline_program.h"

#include <QDirIterator>
#include <QFile>

#include <benchmark/benchmark.h>

#include <fstream>
#include <malloc.h>
#include <string>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

// A program without a network, and a project "Demo" with ten tracked URLs.
class BenchWorld : public TemporaryProgram
{
public:
    BenchWorld() : engines(app), account(app)
    {
        account.Name = u"Demo"_s;
        account.LinksNum = 100;
        account.URLs.emplace();
        for (int i = 0; i < 10; ++i)
            account.URLs->Add({u"http://www.site%1.example"_s.arg(i), i > 4});
    }

    // Every fifth row a further hit.
    static Collection<clsKeyword> rows(int count)
    {
        Collection<clsKeyword> rows;
        for (int i = 0; i < count; ++i) {
            clsKeyword row;
            row.Keyword = u"search term %1"_s.arg(i - (i % 5 == 4 ? 1 : 0));
            if (i % 5 == 4)
                row.Keyword += u"(1)"_s;
            row.CurPos = QString::number(i % 97 + 1);
            row.Page = QString::number(i % 10 + 1);
            row.LastPosition = QString::number(i % 89 + 1);
            row.Change = i % 2 == 0 ? u"-3"_s : u"+12"_s;
            row.Count = u"1,240,000"_s;
            row.Status = u"11/15/2026"_s;
            row.URL = u"http://www.site%1.example/shop/page%2.html"_s.arg(i % 10).arg(i);
            rows.Add(row, row.Keyword);
        }
        return rows;
    }

    void setEngines(int count)
    {
        QByteArray data = "[Markets]\r\n1=A\r\n2=B\r\n3=C\r\n4=D\r\n";
        const QByteArrayList markets{"A", "B", "C", "D"};
        account.Engine.emplace();
        for (int market = 0; market < 4; ++market) {
            data += "[" + markets[market] + "]\r\n";
            for (int i = market; i < count; i += 4) {
                const QString name = u"Engine%1"_s.arg(i);
                data += QByteArray::number(i / 4 + 1) + "=" + app.toBytes(name) + "\r\n";
                account.Engine->Add(name, name);
            }
        }
        for (int i = 0; i < count; ++i)
            data += "[Engine" + QByteArray::number(i) + "]\r\nEngineURL=http://e.example/\r\n";
        app.files.writeAll(app.EngineDataFile, data);
        engines.loadEngineData();
        QFile::remove(filePath(u"Error.log"_s)); // the first load always leaves a line
        app.EngineCatalogue = &engines;
    }

    // What lookups leave: the results, the two parts of every engine's report and, if wanted, a page per
    // keyword.
    void storeLookups(const Collection<clsKeyword> &rows, bool pages)
    {
        for (const QString &engine : *account.Engine) {
            clsKeywords keywords(app);
            keywords.AccountName = account.Name;
            keywords.Engine = engine;
            keywords.Keywords = rows;
            keywords.SaveKeywordResults();
            CreateHTMLReport(app, account, engine, rows, {});
            if (pages)
                storePages(engine, rows);
        }
    }

    qint64 written() const
    {
        qint64 size = 0;
        QDirIterator it(filePath(u"Reports/Demo"_s), QDir::Files | QDir::NoSymLinks);
        while (it.hasNext()) {
            it.next();
            size += it.fileName().contains(u"_search"_s) ? 0 : it.fileInfo().size();
        }
        return size;
    }

    clsEngine engines;
    clsAccount account;

private:
    void storePages(const QString &engine, const Collection<clsKeyword> &rows)
    {
        const QByteArray page(2000, 'x');
        for (const clsKeyword &row : rows) {
            const QString name = engine + u'_' + QString(row.Keyword).replace(u' ', u'_') + u".html"_s;
            app.files.writeUnflushed(reportFile(app, account.Name, name), page);
        }
    }
};

// Peak of the resident memory in bytes since reset().
class PeakMemory
{
public:
    PeakMemory()
    {
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << "5";
        m_before = peak();
    }
    double growth() const { return peak() - m_before; }

private:
    static double peak()
    {
        std::ifstream status("/proc/self/status");
        for (std::string line; std::getline(status, line);) {
            if (line.starts_with("VmHWM:"))
                return std::stod(line.substr(6)) * 1024;
        }
        return 0;
    }

    double m_before = 0;
};

// From now on long texts get their memory from the system, as in a program that makes its reports once.
// malloc would keep up to 32 MB of it for the next round, so that twice the rows would take far more than
// twice the time where their texts pass that size.
void forgetMemory()
{
    constexpr int LongText = 1 << 20;
    mallopt(M_MMAP_THRESHOLD, LongText);
}

void engineReports(benchmark::State &state)
{
    forgetMemory();
    BenchWorld world;
    const auto rows = BenchWorld::rows(static_cast<int>(state.range(0)));
    const QString engine = u"Finder"_s;
    for (auto _ : state) {
        benchmark::DoNotOptimize(SummaryReport(world.app, world.account, engine, rows));
        benchmark::DoNotOptimize(KeywordURLReport(world.app, world.account, engine, rows));
        benchmark::DoNotOptimize(TextReport(world.app, world.account, engine, rows, {}));
    }
    state.SetComplexityN(state.range(0));
}

void engineReportsOnDisk(benchmark::State &state)
{
    BenchWorld world;
    const auto rows = BenchWorld::rows(static_cast<int>(state.range(0)));
    const PeakMemory memory;
    for (auto _ : state) {
        CreateHTMLReport(world.app, world.account, u"Finder"_s, rows, {});
        CreateTextReport(world.app, world.account, u"Finder"_s, rows, {});
    }
    state.counters["writtenMB"] = static_cast<double>(world.written()) / 1e6;
    state.counters["peakPerByte"] = memory.growth() / static_cast<double>(world.written());
}

void writeSet(benchmark::State &state, bool pages)
{
    BenchWorld world;
    const auto rows = BenchWorld::rows(static_cast<int>(state.range(1)));
    world.setEngines(static_cast<int>(state.range(0)));
    world.storeLookups(rows, pages);
    const qint64 before = world.written();
    const PeakMemory memory;
    ReportSet set(world.app);
    for (auto _ : state)
        set.writePages(world.account, rows);
    const auto written = static_cast<double>(world.written() - before);
    state.counters["writtenMB"] = written / 1e6;
    state.counters["peakPerByte"] = memory.growth() / written;
    if (!world.desktop.boxes.empty() || QFile::exists(world.filePath(u"Error.log"_s)))
        state.SkipWithError("the set was not written whole");
}

void reportSet(benchmark::State &state)
{
    writeSet(state, false);
}

void reportSetWithPages(benchmark::State &state)
{
    writeSet(state, true);
}

} // namespace

BENCHMARK(engineReports)
    ->Unit(benchmark::kMillisecond)
    ->Arg(12500)
    ->Arg(25000)
    ->Arg(50000)
    ->Complexity(benchmark::oN);
BENCHMARK(engineReportsOnDisk)->Unit(benchmark::kMillisecond)->Arg(50000)->Iterations(3);
BENCHMARK(reportSet)->Unit(benchmark::kMillisecond)->Args({20, 5000})->Iterations(3);
BENCHMARK(reportSetWithPages)->Unit(benchmark::kMillisecond)->Args({20, 5000})->Iterations(3);
