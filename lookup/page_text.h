// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/code_page.h"

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <QVarLengthArray>

#include <optional>

namespace sondrel {

/// A piece of a page, by the 0-based positions of its first unit and behind its last.
struct Piece
{
    qsizetype begin = 0;
    qsizetype end = 0;

    bool isEmpty() const { return begin == end; }
    qsizetype size() const { return end - begin; }
    bool operator==(const Piece &) const = default;
};

/// A text to look for in pages, without regard to case. Made anew for each page, so that those of usual
/// length need no memory of their own.
class Needle
{
public:
    explicit Needle(QStringView text);

    QStringView folded() const { return {m_folded.data(), m_folded.size()}; }
    bool isAscii() const { return m_isAscii; }
    /// The same in bytes, when it is all ASCII.
    QByteArrayView ascii() const { return {m_ascii.data(), m_ascii.size()}; }
    qsizetype size() const { return m_folded.size(); }
    bool isEmpty() const { return m_folded.isEmpty(); }

private:
    QVarLengthArray<char16_t, 64> m_folded;
    QVarLengthArray<char, 64> m_ascii;
    bool m_isAscii;
};

/// A page that is searched many times and cut by begin and end strings. Pieces of it are positions, so that
/// nothing is copied and a walk over all its sections takes time in proportion to it.
class PageText
{
public:
    PageText(QString text);
    /// The text that the bytes are in a code page, which outlives it. Where that can be, the bytes are
    /// searched as they came, and only the pieces that are asked for become text.
    PageText(QByteArray bytes, const CodePage &codePage);

    Piece all() const { return {0, m_codePage ? m_bytes.size() : m_text.size()}; }
    QString text(Piece piece) const;

    /// Where needle first occurs in the piece at or behind from; -1 when it does not. An empty needle is
    /// found at from, but not at the end of the piece.
    qsizetype find(Piece in, qsizetype from, const Needle &needle) const;
    qsizetype findLast(Piece in, const Needle &needle) const;
    bool contains(Piece in, const Needle &needle) const { return find(in, in.begin, needle) >= 0; }
    Piece trimmed(Piece piece) const;

    /// Cuts the next section out of rest, with its begin string and without its end string, and shortens rest
    /// to what follows. Without the begin string the section runs through the first unit of the end string,
    /// which stays; without the end string it is all the rest, which stays too.
    Piece takeSection(Piece &rest, const Needle &begin, const Needle &end) const;
    /// The same as long as both strings occur in rest, in any order; nothing otherwise.
    std::optional<Piece> takeDelimitedSection(Piece &rest, const Needle &begin, const Needle &end) const;
    /// What stands between the begin and the end string; from the start of the piece when the begin string is
    /// missing, to its end when the end string is.
    Piece between(Piece in, const Needle &begin, const Needle &end) const;

private:
    Piece take(Piece &rest, qsizetype first, qsizetype last, const Needle &end) const;
    QStringView folded() const;

    // The page: bytes of a code page of one byte a character, or text.
    const CodePage *m_codePage = nullptr;
    QByteArray m_bytes;
    QString m_text;
    mutable QString m_folded; // once it is needed: hardly ever for bytes
};

} // namespace sondrel
