// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/code_page.h"

class QWidget;

namespace sondrel {

/// Sets the text of a text control in a code page: what the page lacks shows as "?", an unknown page gives no
/// text. Should the conversion fail, the plain text is set. Controls without a text are left alone.
void TextEx(QWidget &control, const QString &text, int codePage);

} // namespace sondrel
