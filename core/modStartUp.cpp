#include "core/modStartUp.h"

#include "core/places.h"
#include "core/values.h"
#include "version.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qint64 LongestLog = 32000; // bytes
const QString ErrorTag = u"modStartUp_Main error:  "_s;

// The only trimming there is: at start, and the whole file. Nothing may be written to the log before it, or
// the log would keep the file that goes open.
void trimErrorLog(ApplicationContext &app)
{
    const QString file = app.appFile({u"Error.log"_s});
    if (app.files.size(file) > LongestLog)
        app.files.remove(file);
}

// The header names the title that the deployment gives, so what is wrong with that is told behind it.
void beginLog(ApplicationContext &app, const QString &programFolder)
{
    QString problem;
    try {
        app.deployment = Deployment::load(programFolder);
    } catch (const std::exception &error) {
        problem = errorText(error);
    }
    app.WriteErrorLog(startHeader(app));
    if (!problem.isEmpty())
        app.WriteErrorLog(ErrorTag + problem);
}

} // namespace

QString versionText()
{
    return u"%1.%2.%3"_s.arg(VersionMajor).arg(VersionMinor).arg(VersionRevision);
}

QString startHeader(const ApplicationContext &app)
{
    const QString version =
        u"%1.%2.%3"_s.arg(VersionMajor).arg(VersionMinor).arg(VersionRevision, 2, 10, QChar(u'0'));
    const QStringList lines{
        QString(),
        app.deployment.Title + u" - Version: "_s + version,
        u" Time: "_s + generalDate(app.locale, app.clock.now()),
        QString(36, u'-'),
        u"Path: "_s + app.AppPath,
    };
    return lines.join(u"\r\n"_s);
}

bool Main(ApplicationContext &app, const QString &programFolder, StartUpWindows &windows)
{
    return reportFailure(app, ErrorTag, [&] {
        // A folder that cannot be written keeps nobody from reading what there is.
        reportFailure(app, ErrorTag, [&] { trimErrorLog(app); });
        reportFailure(app, ErrorTag, [&] { app.files.makeFolder(app.AppPath); });
        beginLog(app, programFolder);
        // A data file that cannot be put in its place is missed by the one command that needs it.
        reportFailure(app, ErrorTag, [&] { fillPlaces(app, programFolder); });
        windows.showSplash();
        app.desktop.runPendingEvents();
        app.desktop.beginWait();
        windows.Display();
        removeLeftovers(app); // last: it looks through every project's folder
    });
}

} // namespace sondrel
