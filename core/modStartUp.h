// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// The running version as it is stored: "4.0.0".
QString versionText();

/// What every start writes at the head of its records: title, version, time and path.
QString startHeader(const ApplicationContext &app);

/// The steps of the program's start that need windows.
class StartUpWindows
{
public:
    virtual ~StartUpWindows() = default;

    /// Shows the splash window, without waiting for its end.
    virtual void showSplash() = 0;
    /// Makes the main window and loads it.
    virtual void Display() = 0;
};

/// The start of the program, up to the event loop: trims Error.log, prepares the program's folders, writes
/// the start header, and brings the windows up. programFolder is where the executable lies. False, with a
/// line in the log, when it failed.
bool Main(ApplicationContext &app, const QString &programFolder, StartUpWindows &windows);

} // namespace sondrel
