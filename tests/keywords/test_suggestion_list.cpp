#include "keywords/suggestion_list.h"

#include "project/clsKeywords.h"
#include "tests/support/bad_files.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const auto File = u"KeywordBuilder/Finder/tea.dat"_s;

class Suggestions : public testing::Test
{
protected:
    void save(const std::vector<Suggestion> &rows, const QString &keyword = u"tea"_s)
    {
        SuggestionList list;
        for (const Suggestion &row : rows)
            list.add(row.Keyword, row.Count);
        saveSuggestions(world.app, u"Finder"_s, keyword, list.rows());
    }

    World world;
};

} // namespace

TEST_F(Suggestions, areKeptInAFileOfEngineAndKeyword)
{
    save({{u"green tea"_s, u"1,240"_s}, {u""_s, u"3"_s}, {u"tée"_s, u""_s}});
    EXPECT_EQ(world.read(File), "green tea;1,240\r\nt\xe9"
                                "e;\r\n\r\n");
    EXPECT_EQ(loadSuggestions(world.app, u"finder"_s, u"TEA"_s),
              (std::vector<Suggestion>{{u"green tea"_s, u"1,240"_s}, {u"tée"_s, u""_s}}));
}

TEST_F(Suggestions, leaveTheFileWhenThereAreNone)
{
    save({{u"green tea"_s, u"1"_s}});
    save({});
    EXPECT_EQ(world.read(File), "green tea;1\r\n\r\n");
    save({}, u"oak"_s);
    EXPECT_FALSE(world.has(u"KeywordBuilder/Finder/oak.dat"_s));
}

TEST_F(Suggestions, makeTheirFoldersEvenWhenThereAreNone)
{
    save({});
    EXPECT_TRUE(world.has(u"KeywordBuilder/Finder"_s));
}

TEST_F(Suggestions, areNotKeptWithoutAKeywordOrAnEngine)
{
    save({{u"x"_s, u"1"_s}}, u""_s);
    EXPECT_FALSE(world.has(u"KeywordBuilder"_s));
}

TEST_F(Suggestions, readTheFirstTwoFieldsOfALine)
{
    world.write(File, "a;1;2\r\nb\r\n;3\r\n\r\nc;\r\nx;y;7\r\n");
    EXPECT_EQ(loadSuggestions(world.app, u"Finder"_s, u"tea"_s),
              (std::vector<Suggestion>{{u"a"_s, u"1"_s}, {u"c"_s, u""_s}, {u"x"_s, u"y"_s}}));
}

TEST_F(Suggestions, areNoneForNamesThatNoFileCanHave)
{
    EXPECT_TRUE(loadSuggestions(world.app, u"Finder"_s, u"../../project"_s).empty());
    EXPECT_TRUE(loadSuggestions(world.app, u".."_s, u"tea"_s).empty());
    EXPECT_TRUE(loadSuggestions(world.app, u""_s, u"tea"_s).empty());
    EXPECT_THROW(save({{u"x"_s, u"1"_s}}, u"tcp/ip"_s), Failure);
}

TEST_F(Suggestions, tellOfAFileThatCannotBeWritten)
{
    putFolder(world, File);
    EXPECT_THROW(save({{u"x"_s, u"1"_s}}), Failure);
    EXPECT_THROW(loadSuggestions(world.app, u"Finder"_s, u"tea"_s), Failure);
}

TEST_F(Suggestions, loseRowsByTheirPlaces)
{
    SuggestionList list;
    for (const QString &keyword : {u"a"_s, u"b"_s, u"c"_s, u"d"_s})
        list.add(keyword, {});
    list.remove({0, 2});
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list.row(0).Keyword, u"b"_s);
    EXPECT_EQ(list.row(1).Keyword, u"d"_s);
    list.add(u"a"_s, {});
    EXPECT_THROW(list.add(u"D"_s, {}), Failure);
}

TEST_F(Suggestions, keepTheKeywordsThatWereLookedUp)
{
    saveSuggestionKeywords(world.app, {u"tea"_s, u""_s, u"garden tools"_s});
    EXPECT_EQ(world.read(u"KeywordBuilder/Keywords.dat"_s), "tea\r\ngarden tools\r\n");
    EXPECT_EQ(loadSuggestionKeywords(world.app), (QStringList{u"tea"_s, u"garden tools"_s}));
}

TEST_F(Suggestions, haveNoKeywordsAtFirst)
{
    EXPECT_EQ(loadSuggestionKeywords(world.app), QStringList());
}

TEST_F(Suggestions, bringTheCountOfAKnownKeywordUpToDate)
{
    clsKeywords keywords(world.app);
    clsKeyword known;
    known.Keyword = u"tea"_s;
    known.Count = u"1"_s;
    known.CurPos = u"7"_s;
    keywords.AddKeyword(known, -1);
    EXPECT_EQ(addSuggestions(world.app, {{u"TEA"_s, u"12"_s}, {u"oak"_s, u"3"_s}}, keywords), 2);
    ASSERT_EQ(keywords.Count(), 2);
    EXPECT_EQ(keywords.Keywords.at(1).Count, u"12"_s);
    EXPECT_EQ(keywords.Keywords.at(1).CurPos, u"7"_s);
    EXPECT_EQ(keywords.Keywords.at(2).Keyword, u"oak"_s);
    EXPECT_EQ(keywords.Keywords.at(2).Count, u"3"_s);
}

TEST_F(Suggestions, areAddedAsAPersonWouldTypeThem)
{
    clsKeywords keywords(world.app);
    const QString cafe = world.app.fromBytes("caf\xc3\xa9");
    const QString chinese = world.app.fromBytes("\xe8\x8c\xb6");
    addSuggestions(world.app, {{cafe, {}}, {chinese, {}}}, keywords);
    EXPECT_EQ(keywords.Keywords.at(1).Keyword, u"café"_s);
    EXPECT_EQ(keywords.Keywords.at(2).Keyword, chinese); // the project's files cannot hold its characters
}
