#include "engines/clsEngine.h"
#include "engines/engine_builder.h"
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

namespace {

class BuilderOutOfMemory : public testing::Test
{
protected:
    BuilderOutOfMemory() : builder(world.app)
    {
        world.desktop.texts = {u"Finder"_s};
        builder.AddNew();
    }

    World world;
    EngineBuilder builder;
};

} // namespace

TEST_F(BuilderOutOfMemory, listsNoEngines)
{
    QString lines;
    {
        const FailingAllocation failing(0);
        lines = builder.GetMarketEngines({});
        EXPECT_TRUE(failing.happened());
    }
    EXPECT_EQ(lines, QString());
    EXPECT_EQ(world.takeLog(), u"frmEngineBuilder_ErrorHabndler error; Out of memory"_s);
}

TEST_F(BuilderOutOfMemory, writesNoSections)
{
    QString text;
    {
        const FailingAllocation failing(0);
        text = builder.CovertEngineDataColToString();
        EXPECT_TRUE(failing.happened());
    }
    EXPECT_EQ(text, QString());
    EXPECT_EQ(world.takeLog(), u"frmEngineBuilder_CovertEngineDataColToString error: Out of memory"_s);
}

TEST_F(BuilderOutOfMemory, keepsTheRecordAsItWas)
{
    clsEngineData entered;
    entered.EngineName = u"Other"_s;
    const QString name = u"FINDER"_s;
    {
        const FailingAllocation failing(0);
        builder.SaveObject(name, entered);
        EXPECT_TRUE(failing.happened());
    }
    EXPECT_EQ(builder.Engines().at(1).EngineName, u"Finder"_s);
    EXPECT_EQ(world.takeLog(), u"frmEngineBuilder_SaveObject error: Out of memory"_s);
}
