// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/modUtilit.h"
#include "core/text_fold.h"
#include "lookup/listing_walk.h"

#include <vector>

// The rules of the scanning kit once more, step by step on copies of the text with positions that count from
// 1: slow and plain, for comparison with the routines that fold a page once and cut it by position.

namespace sondrel::plain {

inline qsizetype Find(qsizetype start, const QString &text, const QString &needle)
{
    if (text.isEmpty() || start > text.size())
        return 0;
    return indexOfIgnoringCase(text, needle, start - 1) + 1;
}

inline QString Trim(const QString &text)
{
    return trimBlanks(text).toString();
}

inline QString FindSection(QString &text, const QString &beginStr, const QString &endStr)
{
    if (text.isEmpty())
        return {};
    const qsizetype p = Find(1, text, beginStr);
    if (p < 1) {
        const qsizetype e = Find(1, text, endStr);
        if (e < 1)
            return text;
        QString section = text.left(e);
        text = text.mid(e - 1);
        return section;
    }
    const qsizetype e = Find(p + beginStr.size(), text, endStr);
    if (e <= p) {
        text = Trim(text.mid(p - 1));
        return text;
    }
    QString section = Trim(text.mid(p - 1, e - p));
    text = text.mid(e + endStr.size() - 1);
    return section;
}

inline QString between(const QString &text, const QString &beginStr, const QString &endStr)
{
    const qsizetype p = Find(1, text, beginStr);
    if (p < 1) {
        const qsizetype e = Find(1, text, endStr);
        return e < 1 ? text : text.left(e - 1);
    }
    const qsizetype a = p + beginStr.size();
    const qsizetype e = Find(a, text, endStr);
    return e < 1 ? text.mid(a - 1) : text.mid(a - 1, e - a);
}

inline QString GetRankingElement(ApplicationContext &app, const QString &text, const QString &beginStr,
                                 const QString &endStr)
{
    if (beginStr.isEmpty())
        return {};
    QString element = between(text, beginStr, endStr);
    if (element.contains(u'>') && element.contains(u'<'))
        element = StripHTML(app, element);
    element = Trim(CollapseSpaces(element));
    element.remove(QStringLiteral("&nbsp;"), Qt::CaseInsensitive);
    element.remove(u'"');
    element.remove(u'\'');
    return element;
}

// Takes the first code and replaces it everywhere, over and over.
inline QString DecodeHTMLString(QString text)
{
    const QString marks = QStringLiteral("~.-!#$%^,/&()+`={}|[]\\_:';<>?");
    for (qsizetype percent = text.indexOf(u'%'); percent >= 0; percent = text.indexOf(u'%')) {
        const QString code = text.mid(percent, 3);
        QString by;
        for (const QChar mark : marks) {
            if (equalsIgnoringCase(code, QStringLiteral("%") + QString::number(mark.unicode(), 16)))
                by = mark;
        }
        text = replacedIgnoringCase(text, code, by);
    }
    return text;
}

inline std::vector<Listing> listings(ApplicationContext &app, const ListingForm &form, QString block)
{
    std::vector<Listing> found;
    if (form.SectionStart.isEmpty() && form.SectionEnd.isEmpty())
        return found;
    while (!block.isEmpty() && Find(1, block, form.SectionStart) > 0 && Find(1, block, form.SectionEnd) > 0) {
        const qsizetype size = block.size();
        QString item = FindSection(block, form.SectionStart, form.SectionEnd);
        if (block.size() == size)
            break;
        if (containsIgnoringCase(form.EngineName, u"Sprinks"))
            item += form.SectionEnd;
        if (item.isEmpty())
            break;
        QString title = GetRankingElement(app, item, form.beginTitle, form.endTitle);
        if (title.isEmpty())
            continue;
        QString url = GetRankingElement(app, item, form.beginURL, form.endURL);
        if (Find(1, url, form.EngineKey) > 0 || !url.contains(u'.'))
            continue;
        if (equalsIgnoringCase(form.EngineName, u"Espotting")) {
            while (!title.isEmpty() && QStringLiteral(". 0123456789").contains(title[0]))
                title.remove(0, 1);
        }
        if (!containsIgnoringCase(url, u"http"))
            url = QStringLiteral("http://") + url;
        url = ParseString(app, DecodeHTMLString(url), QStringLiteral(" "), 1);
        if (containsIgnoringCase(form.EngineName, u"LookSmart") && containsIgnoringCase(url, u"&url="))
            url = GetRankingElement(app, url, QStringLiteral("&url="), QStringLiteral("&"));
        found.push_back({url, title});
    }
    return found;
}

} // namespace sondrel::plain
