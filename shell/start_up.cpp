#include "shell/start_up.h"

#include "core/clsPreference.h"
#include "core/report_folder.h"
#include "core/text_fold.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

void loadSettings(ApplicationContext &app, MainWindowSteps &steps)
{
    clsPreference preference;
    preference.GetSettings(app);
    steps.setScheduler(preference.SchedulerEnable, schedulerStateText(preference.SchedulerEnable));
}

void updateEnginesOfNewVersion(MainWindowSteps &steps)
{
    steps.hideSplash();
    steps.updateEngines();
    steps.showSplash();
}

void loadCatalogue(ApplicationContext &app, MainWindowSteps &steps, MainWindowState &state)
{
    state.Catalogue = std::make_unique<clsEngine>(app);
    state.Catalogue->beforeMissingMessage = [&steps] { steps.unloadSplash(); };
    app.EngineCatalogue = state.Catalogue.get();
    if (!state.Catalogue->loadEngineData())
        throw Failure(state.Catalogue->loadError());
}

void tell(ApplicationContext &app, const QString &problem)
{
    app.desktop.showMessage(
        {app.deployment.Title,
         u"Error occur while loading the program. Please report this error to the the software vendor at '"_s +
             app.deployment.SupportEmail + u"'.\r\n\r\nError: "_s + problem,
         MessageIcon::Critical, MessageButtons::Ok});
}

} // namespace

void loadProjects(ApplicationContext &app, MainWindowSteps &steps, MainWindowState &state)
{
    steps.giveTreeItsImages();
    if (!state.Main)
        state.Main = std::make_unique<clsMain>(app);
    state.Projects.clear(); // they may have been read before, for a project that was added meanwhile
    state.Main->loadAccount(state.Projects);
    steps.showProjects();
    if (!state.Projects.isEmpty()) {
        steps.selectProject(0);
        return;
    }
    steps.unloadSplash();
    app.desktop.resetPointer();
    steps.AddAccount();
}

void loadMainWindow(ApplicationContext &app, MainWindowSteps &steps, MainWindowState &state)
{
    try {
        steps.placeWindow(loadMainWindowSettings(app));
        steps.setHelpFile(helpFile(app));
        ensureReportsFolder(app);
        steps.buildURLColumn();
        loadSettings(app, steps);
        if (app.FirstRun)
            updateEnginesOfNewVersion(steps);
        loadCatalogue(app, steps, state);
        loadProjects(app, steps, state);
        steps.showMainWindow();
        steps.loadTrayIcon();
        steps.unloadSplash();
        app.desktop.resetPointer();
    } catch (const std::exception &error) {
        const QString problem = errorText(error);
        tell(app, problem);
        app.WriteErrorLog(u"FrmMain_load_Error: "_s + problem);
        app.desktop.resetPointer();
        steps.loadTrayIcon();
        steps.unloadSplash();
        steps.showMainWindow();
    }
}

void releaseMainWindow(ApplicationContext &app, MainWindowState &state)
{
    state.Main.reset();
    app.EngineCatalogue = nullptr;
    state.Catalogue.reset();
}

QString helpFile(const ApplicationContext &app)
{
    const QString compiled = app.appFile({u"qlt40.chm"_s});
    return app.files.fileExists(compiled) ? compiled : app.appFile({u"qlt40.hlp"_s});
}

QString schedulerStateText(bool enabled)
{
    return enabled ? u"Scheduler On"_s : u"Scheduler off"_s;
}

bool hidesMakersLogo(const clsDealerProfile &dealer)
{
    return !containsIgnoringCase(dealer.Dealername, u"Kestrune");
}

} // namespace sondrel
