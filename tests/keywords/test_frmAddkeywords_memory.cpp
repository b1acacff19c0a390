// What the dialog says when memory runs out.
#include "keywords/frmAddkeywords.h"

#include "tests/shell/dialog_test.h"
#include "tests/support/failing_allocation.h"

#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

// Lets one allocation after the other fail until the log tells what is wanted.
bool logsWhenMemoryRunsOut(const QString &tag, const std::function<void(World &, frmAddkeywords &)> &act)
{
    constexpr int MostAllocations = 2000;
    for (int successes = 0; successes < MostAllocations; ++successes) {
        World world;
        frmAddkeywords dialog(world.app);
        dialog.Prepare();
        dialog.show();
        dialog.getWebSite();
        {
            const FailingAllocation failure(successes);
            try {
                act(world, dialog);
            } catch (const std::bad_alloc &) {
                continue; // what acts had none itself
            }
            if (!failure.happened())
                return false;
        }
        if (world.takeLog().contains(tag))
            return true;
    }
    return false;
}

TEST(AddKeywordsWithoutMemory, isLoggedByImport)
{
    EXPECT_TRUE(logsWhenMemoryRunsOut(u"frmAddKeywords_cmdImport_Click error:  "_s,
                                      [](World &, frmAddkeywords &dialog) {
                                          Q_EMIT control<QPushButton>(dialog, u"cmdImport"_s).clicked();
                                      }));
}

TEST(AddKeywordsWithoutMemory, isLoggedByAPage)
{
    EXPECT_TRUE(logsWhenMemoryRunsOut(u"ProcessData_Error: "_s, [](World &world, frmAddkeywords &) {
        world.http.answer(0, "<meta name=keywords content=\"a, b\">");
    }));
}

} // namespace
} // namespace sondrel
