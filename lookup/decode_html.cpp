#include "lookup/decode_html.h"

#include "core/text_fold.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <vector>

namespace sondrel {

namespace {

constexpr std::u16string_view Marks = u"~.-!#$%^,/&()+`={}|[]\\_:';<>?";

std::optional<char16_t> hexDigit(char16_t folded)
{
    if (folded >= u'0' && folded <= u'9')
        return static_cast<char16_t>(folded - u'0');
    if (folded >= u'a' && folded <= u'f')
        return static_cast<char16_t>(folded - u'a' + 10);
    return std::nullopt;
}

// A text in which three-unit codes are replaced, all of one code at a time. Going over the whole text for
// each code would take quadratic time on a hostile address, so the text is a linked list, and the places of
// every code are known: a replacement costs what it takes away.
class CodeText
{
public:
    CodeText(const QString &text, qsizetype firstPercent);

    QString decoded();

private:
    using Index = qsizetype;
    using Code = quint32; // the two folded units behind a "%"

    struct Unit
    {
        char16_t value;
        bool gone = false;
        Index previous;
        Index next;
    };

    static std::optional<char16_t> mark(Code code);
    std::optional<Code> codeAt(Index at) const;
    void enter(Index at);
    void replaceAll(Code code);
    void replace(Index at, std::optional<char16_t> by);

    QString m_head;                                        // holds no "%"
    std::vector<Unit> m_units;                             // between an end mark at 0 and one behind the last
    std::unordered_map<Code, std::vector<Index>> m_places; // all of a code, and some where it has been
};

CodeText::CodeText(const QString &text, qsizetype firstPercent) : m_head(text.first(firstPercent))
{
    m_units.reserve(static_cast<std::size_t>(text.size() - firstPercent + 2));
    const auto append = [&](char16_t value) {
        const auto at = static_cast<Index>(m_units.size());
        m_units.push_back({value, false, at - 1, at + 1});
    };
    append(0);
    for (const QChar unit : QStringView(text).sliced(firstPercent))
        append(unit.unicode());
    append(0);
    m_units.front().previous = 0;
    m_units.back().next = static_cast<Index>(m_units.size()) - 1;
    for (Index at = 1; at < m_units.back().next; ++at)
        enter(at);
}

std::optional<char16_t> CodeText::mark(Code code)
{
    const auto high = hexDigit(static_cast<char16_t>(code >> 16));
    const auto low = hexDigit(static_cast<char16_t>(code & 0xFFFF));
    if (!high || !low)
        return std::nullopt;
    const auto value = static_cast<char16_t>(*high * 16 + *low);
    return Marks.find(value) == Marks.npos ? std::nullopt : std::optional(value);
}

// Nothing where no "%" stands or fewer than two units follow it.
std::optional<CodeText::Code> CodeText::codeAt(Index at) const
{
    const Unit &percent = m_units[static_cast<std::size_t>(at)];
    const Unit &first = m_units[static_cast<std::size_t>(percent.next)];
    const Index end = static_cast<Index>(m_units.size()) - 1;
    if (percent.value != u'%' || percent.next == end || first.next == end)
        return std::nullopt;
    const Unit &second = m_units[static_cast<std::size_t>(first.next)];
    return (static_cast<Code>(foldCase(first.value)) << 16) | foldCase(second.value);
}

void CodeText::enter(Index at)
{
    if (const auto code = codeAt(at))
        m_places[*code].push_back(at);
}

void CodeText::replace(Index at, std::optional<char16_t> by)
{
    const auto unit = [this](Index index) -> Unit & { return m_units[static_cast<std::size_t>(index)]; };
    const Index second = unit(at).next;
    const Index third = unit(second).next;
    const Index behind = unit(third).next;
    const Index before = unit(at).previous;
    unit(second).gone = unit(third).gone = true;
    if (by) {
        unit(at).value = *by;
        unit(at).next = behind;
        unit(behind).previous = at;
        enter(at);
    } else {
        unit(at).gone = true;
        unit(before).next = behind;
        unit(behind).previous = before;
    }
    // Codes that reach to here read otherwise now.
    enter(before);
    enter(unit(before).previous);
}

void CodeText::replaceAll(Code code)
{
    // What comes to read as this code meanwhile is not replaced in the same pass.
    std::vector<Index> places;
    places.swap(m_places[code]);
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    for (const Index at : places) {
        if (!m_units[static_cast<std::size_t>(at)].gone && codeAt(at) == code)
            replace(at, mark(code));
    }
}

QString CodeText::decoded()
{
    QString result = m_head;
    Index last = 0;
    for (;;) {
        const Index at = m_units[static_cast<std::size_t>(last)].next;
        const Unit &unit = m_units[static_cast<std::size_t>(at)];
        if (unit.next == at) // the end mark
            return result;
        if (unit.value != u'%') {
            result += QChar(unit.value);
            last = at;
        } else if (const auto code = codeAt(at)) {
            replaceAll(*code);
        } else {
            return result; // a code that the end cuts short is taken away
        }
    }
}

} // namespace

QString DecodeHTMLString(const QString &text)
{
    const qsizetype percent = text.indexOf(u'%');
    return percent < 0 ? text : CodeText(text, percent).decoded();
}

} // namespace sondrel
