#include "engines/clsEngine.h"
#include "tests/support/failing_allocation.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class OutOfMemory : public testing::Test
{
protected:
    OutOfMemory() : engines(world.app)
    {
        world.writeEngineData("[Markets]\n1=A\n[A]\n1=Finder\n[Finder]\nEngineURL=http://finder.example/\n");
        engines.loadEngineData();
        world.takeLog();
    }

    // What a query gives that finds no memory.
    template <typename Query>
    QString starved(Query &&query)
    {
        const FailingAllocation failing(0);
        QString result = query();
        happened = failing.happened();
        return result;
    }

    World world;
    clsEngine engines;
    const QString name = u"Finder"_s;
    bool happened = false;
};

} // namespace

TEST_F(OutOfMemory, givesNoQuery)
{
    EXPECT_EQ(starved([&] { return engines.GetURL(name, name); }), QString());
    EXPECT_TRUE(happened);
    EXPECT_EQ(world.takeLog(), u"clsEngine_GetURL error:  Out of memory"_s);
}

TEST_F(OutOfMemory, givesNoAddress)
{
    EXPECT_EQ(starved([&] { return engines.EngineURL(name); }), QString());
    EXPECT_TRUE(happened);
    EXPECT_EQ(world.takeLog(), u"clsEngine_GetURL error:  Out of memory"_s);
}
