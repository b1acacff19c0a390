#include "lookup/page_text.h"

#include "core/text_fold.h"

#include <algorithm>
#include <utility>

namespace sondrel {

Needle::Needle(QStringView text) : m_folded(sondrel::folded(text)), m_latin1(sondrel::foldedLatin1(text)) {}

PageText::PageText(QString text) : m_text(std::move(text)), m_latin1(foldedLatin1(m_text))
{
    if (!m_latin1)
        m_folded = folded(m_text);
}

PageText::PageText(QByteArray bytes, const CodePage &codePage) : m_latin1(codePage.foldedLatin1(bytes))
{
    if (m_latin1) {
        m_codePage = &codePage;
        m_bytes = std::move(bytes);
    } else {
        *this = PageText(codePage.fromBytes(bytes));
    }
}

QString PageText::text(Piece piece) const
{
    return m_codePage ? m_codePage->fromBytes(QByteArrayView(m_bytes).sliced(piece.begin, piece.size()))
                      : m_text.sliced(piece.begin, piece.size());
}

qsizetype PageText::find(Piece in, qsizetype from, const Needle &needle) const
{
    if (from >= in.end)
        return -1;
    if (!m_latin1)
        return indexOfExactly(QStringView(m_folded).first(in.end), needle.folded(), from);
    const auto &latin1 = needle.foldedLatin1();
    return latin1 ? indexOfExactly(QByteArrayView(*m_latin1).first(in.end), *latin1, from) : -1;
}

qsizetype PageText::findLast(Piece in, const Needle &needle) const
{
    const auto position = [&](qsizetype at) { return at < 0 ? -1 : in.begin + at; };
    if (!m_latin1)
        return position(QStringView(m_folded).sliced(in.begin, in.size()).lastIndexOf(needle.folded()));
    const auto &latin1 = needle.foldedLatin1();
    return latin1 ? position(QByteArrayView(*m_latin1).sliced(in.begin, in.size()).lastIndexOf(*latin1)) : -1;
}

Piece PageText::trimmed(Piece piece) const
{
    const auto isBlank = [this](qsizetype at) {
        return m_latin1 ? (*m_latin1)[at] == ' ' : m_folded[at] == u' ';
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
