#include "project/clsAccount.h"
#include "tests/support/failing_allocation.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

TEST(OutOfMemory, isLoggedByTheReaderOfPlainURLs)
{
    World world;
    clsAccount project(world.app);
    const QString name = u"Garden"_s;
    world.write(u"Projects/Garden/URLs.dat"_s, "http://a.example\r\n");
    bool happened = false;
    std::optional<Collection<QString>> urls;
    {
        const FailingAllocation failing(0);
        urls = project.GetURLCollectionX(name);
        happened = failing.happened();
    }
    EXPECT_TRUE(happened);
    EXPECT_FALSE(urls);
    EXPECT_EQ(world.takeLog(), u"modCommon_GetURLCollectionX: Out of memory"_s);
}
