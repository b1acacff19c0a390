// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QStringList>

#include <functional>

// Lists of keywords as people and files write them.

namespace sondrel {

/// Told now and then how many characters of the text have been taken, and how many there are.
using TextProgress = std::function<void(qsizetype taken, qsizetype all)>;

/// The keywords of a text, split at the delimiter, or at line ends where there is none: trimmed, in their
/// order, each once, none empty.
QStringList splitKeywords(const QString &text, const QString &delimiter, const TextProgress &progress = {});

/// The text of a keyword file: UTF-8 or UTF-16 when the file shows it, by a mark or by its bytes; otherwise
/// that of the system code page.
QString keywordFileText(const ApplicationContext &app, const QByteArray &bytes);

} // namespace sondrel
