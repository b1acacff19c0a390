// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

// Text clean-up for fetched pages and stored lines. Searches ignore case.

namespace sondrel {

/// The text of an HTML page: tags removed, paragraphs and line breaks as CR LF, every line but the first
/// without blanks in front. Entities stay.
QString StripHTML(ApplicationContext &app, QString html);

/// The field of that number, counted from 1; numbers below 2 give the first. Behind a delimiter the next
/// field begins one character on, however long the delimiter is.
QString ParseString(ApplicationContext &app, const QString &text, const QString &delimiter, int number);

/// Line ends to blanks, then runs of four, three and two blanks to one, each in a single pass.
QString CollapseSpaces(QString text);

/// Cuts a closing "(...)" of fewer than five characters, as further hits of a keyword carry it. True when it
/// did; otherwise the text stays.
bool StripRowSuffix(QString &text);

} // namespace sondrel
