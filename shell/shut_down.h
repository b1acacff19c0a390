// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <functional>
#include <optional>

namespace sondrel {

/// What a close request needs of the window of an automatic lookup.
struct AutoLookup
{
    std::function<bool()> Online;
    std::function<void()> Disconnect;
};

/// Asks whether the program is to end, and about an automatic lookup that is running then; cancels that one
/// when told to. False when the program is to go on.
bool mayClose(ApplicationContext &app, const std::optional<AutoLookup> &autoLookup);

} // namespace sondrel
