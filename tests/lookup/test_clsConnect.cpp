#include "lookup/clsConnect.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class ClsConnectTest : public testing::Test
{
protected:
    World world;
    clsConnect connect{world.app};
};

} // namespace

TEST_F(ClsConnectTest, cutsSections)
{
    struct Row
    {
        const char *name;
        QString text, begin, end, section, rest;
    };
    const Row rows[] = {
        {"both strings", u"abcXYdef"_s, u"c"_s, u"Y"_s, u"cX"_s, u"def"_s},
        {"no begin string", u"abcXYdef"_s, u"Q"_s, u"Y"_s, u"abcXY"_s, u"Ydef"_s},
        {"no end string", u"abcdef"_s, u"c"_s, u"Q"_s, u"cdef"_s, u"cdef"_s},
        {"neither", u"abcdef"_s, u"Q"_s, u"R"_s, u"abcdef"_s, u"abcdef"_s},
        {"begin string within the end string", u"x<b>y</b>z"_s, u"b>"_s, u"</b>"_s, u"b>y"_s, u"z"_s},
        {"end string within the begin string", u"x<li>y"_s, u"<li>"_s, u"li"_s, u"<li>y"_s, u"<li>y"_s},
        {"another case", u"ABCXYDEF"_s, u"c"_s, u"y"_s, u"CX"_s, u"DEF"_s},
        {"accents in another case", u"x\u00c9y\u00e0z"_s, u"\u00e9"_s, u"\u00c0"_s, u"\u00c9y"_s, u"z"_s},
        {"blanks round it", u"  c x  Y rest "_s, u"c"_s, u"Y"_s, u"c x"_s, u" rest "_s},
        {"blanks round the last one", u"a c x  "_s, u"c"_s, u"Y"_s, u"c x"_s, u"c x"_s},
        {"blanks before the end string alone", u"  x  Y"_s, u"Q"_s, u"Y"_s, u"  x  Y"_s, u"Y"_s},
        {"empty text", u""_s, u""_s, u""_s, u""_s, u""_s},
        {"empty end string", u"xy"_s, u"x"_s, u""_s, u"x"_s, u"y"_s},
        {"empty end string at the end", u"xy"_s, u"y"_s, u""_s, u"y"_s, u"y"_s},
        {"empty end string without the begin string", u"xy"_s, u"q"_s, u""_s, u"x"_s, u"xy"_s},
        {"empty begin string", u"xyz"_s, u""_s, u"z"_s, u"xy"_s, u""_s},
        {"empty begin string at the end string", u"zxy "_s, u""_s, u"z"_s, u"zxy"_s, u"zxy"_s},
        {"both empty", u" xy "_s, u""_s, u""_s, u"xy"_s, u"xy"_s},
    };
    for (const Row &row : rows) {
        QString rest = row.text;
        EXPECT_EQ(connect.FindSection(rest, row.begin, row.end), row.section) << row.name;
        EXPECT_EQ(rest, row.rest) << row.name;
    }
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ClsConnectTest, takesElements)
{
    struct Row
    {
        const char *name;
        QString text, begin, end, element;
    };
    const Row rows[] = {
        {"leftover markup", u"<a href=x>Some  <b>bold</b> text</a>"_s, u"<a"_s, u"</a>"_s,
         u"href=x>Some bold text"_s},
        {"empty begin string", u"abc</b>"_s, u""_s, u"</b>"_s, u""_s},
        {"no begin string", u"abc</b>d"_s, u"<b>"_s, u"</b>"_s, u"abc"_s},
        {"no end string", u"<b>abc"_s, u"<b>"_s, u"</b>"_s, u"abc"_s},
        {"neither", u"abc"_s, u"<b>"_s, u"</b>"_s, u"abc"_s},
        {"an end string before the begin string", u"</b>x<b>abc"_s, u"<b>"_s, u"</b>"_s, u"abc"_s},
        {"brackets in reverse", u"<b>a > b < c</b>"_s, u"<b>"_s, u"</b>"_s, u"a > b c"_s},
        {"one bracket only", u"<b>a > b</b>"_s, u"<b>"_s, u"</b>"_s, u"a > b"_s},
        {"line ends", u"<b>a\r\nb\rc\nd</b>"_s, u"<b>"_s, u"</b>"_s, u"a b c d"_s},
        {"blanks at its ends", u"<b>  a  </b>"_s, u"<b>"_s, u"</b>"_s, u"a"_s},
        {"twenty blanks", u"<b>a"_s + QString(20, u' ') + u"b</b>"_s, u"<b>"_s, u"</b>"_s, u"a  b"_s},
        {"marks", u"<b>\"it's\"&nbsp;so&NBSP;</b>"_s, u"<b>"_s, u"</b>"_s, u"itsso"_s},
        {"blanks kept behind removed marks", u"<b>' a '</b>"_s, u"<b>"_s, u"</b>"_s, u" a "_s},
        {"empty end string", u"<b>abc"_s, u"<b>"_s, u""_s, u""_s},
        {"empty end string at the end", u"abc<b>"_s, u"<b>"_s, u""_s, u""_s},
        {"empty text", u""_s, u"<b>"_s, u""_s, u""_s},
    };
    for (const Row &row : rows)
        EXPECT_EQ(connect.GetRankingElement(row.text, row.begin, row.end), row.element) << row.name;
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ClsConnectTest, takesTheCount)
{
    struct Row
    {
        const char *name;
        QString text, begin, end, count;
    };
    const Row rows[] = {
        {"behind of", u"Results 1 - 10 of 2,340 for"_s, u"Results"_s, u"for"_s, u"2,340"_s},
        {"with more words", u"Results 1 - 10 of about 2,340</p>"_s, u"Results"_s, u"</p>"_s, u"about2,340"_s},
        {"of within a word", u"Results offered: 12</p>"_s, u"Results"_s, u"</p>"_s, u"fered:12"_s},
        {"of in capitals", u"1 OF 7"_s, u"1"_s, u"z"_s, u"7"_s},
        {"markup and blanks", u"Total: <b> 12 345 </b> pages"_s, u"Total:"_s, u"pages"_s, u"12345"_s},
        {"without of and number", u"Total: <i>no</i> pages &nbsp;\r\nhere"_s, u"Total:"_s, u"here"_s,
         u"nopages"_s},
        {"one bracket only", u"Total: 1 < 2"_s, u"Total:"_s, u"q"_s, u"12"_s},
        {"empty begin string", u"12"_s, u""_s, u"x"_s, u""_s},
        {"no begin string", u"12 x"_s, u"Total"_s, u"x"_s, u"12"_s},
    };
    for (const Row &row : rows)
        EXPECT_EQ(connect.GetMatchesCounts(row.text, row.begin, row.end), row.count) << row.name;
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ClsConnectTest, takesTheSameFromAFoldedPage)
{
    const PageText page(u"<li><b>One</b> of 3</li><li><b>Two</b> of 4</li>"_s);
    const Piece second{24, page.all().end};
    EXPECT_EQ(connect.GetRankingElement(page, second, Needle(u"<B>"), Needle(u"</B>")), u"Two"_s);
    EXPECT_EQ(connect.GetMatchesCounts(page, second, Needle(u"</b>"), Needle(u"</li>")), u"4"_s);
    EXPECT_EQ(connect.GetRankingElement(page, second, Needle(u""), Needle(u"</b>")), QString());
}

TEST_F(ClsConnectTest, findsTheActionAddress)
{
    struct Row
    {
        const char *name;
        QString text, address, rest;
    };
    const Row rows[] = {
        {"in marks", u"x action=\"http://a.example/go\" method=get"_s, u"http://a.example/go"_s,
         u"\" method=get"_s},
        {"cut at a blank", u"action=\"a b\" c"_s, u"a"_s, u" b\" c"_s},
        {"without marks", u"ACTION= go> x"_s, u"go"_s, u"> x"_s},
        {"no marker", u"x method=get"_s, u""_s, u"x method=get"_s},
    };
    connect.ActionMarker = u"action="_s;
    connect.ActionDelimiter = u">"_s;
    for (const Row &row : rows) {
        QString rest = row.text;
        EXPECT_EQ(connect.FindActionURL(rest), row.address) << row.name;
        EXPECT_EQ(rest, row.rest) << row.name;
    }
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ClsConnectTest, findsAnEmptyActionMarkerAtTheStart)
{
    QString text = u"  \"abc def\" ghi"_s;
    EXPECT_EQ(connect.FindActionURL(text), u"abc"_s);
    EXPECT_EQ(text, u" def\" ghi"_s);
    text.clear();
    EXPECT_EQ(connect.FindActionURL(text), QString());
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ClsConnectTest, logsAnActionAddressWithoutABlankBehindIt)
{
    QString text = u"\"abc\""_s;
    EXPECT_EQ(connect.FindActionURL(text), QString());
    EXPECT_EQ(text, u"abc\""_s);
    EXPECT_EQ(world.takeLog(), u"clsConnect_FindActionURL Error:  The end stands before the beginning"_s);
}

TEST_F(ClsConnectTest, findsLinks)
{
    struct Row
    {
        const char *name;
        QString text, address;
    };
    const Row rows[] = {
        {"in marks", u"<a HREF=\"a b\" c>"_s, u"a b"_s},
        {"up to a blank", u"<a href=a b>"_s, u"a"_s},
        {"up to the bracket", u"<a href=a>"_s, u"a"_s},
        {"blank before the mark", u"href= \"x\""_s, u""_s},
        {"blank before the word", u"href= x>"_s, u""_s},
        {"two blanks before the mark", u"href=  \"x\""_s, u" "_s},
        {"no link", u"<a name=x>"_s, u""_s},
    };
    for (const Row &row : rows)
        EXPECT_EQ(connect.FindhrefURL(row.text), row.address) << row.name;
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ClsConnectTest, logsALinkWithoutAnEnd)
{
    for (const QString &text : {u"href=\"x"_s, u"href=x"_s, u"href="_s, u"href=\""_s}) {
        EXPECT_EQ(connect.FindhrefURL(text), QString());
        EXPECT_EQ(world.takeLog(), u"clsConnect_FindhrefURL error:  The end stands before the beginning"_s);
    }
}

TEST_F(ClsConnectTest, tellsErrorsByTheirNumber)
{
    EXPECT_EQ(connect.GetErrorMessage(9060, u"x"_s), u"Error: Connection Timed Out."_s);
    EXPECT_EQ(connect.GetErrorMessage(12007, u"x"_s), u"Error: Server is down."_s);
    EXPECT_EQ(connect.GetErrorMessage(12017, u"x"_s), u"Error: Transfer Aborted."_s);
    EXPECT_EQ(connect.GetErrorMessage(-1, u"odd"_s), u"Error #-1 odd"_s);
}

TEST(ClsConnectCollections, areJoinedSecondFirst)
{
    Collection<QString> first;
    first.Add(u"a"_s, u"key"_s);
    first.Add(u"b"_s);
    Collection<QString> second;
    second.Add(u"c"_s, u"key"_s);
    const Collection<QString> both = clsConnect::AddCollection(first, second);
    QStringList items;
    for (const QString &item : both)
        items.append(item);
    EXPECT_EQ(items, (QStringList{u"c"_s, u"a"_s, u"b"_s}));
    EXPECT_FALSE(both.HasKey(u"key"_s));
}
