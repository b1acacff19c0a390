#include "lookup/clsConnect.h"

#include "core/modUtilit.h"
#include "core/text_fold.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString elementTag()
{
    return u"clsConnect_GetRankingElement error: "_s;
}

// The rules of these two routines count positions from 1, and 0 is "not found".
qsizetype find(qsizetype start, QStringView text, QStringView needle)
{
    return start > text.size() ? 0 : indexOfIgnoringCase(text, needle, start - 1) + 1;
}

QString middle(const QString &text, qsizetype position, qsizetype length)
{
    if (length < 0)
        throw Failure(u"The end stands before the beginning"_s);
    return text.mid(position - 1, length);
}

bool hasRunsOrLineEnds(QStringView text)
{
    QChar before;
    for (const QChar unit : text) {
        if (unit == u'\r' || unit == u'\n' || (unit == u' ' && before == u' '))
            return true;
        before = unit;
    }
    return false;
}

// Most elements hold nothing of what is to go, so each step looks first whether there is any.
QString onOneLine(ApplicationContext &app, QString text)
{
    if (text.contains(u'>') && text.contains(u'<'))
        text = StripHTML(app, std::move(text));
    if (hasRunsOrLineEnds(text))
        text = CollapseSpaces(std::move(text));
    if (text.startsWith(u' ') || text.endsWith(u' '))
        text = trimBlanks(text).toString();
    if (text.contains(u'&'))
        text = replacedIgnoringCase(text, u"&nbsp;", {});
    text.removeIf([](QChar unit) { return unit == u'"' || unit == u'\''; });
    return text;
}

// Without its strings the element is the whole page, so as few copies are made as can be.
QString countOf(ApplicationContext &app, QString element)
{
    if (const qsizetype of = indexOfIgnoringCase(element, u"of"); of >= 0)
        element.remove(0, of + 2);
    QString count = StripHTML(app, std::move(element));
    if (count.startsWith(u' ') || count.endsWith(u' '))
        count = trimBlanks(count).toString();
    count = replacedIgnoringCase(count, u"&nbsp;", {});
    count.removeIf([](QChar unit) { return unit == u'\r' || unit == u'\n' || unit == u' '; });
    return count;
}

} // namespace

QString clsConnect::FindSection(QString &text, const QString &beginStr, const QString &endStr)
{
    QString section;
    reportFailure(m_app, u"clsConnect_Findsection error:  "_s, [&] {
        const PageText page(text);
        Piece rest = page.all();
        const Piece piece = page.takeSection(rest, Needle(beginStr), Needle(endStr));
        QString shortened = page.text(rest);
        section = page.text(piece);
        text = std::move(shortened);
    });
    return section;
}

QString clsConnect::GetRankingElement(const QString &text, const QString &beginStr, const QString &endStr)
{
    QString element;
    reportFailure(m_app, elementTag(), [&] {
        const PageText page(text);
        element = GetRankingElement(page, page.all(), Needle(beginStr), Needle(endStr));
    });
    return element;
}

QString clsConnect::GetRankingElement(const PageText &page, Piece in, const Needle &begin, const Needle &end)
{
    QString element;
    if (begin.isEmpty())
        return element;
    reportFailure(m_app, elementTag(),
                  [&] { element = onOneLine(m_app, page.text(page.between(in, begin, end))); });
    return element;
}

QString clsConnect::GetMatchesCounts(const QString &text, const QString &beginStr, const QString &endStr)
{
    QString count;
    reportFailure(m_app, elementTag(), [&] {
        const PageText page(text);
        count = GetMatchesCounts(page, page.all(), Needle(beginStr), Needle(endStr));
    });
    return count;
}

QString clsConnect::GetMatchesCounts(const PageText &page, Piece in, const Needle &begin, const Needle &end)
{
    QString count;
    if (begin.isEmpty())
        return count;
    reportFailure(m_app, elementTag(),
                  [&] { count = countOf(m_app, page.text(page.between(in, begin, end))); });
    return count;
}

QString clsConnect::FindActionURL(QString &text)
{
    QString url;
    reportFailure(m_app, u"clsConnect_FindActionURL Error:  "_s, [&] {
        const qsizetype marker = find(1, text, ActionMarker);
        if (marker < 1)
            return;
        text = trimBlanksLeft(QStringView(text).sliced(marker - 1 + ActionMarker.size())).toString();
        QString delimiter = ActionDelimiter;
        if (text.startsWith(u'"')) {
            text.remove(0, 1);
            delimiter = u'"';
        }
        qsizetype end = find(1, text, delimiter);
        if (const qsizetype blank = find(1, text, u" "); end > blank)
            end = blank;
        url = trimBlanks(middle(text, 1, end - 1)).toString();
        text = text.mid(end - 1);
    });
    return url;
}

QString clsConnect::FindhrefURL(const QString &text)
{
    QString url;
    reportFailure(m_app, u"clsConnect_FindhrefURL error:  "_s, [&] {
        const qsizetype attribute = find(1, text, u"href=");
        if (attribute < 1)
            return;
        qsizetype begin = attribute + 5;
        QStringView delimiter = u" ";
        // Blanks in front of the mark are looked past, but not skipped.
        if (trimBlanksLeft(QStringView(text).sliced(begin - 1)).startsWith(u'"')) {
            ++begin;
            delimiter = u"\"";
        }
        qsizetype end = find(begin, text, delimiter);
        if (end < 1)
            end = find(begin, text, u">");
        url = middle(text, begin, end - begin);
    });
    return url;
}

QString clsConnect::GetErrorMessage(qint32 code, const QString &message)
{
    QString text;
    reportFailure(m_app, u"clsConnect_GetErrorMessage error:  "_s, [&] {
        switch (code) {
        case 9060:
            text = u"Error: Connection Timed Out."_s;
            break;
        case 12007:
            text = u"Error: Server is down."_s;
            break;
        case 12017:
            text = u"Error: Transfer Aborted."_s;
            break;
        default:
            text = u"Error #"_s + QString::number(code) + u' ' + message;
        }
    });
    return text;
}

} // namespace sondrel
