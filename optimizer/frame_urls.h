// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QStringList>

// The addresses of a page's frames, and the scanning that finds them. Searches ignore case; a failing routine
// logs its tag and gives what it has so far.

namespace sondrel {

/// The addresses of all frames, in the order of the page, made whole by the page's own address.
QStringList GetFramesetURL(ApplicationContext &app, const QString &html, const QString &siteURL);

/// Cuts the next section out of text, with its begin string and without its end string, and shortens text to
/// what follows, one character further on. Without the begin string the section runs through the end string;
/// without the end string it is all the rest, which stays.
QString FindSection(ApplicationContext &app, QString &text, const QString &start, const QString &end);
/// The value of an attribute: up to the closing quotation mark, or to the next blank where it has none.
QString FindValue(ApplicationContext &app, const QString &section, const QString &key);
/// The address that a link on the page base leads to.
QString FormatURL(ApplicationContext &app, const QString &url, const QString &base);

} // namespace sondrel
