#include "shell/project_tree.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

Collection<QString> collection(const QStringList &texts)
{
    Collection<QString> result;
    for (const QString &text : texts)
        result.Add(text, text);
    return result;
}

} // namespace

TEST(ProjectTree, keepsTheCataloguesOrderAndTheProjectsEngines)
{
    World world;
    const auto engines = collection({u"Perla"_s, u"finder"_s});
    EXPECT_THAT(projectTree(world.app,
                            collection({u"Global|Finder"_s, u"Global|Lookfar"_s, u"Norge|Perla"_s}),
                            &engines),
                ElementsAre(MarketNode{u"Global"_s, {u"Finder"_s}}, MarketNode{u"Norge"_s, {u"Perla"_s}}));
}

TEST(ProjectTree, startsAMarketAnewWhereTheCatalogueDoes)
{
    World world;
    const auto engines = collection({u"A"_s, u"B"_s, u"C"_s});
    EXPECT_THAT(projectTree(world.app, collection({u"Global|A"_s, u"Norge|B"_s, u"Global|C"_s}), &engines),
                ElementsAre(MarketNode{u"Global"_s, {u"A"_s}}, MarketNode{u"Norge"_s, {u"B"_s}},
                            MarketNode{u"Global"_s, {u"C"_s}}));
}

TEST(ProjectTree, isEmptyWithoutCatalogueOrEngines)
{
    World world;
    const auto engines = collection({u"A"_s});
    EXPECT_THAT(projectTree(world.app, std::nullopt, &engines), IsEmpty());
    EXPECT_THAT(projectTree(world.app, collection({u"Global|A"_s}), nullptr), IsEmpty());
}

TEST(ProjectTree, tellsEnginesFromMarketsByTheirKeys)
{
    EXPECT_TRUE(isEngineKey(engineKey(u"Finder"_s)));
    EXPECT_FALSE(isEngineKey(marketKey(u"Global"_s)));
}

TEST(EnginePage, opensOnlyWhatCanBeAnAddress)
{
    EXPECT_EQ(enginePageAddress(u"http://finder.example/find"_s, false), u"http://finder.example/find"_s);
    EXPECT_EQ(enginePageAddress(u"http://.x"_s, false), std::nullopt) << "a dot before the ninth character";
    EXPECT_EQ(enginePageAddress(u"finder.example"_s, false), std::nullopt);
    EXPECT_EQ(enginePageAddress(QString(), true), std::nullopt);
}

TEST(EnginePage, takesTheSecurePrefixOutOfOneEnginesLogin)
{
    EXPECT_EQ(enginePageAddress(u"https://a-secure.overture.example/login"_s, true),
              u"https://secure.overture.example/login"_s);
    EXPECT_EQ(enginePageAddress(u"https://a-secure.overture.example/login"_s, false),
              u"https://a-secure.overture.example/login"_s);
}
