// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/modUtilit.h"
#include "core/text_fold.h"
#include "optimizer/modHTMLParse.h"

namespace sondrel {

/// The scan over a page's tags in its plainest form, which cuts the text at every step: what the quick one is
/// measured against. Only for pages whose title does not end before it begins.
inline MetaTags plainScan(const QString &html)
{
    const auto find = [](const QString &text, QStringView needle, qsizetype from) {
        return from > text.size() ? -1 : indexOfIgnoringCase(text, needle, from);
    };
    MetaTags tags;
    QString work = html;
    QString name;
    QString value;
    bool inBody = false;
    qsizetype open = find(work, u"<", 0);
    while (open >= 0) {
        if (equalsIgnoringCase(work.mid(open + 1, 6), u"script")) {
            const qsizetype end = find(work, u"</script>", open + 7);
            work = work.mid(end < 0 ? 8 : end + 9);
            open = find(work, u"<", 0);
            continue;
        }
        const qsizetype close = find(work, u">", open + 1);
        if (close < 0)
            break;
        const QString tag = work.mid(open + 1, close - open - 1);
        work = work.mid(close + 1);
        if (equalsIgnoringCase(tag, u"/head") || equalsIgnoringCase(tag.left(4), u"body"))
            inBody = true;
        if (!inBody && containsIgnoringCase(tag, u"meta") &&
            (containsIgnoringCase(tag, u"description") || containsIgnoringCase(tag, u"keywords"))) {
            if (const qsizetype content = find(tag, u"content", 0); content >= 0) {
                name = tag.left(content);
                value = tag.mid(content);
                if (const qsizetype equals = find(value, u"=", 0); equals >= 0)
                    value = trimBlanks(value.mid(equals + 1)).toString();
                if (value.startsWith(u'"'))
                    value = value.mid(1);
                if (value.endsWith(u'"'))
                    value.chop(1);
            }
            (containsIgnoringCase(name, u"keywords") ? tags.keywords : tags.description) = value;
        }
        open = find(work, u"<", 0);
        if (open >= 0 && inBody)
            tags.body += work.left(open);
    }
    QString body = replacedIgnoringCase(tags.body, u"&quot;", u"\"");
    body = replacedIgnoringCase(body, u"&nbsp;", u" ");
    body = CollapseSpaces(replacedIgnoringCase(body, u"\t", u" "));
    tags.body = trimBlanks(replacedIgnoringCase(body, u"  ", u" ")).toString();
    const qsizetype begin = find(html, u"<title>", 0);
    const qsizetype end = find(html, u"</title>", 0);
    if (begin >= 0 && end > begin)
        tags.title = CollapseSpaces(html.mid(begin + 7, end - begin - 7));
    return tags;
}

} // namespace sondrel
