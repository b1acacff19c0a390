#include "lookup/ranking_query.h"

#include "core/clsCodePage.h"
#include "core/text_fold.h"
#include "core/uucode.h"
#include "engines/clsEngine.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const clsEngine &catalogueOf(const ApplicationContext &app)
{
    if (!app.EngineCatalogue)
        throw Failure(u"There is no engine catalogue"_s);
    return *app.EngineCatalogue;
}

// An empty text holds nothing, not even an empty one.
bool holds(QStringView text, QStringView part)
{
    return !text.isEmpty() && containsIgnoringCase(text, part);
}

} // namespace

QString withoutRepeatedBrackets(const QString &keyword)
{
    const qsizetype open = keyword.indexOf(u'(');
    const qsizetype close = open < 0 ? -1 : keyword.indexOf(u')', open + 1);
    if (close < 0)
        return keyword;
    const QStringView inner = trimBlanks(QStringView(keyword).sliced(open + 1, close - open - 1));
    const QStringView outer = trimBlanks(QStringView(keyword).first(open));
    if (!holds(inner, outer) && !holds(outer, inner))
        return keyword;
    return replacedIgnoringCase(keyword, u'(' + inner.toString() + u')', {});
}

QString encodedForEngine(ApplicationContext &app, const QString &engineName, const QString &keyword)
{
    if (containsIgnoringCase(engineName, u"(cn)")) {
        if (containsIgnoringCase(catalogueOf(app).EngineURL(engineName), u"utf"))
            return clsCodePage(app).ConvertUnicodeToUTF8(keyword);
        return EncodedStringX(app, keyword);
    }
    QString encoded = StrToUTF8Encode(app, keyword);
    // This engine decodes its link queries twice.
    if (equalsIgnoringCase(engineName, u"WebCrawler") && startsWithIgnoringCase(encoded, u"link%3A"))
        return StrToUTF8Encode(app, encoded);
    return encoded;
}

RankingQuery rankingQuery(ApplicationContext &app, const QString &engineName, const QString &keyword)
{
    const clsEngine &catalogue = catalogueOf(app);
    const qint16 index = catalogue.GetEngineIndex(engineName);
    RankingQuery query;
    query.SubmitMethod = catalogue.GetSubmitMethod(index);
    const QString encoded = encodedForEngine(app, engineName, withoutRepeatedBrackets(keyword));
    query.URL = catalogue.GetURL(engineName, QString(encoded).replace(u' ', u'+'));
    query.PostData = catalogue.GetPostString(index, encoded);
    return query;
}

} // namespace sondrel
