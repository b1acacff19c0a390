#include "optimizer/frame_urls.h"

#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

class FrameUrls : public testing::Test
{
protected:
    QString section(const QString &before, const QString &start, const QString &end)
    {
        rest = before;
        return FindSection(world.app, rest, start, end);
    }
    QString value(const QString &section) { return FindValue(world.app, section, u"SRC"_s); }

    World world;
    QString rest;
};

TEST_F(FrameUrls, skipsOneCharacterBehindASection)
{
    EXPECT_EQ(section(u"a<FRAME src=x>yz"_s, u"<frame"_s, u">"_s), u"<FRAME src=x"_s);
    EXPECT_EQ(rest, u"z"_s);
}

TEST_F(FrameUrls, takesTheRestOfAnOpenSection)
{
    EXPECT_EQ(section(u"a>b<frame src=c  "_s, u"<FRAME"_s, u">"_s), u"<frame src=c"_s);
    EXPECT_EQ(rest, u"<frame src=c"_s);
}

TEST_F(FrameUrls, takesTextWithTheEndStringWhereNothingBegins)
{
    EXPECT_EQ(section(u"abcXYdef"_s, u"Q"_s, u"Y"_s), u"abcXY"_s);
    EXPECT_EQ(rest, u"def"_s);
}

TEST_F(FrameUrls, takesAllTextWithoutEitherString)
{
    EXPECT_EQ(section(u" abc "_s, u"Q"_s, u"R"_s), u" abc "_s);
    EXPECT_EQ(rest, u" abc "_s);
}

TEST_F(FrameUrls, takesNothingFromAnEmptyText)
{
    EXPECT_EQ(section({}, u"a"_s, u"b"_s), QString());
    EXPECT_EQ(rest, QString());
}

TEST_F(FrameUrls, endsAtTheEndOfTheText)
{
    EXPECT_EQ(section(u"ab"_s, u"a"_s, u"b"_s), u"a"_s);
    EXPECT_EQ(rest, QString());
}

TEST_F(FrameUrls, readsValues)
{
    EXPECT_EQ(value(u"<frame src=a.html name=n"_s), u"a.html"_s);
    EXPECT_EQ(value(u"<frame src = \"a b.html\" name=n"_s), u"a b.html"_s);
    EXPECT_EQ(value(u"<frame src='a \"b'"_s), u"a \"b"_s);
    EXPECT_EQ(value(u"<frame src='\"a' b\""_s), u"a' b"_s); // the last quotation mark in front counts
    EXPECT_EQ(value(u"<frame src=\r\na"_s), u"a"_s);
    EXPECT_EQ(value(u"<frame src=\"a\r\nb"_s), u"ab"_s);
    EXPECT_EQ(value(u"<frame src="_s), QString());
    EXPECT_EQ(value(u"<frame name=n"_s), QString());
}

TEST_F(FrameUrls, makesAddressesWhole)
{
    const auto whole = [&](const QString &url, const QString &base) {
        return FormatURL(world.app, url, base);
    };
    EXPECT_EQ(whole(u"a.html"_s, u"http://site.example/x/"_s), u"http://site.example/x/a.html"_s);
    EXPECT_EQ(whole(u"/a.html"_s, u"https://site.example/x/"_s), u"https://site.example/a.html"_s);
    EXPECT_EQ(whole(u"a.html"_s, u"site.example"_s), u"http://site.example/a.html"_s);
    EXPECT_EQ(whole(u"HTTP://o.example"_s, u"site.example"_s), u"HTTP://o.example"_s);
    EXPECT_EQ(whole({}, u"site.example"_s), QString());
}

TEST_F(FrameUrls, listsTheFramesInTheOrderOfThePage)
{
    EXPECT_EQ(GetFramesetURL(world.app,
                             u"<FRAMESET rows=1>\n<FRAME SRC=b.html>\n<frame name=n>\n<frame src=/a.html>"_s,
                             u"http://site.example/x/"_s),
              QStringList({u"http://site.example/x/b.html"_s, u"http://site.example/a.html"_s}));
}

TEST_F(FrameUrls, losesAFrameWhoseBracketFollowsAnotherAtOnce)
{
    // The character behind a section is passed over, and with it the bracket of the next one.
    EXPECT_EQ(GetFramesetURL(world.app, u"<frame src=a><frame src=b><frame src=c>"_s, u"site.example"_s),
              QStringList({u"http://site.example/a"_s, u"http://site.example/c"_s}));
}

TEST_F(FrameUrls, endsAtAFrameThatIsNotClosed)
{
    EXPECT_EQ(GetFramesetURL(world.app, u"<frame src=a>\n<frame src=b"_s, u"site.example"_s),
              QStringList({u"http://site.example/a"_s}));
}

TEST_F(FrameUrls, takesManyFrames)
{
    const QString html = u"<frame src=a>\n"_s.repeated(1 << 16);
    EXPECT_EQ(GetFramesetURL(world.app, html, u"site.example"_s).size(), 1 << 16);
}

} // namespace
} // namespace sondrel
