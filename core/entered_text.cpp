#include "core/entered_text.h"

#include <QStringList>

#include <algorithm>

namespace sondrel {

namespace {

bool isLineEnd(QChar unit)
{
    return unit == u'\r' || unit == u'\n' || unit == QChar::LineSeparator ||
           unit == QChar::ParagraphSeparator;
}

// A soft hyphen, a byte order mark and their like are there without being seen.
bool isUnseen(QChar unit)
{
    return unit.isSpace() || unit.category() == QChar::Other_Control ||
           unit.category() == QChar::Other_Format;
}

QStringView trimmedLine(QStringView text)
{
    const auto *const begin = std::find_if_not(text.begin(), text.end(), isUnseen);
    const auto *end = text.end();
    while (end != begin && isUnseen(*(end - 1)))
        --end;
    return {begin, end};
}

// The lines that hold something.
QStringList linesOf(const QString &text)
{
    QStringList lines;
    const auto *begin = text.cbegin();
    while (true) {
        const auto *const end = std::find_if(begin, text.cend(), isLineEnd);
        if (const QStringView line = trimmedLine({begin, end}); !line.isEmpty())
            lines.append(line.toString());
        if (end == text.cend())
            return lines;
        begin = end + 1;
    }
}

} // namespace

QString enteredLine(const QString &text)
{
    return linesOf(text).join(u' ');
}

QString enteredAddresses(const QString &text)
{
    QString list;
    for (const QString &line : linesOf(text)) {
        if (!list.isEmpty())
            list += list.endsWith(u',') || list.endsWith(u';') ? QStringLiteral(" ") : QStringLiteral(", ");
        list += line;
    }
    return list;
}

QString enteredExactly(const QString &text)
{
    QString line = text;
    return line.removeIf(isLineEnd);
}

} // namespace sondrel
