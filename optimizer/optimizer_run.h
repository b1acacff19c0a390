// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/clsDealerProfile.h"
#include "core/clsPreference.h"

#include <optional>

namespace sondrel {

/// Where a run shows how far it is.
class OptimizerView
{
public:
    virtual ~OptimizerView() = default;

    virtual void showProgress(int value) = 0;
    virtual void showStatus(const QString &text) = 0;
};

/// The progress value of a whole run.
inline constexpr int OptimizerMaximum = 17;

/// Whose name a report bears.
struct OptimizerIdentity
{
    clsPreference preference;
    clsDealerProfile dealer;

    /// As the settings have it now.
    static OptimizerIdentity current(ApplicationContext &app);
};

enum class OptimizerOutcome { NoDocument, Failed, Done };

/// One run: its page, and behind it the report.
struct OptimizerRun
{
    QString siteURL; // as it stands in the address box
    QString pageText;
    /// Read anew for the run when absent.
    std::optional<OptimizerIdentity> identity;

    QString document;
    QString file; // where the report is to be; empty until that is known
};

/// What the file of a page's report is called, whether or not a file can be called so.
QString reportName(ApplicationContext &app, const QString &siteURL);

/// Judges the page, writes the report and opens it. What goes wrong is said by a message box.
OptimizerOutcome processPage(ApplicationContext &app, OptimizerRun &run, OptimizerView &view);

} // namespace sondrel
