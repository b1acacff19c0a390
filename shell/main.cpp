// marovia-sondrel: the program. Its doors to the outside are made here.
#include "automation/qt_tray_icon.h"
#include "core/file_settings_store.h"
#include "core/places.h"
#include "core/system_clock.h"
#include "lookup/curl_http_control.h"
#include "mail/curl_smtp_session.h"
#include "reports/spreadsheet_plugin.h"
#include "shell/damaged_stores.h"
#include "shell/program.h"
#include "shell/program_application.h"
#include "shell/qt_desktop.h"
#include "shell/single_instance.h"

using namespace sondrel;

int main(int argc, char **argv)
{
    ProgramApplication application(argc, argv);
    const DesktopFolders folders = desktopFolders();
    const Places places = placesIn(folders);
    SingleInstance instance(places.appPath);
    if (!instance.claim())
        return 0;

    SystemClock clock;
    QtDesktop desktop;
    const QString problem = putAsideDamagedSettings(places.settingsFile);
    FileSettingsStore settings(places.settingsFile);
    const ApplicationContext *context = nullptr;
    CurlTransport http([&context](QStringView text) { return context->toBytes(text); });
    CurlSmtpTransport mail;
    ApplicationContext app(places.appPath, places.systemDirectory,
                           Doors{clock, desktop, settings, http, &mail}, QLocale::system());
    context = &app;
    PluginSpreadsheets spreadsheets(folders.program + QStringLiteral("/sondrel-calc"));
    app.Spreadsheets = &spreadsheets;
    app.Manual = folders.program + QStringLiteral("/manual/index.html");
    application.onError = [&app](const std::exception &error) {
        app.WriteErrorLog(QStringLiteral("modStartUp_Main error:  ") + errorText(error));
    };

    QtTrayIcon tray;
    Program program(app, tray, problem);
    settings.onUnwritten =
        app.files.onUnwritten = [&program](const QString &unwritten) { program.tellUnwritten(unwritten); };
    QObject::connect(&instance, &SingleInstance::raiseWanted, &program, &Program::raise);
    QObject::connect(&program, &Program::ended, &application, &QCoreApplication::quit);
    if (!Main(app, folders.program, program)) {
        desktop.resetPointer();
        desktop.showMessage({app.deployment.Title,
                             QStringLiteral("The program cannot start. 'Error.log' in '") + app.AppPath +
                                 QStringLiteral("' says why."),
                             MessageIcon::Critical, MessageButtons::Ok});
        return 1;
    }
    return program.hasEnded() ? 0 : QApplication::exec();
}
