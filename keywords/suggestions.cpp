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
QStringView interesting(QStringView page, const SuggestionForm &form)
{
    const qsizetype first = findFrom(page, 0, form.SuggestStartString);
    if (first < 0)
        return page;
    const qsizetype last = findFrom(page, first, form.SuggestEndString);
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

SuggestionForm suggestionForm(const ProfileFile &engineData, const QString &engine)
{
    const auto section = engineData.section(engine);
    const auto read = [&](const QString &key) {
        return section.exists() ? trimBlanks(section.read(key)).toString() : QString();
    };
    return {read(u"QuerySuggest1"_s),     read(u"QuerySuggest2"_s),       read(u"SuggestStartString"_s),
            read(u"SuggestEndString"_s),  read(u"SuggestSectionStart"_s), read(u"SuggestSectionEnd"_s),
            read(u"beginCountSection"_s), read(u"endCountSection"_s),     read(u"begineKeywordSection"_s),
            read(u"endKeywordSection"_s)};
}

QString suggestionAddress(const SuggestionForm &form, const QString &keyword)
{
    return form.QuerySuggest1 + trimBlanks(keyword).toString().replace(u' ', u'+') + form.QuerySuggest2;
}

void readSuggestions(ApplicationContext &app, const SuggestionForm &form, QStringView page,
                     const std::function<void(const QString &keyword, const QString &count)> &take)
{
    if (form.SuggestSectionStart.isEmpty())
        return; // nothing tells where a suggestion begins
    QStringView rest = interesting(page, form);
    QStringView section;
    for (;;) {
        const qsizetype first = findFrom(rest, 0, form.SuggestSectionStart);
        if (first < 0)
            return;
        const qsizetype last = findFrom(rest, first, form.SuggestSectionEnd);
        if (last < 0)
            return;
        const qsizetype left = section.size();
        const bool moves = last > first; // else what is left of the section before is read once more
        if (moves) {
            section = rest.sliced(first, last - first);
            rest = rest.sliced(last + form.SuggestSectionEnd.size());
        }
        const auto count = takeBetween(section, form.beginCountSection, form.endCountSection);
        if (!count || (!moves && section.size() == left))
            return;
        const auto keyword = takeBetween(section, form.begineKeywordSection, form.endKeywordSection);
        if (!keyword)
            return;
        take(plainText(app, *keyword), plainText(app, *count));
    }
}

} // namespace sondrel
