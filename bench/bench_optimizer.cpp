// A page from its text to its written report, and its cut into tags. For scale, libxml2's HTML parser merely
// parses the same page.
#include "optimizer/modHTMLParse.h"
#include "optimizer/optimizer_run.h"
#include "tests/doors/offline_program.h"

#include <benchmark/benchmark.h>

#include <libxml/HTMLparser.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

constexpr int Keywords = 50;

class NoView final : public OptimizerView
{
public:
    void showProgress(int) override {}
    void showStatus(const QString &) override {}
};

// A page of that many bytes: paragraphs with links and images in the manner of a shop, and a head with 50
// keywords, which the body has now and then.
QByteArray page(qsizetype size)
{
    QByteArray html =
        "<html><head><title>Garden tools and outdoor furniture</title>\n<meta name=\"keywords\" content=\"";
    for (int keyword = 0; keyword < Keywords; ++keyword)
        html += "garden tool " + QByteArray::number(keyword * 37) + ",";
    html += "\">\n<meta name=\"description\" content=\"Tools for the garden, delivered next "
            "day.\">\n</head>\n<body>\n";
    for (int number = 0; html.size() < size; ++number)
        html +=
            "<div class=\"item item-" + QByteArray::number(number % 7) +
            "\"><h3><a href=\"http://shop.example/item/" + QByteArray::number(number) +
            ".html\">Garden tool " + QByteArray::number(number) +
            "</a></h3><p>A &quot;sturdy&quot; tool for beds,&nbsp;borders and lawns, with a handle of ash "
            "wood and a blade of forged steel. <img src=\"/images/" +
            QByteArray::number(number) + ".jpg\" alt=\"\">\r\n<script>show(" + QByteArray::number(number) +
            ");</script></p></div>\n";
    return html + "</body></html>\n";
}

qsizetype megabytes(const benchmark::State &state)
{
    return static_cast<qsizetype>(state.range(0)) << 20;
}

void writeReport(benchmark::State &state)
{
    TemporaryProgram program;
    NoView view;
    const QByteArray bytes = page(megabytes(state));
    for (auto _ : state) {
        OptimizerRun run{u"http://shop.example/"_s, program.app.fromBytes(bytes), {}, {}, {}};
        if (processPage(program.app, run, view) != OptimizerOutcome::Done)
            state.SkipWithError("no report");
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * bytes.size());
}

void cutIntoTags(benchmark::State &state)
{
    TemporaryProgram program;
    const QString html = program.app.fromBytes(page(megabytes(state)));
    for (auto _ : state)
        benchmark::DoNotOptimize(retrieveMetaTag(program.app, html).body.size());
}

void parseWithLibxml2(benchmark::State &state)
{
    const QByteArray bytes = page(megabytes(state));
    for (auto _ : state) {
        htmlDocPtr document =
            htmlReadMemory(bytes.constData(), static_cast<int>(bytes.size()), nullptr, nullptr,
                           HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET);
        benchmark::DoNotOptimize(document);
        xmlFreeDoc(document);
    }
}

void cutOpenScripts(benchmark::State &state)
{
    TemporaryProgram program;
    const QString html = u"<body>"_s + u"<script"_s.repeated(megabytes(state) / 7) + u"<b>kept<i>"_s;
    for (auto _ : state)
        benchmark::DoNotOptimize(retrieveMetaTag(program.app, html).body.size());
}

BENCHMARK(writeReport)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(cutIntoTags)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(parseWithLibxml2)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK(cutOpenScripts)->Arg(10)->Unit(benchmark::kMillisecond);

} // namespace
