#include "lookup/listing_walk.h"
#include "tests/lookup/plain_walk.h"
#include "tests/support/random_bytes.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

ListingForm finder()
{
    return {.EngineName = u"Finder"_s,
            .EngineKey = u"finder"_s,
            .SectionStart = u"<li>"_s,
            .SectionEnd = u"</li>"_s,
            .beginTitle = u"<b>"_s,
            .endTitle = u"</b>"_s,
            .beginURL = u"href=\""_s,
            .endURL = u"\""_s};
}

std::vector<Listing> listings(ApplicationContext &app, const ListingForm &form, const QString &block)
{
    const PageText page(block);
    ListingWalk walk(app, form, page, page.all());
    std::vector<Listing> found;
    while (auto listing = walk.next())
        found.push_back(*std::move(listing));
    return found;
}

QString shown(const std::vector<Listing> &listings)
{
    QString text;
    for (const Listing &listing : listings)
        text += listing.URL + u'|' + listing.Title + u' ';
    return trimBlanks(text).toString();
}

} // namespace

TEST(ListingWalk, takesListingsInTurn)
{
    struct Row
    {
        const char *name;
        QString block, found;
    };
    const Row rows[] = {
        {"two", u"<li><b>A</b> href=\"a.example/1\"</li> x <LI><B>B</B> HREF=\"http://b.example\"</LI>"_s,
         u"http://a.example/1|A http://b.example|B"_s},
        {"no title", u"<li><b></b>href=\"a.example\"</li><li><b>B</b>href=\"b.example\"</li>"_s,
         u"http://b.example|B"_s},
        {"the engine's own",
         u"<li><b>A</b>href=\"cache.FINDER.example\"</li><li><b>B</b>href=\"b.example\"</li>"_s,
         u"http://b.example|B"_s},
        {"no dot", u"<li><b>A</b>href=\"local/path\"</li><li><b>B</b>href=\"b.example\"</li>"_s,
         u"http://b.example|B"_s},
        {"no address", u"<li><b>A</b>href=\"\"</li><li><b>B</b>href=\"b.example\"</li>"_s,
         u"http://b.example|B"_s},
        {"http within the address", u"<li><b>A</b>href=\"a.example/?u=http://b.example\"</li>"_s,
         u"a.example/?u=http://b.example|A"_s},
        {"codes and a blank", u"<li><b>A</b>href=\"a.example/x%20y%2Fz w\"</li>"_s,
         u"http://a.example/xy/z|A"_s},
        {"a blank that was encoded twice", u"<li><b>A</b>href=\"a.example/x%2520y\"</li>"_s,
         u"http://a.example/xy|A"_s},
        {"cut off behind the last end string",
         u"<li><b>A</b>href=\"a.example\"</li><li><b>B</b>href=\"b.example\""_s, u"http://a.example|A"_s},
        {"an end string in front alone", u"</li><li><b>A</b>href=\"a.example\""_s, u"http://a.example|A"_s},
        {"no section", u"<b>A</b>href=\"a.example\""_s, u""_s},
        {"empty", u""_s, u""_s},
    };
    World world;
    for (const Row &row : rows)
        EXPECT_EQ(shown(listings(world.app, finder(), row.block)), row.found) << row.name;
    EXPECT_EQ(world.takeLog(), QString());
}

TEST(ListingWalk, findsNothingWithoutSectionStrings)
{
    World world;
    ListingForm form = finder();
    form.SectionStart.clear();
    form.SectionEnd.clear();
    EXPECT_EQ(shown(listings(world.app, form, u"<li><b>A</b>href=\"a.example\"</li>"_s)), QString());
}

TEST(ListingWalk, passesOverEverythingWithoutAnEngineKey)
{
    World world;
    ListingForm form = finder();
    form.EngineKey.clear();
    EXPECT_EQ(shown(listings(world.app, form, u"<li><b>A</b>href=\"a.example\"</li>"_s)), QString());
}

TEST(ListingWalk, endsWhereTheBlockGetsNoShorter)
{
    World world;
    ListingForm form = finder();
    form.SectionEnd = u"li"_s;
    EXPECT_EQ(shown(listings(world.app, form, u"<li><b>A</b>href=\"a.example\""_s)), QString());
    EXPECT_EQ(shown(listings(world.app, form, u"x<li><b>A</b>href=\"a.example\""_s)),
              u"http://a.example|A"_s);
    form.SectionStart.clear();
    EXPECT_EQ(shown(listings(world.app, form, u"li <b>A</b>href=\"a.example\""_s)), QString());
}

TEST(ListingWalk, addsTheEndStringToTheListingsOfOneEngine)
{
    World world;
    ListingForm form = finder();
    form.EngineName = u"Old SPRINKS (US)"_s;
    form.SectionEnd = u"href=\"a.example\">"_s;
    EXPECT_EQ(shown(listings(world.app, form, u"<li><b>A</b> href=\"A.example\"> x"_s)),
              u"http://a.example|A"_s);
    // Here the end string leaves nothing of the block, and yet there is a listing.
    form.SectionStart.clear();
    form.SectionEnd = u"<b>A</b>href=\"a.example\""_s;
    EXPECT_EQ(shown(listings(world.app, form, u"x<b>A</b>href=\"a.example\""_s)), u"http://a.example|A"_s);
}

TEST(ListingWalk, dropsTheNumbersOfOneEnginesTitles)
{
    World world;
    ListingForm form = finder();
    const QString block =
        u"<li><b>1. 2. 3D prints</b>href=\"a.example\"</li><li><b>12.</b>href=\"b.example\"</li>"_s;
    form.EngineName = u"ESPOTTING"_s;
    EXPECT_EQ(shown(listings(world.app, form, block)), u"http://a.example|D prints http://b.example|"_s);
    form.EngineName = u"Espotting (DE)"_s;
    EXPECT_EQ(shown(listings(world.app, form, block)),
              u"http://a.example|1. 2. 3D prints http://b.example|12."_s);
}

TEST(ListingWalk, unwrapsTheTargetsOfOneEngine)
{
    World world;
    ListingForm form = finder();
    form.EngineName = u"My LookSmart"_s;
    const QString block =
        u"<li><b>A</b>href=\"r.example/?q=1&URL=http://a.example/x&z=1\"</li>"
        "<li><b>B</b>href=\"r.example/?q=1&url=&z=1\"</li><li><b>C</b>href=\"r.example/?url=c.example\"</li>"_s;
    EXPECT_EQ(shown(listings(world.app, form, block)),
              u"http://a.example/x|A |B http://r.example/?url=c.example|C"_s);
}

TEST(ListingWalk, agreesWithThePlainRulesOnRandomPages)
{
    World world;
    std::mt19937 random(20261115);
    const auto pick = [&](const QStringList &list) {
        return list[static_cast<qsizetype>(random() % static_cast<unsigned>(list.size()))];
    };
    const QStringList pieces{
        u"<li>"_s,   u"</li>"_s,  u"<LI>"_s,    u"li"_s,  u"<b>"_s,  u"</b>"_s, u"<"_s,     u">"_s, u" "_s,
        u"  "_s,     u"a.b"_s,    u"href=\""_s, u"\""_s,  u"%2F"_s,  u"%25"_s,  u"&url="_s, u"&"_s, u"http"_s,
        u"finder"_s, u"\u00c9"_s, u"\u00e9x"_s, u"1. "_s, u"\r\n"_s, u"<br>"_s, u"&nbsp;"_s};
    const QStringList strings{u"<li>"_s, u"</li>"_s,  u"li"_s, u"<"_s,      u""_s,
                              u" "_s,    u"\u00e9"_s, u"b>"_s, u"nowhere"_s};
    const QStringList names{u"Finder"_s, u"Sprinks"_s, u"Espotting"_s, u"LookSmart"_s};
    int listed = 0;
    for (int round = 0; round < 20'000; ++round) {
        ListingForm form = finder();
        form.EngineName = pick(names);
        if (round % 3 == 0)
            form.SectionStart = pick(strings);
        if (round % 5 == 0)
            form.SectionEnd = pick(strings);
        if (round % 7 == 0)
            form.beginTitle = pick(strings);
        if (round % 11 == 0)
            form.endURL = pick(strings);
        QString block;
        for (unsigned count = random() % 60; count > 0; --count)
            block += pick(pieces);
        const auto expected = plain::listings(world.app, form, block);
        listed += static_cast<int>(expected.size());
        ASSERT_EQ(shown(listings(world.app, form, block)), shown(expected))
            << block.toStdString() << "\n start " << form.SectionStart.toStdString() << " end "
            << form.SectionEnd.toStdString();
    }
    EXPECT_GT(listed, 3'000);
}

TEST(PageTextTest, cutsAsThePlainRulesDoOnRandomTexts)
{
    std::mt19937 random(20261116);
    const auto text = [&](unsigned longest) {
        const QString alphabet = u"aAbB  <\u00e9\u00c9\u0161\u0160"_s;
        QString result(static_cast<qsizetype>(random() % (longest + 1)), Qt::Uninitialized);
        for (QChar &unit : result)
            unit = alphabet[static_cast<qsizetype>(random() % static_cast<unsigned>(alphabet.size()))];
        return result;
    };
    World world;
    clsConnect connect(world.app);
    for (int round = 0; round < 50'000; ++round) {
        const QString page = text(20);
        const QString begin = text(3);
        const QString end = text(3);
        QString rest = page;
        QString expectedRest = page;
        ASSERT_EQ(connect.FindSection(rest, begin, end), plain::FindSection(expectedRest, begin, end))
            << page.toStdString() << '|' << begin.toStdString() << '|' << end.toStdString();
        ASSERT_EQ(rest, expectedRest)
            << page.toStdString() << '|' << begin.toStdString() << '|' << end.toStdString();
        ASSERT_EQ(connect.GetRankingElement(page, begin, end),
                  plain::GetRankingElement(world.app, page, begin, end))
            << page.toStdString() << '|' << begin.toStdString() << '|' << end.toStdString();
    }
}

TEST(PageTextTest, isTheSameFromBytesAsFromText)
{
    std::mt19937 random(20261117);
    const QByteArray alphabet = "aAbB  <\xe9\xc9\x8a\x9a\xb5\xff";
    for (const int number : {1252, 1251, 936, 65001}) {
        const CodePage &codePage = *CodePage::find(number);
        for (int round = 0; round < 2'000; ++round) {
            // The more letters, the fewer strings are ASCII.
            const auto letters = QByteArrayView(alphabet).first(7 + static_cast<qsizetype>(random() % 7));
            const auto bytes = [&](qsizetype size) { return randomBytes(random, letters, size); };
            const QByteArray page = bytes(static_cast<qsizetype>(random() % 300));
            const PageText read(page, codePage);
            const PageText text(codePage.fromBytes(page));
            ASSERT_EQ(read.all(), text.all());
            ASSERT_EQ(read.text(read.all()), codePage.fromBytes(page));
            const Needle begin(codePage.fromBytes(bytes(1 + static_cast<qsizetype>(random() % 3))));
            const Needle end(codePage.fromBytes(bytes(1 + static_cast<qsizetype>(random() % 2))));
            Piece rest = read.all();
            Piece expectedRest = text.all();
            const Piece section = read.takeSection(rest, begin, end);
            ASSERT_EQ(section, text.takeSection(expectedRest, begin, end)) << page.toStdString();
            ASSERT_EQ(rest, expectedRest) << page.toStdString();
            ASSERT_EQ(read.text(section), text.text(section)) << page.toStdString();
            ASSERT_EQ(read.trimmed(rest), text.trimmed(rest)) << page.toStdString();
            ASSERT_EQ(read.findLast(rest, begin), text.findLast(rest, begin)) << page.toStdString();
        }
    }
}

// Enough listings that looking through the rest of the page for each of them would not end in a test's time.
TEST(ListingWalk, comesToTheEndOfHugePages)
{
    World world;
    constexpr int Many = 20'000;
    QString many;
    for (int i = 0; i < Many; ++i)
        many += u"<li><b>A</b>href=\"a.example\"</li>"_s;
    QString unended;
    for (int i = 0; i < Many; ++i)
        unended += u"</li><li><b>A</b>href=\"a.example\""_s;
    ListingForm endless = finder();
    endless.SectionEnd.clear();
    EXPECT_EQ(listings(world.app, finder(), many).size(), std::size_t(Many));
    EXPECT_EQ(listings(world.app, finder(), unended).size(), std::size_t(Many) - 1);
    EXPECT_EQ(listings(world.app, endless, many).size(), 0U);
}
