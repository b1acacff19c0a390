#include "core/text_fold.h"

#include <array>
#include <cstring>

namespace sondrel {

namespace {

// One table for all units: a page is folded once, so this is the program's hottest look-up.
const std::array<char16_t, 0x10000> &foldTable()
{
    static const auto table = [] {
        std::array<char16_t, 0x10000> units{};
        for (char32_t unit = 0; unit < units.size(); ++unit)
            units[unit] = static_cast<char16_t>(QChar::toCaseFolded(unit));
        return units;
    }();
    return table;
}

} // namespace

char16_t foldCase(char16_t unit)
{
    return foldTable()[unit];
}

QString folded(QStringView text)
{
    QString result(text.size(), Qt::Uninitialized);
    const auto &table = foldTable();
    QChar *out = result.data();
    for (const QChar unit : text)
        *out++ = table[unit.unicode()];
    return result;
}

bool equalsIgnoringCase(QStringView left, QStringView right)
{
    return left.size() == right.size() && startsWithIgnoringCase(left, right);
}

bool startsWithIgnoringCase(QStringView text, QStringView prefix)
{
    if (text.size() < prefix.size())
        return false;
    const auto &table = foldTable();
    for (qsizetype i = 0; i < prefix.size(); ++i) {
        if (table[text[i].unicode()] != table[prefix[i].unicode()])
            return false;
    }
    return true;
}

qsizetype indexOfIgnoringCase(QStringView text, QStringView needle, qsizetype from)
{
    const qsizetype last = text.size() - needle.size();
    if (needle.isEmpty())
        return from <= text.size() ? from : -1;
    const auto &table = foldTable();
    const char16_t first = table[needle[0].unicode()];
    for (qsizetype i = from; i <= last; ++i) {
        if (table[text[i].unicode()] == first && startsWithIgnoringCase(text.sliced(i), needle))
            return i;
    }
    return -1;
}

bool containsIgnoringCase(QStringView text, QStringView needle)
{
    return indexOfIgnoringCase(text, needle) >= 0;
}

qsizetype indexOfExactly(QStringView text, QStringView needle, qsizetype from)
{
    if (from > text.size())
        return -1;
    if (needle.isEmpty())
        return from;
    // memmem runs many units at a time, but sees bytes: a hit at an odd byte is between two units.
    const char *begin = reinterpret_cast<const char *>(text.utf16());
    const char *end = begin + text.size() * 2;
    const char *at = begin + from * 2;
    const auto length = static_cast<std::size_t>(needle.size()) * 2;
    while (at < end) {
        const void *hit = memmem(at, static_cast<std::size_t>(end - at), needle.utf16(), length);
        if (!hit)
            return -1;
        const qsizetype offset = static_cast<const char *>(hit) - begin;
        if (offset % 2 == 0)
            return offset / 2;
        at = static_cast<const char *>(hit) + 1;
    }
    return -1;
}

QString replacedIgnoringCase(const QString &text, QStringView needle, QStringView replacement)
{
    qsizetype hit = needle.isEmpty() ? -1 : indexOfIgnoringCase(text, needle);
    if (hit < 0)
        return text;
    QString result;
    qsizetype at = 0;
    for (; hit >= 0; hit = indexOfIgnoringCase(text, needle, at)) {
        result += QStringView(text).sliced(at, hit - at);
        result += replacement;
        at = hit + needle.size();
    }
    result += QStringView(text).sliced(at);
    return result;
}

QStringView trimBlanksLeft(QStringView text)
{
    qsizetype begin = 0;
    while (begin < text.size() && text[begin] == u' ')
        ++begin;
    return text.sliced(begin);
}

QStringView trimBlanksRight(QStringView text)
{
    qsizetype end = text.size();
    while (end > 0 && text[end - 1] == u' ')
        --end;
    return text.first(end);
}

QStringView trimBlanks(QStringView text)
{
    return trimBlanksRight(trimBlanksLeft(text));
}

} // namespace sondrel
