#include "lookup/engine_trial.h"

#include "core/modCommon.h"
#include "lookup/clsSearchKeyword.h"
#include "lookup/listing_walk.h"

namespace sondrel {

namespace {

void findNext(ApplicationContext &app, const EngineRow &engine, const PageText &page, const QString &url,
              EngineTrial &trial)
{
    if (engine.NextPage1.isEmpty())
        return; // a lookup takes one page only
    clsSearchKeyword search(app);
    search.URL = url;
    search.ResultStartString = engine.ResultStartString;
    search.NextPage1 = engine.NextPage1;
    search.NextPage2 = engine.NextPage2;
    search.NextPage3 = engine.NextPage3;
    search.NextPage4 = engine.NextPage4;
    trial.next = search.getNextURL(page);
    // Where there is no link a lookup asks for the folder of the page.
    trial.hasNextLink = trial.next != search.getNextURL(PageText(QString()));
}

} // namespace

EngineTrial tryEngine(ApplicationContext &app, const EngineRow &engine, const FetchedPage &page,
                      const QString &url)
{
    EngineTrial trial;
    const PageText &text = page.text;
    trial.countText = clsConnect(app).GetMatchesCounts(text, text.all(), Needle(engine.beginMatches),
                                                       Needle(engine.endMatches));
    if (IsNumberText(trial.countText))
        trial.count = trial.countText;
    const Needle start(engine.ResultStartString);
    const Needle end(engine.ResultEndString);
    const qsizetype from = text.find(text.all(), 0, start);
    trial.hasResultStart = !start.isEmpty() && from >= 0;
    trial.hasResultEnd = !end.isEmpty() && text.find(text.all(), std::max<qsizetype>(from, 0), end) >= 0;
    Piece rest = text.all();
    const Piece block = text.takeSection(rest, start, end);
    ListingWalk walk(app,
                     {engine.EngineName, engine.EngineKey, engine.Sectionstart, engine.SectionEnd,
                      engine.beginTitle, engine.endTitle, engine.beginURL, engine.endURL},
                     text, block);
    int position = 0;
    while (const auto listing = walk.next()) {
        const bool counts = !listing->URL.isEmpty();
        if (counts)
            ++position;
        trial.listings.push_back({counts ? position : 0, listing->Title, listing->URL});
    }
    findNext(app, engine, page.text, url, trial);
    return trial;
}

} // namespace sondrel
