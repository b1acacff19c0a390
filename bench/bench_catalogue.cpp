// How long the engine catalogue takes to load, and to be asked for its engines.
#include "core/profile_file.h"
#include "engines/clsEngine.h"
#include "tests/doors/offline_program.h"

#include <benchmark/benchmark.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

constexpr int Markets = 10;
constexpr int KeysPerEngine = 40;

// A data file of that many engines in ten markets, with as many keys as an engine can have. They are those of
// the format first, then ones that nobody reads.
QByteArray engineData(int engines)
{
    const QByteArrayList known{"EngineKey",       "EngineURL",    "LoginURL",     "QueryKeyword1",
                               "QueryKeyword2",   "PostString",   "SubmitMethod", "NextPage1",
                               "NextPage2",       "NextPage3",    "NextPage4",    "ResultStartString",
                               "ResultEndString", "Sectionstart", "SectionEnd",   "Start",
                               "PerPage",         "beginTitle",   "endTitle",     "beginURL",
                               "endURL",          "beginMatches", "endMatches"};
    QByteArray lists = "[Markets]\r\n";
    QByteArray sections;
    for (int market = 0; market < Markets; ++market)
        lists += QByteArray::number(market + 1) + "=Market " + QByteArray::number(market) + "\r\n";
    for (int market = 0; market < Markets; ++market) {
        lists += "[Market " + QByteArray::number(market) + "]\r\n";
        for (int engine = market, number = 1; engine < engines; engine += Markets, ++number)
            lists += QByteArray::number(number) + "=Engine " + QByteArray::number(engine) + "\r\n";
    }
    for (int engine = 0; engine < engines; ++engine) {
        sections += "[Engine " + QByteArray::number(engine) + "]\r\n";
        for (int key = 0; key < KeysPerEngine; ++key) {
            const QByteArray name = key < known.size() ? known[key] : "Reserved" + QByteArray::number(key);
            const bool number = name == "Start" || name == "PerPage";
            sections += name + (number ? "=10\r\n" : "=<td class=\"result\"><a href=\"http://\r\n");
        }
    }
    return lists + sections;
}

void loadCatalogue(benchmark::State &state)
{
    TemporaryProgram program;
    const auto engines = static_cast<int>(state.range(0));
    program.app.files.writeAll(program.app.EngineDataFile, engineData(engines));
    clsEngine catalogue(program.app);
    for (auto _ : state) {
        if (!catalogue.loadEngineData() || catalogue.GetEngineCount() != engines)
            state.SkipWithError("the catalogue did not load");
    }
    state.counters["keys"] = engines * KeysPerEngine;
    state.SetComplexityN(engines);
}
BENCHMARK(loadCatalogue)->RangeMultiplier(10)->Range(100, 10000)->Unit(benchmark::kMillisecond)->Complexity();

void parseProfile(benchmark::State &state)
{
    const QByteArray bytes = engineData(1000);
    for (auto _ : state) {
        const ProfileFile file(*CodePage::western(), bytes);
        benchmark::DoNotOptimize(file.read(u"Engine 999"_s, u"endURL"_s));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * bytes.size());
}
BENCHMARK(parseProfile)->Unit(benchmark::kMillisecond);

void findEngine(benchmark::State &state)
{
    TemporaryProgram program;
    program.app.files.writeAll(program.app.EngineDataFile, engineData(static_cast<int>(state.range(0))));
    clsEngine catalogue(program.app);
    catalogue.loadEngineData();
    const QString last = catalogue.GetEnginName(catalogue.GetEngineCount());
    for (auto _ : state)
        benchmark::DoNotOptimize(catalogue.GetEngineIndex(last));
}
BENCHMARK(findEngine)->Arg(100)->Arg(1000)->Arg(10000);

} // namespace
