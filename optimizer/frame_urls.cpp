#include "optimizer/frame_urls.h"

#include "core/modCommon.h"
#include "core/text_fold.h"
#include "lookup/page_text.h"

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// As FindSection, on positions of a page.
Piece takeSection(const PageText &page, Piece &rest, const Needle &start, const Needle &end)
{
    if (rest.isEmpty())
        return rest;
    const qsizetype first = page.find(rest, rest.begin, start);
    if (first >= 0) {
        const qsizetype last = page.find(rest, first + start.size(), end);
        if (last <= first)
            return rest = page.trimmed({first, rest.end});
        rest.begin = std::min(last + end.size() + 1, rest.end);
        return page.trimmed({first, last});
    }
    const qsizetype last = page.find(rest, rest.begin, end);
    if (last < 0)
        return rest;
    const Piece section{rest.begin, last + end.size()};
    rest.begin = last + 1;
    return section;
}

bool opensValue(QChar unit)
{
    return unit == u'=' || unit == u' ' || unit == u'\r' || unit == u'\n' || unit == u'"' || unit == u'\'';
}

QString valueOf(QStringView section, QStringView key)
{
    const qsizetype found = indexOfIgnoringCase(section, key);
    if (found < 0)
        return {};
    QStringView rest = section.sliced(found + key.size());
    QChar delimiter = u' ';
    while (!rest.isEmpty() && opensValue(rest.front())) {
        if (rest.front() == u'"' || rest.front() == u'\'')
            delimiter = rest.front();
        rest = rest.sliced(1);
    }
    if (const qsizetype end = rest.indexOf(delimiter); end > 0)
        rest = rest.first(end);
    QString value = rest.toString();
    value.removeIf([](QChar unit) { return unit == u'\r' || unit == u'\n'; });
    return value;
}

} // namespace

QStringList GetFramesetURL(ApplicationContext &app, const QString &html, const QString &siteURL)
{
    QStringList urls;
    reportFailure(app, u"frmOptimizer_GetFramesetURL error: "_s, [&] {
        const PageText page(html);
        const Needle frame(u"<FRAME");
        const Needle close(u">");
        Piece rest = page.all();
        while (page.contains(rest, frame) && page.contains(rest, close)) {
            const Piece section = takeSection(page, rest, frame, close);
            const QString value = FindValue(app, page.text(section), u"SRC"_s);
            if (!value.isEmpty())
                urls.append(FormatURL(app, value, siteURL));
        }
    });
    return urls;
}

QString FindSection(ApplicationContext &app, QString &text, const QString &start, const QString &end)
{
    QString section;
    reportFailure(app, u"clsConnect_Findsection error:  "_s, [&] {
        const PageText page(text);
        Piece rest = page.all();
        const Piece piece = takeSection(page, rest, Needle(start), Needle(end));
        QString shortened = page.text(rest);
        section = page.text(piece);
        text = std::move(shortened);
    });
    return section;
}

QString FindValue(ApplicationContext &app, const QString &section, const QString &key)
{
    QString value;
    reportFailure(app, u"clsConnect_FindValue error:  "_s, [&] { value = valueOf(section, key); });
    return value;
}

QString FormatURL(ApplicationContext &app, const QString &url, const QString &base)
{
    QString result;
    reportFailure(app, u"clsConnect_FormatURL error:  "_s, [&] {
        const qsizetype colon = base.indexOf("://"_L1);
        const QString scheme = colon < 0 ? u"http://"_s : base.first(colon + 3);
        if (url.startsWith(u'/'))
            result = scheme + GetHostFromURL(app, base) + url;
        else if (startsWithIgnoringCase(url, u"http"))
            result = url;
        else if (!url.isEmpty())
            result = scheme + GetHostAndFolder(base) + u'/' + url;
    });
    return result;
}

} // namespace sondrel
