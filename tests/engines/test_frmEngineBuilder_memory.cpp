// What the Engine Builder says when memory runs out.
#include "engines/frmEngineBuilder.h"
#include "tests/shell/dialog_test.h"
#include "tests/support/failing_allocation.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

TEST(EngineBuilderMemory, isMissedByClearedFields)
{
    World world;
    frmEngineBuilder dialog(world.app);
    dialog.show();
    {
        const FailingAllocation failing(0);
        dialog.ClearFields();
        EXPECT_TRUE(failing.happened());
    }
    EXPECT_EQ(world.takeLog(), u"frmEngineBuilder_ClearFields error: Out of memory"_s);
}

} // namespace
} // namespace sondrel
