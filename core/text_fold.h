// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringView>

namespace sondrel {

/// Comparison without regard to case. Every 16-bit unit folds on its own (Unicode simple case folding), so
/// that lengths and positions of a folded text are those of the text.
char16_t foldCase(char16_t unit);

/// The same for those who fold few units: slower, but without the table that foldCase makes first.
char16_t foldSeldom(char16_t unit);

/// The text with every unit folded.
QString folded(QStringView text);

/// True when both texts fold to the same units.
bool equalsIgnoringCase(QStringView left, QStringView right);

/// True when text begins with prefix, without regard to case. An empty prefix is found.
bool startsWithIgnoringCase(QStringView text, QStringView prefix);

/// Where needle first occurs in text at or behind the 0-based position from, without regard to case; -1 when
/// it does not. An empty needle is found at from, also at the end of the text, never behind it.
qsizetype indexOfIgnoringCase(QStringView text, QStringView needle, qsizetype from = 0);

/// True when needle occurs in text without regard to case. An empty needle does.
bool containsIgnoringCase(QStringView text, QStringView needle);

/// Where needle occurs in text at or behind from, unit by unit; -1 when it does not. Meant for texts that
/// have been folded once and are searched many times; takes time in proportion to the text.
qsizetype indexOfExactly(QStringView text, QStringView needle, qsizetype from = 0);

/// The place of the last occurrence; an empty needle is found at the end of the text.
qsizetype lastIndexOfExactly(QStringView text, QStringView needle);

/// The same two in bytes and without regard to the case of ASCII letters. The needle is ASCII, in lower case.
qsizetype indexOfAscii(QByteArrayView text, QByteArrayView needle, qsizetype from = 0);
qsizetype lastIndexOfAscii(QByteArrayView text, QByteArrayView needle);

/// text with every occurrence of needle, without regard to case, replaced. Occurrences are taken from left to
/// right and do not overlap; an empty needle changes nothing.
QString replacedIgnoringCase(const QString &text, QStringView needle, QStringView replacement);

/// text without the blanks (U+0020 only) at its ends.
QStringView trimBlanks(QStringView text);
QStringView trimBlanksLeft(QStringView text);
QStringView trimBlanksRight(QStringView text);

} // namespace sondrel
