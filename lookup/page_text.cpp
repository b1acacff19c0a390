#include "lookup/page_text.h"

#include "core/text_fold.h"

#include <algorithm>
#include <utility>

namespace sondrel {

Needle::Needle(QStringView text) : m_folded(text.size()), m_ascii(text.size())
{
    std::transform(text.utf16(), text.utf16() + text.size(), m_folded.begin(), foldCase);
    std::transform(m_folded.begin(), m_folded.end(), m_ascii.begin(),
                   [](char16_t unit) { return static_cast<char>(unit); });
    m_isAscii = std::all_of(m_folded.begin(), m_folded.end(), [](char16_t unit) { return unit < 0x80; });
}

PageText::PageText(QString text) : m_text(std::move(text)) {}

PageText::PageText(QByteArray bytes, const CodePage &codePage)
{
    if (codePage.hasPlainAscii()) {
        m_codePage = &codePage;
        m_bytes = std::move(bytes);
    } else {
        m_text = codePage.fromBytes(bytes);
    }
}

QString PageText::text(Piece piece) const
{
    return m_codePage ? m_codePage->fromBytes(QByteArrayView(m_bytes).sliced(piece.begin, piece.size()))
                      : m_text.sliced(piece.begin, piece.size());
}

QStringView PageText::folded() const
{
    if (m_folded.isEmpty())
        m_folded = sondrel::folded(m_codePage ? m_codePage->fromBytes(m_bytes) : m_text);
    return m_folded;
}

qsizetype PageText::find(Piece in, qsizetype from, const Needle &needle) const
{
    if (from >= in.end)
        return -1;
    if (m_codePage && needle.isAscii())
        return indexOfAscii(QByteArrayView(m_bytes).first(in.end), needle.ascii(), from);
    return indexOfExactly(folded().first(in.end), needle.folded(), from);
}

qsizetype PageText::findLast(Piece in, const Needle &needle) const
{
    const qsizetype at =
        m_codePage && needle.isAscii()
            ? lastIndexOfAscii(QByteArrayView(m_bytes).sliced(in.begin, in.size()), needle.ascii())
            : lastIndexOfExactly(folded().sliced(in.begin, in.size()), needle.folded());
    return at < 0 ? -1 : in.begin + at;
}

Piece PageText::trimmed(Piece piece) const
{
    const auto isBlank = [this](qsizetype at) {
        return m_codePage ? m_bytes[at] == ' ' : m_text[at] == u' ';
    };
    while (piece.begin < piece.end && isBlank(piece.begin))
        ++piece.begin;
    while (piece.begin < piece.end && isBlank(piece.end - 1))
        --piece.end;
    return piece;
}

Piece PageText::takeSection(Piece &rest, const Needle &begin, const Needle &end) const
{
    const qsizetype first = find(rest, rest.begin, begin);
    if (first >= 0)
        return take(rest, first, find(rest, first + begin.size(), end), end);
    const qsizetype last = find(rest, rest.begin, end);
    if (last < 0)
        return rest;
    const Piece section{rest.begin, last + 1};
    rest.begin = last;
    return section;
}

std::optional<Piece> PageText::takeDelimitedSection(Piece &rest, const Needle &begin, const Needle &end) const
{
    const qsizetype first = find(rest, rest.begin, begin);
    if (first < 0)
        return std::nullopt;
    const qsizetype last = find(rest, first + begin.size(), end);
    if (last < 0) {
        // Behind the begin string there is none, so it need not be looked for there again.
        const Piece front{rest.begin, std::min(first + begin.size() + end.size(), rest.end)};
        if (!contains(front, end))
            return std::nullopt;
    }
    return take(rest, first, last, end);
}

// The section from first to last, where the end string has been found behind the begin string.
Piece PageText::take(Piece &rest, qsizetype first, qsizetype last, const Needle &end) const
{
    if (last <= first)
        return rest = trimmed({first, rest.end});
    rest.begin = last + end.size();
    return trimmed({first, last});
}

Piece PageText::between(Piece in, const Needle &begin, const Needle &end) const
{
    const qsizetype first = find(in, in.begin, begin);
    const qsizetype from = first < 0 ? in.begin : first + begin.size();
    const qsizetype last = find(in, from, end);
    return {from, last < 0 ? in.end : last};
}

} // namespace sondrel
