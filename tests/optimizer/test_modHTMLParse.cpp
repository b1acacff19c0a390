#include "optimizer/modHTMLParse.h"

#include "tests/optimizer/plain_scan.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

struct PageCase
{
    const char *name;
    QString html;
    MetaTags tags;
};

void PrintTo(const PageCase &row, std::ostream *out)
{
    *out << row.name;
}

class TagScan : public testing::TestWithParam<PageCase>
{
protected:
    World world;
};

TEST_P(TagScan, findsThePartsOfThePage)
{
    const MetaTags tags = retrieveMetaTag(world.app, GetParam().html);
    EXPECT_EQ(tags.keywords, GetParam().tags.keywords);
    EXPECT_EQ(tags.description, GetParam().tags.description);
    EXPECT_EQ(tags.title, GetParam().tags.title);
    EXPECT_EQ(tags.body, GetParam().tags.body);
    EXPECT_EQ(world.takeLog(), QString());
}

PageCase body(const char *name, const QString &html, const QString &body)
{
    return {name, html, {{}, {}, {}, body}};
}

PageCase keywords(const char *name, const QString &html, const QString &keywords)
{
    return {name, html, {keywords, {}, {}, {}}};
}

PageCase description(const char *name, const QString &html, const QString &description)
{
    return {name, html, {{}, description, {}, {}}};
}

PageCase title(const char *name, const QString &html, const QString &title)
{
    return {name, html, {{}, {}, title, {}}};
}

INSTANTIATE_TEST_SUITE_P(
    Bodies, TagScan,
    testing::Values(body("empty page", {}, {}), body("no tag", u"plain"_s, {}),
                    body("text behind a script", u"<body><script>a</script>tail<b>next</b>"_s, u"next"_s),
                    body("text before the last tag only", u"<body><script>a</script>tail<b>next"_s, {}),
                    body("text behind the last tag", u"<body>one<p>two"_s, u"one"_s),
                    body("end of the head", u"<HEAD></HEAD>text<p>"_s, u"text"_s),
                    body("body with attributes", u"<BODY bgcolor=#ffffff>in<br>"_s, u"in"_s),
                    body("neither head nor body", u"<p>text</p>"_s, {}),
                    body("nothing between the pieces", u"<body><p>one</p><p>two</p>"_s, u"onetwo"_s),
                    body("comment up to the first bracket", u"<body>a<!-- > -->b<i>"_s, u"a -->b"_s),
                    body("style is text", u"<body><style>b{}</style>t<p>"_s, u"b{}t"_s),
                    body("entities", u"<body>&QUOT;a&quot;&nbsp;&amp;<p>"_s, u"\"a\" &amp;"_s),
                    body("tabs and line ends", u"<body> a\t\tb\r\nc\rd\n\ne <p>"_s, u"a b c d e"_s),
                    body("script in capitals", u"<body><SCRIPT src=x>a</Script><p>b<p>"_s, u"b"_s),
                    body("tag that begins like a script", u"<body>a<scripted>b</script><p>c<p>"_s, u"ac"_s),
                    body("script at the end", u"<body>a<p><script"_s, u"a"_s),
                    body("tag without an end", u"<body>a<p>b<i"_s, u"ab"_s)),
    [](const auto &info) { return "body" + std::to_string(info.index); });

INSTANTIATE_TEST_SUITE_P(
    Meta, TagScan,
    testing::Values(
        keywords("no quotes", u"<meta name=keywords content=a,b,c>"_s, u"a,b,c"_s),
        keywords("single quotes stay", u"<meta name='keywords' content='a,b'>"_s, u"'a,b'"_s),
        keywords("blanks inside stay", u"<meta name=\"keywords\" content=\" a , b \">"_s, u" a , b "_s),
        keywords("closed as in XHTML", u"<meta name=\"keywords\" content=\"a\" />"_s, u"a\" /"_s),
        keywords("only an end quote", u"<meta name=keywords content=a\">"_s, u"a"_s),
        keywords("no equals sign", u"<meta name=keywords content >"_s, u"content "_s),
        keywords("last one wins", u"<meta name=keywords content=a><meta name=KEYWORDS content=b>"_s, u"b"_s),
        description("last one wins", u"<meta name=description content=a><meta name=description content=b>"_s,
                    u"b"_s),
        description("content before the name", u"<meta content=\"k\" name=\"keywords\">"_s,
                    u"k\" name=\"keywords"_s),
        description("line ends stay", u"<meta name=description content=\"a\r\nb\">"_s, u"a\r\nb"_s),
        PageCase{"no content repeats the one before",
                 u"<meta name=keywords content=a><meta name=description>"_s,
                 {u"a"_s, {}, {}, {}}},
        body("in the body", u"<body><meta name=keywords content=a>t<p>"_s, u"t"_s)),
    [](const auto &info) { return "meta" + std::to_string(info.index); });

INSTANTIATE_TEST_SUITE_P(
    Titles, TagScan,
    testing::Values(title("line break", u"<TITLE>one\r\ntwo</Title>"_s, u"one two"_s),
                    title("not trimmed", u"<title> a </title>"_s, u" a "_s),
                    title("first of two", u"<title>a</title><title>b</title>"_s, u"a"_s),
                    title("no end", u"<title>a"_s, {}), title("no beginning", u"a</title>"_s, {}),
                    title("with attributes", u"<title lang=en>a</title>"_s, {}),
                    title("in a script", u"<script><title>a</title></script>"_s, u"a"_s)),
    [](const auto &info) { return "title" + std::to_string(info.index); });

TEST(RetrieveMetaTag, keepsWhatItHasWhenTheTitleEndsFirst)
{
    World world;
    const MetaTags tags =
        retrieveMetaTag(world.app, u"<meta name=keywords content=k></title><title></head>kept<br>"_s);
    EXPECT_EQ(tags, (MetaTags{u"k"_s, {}, {}, u"kept"_s}));
    EXPECT_EQ(world.takeLog(), u"modHTMLParse_retrieveMetaTag error: The title ends before it begins"_s);
}

TEST(RetrieveMetaTag, givesWhatThePlainScanGives)
{
    World world;
    static const QString pieces[] = {u"<body>"_s,
                                     u"</head>"_s,
                                     u"<script"_s,
                                     u"</Script>"_s,
                                     u">"_s,
                                     u"<"_s,
                                     u"word"_s,
                                     u"  "_s,
                                     u"\t\r\n"_s,
                                     u"<meta name=keywords content=\"a,b\">"_s,
                                     u"<meta name=description"_s,
                                     u"content"_s,
                                     u"="_s,
                                     u"<META description>"_s,
                                     u"&nbsp;"_s,
                                     u"&quot;"_s,
                                     u"<title>t</title>"_s,
                                     u"<p>"_s,
                                     u"\""_s};
    std::minstd_rand random(20261115);
    constexpr int Pages = 3000;
    for (int page = 0; page < Pages; ++page) {
        QString html;
        for (auto left = random() % 24; left > 0; --left)
            html += pieces[random() % std::size(pieces)];
        ASSERT_EQ(retrieveMetaTag(world.app, html), plainScan(html)) << html.toStdString();
    }
    EXPECT_EQ(world.takeLog(), QString());
}

TEST(RetrieveMetaTag, passesManyScriptsWithoutAnEnd)
{
    World world;
    const QString html = u"<body>"_s + u"<script "_s.repeated(1 << 20) + u"<b>kept<i>"_s;
    EXPECT_EQ(retrieveMetaTag(world.app, html).body, u"kept"_s);
}

TEST(RetrieveMetaTag, passesManyBrackets)
{
    World world;
    EXPECT_EQ(retrieveMetaTag(world.app, u"<body>"_s + QString(1 << 21, u'<')).body, QString());
    EXPECT_EQ(retrieveMetaTag(world.app, u"<meta "_s.repeated(1 << 20) + u'>').body, QString());
}

} // namespace
} // namespace sondrel
