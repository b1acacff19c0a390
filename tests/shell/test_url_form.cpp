#include "shell/url_form.h"

#include "tests/support/printing.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QDir>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const QString File = u"../system/qltULs.dat"_s;

Collection<clsURL> urls(const QStringList &texts)
{
    Collection<clsURL> collection;
    for (const QString &text : texts)
        collection.Add({text, true}, text);
    return collection;
}

struct TypedCase
{
    const char *name;
    QString typed;
    std::optional<QString> url;
};

class TypedURLs : public testing::TestWithParam<TypedCase>
{
};

TEST_P(TypedURLs, makeTheRowBehindTheirScheme)
{
    const World world;
    EXPECT_EQ(typedURL(world.app, GetParam().typed), GetParam().url);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, TypedURLs,
    testing::Values(TypedCase{"withScheme", u"http://www.site.example"_s, u"www.site.example"_s},
                    TypedCase{"secure", u"HTTPS://www.site.example/shop"_s, u"www.site.example/shop"_s},
                    TypedCase{"bare", u"site.example"_s, u"site.example"_s},
                    TypedCase{"schemeWithin", u"a.example://b.example"_s, u"b.example"_s},
                    TypedCase{"blanksRound", u" site.example "_s, u"site.example"_s},
                    TypedCase{"noDot", u"site"_s, std::nullopt},
                    TypedCase{"twoDots", u"site..example"_s, std::nullopt},
                    TypedCase{"oneLetterDomain", u"a.c"_s, std::nullopt},
                    TypedCase{"twoLetterDomain", u"a.co"_s, u"a.co"_s},
                    TypedCase{"empty", u""_s, std::nullopt},
                    TypedCase{"nothingBehindTheScheme", u"a.example://"_s, std::nullopt},
                    TypedCase{"barThatWouldEndItInTheFile", u"a.example|b"_s, std::nullopt},
                    TypedCase{"accents", u"caf\u00e9.example"_s, u"caf\u00e9.example"_s},
                    TypedCase{"unseenMarks", u"\u200bsite.example\ufeff"_s, u"site.example"_s},
                    TypedCase{"foreignScript", u"\u0434\u043e\u043c.example"_s, std::nullopt},
                    TypedCase{"lineEndWithin", u"a.example\nb.example"_s, std::nullopt}),
    [](const auto &info) { return info.param.name; });

TEST(KnownURLs, checksThoseOfTheProjectBySpelling)
{
    World world;
    world.write(File, "a.example\r\nB.example\r\nc.example\r\n\r\n");
    const auto chosen = urls({u"a.example"_s, u"b.example"_s, u"lost.example"_s});
    EXPECT_EQ(
        loadKnownURLs(world.app, &chosen),
        (std::vector<KnownURL>{{u"a.example"_s, true}, {u"B.example"_s, false}, {u"c.example"_s, false}}));
}

TEST(KnownURLs, areNoneWithoutTheFile)
{
    World world;
    const auto chosen = urls({u"a.example"_s});
    EXPECT_TRUE(loadKnownURLs(world.app, &chosen).empty());
}

TEST(KnownURLs, checkNothingForAProjectWithoutURLs)
{
    World world;
    world.write(File, "a.example\r\n");
    EXPECT_EQ(loadKnownURLs(world.app, nullptr), (std::vector<KnownURL>{{u"a.example"_s, false}}));
}

TEST(KnownURLs, throwForAFileThatCannotBeRead)
{
    World world;
    QDir().mkpath(world.path(File));
    EXPECT_THROW(loadKnownURLs(world.app, nullptr), Failure);
}

TEST(KnownURLs, areWrittenOnePerLine)
{
    World world;
    saveKnownURLs(world.app, {{u"a.example"_s, true}, {QString(), true}, {u"b.example"_s, false}});
    EXPECT_EQ(world.read(File), "a.example\r\nb.example\r\n\r\n");
}

TEST(KnownURLs, throwWhenTheyCannotBeWritten)
{
    World world;
    QDir().mkpath(world.path(File));
    EXPECT_THROW(saveKnownURLs(world.app, {{u"a.example"_s, true}}), Failure);
}

TEST(KnownURLs, giveTheProjectTheCheckedOnesAsItsOwn)
{
    const auto chosen = checkedURLs({{u"a.example"_s, true}, {u"b.example"_s, false}, {QString(), true}});
    ASSERT_EQ(chosen.Count(), 1);
    EXPECT_EQ(chosen.at(u"A.example"_s), (clsURL{u"a.example"_s, false}));
}

} // namespace
} // namespace sondrel
