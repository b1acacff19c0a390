#include "reports/report_files.h"

#include "core/modCommon.h"
#include "core/report_folder.h"
#include "core/text_fold.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto Reports = "reports"_L1;

// Whether the file is only the name that a browser makes of another one. A link to a second spelling of the
// same name stands for its file.
bool isOtherFilesName(const QString &native)
{
    const QFileInfo file(native);
    return file.isSymbolicLink() &&
           !equalsIgnoringCase(QFileInfo(file.symLinkTarget()).fileName(), file.fileName());
}

} // namespace

QString reportFolder(ApplicationContext &app, const QString &project)
{
    return app.appFile({Reports, project});
}

void makeReportFolder(ApplicationContext &app, const QString &project)
{
    const QString folder = reportFolder(app, project);
    ensureReportsFolder(app);
    app.files.makeFolder(folder);
}

QString reportFile(ApplicationContext &app, const QString &project, const QString &name)
{
    return app.appFile({Reports, project, name});
}

std::optional<QString> existingReport(ApplicationContext &app, const QString &project, const QString &name)
{
    if (!HostPath::isFileName(project) || !HostPath::isFileName(name))
        return std::nullopt;
    QString path = reportFile(app, project, name);
    if (!app.files.fileExists(path) || isOtherFilesName(*app.files.find(path)))
        return std::nullopt;
    return path;
}

std::optional<QByteArray> readReport(ApplicationContext &app, const QString &project, const QString &name)
{
    const auto path = existingReport(app, project, name);
    return path ? std::optional(app.files.readAll(*path)) : std::nullopt;
}

void writeReport(ApplicationContext &app, const QString &project, const QString &name, QByteArrayView bytes)
{
    app.files.writeAll(reportFile(app, project, name), bytes);
}

void writeReportText(ApplicationContext &app, const QString &project, const QString &name,
                     const QString &text)
{
    QByteArray bytes = app.toBytes(text);
    bytes += "\r\n";
    writeReport(app, project, name, bytes);
}

void openReport(ApplicationContext &app, const QString &path, ShowMode mode)
{
    ShellOpenDocument(app, app.files.find(path).value_or(path), mode);
}

} // namespace sondrel
