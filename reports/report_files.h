// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/folder_index.h"

#include <optional>

// The files of one project's report folder. Writers throw Failure, readers give nothing for a file that is
// not there or whose name cannot be one.

namespace sondrel {

/// The folder's path; throws Failure when the project's name cannot be a folder's.
QString reportFolder(ApplicationContext &app, const QString &project);
/// Makes the folder with its parent when it is missing.
void makeReportFolder(ApplicationContext &app, const QString &project);

/// The path of a file in the folder; throws Failure when its name cannot be a file's.
QString reportFile(ApplicationContext &app, const QString &project, const QString &name);
/// The path of the file if it is there. A link by which browsers find another report's file does not count.
std::optional<QString> existingReport(ApplicationContext &app, const QString &project, const QString &name);
std::optional<QByteArray> readReport(ApplicationContext &app, const QString &project, const QString &name);

/// The names in the folder as they are now, to be asked for by the ten thousand.
class ReportNames
{
public:
    ReportNames(ApplicationContext &app, const QString &project);
    /// True when something in the folder has that name, in any case.
    bool has(const QString &name);

private:
    QString m_folder; // in the system's spelling
    qint64 m_changed = -1;
    FolderIndex m_index;
};

/// Replaces the file in an existing folder.
void writeReport(ApplicationContext &app, const QString &project, const QString &name, QByteArrayView bytes);
/// As writeReport, with the text's last line ended.
void writeReportText(ApplicationContext &app, const QString &project, const QString &name,
                     const QString &text);

/// Opens a report in the desktop's default program.
void openReport(ApplicationContext &app, const QString &path, ShowMode mode);

} // namespace sondrel
