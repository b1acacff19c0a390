// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/collection.h"
#include "engines/clsEngine.h"
#include "project/clsAccount.h"
#include "project/clsKeyword.h"
#include "reports/report_status.h"
#include "tests/support/world.h"

#include <utility>
#include <vector>

namespace sondrel {

/// A world with engines in three markets and the project "Demo" on one of them, which tracks two URLs.
class ReportWorld : public World
{
public:
    ReportWorld();

    clsEngine engines;
    clsAccount account;
    /// What was shown while reports were made.
    QStringList panels;
    std::vector<std::pair<int, int>> progress;
    ReportStatus status;

    void setEngines(const QStringList &names);
    void setUrls(const QList<clsURL> &urls);
    /// The stored results of an engine: each line a keyword and its position.
    void writeResults(const QString &engine, const std::vector<std::pair<QString, QString>> &positions) const;

    static clsKeyword row(const QString &keyword, const QString &position = {}, const QString &url = {},
                          const QString &count = {});
    static Collection<clsKeyword> rows(const std::vector<clsKeyword> &rows);

    /// A file of the project's report folder, in the code page of the reports.
    QString report(const QString &name) const;
    bool hasReport(const QString &name) const;
    void writeReportFile(const QString &name, const QByteArray &bytes) const;
};

} // namespace sondrel
