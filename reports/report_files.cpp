#include "reports/report_files.h"

#include "core/modCommon.h"
#include "core/native_file.h"
#include "core/report_folder.h"
#include "core/text_fold.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto Reports = "reports"_L1;

// Whether the link is only the name that a browser makes of another file. One to a second spelling of the
// same name stands for its file.
bool isOtherFilesName(const QString &native)
{
    const QFileInfo link(native);
    return !equalsIgnoringCase(QFileInfo(link.symLinkTarget()).fileName(), link.fileName());
}

// The file in the system's spelling.
std::optional<QString> nativeReport(ApplicationContext &app, const QString &path)
{
    auto native = app.files.find(path);
    const mode_t mode = native ? modeOf(*native) : 0;
    const bool isThere =
        S_ISREG(mode) || (S_ISLNK(mode) && app.files.fileExists(path) && !isOtherFilesName(*native));
    return isThere ? native : std::nullopt;
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
    return nativeReport(app, path) ? std::optional(std::move(path)) : std::nullopt;
}

std::optional<QByteArray> readReport(ApplicationContext &app, const QString &project, const QString &name)
{
    if (!HostPath::isFileName(project) || !HostPath::isFileName(name))
        return std::nullopt;
    const auto native = nativeReport(app, reportFile(app, project, name));
    return native ? std::optional(app.files.readAll(*native)) : std::nullopt;
}

ReportNames::ReportNames(ApplicationContext &app, const QString &project)
    : m_folder(app.files.find(reportFolder(app, project)).value_or(QString())),
      m_changed(folderTime(m_folder))
{
}

bool ReportNames::has(const QString &name)
{
    return m_index.spelling(m_folder, m_changed, name).has_value();
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
