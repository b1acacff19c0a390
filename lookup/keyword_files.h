// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace sondrel {

/// The files that keep what one engine has answered to one keyword of a project: the saved listing, every
/// page as it came, and the report of the listings. Operations throw Failure.
class KeywordFiles
{
public:
    /// The paths of the two folders end in "\". Throws Failure when the names make no possible file name.
    KeywordFiles(ApplicationContext &app, const QString &resultsPath, const QString &reportsPath,
                 const QString &engineName, const QString &projectName, const QString &keyword);

    /// Name of the copy of a page, counted from 1, beside the report.
    QString pageName(int page) const;

    /// Makes the folders and replaces the copy of that page by the bytes and CR LF. The first to be called.
    void savePage(int page, const QByteArray &bytes);
    /// Opens listing and report, which are made when missing.
    void open();
    /// The same without what an earlier run has left in them.
    void openAnew();
    /// Adds to both. A crash may lose this piece, never an earlier one.
    void append(const QString &listing, const QString &report);

private:
    void openFolders();

    ApplicationContext &m_app;
    QString m_resultsFolder;
    QString m_reportsFolder;
    QString m_stem;    // of the files in the reports folder
    QString m_listing; // names
    QString m_report;
    std::optional<HostPath::Folder> m_results;
    std::optional<HostPath::Folder> m_reports;
    std::optional<AppendFile> m_openListing;
    std::optional<AppendFile> m_openReport;
};

} // namespace sondrel
