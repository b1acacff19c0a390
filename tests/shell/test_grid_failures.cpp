// What the rows of the keyword grid and of its list say when memory runs out.
#include "shell/keyword_model.h"
#include "shell/listing_model.h"
#include "tests/support/failing_allocation.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

struct Rows
{
    Rows() : keywords(world.app), model(world.app), unfilled(world.app), listings(world.app)
    {
        keywords.AccountName = u"Demo"_s;
        for (const QString &term : {u"boots"_s, u"travel"_s, u"tea"_s})
            keywords.Add(term, term, -1);
        tracked.Add({u"site.example"_s, false});
        model.setKeywords(&keywords);
        model.PopulateKeywords({});
        unfilled.setKeywords(&keywords);
        listings.setListings({{u"http://www.site.example/shop"_s, u"A"_s}});
        world.takeLog();
    }

    QModelIndex cell(int row, GridField field) const { return model.index(row, static_cast<int>(field)); }

    World world;
    clsKeywords keywords;
    Collection<clsURL> tracked;
    KeywordModel model;
    KeywordModel unfilled;
    const QStringList added{u"hats"_s};
    ListingModel listings;
};

// Lets one allocation after the other fail until the log tells what is wanted.
bool logsWhenMemoryRunsOut(const QString &tag, const std::function<void(Rows &)> &act)
{
    constexpr int MostAllocations = 400;
    for (int successes = 0; successes < MostAllocations; ++successes) {
        Rows rows;
        {
            const FailingAllocation failure(successes);
            try {
                act(rows);
            } catch (const std::bad_alloc &) {
                continue; // the call itself had none
            }
            if (!failure.happened())
                return false;
        }
        if (rows.world.takeLog().contains(tag))
            return true;
    }
    return false;
}

TEST(GridFailures, areLoggedByTheHeader)
{
    EXPECT_TRUE(logsWhenMemoryRunsOut(u"frmSondrel_FormatGridFixRow error   "_s,
                                      [](Rows &rows) { rows.model.FormatGridFixRow(); }));
}

TEST(GridFailures, areLoggedByTheFilling)
{
    EXPECT_TRUE(logsWhenMemoryRunsOut(u"frmSondrel_PopulateKeywords error:  "_s,
                                      [](Rows &rows) { rows.unfilled.PopulateKeywords({}); }));
}

TEST(GridFailures, areLoggedByANewRow)
{
    EXPECT_TRUE(logsWhenMemoryRunsOut(u"frmSondrel_AddNewRow error: "_s,
                                      [](Rows &rows) { rows.model.AddNewRow(clsKeyword()); }));
}

TEST(GridFailures, areLoggedByNewKeywords)
{
    EXPECT_TRUE(logsWhenMemoryRunsOut(u"frmSondrel_AddKeywordColToGrid error: "_s,
                                      [](Rows &rows) { rows.model.AddKeywordColToGrid(rows.added); }));
}

TEST(GridFailures, areLoggedByADeletion)
{
    EXPECT_TRUE(logsWhenMemoryRunsOut(u"frmSondrel_DeleteSelectedKeywords error :  "_s,
                                      [](Rows &rows) { rows.model.removeKeywords({0}); }));
}

TEST(GridFailures, areLoggedByTheMarks)
{
    EXPECT_TRUE(logsWhenMemoryRunsOut(u"frmSondrel_HightLightResultURL: "_s,
                                      [](Rows &rows) { rows.listings.HightLightResultURL(&rows.tracked); }));
}

} // namespace
