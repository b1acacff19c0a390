// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

// Escapes for query strings and file names, quoted-printable, and the 7bit/8bit test. Character values are
// those of the system code page.

namespace sondrel {

/// Every character as "%" and the hexadecimal digits of its ANSI value, unpadded; double-byte engines take
/// it.
QString EncodedStringX(ApplicationContext &app, const QString &text);
/// Marks that are special in queries and file names escaped by a fixed table, a blank as "+". Both quotation
/// marks become "%27".
QString EncodedString(ApplicationContext &app, const QString &text);
/// As EncodedString, with U+00C0 to U+00FF as the two bytes of UTF-8.
QString StrToUTF8Encode(ApplicationContext &app, const QString &text);

/// Quoted-printable with the mail sender's own line rules: what follows the last line feed or soft break is
/// lost unless nothing was broken before it.
QString QuotedPrintableEncode(ApplicationContext &app, const QString &text);
/// One character as "=" and two hexadecimal digits.
QString QuotedPrintableChar(ApplicationContext &app, const QString &character);
/// "8bit" if a character has an ANSI value above 127, else "7bit".
QString CharSet(ApplicationContext &app, const QString &text);

} // namespace sondrel
