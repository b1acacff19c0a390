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

bool isAscii(const char16_t *units)
{
    char16_t any = 0;
    for (qsizetype i = 0; i < Block; ++i)
        any = static_cast<char16_t>(any | units[i]);
    return any < 0x80;
}

void foldAscii(const char16_t *in, char16_t *out)
{
    for (qsizetype i = 0; i < Block; ++i) {
        const auto offset = static_cast<char16_t>(in[i] - u'A');
        out[i] = static_cast<char16_t>(in[i] + (offset < 26 ? 32 : 0));
    }
}

// Units that are what they are.
struct Exactly
{
    using Unit = char16_t;

    static constexpr Unit caseBit(Unit) { return 0; }
    static bool isEqual(const Unit *text, const Unit *needle, qsizetype size)
    {
        return std::memcmp(text, needle, static_cast<std::size_t>(size) * sizeof(Unit)) == 0;
    }
};

// Bytes whose ASCII letters stand for both cases; the needle's are small ones.
struct IgnoringAsciiCase
{
    using Unit = char;

    static constexpr Unit caseBit(Unit unit) { return unit >= 'a' && unit <= 'z' ? 0x20 : 0; }
    static bool isEqual(const Unit *text, const Unit *needle, qsizetype size)
    {
        return std::equal(needle, needle + size, text,
                          [](Unit wanted, Unit unit) { return (unit | caseBit(wanted)) == wanted; });
    }
};

// A unit to look for, with the bit that may be set or not in what it is looked for in.
template <typename Unit>
struct Wanted
{
    Unit unit;
    Unit caseBit;

    // All bits or none, as the processor's own comparisons give them.
    SONDREL_INLINE Unit bitsIfIn(Unit other) const
    {
        return static_cast<Unit>(static_cast<Unit>(other | caseBit) == unit ? -1 : 0);
    }
};

// Whether there is a place in the first units where head holds first and tail holds last.
template <qsizetype Size, typename Unit>
SONDREL_INLINE bool holdsBoth(const Unit *head, Wanted<Unit> first, const Unit *tail, Wanted<Unit> last)
{
    Unit any = 0;
    for (qsizetype i = 0; i < Size; ++i)
        any = static_cast<Unit>(any | (first.bitsIfIn(head[i]) & last.bitsIfIn(tail[i])));
    return any != 0;
}

// Asks for what comes a memory page further on: there the processor's own foresight ends, and a page that is
// too long for its near memory would be waited for again and again.
template <qsizetype Size, typename Unit>
SONDREL_INLINE void fetchAhead(const Unit *units)
{
    constexpr std::size_t MemoryPage = 4096;
    constexpr std::size_t CacheLine = 64;
    const auto *ahead = reinterpret_cast<const char *>(units) + MemoryPage;
    for (std::size_t line = 0; line < Size * sizeof(Unit); line += CacheLine)
        __builtin_prefetch(ahead + line);
}

template <typename Comparison, typename Unit = typename Comparison::Unit>
SONDREL_INLINE qsizetype indexOf(const Unit *units, qsizetype size, const Unit *needle, qsizetype needleSize,
                                 qsizetype from)
{
    if (needleSize == 0)
        return from <= size ? from : -1;
    const qsizetype reach = needleSize - 1;
    const Wanted<Unit> first{needle[0], Comparison::caseBit(needle[0])};
    const Wanted<Unit> last{needle[reach], Comparison::caseBit(needle[reach])};
    const qsizetype end = size - reach; // behind the last place where it fits
    qsizetype looked = from;            // how far long blocks have been looked through
    for (qsizetype at = from; at < end;) {
        if (at >= looked) {
            looked = at + LongBlock;
            fetchAhead<LongBlock>(units + at);
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
            if (first.bitsIfIn(units[at]) && last.bitsIfIn(units[at + reach]) &&
                Comparison::isEqual(units + at, needle, needleSize))
                return at;
        }
    }
    return -1;
}

template <typename Comparison, typename Unit = typename Comparison::Unit>
qsizetype lastIndexOf(const Unit *units, qsizetype size, const Unit *needle, qsizetype needleSize)
{
    for (qsizetype at = size - needleSize; at >= 0; --at) {
        if (Comparison::isEqual(units + at, needle, needleSize))
            return at;
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
            foldAscii(in, out);
        else
            std::transform(in, in + Block, out,
                           [&table = foldTable()](char16_t unit) { return table[unit]; });
    }
    std::transform(in, end, out, foldUnit);
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
    return indexOf<Exactly>(text.utf16(), text.size(), needle.utf16(), needle.size(), from);
}

SONDREL_WIDE_REGISTERS
qsizetype indexOfAscii(QByteArrayView text, QByteArrayView needle, qsizetype from)
{
    return indexOf<IgnoringAsciiCase>(text.data(), text.size(), needle.data(), needle.size(), from);
}

qsizetype lastIndexOfExactly(QStringView text, QStringView needle)
{
    return lastIndexOf<Exactly>(text.utf16(), text.size(), needle.utf16(), needle.size());
}

qsizetype lastIndexOfAscii(QByteArrayView text, QByteArrayView needle)
{
    return lastIndexOf<IgnoringAsciiCase>(text.data(), text.size(), needle.data(), needle.size());
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
