#include "lookup/clsSearchKeyword.h"

#include "core/modCommon.h"
#include "core/text_fold.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

bool isQuote(QChar unit)
{
    return unit == u'"' || unit == u'\'';
}

// The attribute value at the head of a text.
QStringView linkAt(QStringView text)
{
    if (const qsizetype blank = text.indexOf(u' '); blank >= 0)
        text = text.first(blank + 1);
    if (const qsizetype close = text.indexOf(u'>'); close >= 0)
        text = text.first(close);
    if (!text.isEmpty() && isQuote(text.front()))
        text = text.sliced(1);
    if (!text.isEmpty() && isQuote(text.back()))
        text.chop(1);
    return text;
}

} // namespace

QString clsSearchKeyword::getNextURL(const PageText &page)
{
    QString address;
    reportFailure(m_app, u"getNextURL_Error:"_s, [&] { address = completeAddress(nextLink(page)); });
    return address;
}

// The last link in front of the text that leads on; empty when there is none.
QString clsSearchKeyword::nextLink(const PageText &page)
{
    Piece rest = page.all();
    Piece area = page.takeSection(rest, Needle(ResultStartString), Needle(u"EndOfSetting"));
    if (NextPage1.isEmpty())
        throw Failure(u"The engine has no string to find its next page by"_s);
    // A hit in the first characters of the area does not count.
    qsizetype at = page.find(area, area.begin + NextPage1.size() - 1, Needle(NextPage1));
    for (const QString *other : {&NextPage2, &NextPage3}) {
        if (at < 0 && !other->isEmpty())
            at = page.find(area, area.begin, Needle(*other));
    }
    if (NextPage4.isEmpty())
        NextPage4 = u"href="_s;
    if (at < 0)
        return QString();
    area.end = at;
    const Needle mark(NextPage4);
    const qsizetype link = page.findLast(area, mark);
    return link < 0 ? QString() : linkAt(page.text(page.trimmed({link + mark.size(), area.end}))).toString();
}

// Without a link this is the folder of the page itself.
QString clsSearchKeyword::completeAddress(QString link) const
{
    if (!containsIgnoringCase(link, u"http://")) {
        link =
            link.startsWith(u'/') ? GetHostFromURL(m_app, URL) + link : GetHostAndFolder(URL) + u'/' + link;
        if (!startsWithIgnoringCase(link, u"http"))
            link.prepend("http://"_L1);
    }
    link.remove(":80"_L1);
    link = replacedIgnoringCase(link, u"&amp;", u"&");
    link.removeIf([](QChar unit) {
        return unit == u'\r' || unit == u'\n' || unit == u'\b' || unit == u'\t' || isQuote(unit);
    });
    return link;
}

} // namespace sondrel
