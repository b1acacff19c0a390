// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

// What a person types or pastes into a field. Pasted texts bring along what stood around them where they were
// copied: blanks, tabs, line ends, signs without width.

namespace sondrel {

/// One line: nothing of that at its ends, one blank for a line end inside and what stands around it.
QString enteredLine(const QString &text);

/// A list of mail addresses: the same, and a comma between addresses that stood on lines of their own.
QString enteredAddresses(const QString &text);

/// A text in which every blank counts, as in a password or a piece of a page: only line ends go, which no
/// field can hold.
QString enteredExactly(const QString &text);

} // namespace sondrel
