// What the optimizer says when memory runs out.
#include "optimizer/frame_urls.h"
#include "optimizer/modHTMLParse.h"
#include "optimizer/optimizer_run.h"
#include "tests/support/failing_allocation.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

TEST(OptimizerWithoutMemory, isLoggedAndGivesNothing)
{
    World world;
    const QString page = u"<body><frame src=\"a.html\"> text <p>"_s;
    QString left = page;
    struct Row
    {
        QString log;
        std::function<QString()> act;
    };
    const Row rows[] = {
        {u"modHTMLParse_retrieveMetaTag error: "_s, [&] { return retrieveMetaTag(world.app, page).body; }},
        {u"frmOptimizer_GetFramesetURL error: "_s,
         [&] { return GetFramesetURL(world.app, page, u"a.example"_s).join(u' '); }},
        {u"clsConnect_Findsection error:  "_s,
         [&] { return FindSection(world.app, left, u"<frame"_s, u">"_s); }},
        {u"clsConnect_FindValue error:  "_s, [&] { return FindValue(world.app, page, u"SRC"_s); }},
        {u"clsConnect_FormatURL error:  "_s,
         [&] { return FormatURL(world.app, u"/a.html"_s, u"http://a.example"_s); }},
    };
    for (const Row &row : rows) {
        QString result;
        {
            const FailingAllocation failing(0);
            result = row.act();
            EXPECT_TRUE(failing.happened()) << row.log.toStdString();
        }
        EXPECT_EQ(result, QString()) << row.log.toStdString();
        EXPECT_EQ(world.takeLog(), row.log + u"Out of memory"_s);
        EXPECT_EQ(left, page);
    }
}

TEST(OptimizerWithoutMemory, givesTheReportANameThatNeedsNoMaking)
{
    constexpr int MostAllocations = 500;
    bool fellBack = false;
    for (int successes = 0; successes < MostAllocations && !fellBack; ++successes) {
        World world;
        const QString site = u"http://site.example/a?b=c"_s;
        const FailingAllocation failing(successes);
        const QString name = reportName(world.app, site);
        fellBack = failing.happened() && name == u"opimtizer.html"_s;
    }
    EXPECT_TRUE(fellBack);
}

} // namespace
} // namespace sondrel
