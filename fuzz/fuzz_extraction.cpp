// Engine strings and pages of any kind through the extraction of listings.
#include "fuzz/target.h"
#include "lookup/address_match.h"
#include "lookup/engine_trial.h"
#include "tests/doors/offline_program.h"
#include "tests/lookup/plain_walk.h"

#include <array>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using namespace sondrel::fuzz;

namespace {

// The plain rules copy the page for every listing.
constexpr qsizetype LongestCompared = 4'000;

EngineRow engineOf(const QStringList &lines)
{
    static const std::array names{u"Finder"_s, u"Sprinks"_s, u"Espotting"_s, u"LookSmart"_s};
    EngineRow engine;
    engine.EngineName = names[static_cast<std::size_t>(lines.value(0).size()) % names.size()];
    int number = 1;
    for (QString EngineRow::*field :
         {&EngineRow::EngineKey, &EngineRow::ResultStartString, &EngineRow::ResultEndString,
          &EngineRow::Sectionstart, &EngineRow::SectionEnd, &EngineRow::beginTitle, &EngineRow::endTitle,
          &EngineRow::beginURL, &EngineRow::endURL, &EngineRow::beginMatches, &EngineRow::endMatches,
          &EngineRow::NextPage1, &EngineRow::NextPage2, &EngineRow::NextPage3, &EngineRow::NextPage4})
        engine.*field = lines.value(number++);
    return engine;
}

void compareWithPlainRules(ApplicationContext &app, const EngineRow &engine, const PageText &text,
                           QString page)
{
    const ListingForm form{engine.EngineName, engine.EngineKey, engine.Sectionstart, engine.SectionEnd,
                           engine.beginTitle, engine.endTitle,  engine.beginURL,     engine.endURL};
    Piece rest = text.all();
    const Piece block =
        text.takeSection(rest, Needle(engine.ResultStartString), Needle(engine.ResultEndString));
    const QString expected = plain::FindSection(page, engine.ResultStartString, engine.ResultEndString);
    check(text.text(block) == expected);
    check(text.text(rest) == page);
    ListingWalk walk(app, form, text, block);
    for (const Listing &listing : plain::listings(app, form, expected))
        check(walk.next() == listing);
    check(!walk.next());
}

void searchTexts(ApplicationContext &app, const QString &first, const QString &second)
{
    clsConnect connect(app);
    connect.ActionMarker = first.left(3);
    connect.ActionDelimiter = first.mid(3, 2);
    QString text = second;
    connect.FindActionURL(text);
    connect.FindhrefURL(second);
    connect.GetMatchesCounts(second, first.left(2), first.mid(2, 2));
    SearchKeywordCompareURL(app, first, second);
}

} // namespace

// Sixteen lines choose the engine and give its strings, the rest is the page. A first byte above 127 stands
// in front where the page is to hold characters that are no bytes.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static TemporaryProgram program;
    ApplicationContext &app = program.app;
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    const bool wide = !bytes.isEmpty() && static_cast<unsigned char>(bytes.front()) > 127;
    const QString all = wide ? QString::fromUtf8(bytes.sliced(1)) : app.fromBytes(bytes);
    QStringList lines;
    QStringView page = all;
    while (lines.size() < 16 && page.contains(u'\n')) {
        const qsizetype end = page.indexOf(u'\n');
        lines.append(page.first(end).toString());
        page = page.sliced(end + 1);
    }
    const EngineRow engine = engineOf(lines);
    const QString text = page.toString();
    const QByteArray body = wide ? text.toUtf8() : app.toBytes(text);
    const FetchedPage fetched{body, wide ? PageText(text) : PageText(body, app.codePage())};
    tryEngine(app, engine, fetched, u"http://finder.example/find?q=a"_s);
    if (text.size() <= LongestCompared)
        compareWithPlainRules(app, engine, fetched.text, text);
    searchTexts(app, lines.value(1), text);
    return 0;
}
