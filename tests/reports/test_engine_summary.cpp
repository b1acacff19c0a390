#include "reports/engine_summary.h"

#include "tests/reports/report_world.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

using Table = std::vector<QStringList>;

class EngineSummaries : public testing::Test, public ReportWorld
{
protected:
    EngineSummary summary() { return GetEngineSummaryReport(app, account, status); }
    // The only table's rows.
    Table table() { return summary().at(0).Rows; }
    QString data() { return engineSummaryData(summary(), GetMarketArray(app), {}); }
};

} // namespace

TEST_F(EngineSummaries, hasOneTableForEnginesOfOneMarket)
{
    setEngines({u"Finder"_s, u"Zeta"_s});
    writeResults(u"Finder"_s, {{u"tea"_s, u"1"_s}});
    writeResults(u"Zeta"_s, {{u"tea"_s, u"2"_s}});
    EXPECT_EQ(
        summary(),
        (EngineSummary{{u"USA"_s, {{EnginesKeyword, u"Finder"_s, u"Zeta"_s}, {u"tea"_s, u"1"_s, u"2"_s}}}}));
}

TEST_F(EngineSummaries, hasATableForEachMarketInOrderOfItsFirstEngine)
{
    setEngines({u"Lookfar"_s, u"Finder"_s, u"Seeker(UK)"_s});
    writeResults(u"Finder"_s, {{u"tea"_s, u"1"_s}});
    EXPECT_EQ(summary(), (EngineSummary{{u"UK"_s, {{EnginesKeyword, u"Lookfar"_s, u"Seeker(UK)"_s}}},
                                        {u"USA"_s, {{EnginesKeyword, u"Finder"_s}, {u"tea"_s, u"1"_s}}}}));
}

TEST_F(EngineSummaries, isEmptyWithoutEngines)
{
    setEngines({});
    EXPECT_TRUE(summary().empty());
    account.Engine.reset();
    EXPECT_TRUE(summary().empty());
    EXPECT_EQ(takeLog(), QString());
}

TEST_F(EngineSummaries, leavesOutEnginesThatTheCatalogueDoesNotKnow)
{
    setEngines({u"Gone"_s, u"Finder"_s});
    writeResults(u"Gone"_s, {{u"tea"_s, u"1"_s}});
    EXPECT_EQ(table(), (Table{{EnginesKeyword, u"Finder"_s}}));
    setEngines({u"Gone"_s});
    EXPECT_TRUE(summary().empty());
}

TEST_F(EngineSummaries, isEmptyWithoutACatalogue)
{
    app.EngineCatalogue = nullptr;
    EXPECT_TRUE(summary().empty());
}

TEST_F(EngineSummaries, leavesTheFirstColumnEmptyForAKeywordOfTheSecondEngine)
{
    setEngines({u"Finder"_s, u"Zeta"_s});
    writeResults(u"Zeta"_s, {{u"tea"_s, u"3"_s}});
    EXPECT_EQ(table(), (Table{{EnginesKeyword, u"Finder"_s, u"Zeta"_s}, {u"tea"_s, u""_s, u"3"_s}}));
}

TEST_F(EngineSummaries, pullsSharedKeywordsToTheTop)
{
    setEngines({u"Finder"_s, u"Zeta"_s});
    writeResults(u"Finder"_s, {{u"a"_s, u"1"_s}, {u"b"_s, u"2"_s}, {u"c"_s, u"3"_s}});
    writeResults(u"Zeta"_s, {{u"c"_s, u"7"_s}, {u"x"_s, u"8"_s}, {u"a"_s, u"9"_s}});
    EXPECT_EQ(table(), (Table{{EnginesKeyword, u"Finder"_s, u"Zeta"_s},
                              {u"a"_s, u"1"_s, u"9"_s},
                              {u"c"_s, u"3"_s, u"7"_s},
                              {u"b"_s, u"2"_s, u""_s},
                              {u"x"_s, u""_s, u"8"_s}}));
}

TEST_F(EngineSummaries, ordersTheRowsOfThreeEngines)
{
    setEngines({u"Finder"_s, u"Zeta"_s, u"Questnet"_s});
    writeResults(u"Finder"_s, {{u"a"_s, u"1"_s}, {u"b"_s, u"2"_s}, {u"c"_s, u"3"_s}});
    writeResults(u"Zeta"_s, {{u"c"_s, u"7"_s}, {u"x"_s, u"8"_s}, {u"a"_s, u"9"_s}});
    writeResults(u"Questnet"_s, {{u"x"_s, u"1"_s}, {u"b"_s, u"2"_s}, {u"y"_s, u"3"_s}, {u"a"_s, u"4"_s}});
    QStringList keywords;
    for (const QStringList &row : table())
        keywords.append(row.constFirst());
    EXPECT_EQ(keywords, QStringList({EnginesKeyword, u"a"_s, u"b"_s, u"x"_s, u"c"_s, u"y"_s}));
}

TEST_F(EngineSummaries, takesKeywordsThatDifferInCaseForOne)
{
    setEngines({u"Finder"_s, u"Zeta"_s});
    writeResults(u"Finder"_s, {{u"Tea"_s, u"1"_s}});
    writeResults(u"Zeta"_s, {{u"TEA"_s, u"6"_s}});
    EXPECT_EQ(table()[1], QStringList({u"Tea"_s, u"1"_s, u"6"_s}));
}

TEST_F(EngineSummaries, keepsFurtherHitsAsRows)
{
    writeResults(u"Finder"_s, {{u"shoes"_s, u"1"_s}, {u"shoes(2)"_s, u"4"_s}});
    EXPECT_EQ(table(), (Table{{EnginesKeyword, u"Finder"_s}, {u"shoes"_s, u"1"_s}, {u"shoes(2)"_s, u"4"_s}}));
}

TEST_F(EngineSummaries, passesOverLinesOfFewFields)
{
    write(u"Projects/Demo/Finder.dat"_s,
          "none\r\ntwo;1\r\nthree;1;9\r\n\r\nempty;;\r\nmore;1;2;3;4;5;6;7;8;9\r\n");
    EXPECT_EQ(
        table(),
        (Table{
            {EnginesKeyword, u"Finder"_s}, {u"three"_s, u"9"_s}, {u"empty"_s, u""_s}, {u"more"_s, u"2"_s}}));
}

TEST_F(EngineSummaries, readsOneFileForEnginesOfOneCleanedName)
{
    setEngines({u"Quest.net"_s, u"Questnet"_s});
    writeResults(u"Quest.net"_s, {{u"a"_s, u"1"_s}, {u"b"_s, u"2"_s}});
    EXPECT_EQ(table(), (Table{{EnginesKeyword, u"Quest.net"_s, u"Questnet"_s},
                              {u"b"_s, u"2"_s, u"2"_s},
                              {u"a"_s, u"1"_s, u"1"_s}}));
}

TEST_F(EngineSummaries, survivesAKeywordNamedAsTheHeading)
{
    setEngines({u"Finder"_s, u"Zeta"_s});
    writeResults(u"Finder"_s, {{u"a"_s, u"1"_s}, {EnginesKeyword, u"5"_s}, {u"b"_s, u"2"_s}});
    EXPECT_EQ(table(),
              (Table{{EnginesKeyword, u"5"_s, u"Zeta"_s}, {u"a"_s, u"1"_s, u""_s}, {u"b"_s, u"2"_s, u""_s}}));
    setEngines({u"Finder"_s});
    EXPECT_TRUE(data().startsWith(u"[USA]\r\na;1\r\nEnginesKeyword;5\r\n"_s));
}

TEST_F(EngineSummaries, goesOnWithoutResultsThatCannotBeRead)
{
    setEngines({u"Finder"_s, u"Zeta"_s});
    write(u"Projects/Demo/Finder.dat"_s, "tea;1;1\r\n");
    ASSERT_TRUE(QFile::setPermissions(path(u"Projects/Demo/Finder.dat"_s), {}));
    writeResults(u"Zeta"_s, {{u"tea"_s, u"2"_s}});
    const bool canRead = !read(u"Projects/Demo/Finder.dat"_s).isEmpty(); // as the super-user can
    EXPECT_EQ(table()[1], QStringList({u"tea"_s, canRead ? u"1"_s : u""_s, u"2"_s}));
    EXPECT_EQ(takeLog(), QString());
}

TEST_F(EngineSummaries, reportsItsProgressByEngine)
{
    setEngines({u"Finder"_s, u"Lookfar"_s, u"Gone"_s, u"Zeta"_s});
    summary();
    EXPECT_EQ(progress, (std::vector<std::pair<int, int>>{{0, 4}, {1, 4}, {4, 4}, {2, 4}, {0, 4}}));
}

TEST_F(EngineSummaries, becomesLinesOfFields)
{
    setEngines({u"Finder"_s, u"Lycos (dmoz)"_s, u"Perla"_s});
    writeResults(u"Finder"_s, {{u"blue (dmoz)"_s, u"12"_s}});
    writeResults(u"Lycos (dmoz)"_s, {{u"red"_s, u"(Fast) 4"_s}});
    EXPECT_EQ(data(), u"[USA]\r\nEnginesKeyword;Finder;Lycos \r\nblue (dmoz);12;\r\nred;; 4\r\n"
                      "[Norge]\r\nEnginesKeyword;Perla\r\n"_s);
}

TEST_F(EngineSummaries, reportsTheProgressOfLinesByRow)
{
    writeResults(u"Finder"_s, {{u"tea"_s, u"1"_s}});
    const EngineSummary tables = summary();
    progress.clear();
    engineSummaryData(tables, GetMarketArray(app), status);
    EXPECT_EQ(progress, (std::vector<std::pair<int, int>>{{0, 3}, {1, 3}, {2, 3}}));
}

TEST_F(EngineSummaries, countTheEnginesOfAMarket)
{
    setEngines({u"Finder"_s, u"Lookfar"_s, u"zeta"_s, u"Gone"_s});
    const Collection<QString> markets = GetMarketArray(app);
    EXPECT_EQ(markets.Count(), 8);
    EXPECT_EQ(markets.at(u"perla"_s), u"Norge"_s);
    EXPECT_EQ(GetEnginesCount(markets, *account.Engine, u"usa"_s), 2);
    EXPECT_EQ(GetEnginesCount(markets, *account.Engine, u"Norge"_s), 0);
}

TEST(TrimBracketString, dropsOnlySuppliers)
{
    const std::pair<const char16_t *, const char16_t *> cases[] = {
        {u"Lycos (dmoz)", u"Lycos "},
        {u"Lycos (UK)", u"Lycos (UK)"},
        {u"Finder (by FAST)", u"Finder "},
        {u"( dmoz)x(dmoz)", u"( dmoz)x"},
        {u"x)Finder (Fast)", u"x)Finder (Fast)"},
        {u"a(bay9)b(BAY9)c", u"abc"},
        {u"(UK)(Fast)", u"(UK)(Fast)"},
        {u"Fast", u"Fast"},
        {u"(AskJeevs", u"(AskJeevs"},
        {u"", u""},
    };
    for (const auto &[text, trimmed] : cases)
        EXPECT_EQ(TrimBracketString(QString::fromUtf16(text)), QString::fromUtf16(trimmed));
}

} // namespace sondrel
