// How long a project of many keywords takes from its files to its files, and how much memory it needs.
#include "bench/keyword_files.h"
#include "tests/doors/offline_program.h"

#include <benchmark/benchmark.h>

#include <sys/resource.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const auto Account = u"Garden"_s;
const auto Engine = u"Google(UK)"_s;

void load(clsKeywords &keywords)
{
    keywords.AccountName = Account;
    keywords.LoadKeywords();
    keywords.Engine = Engine;
    keywords.FillKeywordsLookupValue();
}

// What a lookup of one term sends.
void update(clsKeywords &keywords, const QString &term)
{
    keywords.UpdateObject(term, u"Count"_s, u"1,300,000"_s);
    keywords.UpdateObject(term, u"LastPos"_s, QString());
    keywords.UpdateObject(term, u"CurPos"_s, QString());
    keywords.UpdateObject(term, u"CurPos"_s, u"7"_s);
    keywords.UpdateObject(term, u"URL"_s, u"http://www.site.example/shop/other.html"_s);
    keywords.UpdateObject(term, u"Page"_s, u"1"_s);
    keywords.UpdateObject(term, u"Status"_s, u"11/15/2026"_s);
}

// Of the whole program, in MB.
double peakMemory()
{
    struct rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

void loadUpdateSave(benchmark::State &state)
{
    TemporaryProgram program;
    const auto count = static_cast<int>(state.range(0));
    writeKeywordFiles(program.app, Account, Engine, count, 10);
    QStringList terms;
    for (int number = 0; number < count; ++number)
        terms.append(u"cheap garden furniture "_s + QString::number(number));
    for (auto _ : state) {
        clsKeywords keywords(program.app);
        load(keywords);
        if (keywords.Count() != count + (count + 9) / 10)
            state.SkipWithError("the keywords did not load");
        for (const QString &term : terms)
            update(keywords, term);
        keywords.SaveKeywordResults();
        keywords.SaveKeywords();
    }
    state.counters["peakMB"] = peakMemory();
    state.SetComplexityN(count);
}
BENCHMARK(loadUpdateSave)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);

void updateObject(benchmark::State &state)
{
    TemporaryProgram program;
    const auto count = static_cast<int>(state.range(0));
    writeKeywordFiles(program.app, Account, Engine, count, 10);
    clsKeywords keywords(program.app);
    load(keywords);
    const QString term = keywords.GetKeyword(count / 2);
    for (auto _ : state)
        benchmark::DoNotOptimize(keywords.UpdateObject(term, u"CurPos"_s, u"7"_s));
}
BENCHMARK(updateObject)->Arg(500)->Arg(5000)->Arg(50000);

} // namespace
