// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/clsDealerProfile.h"
#include "engines/clsEngine.h"
#include "project/clsMain.h"
#include "shell/main_window_settings.h"

#include <QStringList>

#include <memory>

namespace sondrel {

/// What the main window holds from its load to its end.
struct MainWindowState
{
    std::unique_ptr<clsMain> Main;
    std::unique_ptr<clsEngine> Catalogue;
    QStringList Projects;
};

/// The steps of the main window's load that need windows, in the words of loadMainWindow. What it does to the
/// splash window and the tray window must be harmless when that is gone or there already.
class MainWindowSteps
{
public:
    virtual ~MainWindowSteps() = default;

    /// Centres the window, then puts it where it was last.
    virtual void placeWindow(const MainWindowSettings &settings) = 0;
    virtual void setHelpFile(const QString &path) = 0;
    virtual void buildURLColumn() = 0;
    /// Turns the scheduler's timer on or off and shows the text in the panel "AutoRun".
    virtual void setScheduler(bool enabled, const QString &panelText) = 0;
    virtual void hideSplash() = 0;
    virtual void showSplash() = 0;
    virtual void unloadSplash() = 0;
    /// Runs the engine update dialog to its end.
    virtual void updateEngines() = 0;
    virtual void giveTreeItsImages() = 0;
    /// Fills the project list, which shows what has been loaded.
    virtual void showProjects() = 0;
    /// Selects a project, counted from 0.
    virtual void selectProject(int index) = 0;
    /// Opens the dialog for a new project.
    virtual void AddAccount() = 0;
    virtual void showMainWindow() = 0;
    virtual void loadTrayIcon() = 0;
};

/// Loads the main window: its place, settings, engine catalogue and projects. When the catalogue cannot be
/// loaded, or any step fails, it tells so and comes up empty, so that the engine update can be reached.
void loadMainWindow(ApplicationContext &app, MainWindowSteps &steps, MainWindowState &state);

/// The last step of that: loads the project list and shows its first project, or asks for a new one.
void loadProjects(ApplicationContext &app, MainWindowSteps &steps, MainWindowState &state);

/// Lets go of what the main window held, as it unloads. Nobody finds a catalogue from then on.
void releaseMainWindow(ApplicationContext &app, MainWindowState &state);

/// "qlt40.chm" in the application folder when it is there, else "qlt40.hlp".
QString helpFile(const ApplicationContext &app);

/// What the panel "AutoRun" says of the scheduler.
QString schedulerStateText(bool enabled);

/// Whether the splash window hides the maker's logo behind a patch, as a dealer's copy does.
bool hidesMakersLogo(const clsDealerProfile &dealer);

} // namespace sondrel
