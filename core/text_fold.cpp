#include "core/text_fold.h"

#include "core/wide_registers.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace sondrel {

namespace {

// One table for all units: a page is folded once, so this is the program's hottest look-up. The first unit
// above ASCII makes it; most starts of the program do without.
const std::array<char16_t, 0x10000> &foldTable()
{
    static const auto table = [] {
        std::array<char16_t, 0x10000> units{};
        for (char32_t unit = 0; unit < units.size(); ++unit)
            units[unit] = foldSeldom(static_cast<char16_t>(unit));
        return units;
    }();
    return table;
}

char16_t foldUnit(char16_t unit)
{
    if (unit < 0x80)
        return static_cast<char16_t>(unit >= u'A' && unit <= u'Z' ? unit + 32 : unit);
    return foldTable()[unit];
}

// Pages are folded and searched in blocks: the loops over one have no way out but their end, so that the
// compiler makes them work on many units at a time.
constexpr qsizetype Block = 64;
constexpr qsizetype LongBlock = 4 * Block;
constexpr char16_t LastLatin1 = 0xFF;

bool isAscii(const char16_t *units)
{
    char16_t any = 0;
    for (qsizetype i = 0; i < Block; ++i)
        any = static_cast<char16_t>(any | units[i]);
    return any < 0x80;
}

template <typename Unit, typename Result>
void foldAscii(const char16_t *in, Result *out)
{
    for (qsizetype i = 0; i < Block; ++i) {
        const auto unit = static_cast<Unit>(in[i]);
        const auto offset = static_cast<Unit>(unit - u'A');
        out[i] = static_cast<Result>(unit + (offset < 26 ? 32 : 0));
    }
}

// Whether there is a place in the first units where head holds first and tail holds last.
template <qsizetype Size, typename Unit>
SONDREL_INLINE bool holdsBoth(const Unit *head, Unit first, const Unit *tail, Unit last)
{
    constexpr auto Yes = static_cast<Unit>(-1); // what the processor's own comparisons give
    Unit any = 0;
    for (qsizetype i = 0; i < Size; ++i)
        any =
            static_cast<Unit>(any | ((head[i] == first ? Yes : Unit(0)) & (tail[i] == last ? Yes : Unit(0))));
    return any != 0;
}

template <typename Unit>
SONDREL_INLINE qsizetype indexOf(const Unit *units, qsizetype size, const Unit *needle, qsizetype needleSize,
                                 qsizetype from)
{
    if (needleSize == 0)
        return from <= size ? from : -1;
    const qsizetype reach = needleSize - 1;
    const Unit first = needle[0];
    const Unit last = needle[reach];
    const auto bytes = static_cast<std::size_t>(needleSize) * sizeof(Unit);
    const qsizetype end = size - reach; // behind the last place where it fits
    qsizetype looked = from;            // how far long blocks have been looked through
    for (qsizetype at = from; at < end;) {
        if (at >= looked) {
            looked = at + LongBlock;
            if (looked <= end && !holdsBoth<LongBlock>(units + at, first, units + at + reach, last)) {
                at = looked;
                continue;
            }
        }
        const qsizetype stop = std::min(at + Block, end);
        if (stop - at == Block && !holdsBoth<Block>(units + at, first, units + at + reach, last)) {
            at = stop;
            continue;
        }
        for (; at < stop; ++at) {
            if (units[at] == first && units[at + reach] == last &&
                std::memcmp(units + at, needle, bytes) == 0)
                return at;
        }
    }
    return -1;
}

} // namespace

char16_t foldCase(char16_t unit)
{
    return foldUnit(unit);
}

char16_t foldSeldom(char16_t unit)
{
    return static_cast<char16_t>(QChar::toCaseFolded(char32_t{unit}));
}

QString folded(QStringView text)
{
    QString result(text.size(), Qt::Uninitialized);
    const char16_t *in = text.utf16();
    auto *out = reinterpret_cast<char16_t *>(result.data());
    const char16_t *const end = in + text.size();
    for (; end - in >= Block; in += Block, out += Block) {
        if (isAscii(in))
            foldAscii<char16_t>(in, out);
        else
            std::transform(in, in + Block, out,
                           [&table = foldTable()](char16_t unit) { return table[unit]; });
    }
    std::transform(in, end, out, foldUnit);
    return result;
}

std::optional<QByteArray> foldedLatin1(QStringView text)
{
    QByteArray result(text.size(), Qt::Uninitialized);
    const auto &table = foldTable();
    const char16_t *in = text.utf16();
    const char16_t *const end = in + text.size();
    char16_t any = 0;
    for (char *out = result.data(); in != end;) {
        const auto size = std::min<qsizetype>(Block, end - in);
        if (size == Block && isAscii(in)) {
            foldAscii<unsigned char>(in, out);
        } else {
            std::transform(in, in + size, out, [&](char16_t unit) {
                any = std::max(any, table[unit]);
                return static_cast<char>(table[unit]);
            });
            if (any > LastLatin1)
                return std::nullopt;
        }
        in += size;
        out += size;
    }
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
    for (qsizetype i = 0; i < prefix.size(); ++i) {
        if (foldUnit(text[i].unicode()) != foldUnit(prefix[i].unicode()))
            return false;
    }
    return true;
}

qsizetype indexOfIgnoringCase(QStringView text, QStringView needle, qsizetype from)
{
    const qsizetype last = text.size() - needle.size();
    if (needle.isEmpty())
        return from <= text.size() ? from : -1;
    const char16_t first = foldUnit(needle[0].unicode());
    for (qsizetype i = from; i <= last; ++i) {
        if (foldUnit(text[i].unicode()) == first && startsWithIgnoringCase(text.sliced(i), needle))
            return i;
    }
    return -1;
}

bool containsIgnoringCase(QStringView text, QStringView needle)
{
    return indexOfIgnoringCase(text, needle) >= 0;
}

SONDREL_WIDE_REGISTERS
qsizetype indexOfExactly(QStringView text, QStringView needle, qsizetype from)
{
    return indexOf(text.utf16(), text.size(), needle.utf16(), needle.size(), from);
}

SONDREL_WIDE_REGISTERS
qsizetype indexOfExactly(QByteArrayView text, QByteArrayView needle, qsizetype from)
{
    return indexOf(text.data(), text.size(), needle.data(), needle.size(), from);
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
