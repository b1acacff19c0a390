// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/clsDealerProfile.h"
#include "core/clsPreference.h"
#include "optimizer/page_analysis.h"

namespace sondrel {

/// Who gives a report, and when.
struct ReportOccasion
{
    clsPreference preference;
    clsDealerProfile dealer;
    QString knowledgeBase; // address of the site
    // The day, in its long form and as the two sample listings write it.
    QString longDate;
    QString dateWithBlanks;
    QString dateWithHyphens;
};

/// The occasion of a report that is given now.
ReportOccasion reportOccasion(const ApplicationContext &app, const clsPreference &preference,
                              const clsDealerProfile &dealer);

/// Writes the advice on a page as one HTML document.
class OptimizerReport
{
public:
    OptimizerReport(const PageAnalysis &page, const ReportOccasion &occasion)
        : m_page(page), m_occasion(occasion)
    {
    }

    QString text(const OptimizerSteps &step = {}) const;

private:
    QString head() const;
    QString logo() const;
    QString simulation() const;
    QString keywordSection() const;
    QString descriptionSection() const;
    QString titleSection() const;
    QString contentsSection() const;
    QString frameSection() const;
    QString descriptionTable() const;
    QString bodyTable() const;
    QString reasonsSection() const;
    QString tips() const;
    QString footer() const;
    QString metaTagPage(const QString &place, const QString &caption) const;

    const PageAnalysis &m_page;
    const ReportOccasion &m_occasion;
};

} // namespace sondrel
