#include "shell/keyword_model.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using testing::ElementsAre;

namespace {

class Model : public testing::Test
{
protected:
    Model() : keywords(world.app), model(world.app)
    {
        keywords.AccountName = u"Demo"_s;
        keywords.Engine = u"Finder"_s;
        add(u"boots"_s, true);
        add(u"travel"_s, false);
        add(u"tea"_s, true);
        model.setKeywords(&keywords);
    }

    void add(const QString &text, bool optimize)
    {
        clsKeyword keyword;
        keyword.Keyword = text;
        keyword.Optimize = optimize;
        keywords.AddKeyword(keyword, -1);
    }

    QStringList shown() const
    {
        QStringList texts;
        for (int row = 0; row < model.rowCount(); ++row)
            texts.append(model.cell(row, GridField::Keyword));
        return texts;
    }

    QModelIndex cell(int row, GridField field) const { return model.index(row, static_cast<int>(field)); }

    World world;
    clsKeywords keywords;
    KeywordModel model;
};

} // namespace

TEST_F(Model, showsOptimizedKeywordsAtFirst)
{
    model.PopulateKeywords({});
    EXPECT_EQ(shown(), (QStringList{u"boots"_s, u"tea"_s}));
}

TEST_F(Model, showsAllKeywordsWhenTold)
{
    model.filter = ViewFilter::All;
    model.PopulateKeywords({});
    EXPECT_EQ(shown(), (QStringList{u"boots"_s, u"travel"_s, u"tea"_s}));
}

TEST_F(Model, namesTheRowOfTheRememberedKeyword)
{
    model.filter = ViewFilter::All;
    EXPECT_EQ(model.PopulateKeywords(u"TRAVEL"_s), 1);
    EXPECT_EQ(model.PopulateKeywords(u"gone"_s), -1);
}

TEST_F(Model, countsHiddenKeywordsForTheRememberedRow)
{
    EXPECT_EQ(model.PopulateKeywords(u"tea"_s), -1) << "the third of all, and the grid has two rows";
}

TEST_F(Model, checksAKeywordInPlaceAndSaves)
{
    model.filter = ViewFilter::All;
    model.PopulateKeywords({});
    EXPECT_TRUE(model.setData(cell(1, GridField::Show), Qt::Checked, Qt::CheckStateRole));
    EXPECT_TRUE(keywords.Keywords.at(u"travel"_s).Optimize);
    EXPECT_EQ(world.read(u"Projects/Demo/Keywords.dat"_s), "boots;-1\r\ntravel;-1\r\ntea;-1\r\n\r\n");
}

TEST_F(Model, renamesAKeywordAndKeepsItsKey)
{
    model.PopulateKeywords({});
    EXPECT_TRUE(model.setData(cell(0, GridField::Keyword), u"shoes"_s));
    EXPECT_EQ(keywords.Keywords.at(u"boots"_s).Keyword, u"shoes"_s);
    EXPECT_TRUE(world.read(u"Projects/Demo/Keywords.dat"_s).startsWith("shoes;-1\r\n"));
}

TEST_F(Model, refusesANameThatIsTakenOrBlank)
{
    QStringList taken;
    QObject::connect(&model, &KeywordModel::nameTaken, &model,
                     [&](const QString &name) { taken.append(name); });
    model.PopulateKeywords({});
    for (const QString &name : {u"TEA"_s, u""_s, u"  "_s, u";\n"_s})
        EXPECT_FALSE(model.setData(cell(0, GridField::Keyword), name)) << name.toStdString();
    EXPECT_EQ(taken, QStringList{u"TEA"_s});
    EXPECT_EQ(model.cell(0, GridField::Keyword), u"boots"_s);
    EXPECT_FALSE(world.has(u"Projects/Demo/Keywords.dat"_s));
}

TEST_F(Model, cleansANameThatWouldBreakTheList)
{
    qsizetype cleaned = 0;
    QObject::connect(&model, &KeywordModel::keywordsCleaned, &model,
                     [&](qsizetype count) { cleaned += count; });
    model.PopulateKeywords({});
    EXPECT_TRUE(model.setData(cell(0, GridField::Keyword), u"red;boots\n"_s));
    EXPECT_EQ(model.cell(0, GridField::Keyword), u"red boots"_s);
    EXPECT_TRUE(world.read(u"Projects/Demo/Keywords.dat"_s).startsWith("red boots;-1\r\n"));
    EXPECT_EQ(cleaned, 1);
}

TEST_F(Model, letsOnlyShowAndKeywordBeEdited)
{
    model.PopulateKeywords({});
    for (int field = 0; field < GridFieldCount; ++field) {
        const Qt::ItemFlags flags = model.flags(model.index(0, field));
        EXPECT_EQ(flags.testFlag(Qt::ItemIsEditable), field == static_cast<int>(GridField::Keyword)) << field;
        EXPECT_EQ(flags.testFlag(Qt::ItemIsUserCheckable), field == static_cast<int>(GridField::Show))
            << field;
        if (field != static_cast<int>(GridField::Keyword) && field != static_cast<int>(GridField::Show)) {
            EXPECT_FALSE(model.setData(model.index(0, field), u"x"_s)) << field;
        }
    }
}

TEST_F(Model, addsEachNewKeywordOnce)
{
    model.PopulateKeywords({});
    model.AddKeywordColToGrid({u"socks"_s, u"BOOTS"_s, u"socks"_s, u"hats"_s});
    EXPECT_EQ(shown(), (QStringList{u"boots"_s, u"tea"_s, u"socks"_s, u"hats"_s}));
    EXPECT_EQ(keywords.Count(), 5);
}

TEST_F(Model, cleansWhatIsAddedAndPassesBlanksOver)
{
    qsizetype cleaned = 0;
    QObject::connect(&model, &KeywordModel::keywordsCleaned, &model,
                     [&](qsizetype count) { cleaned += count; });
    model.PopulateKeywords({});
    model.AddKeywordColToGrid({u"red;socks"_s, u""_s, u"a\rb"_s, u"red socks"_s, u"plain"_s});
    EXPECT_EQ(shown(), (QStringList{u"boots"_s, u"tea"_s, u"red socks"_s, u"a b"_s, u"plain"_s}));
    EXPECT_EQ(cleaned, 2);
}

TEST_F(Model, showsLettersOfAForeignScriptAsTheyWillBeStored)
{
    qsizetype cleaned = 0;
    QObject::connect(&model, &KeywordModel::keywordsCleaned, &model,
                     [&](qsizetype count) { cleaned += count; });
    model.PopulateKeywords({});
    model.AddKeywordColToGrid({u"\u0447\u0430\u0439"_s, u"\u0434\u043e\u043c"_s, u"caf\u00e9"_s});
    EXPECT_EQ(shown(), (QStringList{u"boots"_s, u"tea"_s, u"???"_s, u"caf\u00e9"_s}));
    EXPECT_EQ(cleaned, 1);
    keywords.SaveKeywords();
    clsKeywords stored(world.app);
    stored.AccountName = keywords.AccountName;
    stored.LoadKeywords();
    EXPECT_EQ(stored.Count(), keywords.Count()) << "nothing ends the load";
}

TEST_F(Model, checksManyRowsAndSavesOnce)
{
    model.filter = ViewFilter::All;
    model.PopulateKeywords({});
    EXPECT_TRUE(model.setShown({0, 1, 2}, false));
    EXPECT_EQ(world.read(u"Projects/Demo/Keywords.dat"_s), "boots;0\r\ntravel;0\r\ntea;0\r\n\r\n");
}

TEST_F(Model, removesRowsWithTheirKeywords)
{
    model.filter = ViewFilter::All;
    model.PopulateKeywords({});
    model.removeKeywords({2, 0});
    EXPECT_EQ(shown(), QStringList{u"travel"_s});
    EXPECT_EQ(keywords.Count(), 1);
}

TEST_F(Model, tellsHowAPositionHasChanged)
{
    using Trend = KeywordModel::Trend;
    const QStringList changes{u"+3"_s, u"-3"_s, u"7+"_s, u"0"_s, u""_s};
    std::vector<Trend> trends;
    for (const QString &change : changes) {
        keywords.Keywords.at(u"boots"_s).Change = change;
        model.PopulateKeywords({});
        trends.push_back(cell(0, GridField::Change).data(KeywordModel::ChangeRole).value<Trend>());
        EXPECT_EQ(cell(0, GridField::Change).data().toString(), change);
    }
    EXPECT_THAT(trends, ElementsAre(Trend::Up, Trend::Down, Trend::New, Trend::None, Trend::None));
}

TEST_F(Model, tellsRankedRowsFromOthers)
{
    keywords.Keywords.at(u"boots"_s).CurPos = u"7"_s;
    model.PopulateKeywords({});
    EXPECT_TRUE(cell(0, GridField::Show).data(KeywordModel::RankedRole).toBool());
    EXPECT_FALSE(cell(1, GridField::Show).data(KeywordModel::RankedRole).toBool());
}

TEST_F(Model, namesItsColumns)
{
    QStringList headers;
    for (int field = 0; field < GridFieldCount; ++field)
        headers.append(model.headerData(field, Qt::Horizontal).toString());
    EXPECT_EQ(headers, (QStringList{u"Show"_s, u"Keyword"_s, u"Counts"_s, u"Positions"_s, u"Page"_s,
                                    u"Last Position"_s, u"Change"_s, u"URL"_s, u"Status"_s}));
    EXPECT_EQ(model.headerData(0, Qt::Horizontal, Qt::ToolTipRole).toString(),
              u"Check this box for the keywords you want to optimize"_s);
}

TEST_F(Model, isEmptyWithoutKeywords)
{
    model.setKeywords(nullptr);
    EXPECT_EQ(model.PopulateKeywords({}), -1);
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(world.takeLog(), QString());
}
