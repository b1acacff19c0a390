// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QString>

namespace sondrel {

/// A typed or pasted keyword as the files of keywords can hold it: they know neither quotes nor escapes, so
/// ";" and line ends become blanks, and those at the ends go. Characters that their code page lacks become
/// "?" now, as they would in the file, where two keywords can come to be one that ends the next load.
QString storableKeyword(const ApplicationContext &app, const QString &text);

/// What a person is told when that has changed keywords.
QString cleanedKeywordsText(qsizetype count);

} // namespace sondrel
