// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// Who the reports say they come from.
struct clsReporter
{
    QString Name;
    QString Email;
    QString URL;
    QString Company;
    QString LogoURL;
    /// Holds "Top", "Bottom", both or neither.
    QString LogoPosition;
    QString TutorialPage;

    bool operator==(const clsReporter &) const = default;

    bool hasLogoAtTop() const;
    bool hasLogoAtBottom() const;
};

/// The reporter of the settings as they are now; the vendor's details stand in for what is empty there.
clsReporter SetReporter(ApplicationContext &app);

} // namespace sondrel
