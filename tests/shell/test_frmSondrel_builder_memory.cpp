// What the keyword grid says when there is no memory for the suggestions.
#include "tests/shell/main_window_test.h"
#include "tests/support/failing_allocation.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

class SuggestionMemory : public MainWindowTest
{
};

TEST_F(SuggestionMemory, isMissedByTheGrid)
{
    writeShop();
    open();
    frmSondrel &grid = child();
    {
        const FailingAllocation failing(0);
        grid.BuildKeyword();
        EXPECT_TRUE(failing.happened());
    }
    EXPECT_EQ(world.takeLog(), u"frmSondrel_BuildKeyword:  Out of memory"_s);
}

} // namespace
} // namespace sondrel
