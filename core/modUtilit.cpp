#include "core/modUtilit.h"

#include "core/text_fold.h"

#include <array>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// The field of that number as part of the text.
QStringView fieldOf(QStringView text, QStringView delimiter, int number)
{
    for (int field = 1; field < number; ++field) {
        const qsizetype at = indexOfIgnoringCase(text, delimiter);
        if (at < 0 || at == text.size())
            return {};
        text = text.sliced(at + 1);
    }
    const qsizetype end = indexOfIgnoringCase(text, delimiter);
    return end < 0 ? text : text.first(end);
}

// What a tag leaves in the text.
QString breakOf(QStringView tag)
{
    static const std::array paragraphs{u"P"_s, u"/H1"_s, u"/H2"_s, u"/H3"_s, u"/H4"_s, u"/H5"_s, u"DL"_s};
    const QStringView name = fieldOf(tag, u" ", 1);
    for (const QString &paragraph : paragraphs) {
        if (equalsIgnoringCase(name, paragraph))
            return u"\r\n\r\n"_s;
    }
    if (equalsIgnoringCase(name, u"BR"))
        return u"\r\n"_s;
    if (equalsIgnoringCase(name, u"HR"))
        return u"\r\n"_s + QString(50, u'-') + u"\r\n"_s;
    return {};
}

QString withoutTags(QStringView html)
{
    QString text;
    text.reserve(html.size());
    for (;;) {
        const qsizetype open = html.indexOf(u'<');
        if (open < 0)
            break;
        text += html.first(open);
        html = html.sliced(open + 1);
        const qsizetype close = html.indexOf(u'>');
        if (close < 0)
            break;
        text += breakOf(html.first(close));
        html = html.sliced(close + 1);
    }
    text += html;
    return text;
}

// Every line end as CR LF; lines behind the first without blanks in front, and the last of several without
// any at its end.
QString withTrimmedLines(QStringView text)
{
    QString result;
    result.reserve(text.size() + text.size() / 16);
    qsizetype begin = 0;
    for (;;) {
        const qsizetype end = text.indexOf(u'\n', begin);
        QStringView line = end < 0 ? text.sliced(begin) : text.sliced(begin, end - begin);
        if (begin > 0) {
            line = trimBlanksLeft(line);
            if (end < 0)
                line = trimBlanksRight(line);
        }
        result += line;
        if (end < 0)
            return result;
        result += "\r\n"_L1;
        begin = end + 1;
    }
}

// How many blanks stay of a run when every so many of them are replaced by one, in one pass.
qsizetype shortened(qsizetype run, qsizetype step)
{
    return run / step + run % step;
}

} // namespace

QString StripHTML(ApplicationContext &app, QString html)
{
    QString result;
    reportFailure(app, u"modUtilit_StripHTML error:  "_s, [&] {
        QString text = withoutTags(html);
        html.clear(); // as great as the text, where the whole page is cleaned
        text.removeIf([](QChar unit) { return unit == u'\r'; });
        result = text.contains(u'\n') ? withTrimmedLines(text) : std::move(text);
    });
    return result;
}

QString ParseString(ApplicationContext &app, const QString &text, const QString &delimiter, int number)
{
    QString field;
    reportFailure(app, u"modUtilit_ParseString error:  "_s,
                  [&] { field = fieldOf(text, delimiter, number).toString(); });
    return field;
}

QString CollapseSpaces(QString text)
{
    QChar *const begin = text.data();
    const qsizetype size = text.size();
    qsizetype from = 0;
    qsizetype to = 0;
    while (from < size) {
        qsizetype run = 0;
        for (; from < size; ++from, ++run) {
            if (begin[from] == u'\r' && from + 1 < size && begin[from + 1] == u'\n')
                ++from;
            else if (begin[from] != u'\r' && begin[from] != u'\n' && begin[from] != u' ')
                break;
        }
        for (run = shortened(shortened(shortened(run, 4), 3), 2); run > 0; --run)
            begin[to++] = u' ';
        if (from < size)
            begin[to++] = begin[from++];
    }
    text.truncate(to);
    return text;
}

bool StripRowSuffix(QString &text)
{
    const qsizetype open = text.lastIndexOf(u'(');
    if (open < 0 || text.size() - open >= 5 || !text.endsWith(u')'))
        return false;
    text.truncate(open);
    return true;
}

} // namespace sondrel
