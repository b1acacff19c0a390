#include "shell/listing_model.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using testing::ElementsAre;

namespace {

Collection<clsURL> tracked(const std::vector<clsURL> &urls)
{
    Collection<clsURL> result;
    for (const clsURL &url : urls)
        result.Add(url);
    return result;
}

} // namespace

TEST(ListingModel, tellsWhoseAListingIs)
{
    World world;
    const auto urls = tracked({{u"site.example"_s, false}, {u" rival.example "_s, true}});
    EXPECT_THAT(
        listingOwners(world.app,
                      {{u"http://www.site.example/a"_s, u"A"_s},
                       {u"http://rival.example/"_s, u"B"_s},
                       {u"http://other.example/"_s, u"C"_s},
                       {u"  "_s, u"D"_s}},
                      &urls),
        ElementsAre(ListingOwner::Own, ListingOwner::Competitor, ListingOwner::Nobody, ListingOwner::Nobody));
}

TEST(ListingModel, letsTheLastMatchDecide)
{
    World world;
    const auto urls = tracked({{u"site.example"_s, false}, {u"site.example/shop"_s, true}});
    EXPECT_THAT(listingOwners(world.app, {{u"http://site.example/shop/a"_s, u"A"_s}}, &urls),
                ElementsAre(ListingOwner::Competitor));
}

TEST(ListingModel, showsUtf8AsItIsMeant)
{
    World world;
    EXPECT_EQ(shownText(world.app, u"caf\u00c3\u00a9"_s), u"caf\u00e9"_s);
    EXPECT_EQ(shownText(world.app, u"caf\u00e9"_s), u"caf\u00e9"_s) << "a page in the code page stays";
    EXPECT_EQ(shownText(world.app, u"\u4e2d"_s), u"\u4e2d"_s);
}

TEST(ListingModel, numbersTitlesAndAddresses)
{
    World world;
    ListingModel model(world.app);
    model.setListings({{u"http://a.example/"_s, u"A"_s}, {u"http://b.example/"_s, u"B"_s}});
    EXPECT_EQ(model.index(1, ListingModel::Number).data().toString(), u"2"_s);
    EXPECT_EQ(model.index(1, ListingModel::Title).data().toString(), u"B"_s);
    EXPECT_EQ(model.index(1, ListingModel::Url).data().toString(), u"http://b.example/"_s);
    EXPECT_EQ(model.headerData(0, Qt::Horizontal).toString(), u"#"_s);
}

TEST(ListingModel, marksItsRows)
{
    World world;
    ListingModel model(world.app);
    model.setListings({{u"http://a.example/"_s, u"A"_s}});
    const auto urls = tracked({{u"a.example"_s, false}});
    model.HightLightResultURL(&urls);
    EXPECT_EQ(model.index(0, 0).data(ListingModel::OwnerRole).value<ListingOwner>(), ListingOwner::Own);
    model.HightLightResultURL(nullptr);
    EXPECT_EQ(model.index(0, 0).data(ListingModel::OwnerRole).value<ListingOwner>(), ListingOwner::Nobody);
}
