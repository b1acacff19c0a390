// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QDate>
#include <QDateTime>
#include <QLocale>
#include <QString>

#include <optional>

namespace sondrel {

/// True when the whole text is a number: white space at its ends, an optional sign, digits with "," anywhere
/// before an optional "." and more digits, an optional exponent, at least one digit before the exponent.
/// "1,240,000" is one, "" and "12a" are not.
bool isNumeric(QStringView text);

/// The leading number of a text: white space in front is skipped, reading stops at the first character that
/// does not belong to the number, as a "," does not; none gives 0.
double leadingNumber(QStringView text);

/// Strict conversion of a text that isNumeric; halves round to the even number. Throws Failure ("Type
/// mismatch" for other texts, "Overflow" beyond the range).
qint16 toInt16(QStringView text);
qint32 toInt32(QStringView text);
/// Rounds halves to even; throws Failure "Overflow" beyond the range.
qint16 roundToInt16(double value);
qint32 roundToInt32(double value);

/// Strict conversion: "True" or "False" in any case, or a text that isNumeric (0 is false). Throws Failure
/// "Type mismatch" for others.
bool toBoolean(QStringView text);
/// "True" or "False".
QString booleanText(bool value);

/// A number as decimal text without superfluous digits: 3, -3, 2.5.
QString numberText(double value);

// Dates as the locale writes them, in a form that 8-bit files can hold as far as the locale allows: ASCII
// digits, ordinary blanks and no invisible marks.

/// The locale's short date with a four-digit year; en_US "11/15/2026".
QString shortDate(const QLocale &locale, QDate date);
/// The locale's long date; en_US "Sunday, November 15, 2026".
QString longDate(const QLocale &locale, QDate date);
/// Short date, blank, long time without a zone; en_US "11/15/2026 10:00:00 AM".
QString generalDate(const QLocale &locale, const QDateTime &when);

} // namespace sondrel
