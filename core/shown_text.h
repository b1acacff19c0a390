// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// A stored text as a person should see it: decoded as UTF-8 when its bytes are that.
QString shownText(const ApplicationContext &app, const QString &stored);

} // namespace sondrel
