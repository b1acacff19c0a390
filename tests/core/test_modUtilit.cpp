#include "core/modUtilit.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <array>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

struct Rule
{
    const char *name;
    const char16_t *text;
    const char16_t *wanted;
};

class StripHtml : public testing::TestWithParam<Rule>
{
};

const Rule stripRules[] = {
    {"empty", u"", u""},
    {"noTag", u" a &nbsp; b ", u" a &nbsp; b "},
    {"lineAndParagraph", u"a<br>  b<p>c", u"a\r\nb\r\n\r\nc"},
    {"unclosedTag", u"a<b", u"ab"},
    {"onlyAnOpening", u"<", u""},
    {"openingInATag", u"a<b<c>d", u"ad"},
    {"closingAlone", u"a>b", u"a>b"},
    {"headings", u"<h1>a</h1>b</H5>c</h6>d", u"a\r\n\r\nb\r\n\r\ncd"},
    {"rule", u"a<hr size=1>b", u"a\r\n--------------------------------------------------\r\nb"},
    {"list", u"<dl>a<dt>b</dl>c", u"\r\n\r\nabc"},
    {"paragraphEnd", u"a</p>b", u"ab"},
    {"nameInAnyCase", u"a<Br\tx>b<BR x>c", u"ab\r\nc"},
    {"nameBehindABlank", u"a< br>b", u"ab"},
    {"emptyElementMark", u"a<br/>b<br />c", u"ab\r\nc"},
    {"similarName", u"a<bra>b<pre>c<p1>d", u"abcd"},
    {"bareLineFeeds", u"a\n\n b", u"a\r\n\r\nb"},
    {"bareCarriageReturns", u"a\rb\r\r\nc", u"ab\r\nc"},
    {"blanksBeforeFirstLine", u"  a\n  b", u"  a\r\nb"},
    {"blanksAtLineEnds", u"a  \nb  \nc  ", u"a  \r\nb  \r\nc"},
    {"blanksAtTheEndOfOneLine", u"a  ", u"a  "},
    {"blankLastLine", u"a\n   ", u"a\r\n"},
    {"tabsStay", u"a\n\tb\t", u"a\r\n\tb\t"},
    {"script", u"<script>a<b;</script>x", u"ax"},
};

QString allCodes()
{
    QString text;
    for (char16_t code = 0; code < 256; ++code) {
        if (code != u'<' && code != u'>')
            text += QChar(code);
    }
    return text + u'>';
}

} // namespace

TEST_P(StripHtml, leavesTheText)
{
    World world;
    EXPECT_EQ(StripHTML(world.app, QString::fromUtf16(GetParam().text)),
              QString::fromUtf16(GetParam().wanted));
    EXPECT_EQ(world.takeLog(), u""_s);
}

INSTANTIATE_TEST_SUITE_P(Rules, StripHtml, testing::ValuesIn(stripRules),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(StripHTML, keepsNulls)
{
    World world;
    EXPECT_EQ(StripHTML(world.app, QString::fromUtf16(u"a\0<\0p>\0b", 8)), QString::fromUtf16(u"a\0\0b", 4));
}

TEST(StripHTML, needsNoFreeCharacterToWorkWith)
{
    World world;
    const QString text = allCodes();
    const QString stripped = StripHTML(world.app, text + u"<br> x"_s);
    EXPECT_EQ(stripped, QString(text).remove(u'\r').replace(u'\n', u"\r\n"_s) + u"\r\nx"_s);
}

// Quadratic work would take hours for such pages, so there is no clock here: the
// test's own time limit tells.
class StripHtmlOfLongPages : public testing::TestWithParam<std::array<const char16_t *, 2>>
{
};

TEST_P(StripHtmlOfLongPages, takesTimeInProportion)
{
    World world;
    const QString piece = QString::fromUtf16(GetParam()[0]);
    constexpr qsizetype Size = qsizetype{2} * 1024 * 1024;
    const QString page = piece.repeated(Size / piece.size());
    const QString stripped = StripHTML(world.app, page);
    EXPECT_EQ(stripped.first(4), QString::fromUtf16(GetParam()[1]));
}

const std::array<const char16_t *, 2> longPages[] = {
    {u"abcd<<<<", u"abcd"},  {u"ab\n ", u"ab\r\n"}, {u"<p>", u"\r\n\r\n"},
    {u"<a b>abcd", u"abcd"}, {u"    \r", u"    "},
};

INSTANTIATE_TEST_SUITE_P(Pages, StripHtmlOfLongPages, testing::ValuesIn(longPages));

TEST(ParseString, returnsTheFieldOfTheNumber)
{
    World world;
    EXPECT_EQ(ParseString(world.app, u"a;b;c"_s, u";"_s, 1), u"a"_s);
    EXPECT_EQ(ParseString(world.app, u"a;b;c"_s, u";"_s, 3), u"c"_s);
    EXPECT_EQ(ParseString(world.app, u"a;b;c"_s, u";"_s, 5), u""_s);
}

TEST(ParseString, givesTheFirstFieldForSmallNumbers)
{
    World world;
    EXPECT_EQ(ParseString(world.app, u"a;b"_s, u";"_s, 0), u"a"_s);
    EXPECT_EQ(ParseString(world.app, u"a;b"_s, u";"_s, -2'147'483'647 - 1), u"a"_s);
}

TEST(ParseString, skipsOneCharacterOfALongDelimiter)
{
    World world;
    EXPECT_EQ(ParseString(world.app, u"a\r\nb\r\nc"_s, u"\r\n"_s, 2), u"\nb"_s);
    EXPECT_EQ(ParseString(world.app, u"aaaa"_s, u"aa"_s, 2), u""_s);
}

TEST(ParseString, findsTheDelimiterInEitherCase)
{
    World world;
    EXPECT_EQ(ParseString(world.app, u"1X2x3"_s, u"x"_s, 3), u"3"_s);
}

TEST(ParseString, givesNothingForAnEmptyDelimiter)
{
    World world;
    EXPECT_EQ(ParseString(world.app, u"abc"_s, u""_s, 1), u""_s);
    EXPECT_EQ(ParseString(world.app, u"abc"_s, u""_s, 9), u""_s);
}

TEST(ParseString, endsAtTheLastFieldHoweverLargeTheNumber)
{
    World world;
    const QString text(1'000'000, u';');
    EXPECT_EQ(ParseString(world.app, text, u";"_s, 2'147'483'647), u""_s);
    EXPECT_EQ(ParseString(world.app, text + u'x', u";"_s, 1'000'001), u"x"_s);
}

namespace {

// The rule as six replacements, one after the other.
QString collapsedInPasses(QString text)
{
    for (const QString &run : {u"\r\n"_s, u"\r"_s, u"\n"_s, u"    "_s, u"   "_s, u"  "_s})
        text.replace(run, u" "_s);
    return text;
}

} // namespace

TEST(CollapseSpaces, shortensLongRunsOnce)
{
    EXPECT_EQ(CollapseSpaces(QString(20, u' ')), u"  "_s);
    EXPECT_EQ(CollapseSpaces(u" a  b   c "_s), u" a b c "_s);
}

TEST(CollapseSpaces, takesLineEndsForBlanks)
{
    EXPECT_EQ(CollapseSpaces(u"a\r\nb\rc\nd\n\re"_s), u"a b c d e"_s);
}

TEST(CollapseSpaces, equalsSixPassesForEveryRun)
{
    for (int length = 0; length < 200; ++length) {
        const QString text = u"x"_s + QString(length, u' ') + u"\r\ny"_s;
        ASSERT_EQ(CollapseSpaces(text), collapsedInPasses(text)) << length;
    }
}

TEST(CollapseSpaces, equalsSixPassesForMixedLineEnds)
{
    // Every text of nine characters out of these four.
    for (unsigned number = 0; number < 1U << 18U; ++number) {
        QString text;
        for (unsigned place = 0; place < 18; place += 2)
            text += u"\r\n x"[number >> place & 3U];
        ASSERT_EQ(CollapseSpaces(text), collapsedInPasses(text)) << number;
    }
}

TEST(CollapseSpaces, leavesTheCallersTextAlone)
{
    const QString text = u"a  b"_s;
    CollapseSpaces(text);
    EXPECT_EQ(text, u"a  b"_s);
}

TEST(CollapseSpaces, takesLongTexts)
{
    EXPECT_EQ(CollapseSpaces(u"a \n"_s.repeated(3'000'000)).size(), 6'000'000);
}

TEST(StripRowSuffix, cutsShortNumbersInBrackets)
{
    QString text = u"shoes(2)"_s;
    EXPECT_TRUE(StripRowSuffix(text));
    EXPECT_EQ(text, u"shoes"_s);
    text = u"shoes (12)"_s;
    EXPECT_TRUE(StripRowSuffix(text));
    EXPECT_EQ(text, u"shoes "_s);
}

TEST(StripRowSuffix, takesAnyShortBracketForARow)
{
    QString text = u"shoes()"_s;
    EXPECT_TRUE(StripRowSuffix(text));
    EXPECT_EQ(text, u"shoes"_s);
    text = u"(a)"_s;
    EXPECT_TRUE(StripRowSuffix(text));
    EXPECT_EQ(text, u""_s);
}

TEST(StripRowSuffix, leavesOtherTexts)
{
    for (const QString &text :
         {u"shoes(123)"_s, u"shoes"_s, u"shoes(2) "_s, u"shoes(2"_s, u"2)"_s, u""_s, u"("_s}) {
        QString copy = text;
        EXPECT_FALSE(StripRowSuffix(copy)) << text.toStdString();
        EXPECT_EQ(copy, text);
    }
}
