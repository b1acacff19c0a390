// Extraction of a result page: block, titles, URLs, matching against tracked addresses. For scale, libxml2's
// HTML parser merely parses the same page.
#include "lookup/address_match.h"
#include "lookup/clsSearchKeyword.h"
#include "lookup/listing_walk.h"
#include "tests/doors/offline_program.h"

#include <benchmark/benchmark.h>

#include <libxml/HTMLparser.h>

#include <algorithm>
#include <ctime>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

constexpr int BytesPerListing = 2'000;

// One listing in the manner of today's engines: nested elements with long attributes round a link and a
// summary.
QByteArray listing(int number)
{
    const QByteArray host = "www.host" + QByteArray::number(number % 400) + ".example";
    QByteArray text = "<li class=\"result result-organic js-result\" data-layout=\"organic\" data-rank=\"" +
                      QByteArray::number(number) +
                      "\"><div class=\"result__body links_main links_deep\"><h2 class=\"result__title\">"
                      "<a rel=\"nofollow\" class=\"result__a\" href=\"https://" +
                      host + "/section/" + QByteArray::number(number) +
                      "/page.html?ref=search%2Fresults&amp;id=" + QByteArray::number(number * 7919) +
                      "\"><b>Travel</b> guide number " + QByteArray::number(number) +
                      " &amp; what to see</a></h2><div class=\"result__extras\"><span class=\"result__icon\">"
                      "<img alt=\"\" width=\"16\" height=\"16\" src=\"/icons/" +
                      host +
                      ".ico\"></span><a class=\"result__url\" rel=\"nofollow\" data-from=\"extras\"> " +
                      host + "/section </a></div><p class=\"result__snippet\">";
    while (text.size() < BytesPerListing - 20)
        text += "Where to <b>travel</b> this year, what it costs and how to get there; with maps, prices and "
                "<i>opening"
                " times</i> for every season. ";
    return text + "</p></div></li>\n";
}

QByteArray page(int listings)
{
    QByteArray text =
        "<!DOCTYPE html><html><head><title>travel</title></head><body><p>Results 1 - 100 of 2,340,000</p>"
        "<ol id=\"results\">\n";
    for (int number = 1; number <= listings; ++number)
        text += listing(number);
    return text + "</ol><a class=\"more\" href=\"/find?q=travel&amp;start=100\">Next</a></body></html>\n";
}

ListingForm form()
{
    return {.EngineName = u"Finder"_s,
            .EngineKey = u"finder.example"_s,
            .SectionStart = u"<li class=\"result"_s,
            .SectionEnd = u"</li>"_s,
            .beginTitle = u"class=\"result__a\""_s,
            .endTitle = u"</a>"_s,
            .beginURL = u"href=\""_s,
            .endURL = u"\""_s};
}

Collection<clsURL> trackedURLs()
{
    Collection<clsURL> urls;
    for (int i = 0; i < 20; ++i)
        urls.Add({u"http://www.host%1.example/%2"_s.arg(i * 19).arg(i % 3 == 0 ? u"section"_s : QString()),
                  i > 0});
    return urls;
}

struct Found
{
    int listings = 0;
    int matches = 0;
};

// From the bytes as they come, like libxml2.
Found extract(ApplicationContext &app, const QByteArray &bytes, const Collection<clsURL> &urls)
{
    const PageText page(bytes, app.codePage());
    Piece rest = page.all();
    const Piece block = page.takeSection(rest, Needle(u"<ol id=\"results\">"), Needle(u"</ol>"));
    ListingWalk walk(app, form(), page, block);
    const TrackedAddresses tracked(app, &urls);
    Found found;
    while (const auto listing = walk.next()) {
        ++found.listings;
        found.matches += tracked.countOf(listing->URL);
    }
    return found;
}

void parse(const QByteArray &bytes)
{
    htmlDocPtr document =
        htmlReadMemory(bytes.constData(), static_cast<int>(bytes.size()), "", "UTF-8",
                       HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET);
    if (!document)
        throw std::runtime_error("libxml2 gives no document");
    xmlFreeDoc(document);
}

double processorSeconds()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

template <typename Step>
double secondsOf(Step &&step)
{
    const double begin = processorSeconds();
    step();
    return processorSeconds() - begin;
}

// The shortest of several runs, in processor time: what the machine does besides only ever adds.
template <typename Step>
double shortest(Step &&step)
{
    double best = 1e9;
    for (int i = 0; i < 50; ++i)
        best = std::min(best, secondsOf(step));
    return best;
}

// How many times as long the first step takes; turn by turn, so that a busy while of the machine tells on
// both.
template <typename First, typename Second>
double timesAsLong(First &&first, Second &&second)
{
    constexpr int Turns = 50;
    double firsts = 0;
    double seconds = 0;
    for (int turn = 0; turn < Turns; ++turn) {
        firsts += secondsOf(first);
        seconds += secondsOf(second);
    }
    return firsts / seconds;
}

void extraction(benchmark::State &state)
{
    const auto listings = static_cast<int>(state.range(0));
    TemporaryProgram program;
    const QByteArray bytes = page(listings);
    const Collection<clsURL> urls = trackedURLs();
    const Found found = extract(program.app, bytes, urls);
    if (found.listings != listings || found.matches == 0) {
        state.SkipWithError("the listings of the page are not found");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(extract(program.app, bytes, urls));
    state.SetBytesProcessed(state.iterations() * bytes.size());
    state.counters["page_kB"] = static_cast<double>(bytes.size()) / 1000;
    const double mine = shortest([&] { extract(program.app, bytes, urls); });
    state.counters["shortest_us"] = mine * 1e6;
    state.counters["times_as_fast_as_libxml2"] = shortest([&] { parse(bytes); }) / mine;
    if (listings > 100) {
        const QByteArray small = page(100);
        const auto tenSmall = [&] {
            for (int i = 0; i < 10; ++i)
                extract(program.app, small, urls);
        };
        state.counters["times_as_long_as_100"] =
            10 * timesAsLong([&] { extract(program.app, bytes, urls); }, tenSmall);
    }
}

void libxml2(benchmark::State &state)
{
    const QByteArray bytes = page(static_cast<int>(state.range(0)));
    for (auto _ : state)
        parse(bytes);
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

// A page from its bytes to rows and files, as a run does it for every page.
void getResult(benchmark::State &state)
{
    TemporaryProgram program;
    const QByteArray bytes = page(static_cast<int>(state.range(0))).append(QByteArray(40'000, ' '));
    const Collection<clsURL> urls = trackedURLs();
    clsAccount account(program.app);
    account.Name = u"Demo"_s;
    clsKeywords keywords(program.app);
    keywords.Engine = u"Finder"_s;
    clsSearchKeyword search(program.app);
    search.setKeywordsObject(&keywords);
    search.Account = &account;
    search.RankingURL = &urls;
    search.ResultStartString = u"<ol id=\"results\">"_s;
    search.ResultEndString = u"</ol>"_s;
    search.NextPage1 = u"Next"_s;
    search.beginMatches = u"<p>Results"_s;
    search.endMatches = u"</p>"_s;
    const ListingForm strings = form();
    search.EngineKey = strings.EngineKey;
    search.SectionStart = strings.SectionStart;
    search.SectionEnd = strings.SectionEnd;
    search.beginTitle = strings.beginTitle;
    search.endTitle = strings.endTitle;
    search.beginURL = strings.beginURL;
    search.endURL = strings.endURL;
    int number = 0;
    for (auto _ : state) {
        if (number % 3 == 0) {
            search.Keyword = u"travel %1"_s.arg(number / 3);
            search.Pages = 0;
            search.setLinksCount(0);
        }
        ++number;
        const FetchedPage fetched{bytes, PageText(bytes, program.app.codePage())};
        search.GetResult(fetched);
        benchmark::DoNotOptimize(search.getNextURL(fetched.text));
    }
    state.SetItemsProcessed(state.iterations());
}

} // namespace

BENCHMARK(extraction)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(libxml2)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);
BENCHMARK(getResult)->Arg(10)->Unit(benchmark::kMicrosecond);
