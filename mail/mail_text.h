// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QString>

// How the text of a mail becomes lines that every server takes.

namespace sondrel {

/// Breaks lines of 75 characters and more at a blank in front of that place; the blank stays at the end of
/// the line. A text without any line end stays as it is.
QString wrapWords(const QString &text);

/// The bytes with CR LF at every line end.
QByteArray withMailLineEnds(QByteArrayView bytes);

/// True when the bytes cannot travel as they are: a line above 998 bytes, a byte above 127 or a NUL.
bool needsEncoding(QByteArrayView lines);

/// Standard quoted-printable of lines that end in CR LF; nothing is lost.
QByteArray quotedPrintableLines(QByteArrayView lines);

} // namespace sondrel
