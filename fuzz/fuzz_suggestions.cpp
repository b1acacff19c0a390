// Keywords from strangers: files in any encoding, pages with a keyword tag, answers of a suggestion service.
#include "core/failure.h"
#include "core/text_fold.h"
#include "fuzz/target.h"
#include "keywords/add_keywords_form.h"
#include "keywords/keyword_list.h"
#include "keywords/suggestion_list.h"
#include "keywords/suggestions.h"
#include "tests/doors/offline_program.h"

#include <set>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using namespace sondrel::fuzz;

namespace {

void split(const QString &text, const QString &delimiter)
{
    const QStringList keywords = splitKeywords(text, delimiter);
    std::set<QString> known;
    for (const QString &keyword : keywords)
        check(!keyword.isEmpty() && known.insert(folded(keyword)).second);
}

EngineRow engineOf(const QStringList &lines)
{
    EngineRow engine;
    int number = 0;
    for (QString EngineRow::*field :
         {&EngineRow::SuggestStartString, &EngineRow::SuggestEndString, &EngineRow::SuggestSectionStart,
          &EngineRow::SuggestSectionEnd, &EngineRow::beginCountSection, &EngineRow::endCountSection,
          &EngineRow::begineKeywordSection, &EngineRow::endKeywordSection})
        engine.*field = lines.value(number++);
    return engine;
}

} // namespace

// Eight lines are the strings of an engine's suggestion service, the rest is the page. All of it is also a
// keyword file, with the first line for its delimiter.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static TemporaryProgram program;
    ApplicationContext &app = program.app;
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString text = app.fromBytes(bytes);
    const QString page = text.section(u'\n', 8);
    SuggestionList list;
    try {
        readSuggestions(app, engineOf(text.split(u'\n')), page,
                        [&](const QString &keyword, const QString &count) { list.add(keyword, count); });
    } catch (const Failure &) {
        // a keyword that is there already
    }
    saveSuggestions(app, u"Finder"_s, u"k"_s, list.rows());
    loadSuggestions(app, u"Finder"_s, u"k"_s);

    const QString file = keywordFileText(app, bytes);
    split(file, {});
    split(file, file.section(u'\n', 0, 0));
    pageKeywords(app, bytes);
    program.desktop.boxes.clear();
    return 0;
}
