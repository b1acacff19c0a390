// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <optional>

namespace sondrel {

/// Where a window stands, in the units of the screen.
struct WindowPlace
{
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const WindowPlace &) const = default;
};

/// What the settings keep of the main window.
struct MainWindowSettings
{
    /// Nothing when it has never been stored, or holds anything but four numbers.
    std::optional<WindowPlace> place;
    bool urlBoxOpen = false;

    bool operator==(const MainWindowSettings &) const = default;
};

MainWindowSettings loadMainWindowSettings(ApplicationContext &app);

/// Stores place and box. A minimised window has no place worth keeping: then neither is stored.
void saveMainWindowSettings(ApplicationContext &app, const WindowPlace &place, bool urlBoxOpen,
                            bool minimised);

} // namespace sondrel
