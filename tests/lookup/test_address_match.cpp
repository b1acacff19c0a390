#include "lookup/address_match.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

TEST(AddressMatch, comparesHostsAndPaths)
{
    struct Row
    {
        const char *name;
        QString listing, tracked;
        bool same;
    };
    const Row rows[] = {
        {"page below the host", u"http://www.site.example/a/b.html"_s, u"site.example"_s, true},
        {"page below the folder", u"http://www.site.example/a/b.html"_s, u"site.example/a/"_s, true},
        {"page of another folder", u"http://www.site.example/a/b.html"_s, u"site.example/c"_s, false},
        {"page of the host, tracked with a subdomain", u"http://www.site.example/a/b.html"_s,
         u"sub.site.example"_s, false},
        {"subdomain", u"sub.site.example/a"_s, u"site.example"_s, false},
        {"longer host", u"http://site.example.au/"_s, u"site.example"_s, false},
        {"cases, scheme, blanks", u" HTTPS://WWW.Site.Example/A "_s, u" ftp://www.SITE.example/a "_s, true},
        {"root, tracked bare host", u"http://site.example/"_s, u"site.example"_s, true},
        {"root, tracked host with a slash", u"http://site.example"_s, u"http://www.site.example/"_s, true},
        {"root, tracked with a path", u"http://site.example/"_s, u"site.example/shop"_s, false},
        {"root without a slash, tracked with a path", u"http://site.example"_s, u"site.example/shop"_s,
         false},
        {"folder, tracked deeper", u"http://site.example/shop"_s, u"site.example/shop/a"_s, true},
        {"ports are part of the host", u"http://site.example:80/"_s, u"site.example"_s, false},
        {"query without a slash is part of the host", u"http://site.example?q=1"_s, u"site.example"_s, false},
        {"the path of a listing is no host", u"dir.example/site.example"_s, u"site.example"_s, false},
        {"two schemes", u"http://http://site.example/a"_s, u"site.example"_s, false},
        {"no second www.", u"http://www.www.site.example/"_s, u"site.example"_s, false},
        {"tracked path elsewhere in the listing", u"a.example/x/a.example/y"_s, u"a.example/y"_s, true},
        {"nothing but a scheme, tracked nothing but a scheme", u"http://www."_s, u"http://"_s, false},
        {"nothing but a scheme, tracked a slash", u"http://www."_s, u"/"_s, true},
    };
    World world;
    for (const Row &row : rows) {
        EXPECT_EQ(SearchKeywordCompareURL(world.app, row.listing, row.tracked), row.same) << row.name;
        Collection<clsURL> urls;
        urls.Add({row.tracked, false});
        EXPECT_EQ(TrackedAddresses(world.app, &urls).countOf(row.listing), row.same ? 1 : 0) << row.name;
    }
    EXPECT_EQ(world.takeLog(), QString());
}

TEST(AddressMatch, countsEveryTrackedAddressButEmptyOnes)
{
    World world;
    Collection<clsURL> urls;
    for (const QString &url : {u"site.example"_s, u""_s, u"http://site.example/a"_s, u"other.example"_s})
        urls.Add({url, true});
    EXPECT_EQ(TrackedAddresses(world.app, &urls).countOf(u"http://www.site.example/a/b"_s), 2);
    EXPECT_EQ(TrackedAddresses(world.app, nullptr).countOf(u"http://www.site.example/a/b"_s), 0);
}
