// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QString>

namespace sondrel {

/// The folders that the desktop gives to a program and its user.
struct DesktopFolders
{
    /// Where the executable lies.
    QString program;
    /// Where the user's programs keep their data, and their settings.
    QString userData;
    QString userConfig;
};

/// The folders of this process: executable's and those of the XDG base directories.
DesktopFolders desktopFolders();

/// Where the program keeps what it writes. All in the system's spelling.
struct Places
{
    /// The application folder: the program's own, unless the program has been installed (a file "installed"
    /// lies beside it) or its folder cannot be written; then one in the user's data.
    QString appPath;
    /// Empty when the user has no data folder.
    QString systemDirectory;
    QString settingsFile;
};

Places placesIn(const DesktopFolders &folders);

/// Makes the application folder and the system directory, and puts copies there of the data files that lie
/// beside the program. A file that is there stays as it is, whatever the case of its name; only the help
/// follows the program. Throws Failure.
void fillPlaces(ApplicationContext &app, const QString &programFolder);

/// Removes what the program has left in its folders when it was killed while it wrote a file; what another
/// process is writing stays.
void removeLeftovers(const ApplicationContext &app);

/// The folder's path as other names are put behind it: cut at the first NUL, no blanks at its end, one "\"
/// ensured. Empty for none.
QString GetSystemDirectoryPath(const QString &folder);

} // namespace sondrel
