#include "tests/lookup/search_world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class NextUrlTest : public SearchWorld, public testing::Test
{
protected:
    NextUrlTest()
    {
        search.URL = u"http://s.example/a/find.cgi?q=x"_s;
        search.NextPage1 = u"Next"_s;
    }
    QString nextURL(const QString &page) { return search.getNextURL(PageText(page)); }
};

} // namespace

TEST_F(NextUrlTest, isThatOfTheLastLinkInFrontOfTheText)
{
    struct Row
    {
        const char *name;
        QString page, address;
    };
    const Row rows[] = {
        {"whole address", u"<ol><a href=\"http://t.example/p2\">Next</a>"_s, u"http://t.example/p2"_s},
        {"from the host", u"<ol><a href=\"/p2?x=1\">Next</a>"_s, u"http://s.example/p2?x=1"_s},
        {"from the folder", u"<ol><a href='p2'>Next</a>"_s, u"http://s.example/a/p2"_s},
        {"without marks", u"<ol><a href=/p2>Next</a>"_s, u"http://s.example/p2"_s},
        {"the last of several", u"<ol><a href=/p2>2</a> <a HREF=/p3>NEXT</a>"_s, u"http://s.example/p3"_s},
        {"a blank behind the address", u"<ol><a href=\"/p2\" class=x>Next</a>"_s, u"http://s.example/p2 "_s},
        {"blanks in front of the address", u"<ol><a href=   /p2>Next</a>"_s, u"http://s.example/p2"_s},
        {"no block", u"<a href=/p2>Next</a>"_s, u"http://s.example/p2"_s},
        {"before the block", u"<a href=/p2>Next</a><ol>"_s, u"http://s.example/a/"_s},
        {"none", u"<ol><a href=/p2>More</a>"_s, u"http://s.example/a/"_s},
        {"no link in front", u"<ol>Next <a href=/p2>x</a>"_s, u"http://s.example/a/"_s},
        {"empty page", u""_s, u"http://s.example/a/"_s},
        {"standard port", u"<ol><a href=\"http://site.example:80/x\">Next</a>"_s, u"http://site.example/x"_s},
        {"port that begins so", u"<ol><a href=\"http://site.example:8080/x\">Next</a>"_s,
         u"http://site.example80/x"_s},
        {"entities", u"<ol><a href=\"/p?a=1&amp;b=2&AMP;c\">Next</a>"_s, u"http://s.example/p?a=1&b=2&c"_s},
        {"line ends, tab, backspace and marks", u"<ol><a href=/p\r\n2\r3\n4\t5\b6\"7'8>Next</a>"_s,
         u"http://s.example/p2345678"_s},
        {"another scheme", u"<ol><a href=\"https://t.example/\">Next</a>"_s,
         u"http://s.example/a/https://t.example/"_s},
        {"two slashes", u"<ol><a href=\"//t.example/x\">Next</a>"_s, u"http://s.example//t.example/x"_s},
        {"up to an end string that no page has", u"<ol><a href=/p2>x</a> EndOfSetting <a href=/p3>Next</a>"_s,
         u"http://s.example/a/"_s},
        {"an empty link", u"<ol><a href=>Next</a>"_s, u"http://s.example/a/"_s},
        {"a lone mark", u"<ol><a href=\">Next</a>"_s, u"http://s.example/a/"_s},
    };
    for (const Row &row : rows)
        EXPECT_EQ(nextURL(row.page), row.address) << row.name;
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(NextUrlTest, overlooksTheTextInTheFirstCharacters)
{
    search.ResultStartString.clear();
    search.NextPage4 = u"<"_s;
    EXPECT_EQ(nextURL(u"</pNext"_s), u"http://s.example/p"_s);
    EXPECT_EQ(nextURL(u"</Next"_s), u"http://s.example/a/"_s) << "begins at the third character";
    EXPECT_EQ(nextURL(u"</pNex"_s), u"http://s.example/a/"_s);
}

TEST_F(NextUrlTest, isLookedForByTheOtherTextsInTurn)
{
    const QString page = u"<ol><a href=/2>Two</a><a href=/3>Three</a>"_s;
    search.NextPage2 = u"Two"_s;
    search.NextPage3 = u"Three"_s;
    EXPECT_EQ(nextURL(page), u"http://s.example/2"_s);
    search.NextPage2 = u"nowhere"_s;
    EXPECT_EQ(nextURL(page), u"http://s.example/3"_s);
    search.NextPage2.clear();
    EXPECT_EQ(nextURL(page), u"http://s.example/3"_s);
    search.NextPage3.clear();
    EXPECT_EQ(nextURL(page), u"http://s.example/a/"_s);
}

TEST_F(NextUrlTest, isLookedForFromTheStartByTheOtherTexts)
{
    search.ResultStartString.clear();
    search.NextPage2 = u"Ne"_s;
    search.NextPage4 = u"<"_s;
    EXPECT_EQ(nextURL(u"<Ne"_s), u"http://s.example/a/"_s);
    EXPECT_EQ(nextURL(u"<2Ne"_s), u"http://s.example/a/2"_s);
}

TEST_F(NextUrlTest, takesTheMarkOfLinksFromTheEngine)
{
    search.NextPage4 = u"action="_s;
    EXPECT_EQ(nextURL(u"<ol><form ACTION=\"/go?p=3\"><a href=/x><input value=Next>"_s),
              u"http://s.example/go?p=3"_s);
    EXPECT_EQ(search.NextPage4, u"action="_s);
}

TEST_F(NextUrlTest, setsTheUsualMarkForGood)
{
    nextURL(u"<ol>"_s);
    EXPECT_EQ(search.NextPage4, u"href="_s);
}

TEST_F(NextUrlTest, isEmptyWithoutATextToLookFor)
{
    search.NextPage1.clear();
    search.NextPage2 = u"Two"_s;
    EXPECT_EQ(nextURL(u"<ol><a href=/2>Two</a>"_s), QString());
    EXPECT_EQ(world.takeLog(), u"getNextURL_Error:The engine has no string to find its next page by"_s);
    EXPECT_EQ(search.NextPage4, QString());
}

TEST_F(NextUrlTest, isCompletedFromTheAddressOfThePage)
{
    struct Row
    {
        QString url, link, address;
    };
    const Row rows[] = {
        {u"http://s.example/"_s, u"x"_s, u"http://s.example/x"_s},
        {u"s.example"_s, u"x"_s, u"http://s.example/x"_s},
        {u"http://s.example:80/a/b.c"_s, u"x"_s, u"http://s.example/a/x"_s},
        {u"http://httpd.example/a"_s, u"/x"_s, u"httpd.example/x"_s},
        {u"https://s.example/find"_s, u"?p=2"_s, u"http://s.example/find/?p=2"_s},
    };
    for (const Row &row : rows) {
        search.URL = row.url;
        EXPECT_EQ(nextURL(u"<ol><a href="_s + row.link + u">Next"_s), row.address) << row.url.toStdString();
    }
}
