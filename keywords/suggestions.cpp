#include "keywords/suggestions.h"

#include "core/modUtilit.h"
#include "core/profile_file.h"
#include "core/text_fold.h"
#include "engines/numbered_list.h"

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// -1 when it does not occur. An empty needle is found in every text that is not empty.
qsizetype findFrom(QStringView text, qsizetype from, QStringView needle)
{
    return from < text.size() ? text.indexOf(needle, from) : -1;
}

// What stands between the two strings, which shortens the text to what follows them.
std::optional<QStringView> takeBetween(QStringView &text, QStringView begin, QStringView end)
{
    const qsizetype first = findFrom(text, 0, begin);
    if (first < 0)
        return std::nullopt;
    const qsizetype from = first + begin.size();
    const qsizetype last = findFrom(text, from, end);
    if (last < 0)
        return std::nullopt;
    const QStringView between = text.sliced(from, last - from);
    text = text.sliced(last + end.size());
    return between;
}

// The stretch of the page in which the suggestions stand; the whole page when it cannot be told.
QStringView interesting(QStringView page, const EngineRow &engine)
{
    const qsizetype first = findFrom(page, 0, engine.SuggestStartString);
    if (first < 0)
        return page;
    const qsizetype last = findFrom(page, first, engine.SuggestEndString);
    return last > first ? page.sliced(first, last - first) : page;
}

QString plainText(ApplicationContext &app, QStringView html)
{
    QString text = StripHTML(app, html.toString());
    text.remove("&nbsp;"_L1);
    text.removeIf([](QChar unit) { return unit == u'\r' || unit == u'\n' || unit == u'\t'; });
    return trimBlanks(text).toString();
}

} // namespace

QStringList suggestionEngines(const ProfileFile &engineData)
{
    return unbrokenList(engineData, u"KeywordBuilder"_s);
}

QString suggestionAddress(const EngineRow &engine, const QString &keyword)
{
    return engine.QuerySuggest1 + trimBlanks(keyword).toString().replace(u' ', u'+') + engine.QuerySuggest2;
}

void readSuggestions(ApplicationContext &app, const EngineRow &engine, QStringView page,
                     const std::function<void(const QString &keyword, const QString &count)> &take)
{
    if (engine.SuggestSectionStart.isEmpty())
        return; // nothing tells where a suggestion begins
    QStringView rest = interesting(page, engine);
    QStringView section;
    for (;;) {
        const qsizetype first = findFrom(rest, 0, engine.SuggestSectionStart);
        if (first < 0)
            return;
        const qsizetype last = findFrom(rest, first, engine.SuggestSectionEnd);
        if (last < 0)
            return;
        const qsizetype left = section.size();
        const bool moves = last > first; // else what is left of the section before is read once more
        if (moves) {
            section = rest.sliced(first, last - first);
            rest = rest.sliced(last + engine.SuggestSectionEnd.size());
        }
        const auto count = takeBetween(section, engine.beginCountSection, engine.endCountSection);
        if (!count || (!moves && section.size() == left))
            return;
        const auto keyword = takeBetween(section, engine.begineKeywordSection, engine.endKeywordSection);
        if (!keyword)
            return;
        take(plainText(app, *keyword), plainText(app, *count));
    }
}

} // namespace sondrel
