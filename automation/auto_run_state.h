// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "project/clsAccount.h"

#include <QDateTime>

#include <optional>

namespace sondrel {

/// Whether a project's lookup is to start now. Throws Failure when its start time is none.
bool isDue(const clsAccount &account, const QDateTime &now);

/// What the panel "AutoRun" says of a project; nothing when it is to stay as it is. isLookedUp tells that the
/// scheduler is looking it up on the engine on show.
std::optional<QString> autoRunText(ApplicationContext &app, const clsAccount &account, bool isLookedUp);

} // namespace sondrel
