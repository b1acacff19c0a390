#include "reports/clsReporter.h"
#include "reports/engine_summary.h"
#include "reports/ranking_reports.h"
#include "reports/text_report.h"
#include "tests/reports/report_world.h"
#include "tests/support/failing_allocation.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

// These routines fail by a lack of memory alone.

namespace sondrel {

namespace {

class LackOfMemory : public testing::Test, public ReportWorld
{
protected:
    // The log of the first run of the step that fails, among runs that fail ever later; what it gave then.
    template <typename Step>
    auto firstFailure(const QString &tag, Step &&step)
    {
        decltype(step()) result;
        for (int successes = 0; successes < 400; ++successes) {
            {
                const FailingAllocation failing(successes);
                result = step();
                if (!failing.happened())
                    break;
            }
            if (takeLog().contains(tag))
                return std::optional(result);
        }
        return std::optional<decltype(step())>();
    }

    Collection<clsKeyword> keywords = rows({row(u"tea"_s, u"3"_s, u"http://site.example/"_s)});
};

} // namespace

TEST_F(LackOfMemory, endsASummary)
{
    EXPECT_EQ(firstFailure(u"frmSondrel_SummaryReport error:  "_s,
                           [&] { return SummaryReport(app, account, u"Finder"_s, keywords); }),
              QString());
    EXPECT_GT(desktop.resets, 0);
}

TEST_F(LackOfMemory, endsAMatrix)
{
    EXPECT_EQ(firstFailure(u"frmSondrel_KeywordURLReport errror: "_s,
                           [&] { return KeywordURLReport(app, account, u"Finder"_s, keywords); }),
              QString());
    EXPECT_GT(desktop.resets, 0);
}

TEST_F(LackOfMemory, endsATextReport)
{
    EXPECT_EQ(firstFailure(u"frmAuto_TextReport error:  "_s,
                           [&] { return TextReport(app, account, u"Finder"_s, keywords, clsPreference()); }),
              QString());
    EXPECT_GT(desktop.resets, 0);
}

TEST_F(LackOfMemory, endsAnEngineSummary)
{
    EXPECT_EQ(firstFailure(u"frmMain_GetEnginesummaryRepoet error: "_s,
                           [&] { return GetEngineSummaryReport(app, account, {}); }),
              EngineSummary());
}

TEST_F(LackOfMemory, leavesAReporterAsFarAsItIsFilled)
{
    setPreference(u"CompanyName"_s, u"Example Ltd"_s);
    const auto reporter = firstFailure(u"SetReporter_Error"_s, [&] { return SetReporter(app); });
    ASSERT_TRUE(reporter);
    EXPECT_NE(*reporter, SetReporter(app));
}

} // namespace sondrel
