#include "core/modCommon.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

struct Comparison
{
    const char *name;
    const char16_t *found;
    const char16_t *tracked;
    bool same;
};

class CompareUrl : public testing::TestWithParam<Comparison>
{
};

const Comparison comparisons[] = {
    {"pageOfTheHost", u"https://www.Site.example/a", u"site.example", true},
    {"shorterThanTracked", u"site.example", u"site.example/shop", true},
    {"pageBelowTracked", u"site.example/shop/a.html", u"site.example/shop", true},
    {"otherFolderOfTheHost", u"site.example/blog", u"site.example/shop", false},
    {"blanksRoundBoth", u"  http://site.example/ ", u" http://www.site.example", true},
    {"wwwOfTrackedOnly", u"site.example/a", u"http://www.site.example/", true},
    {"secondSchemeIsPath", u"dir.example//site.example", u"site.example", true},
    {"headOfLongerHostInPath", u"dir.example/go/site.example.au", u"site.example", false},
    {"wholeHostInPath", u"dir.example/go/site.example/x", u"site.example", true},
    {"bothInPath", u"dir.example/site.example/site.example.au", u"site.example", false},
    {"inPathInOtherCase", u"dir.example/go/SITE.Example/x", u"site.example", true},
    {"longerHost", u"subsite.example", u"site.example", false},
    {"longerHostWithPath", u"other-site.example/a", u"site.example", false},
    {"subdomain", u"shop.site.example", u"site.example", false},
    {"port", u"site.example:8080/a", u"site.example", false},
    {"unrelated", u"a.example", u"b.example", false},
    {"nothingFound", u"", u"site.example", false},
    {"nothingTrackedOnHost", u"site.example", u"", false},
    {"nothingAtAll", u"", u" ", false},
    {"nothingBehindTheSchemes", u"http://www.", u"http://", false},
    {"slashOfNoHost", u"http://www.", u"/", true},
};

} // namespace

TEST_P(CompareUrl, decidesByHostAndPath)
{
    World world;
    const Comparison &row = GetParam();
    EXPECT_EQ(CompareURL(world.app, QString::fromUtf16(row.found), QString::fromUtf16(row.tracked)),
              row.same);
}

INSTANTIATE_TEST_SUITE_P(Urls, CompareUrl, testing::ValuesIn(comparisons),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(AddHTTPToURL, addsASchemeWhereNoneIs)
{
    World world;
    EXPECT_EQ(AddHTTPToURL(world.app, u"  www.a.example "_s), u"http://www.a.example"_s);
    EXPECT_EQ(AddHTTPToURL(world.app, u"ftp://a.example"_s), u"http://ftp://a.example"_s);
    EXPECT_EQ(AddHTTPToURL(world.app, u" "_s), u"http://"_s);
}

TEST(AddHTTPToURL, leavesWhatBeginsWithHttp)
{
    World world;
    EXPECT_EQ(AddHTTPToURL(world.app, u"HTTP://a.example"_s), u"HTTP://a.example"_s);
    EXPECT_EQ(AddHTTPToURL(world.app, u" https://a.example "_s), u"https://a.example"_s);
    EXPECT_EQ(AddHTTPToURL(world.app, u"httpd.example"_s), u"httpd.example"_s);
}

TEST(GetHostFromURL, takesWhatStandsBetweenTheSlashes)
{
    World world;
    EXPECT_EQ(GetHostFromURL(world.app, u"http://www.a.example:80/b//c"_s), u"www.a.example:80"_s);
    EXPECT_EQ(GetHostFromURL(world.app, u" a.example "_s), u" a.example "_s);
    EXPECT_EQ(GetHostFromURL(world.app, u"a.example//b.example/c"_s), u"b.example"_s);
    EXPECT_EQ(GetHostFromURL(world.app, u""_s), u""_s);
}

TEST(GetPathAfterHost, keepsTheQuery)
{
    EXPECT_EQ(GetPathAfterHost(u"http://a.example/b/c?d=/e"_s), u"b/c?d=/e"_s);
    EXPECT_EQ(GetPathAfterHost(u"a.example/b"_s), u"b"_s);
    EXPECT_EQ(GetPathAfterHost(u"http://a.example"_s), u""_s);
    EXPECT_EQ(GetPathAfterHost(u"http://a.example/"_s), u""_s);
}

TEST(GetHostAndFolder, dropsSchemeFileAndQuery)
{
    EXPECT_EQ(GetHostAndFolder(u"http://a.example/b/c.html?x=1"_s), u"a.example/b"_s);
    EXPECT_EQ(GetHostAndFolder(u"http://a.example/b/c?x=1/2"_s), u"a.example/b"_s);
}

TEST(GetHostAndFolder, keepsALastSegmentWithoutDot)
{
    EXPECT_EQ(GetHostAndFolder(u"http://a.example/b/c"_s), u"a.example/b/c"_s);
    EXPECT_EQ(GetHostAndFolder(u"http://a.example/b/"_s), u"a.example/b"_s);
}

TEST(GetHostAndFolder, returnsAHostAsItIs)
{
    EXPECT_EQ(GetHostAndFolder(u"http://a.example"_s), u"a.example"_s);
    EXPECT_EQ(GetHostAndFolder(u"a.example?x"_s), u"a.example."_s);
    EXPECT_EQ(GetHostAndFolder(u""_s), u""_s);
}

TEST(IsValidDomainName, wantsTwoCharactersBehindTheLastDot)
{
    EXPECT_TRUE(IsValidDomainName(u"a.co"_s));
    EXPECT_FALSE(IsValidDomainName(u"a.c"_s));
    EXPECT_FALSE(IsValidDomainName(u"a..co"_s));
    EXPECT_FALSE(IsValidDomainName(u"localhost"_s));
    EXPECT_FALSE(IsValidDomainName(u""_s));
}

TEST(IsValidEmailAddress, wantsTwoCharactersBeforeAtSignAndDot)
{
    EXPECT_TRUE(IsValidEmailAddress(u"ab@cd.example"_s));
    EXPECT_FALSE(IsValidEmailAddress(u"a@cd.example"_s));
    EXPECT_FALSE(IsValidEmailAddress(u"ab@c.example"_s));
    EXPECT_FALSE(IsValidEmailAddress(u"ab@example"_s));
    EXPECT_FALSE(IsValidEmailAddress(u"ab.example"_s));
}

TEST(IsValidEmailAddress, refusesTheMarksOfMistypedAddresses)
{
    for (const QString &address : {u"ab@cd..example"_s, u"a..b@cd.example"_s, u"ab@@cd.example"_s,
                                   u"a\\b@cd.example"_s, u"ab%@cd.example"_s, u"ab@cd.example/"_s})
        EXPECT_FALSE(IsValidEmailAddress(address)) << address.toStdString();
}
