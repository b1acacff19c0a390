#include "reports/ranking_reports.h"

#include "reports/column_letters.h"
#include "tests/reports/report_world.h"

#include <gmock/gmock.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString White = u"<tr bgcolor=#FFFFFF valign=top>"_s;
const QString Grey = u"<tr bgcolor=#E8E8E8 valign=top>"_s;
const QString Own = u"http://www.site.example/a"_s;
const QString Rival = u"http://rival.example/b"_s;

class RankingReports : public testing::Test, public ReportWorld
{
protected:
    std::vector<ReportColumn> matrix(const std::vector<clsKeyword> &stored)
    {
        return GetReportcol(app, account, rows(stored)).value();
    }
    QStringList matrixKeywords(const std::vector<clsKeyword> &stored)
    {
        QStringList keywords;
        for (const ReportColumn &column : matrix(stored))
            keywords.append(column.Keyword);
        return keywords;
    }
    QString summary(const std::vector<clsKeyword> &stored)
    {
        return SummaryReport(app, account, u"Finder"_s, rows(stored));
    }
    QString keywordUrls(const std::vector<clsKeyword> &stored)
    {
        return KeywordURLReport(app, account, u"Finder"_s, rows(stored));
    }
};

} // namespace

TEST_F(RankingReports, gathersFurtherHitsOnOtherUrlsUnderTheirKeyword)
{
    EXPECT_EQ(matrix({row(u"shoes"_s, u"12"_s, Own, u"1,200"_s), row(u"shoes(2)"_s, u"30"_s, Rival)}),
              (std::vector<ReportColumn>{{u"shoes"_s, u"1,200"_s, {u"12"_s, u"30"_s}}}));
}

TEST_F(RankingReports, takesTheBestPositionOfAUrl)
{
    EXPECT_EQ(matrix({row(u"shoes"_s, u"30"_s, Own), row(u"shoes(2)"_s, u"12"_s, Own)}),
              (std::vector<ReportColumn>{{u"shoes"_s, {}, {u"12"_s, {}}}}));
}

TEST_F(RankingReports, comparesPositionsAsNumbers)
{
    EXPECT_EQ(matrix({row(u"shoes"_s, u"10"_s, Own), row(u"shoes(2)"_s, u"9"_s, Own),
                      row(u"shoes(3)"_s, u"11"_s, Own)})[0]
                  .Positions[0],
              u"9"_s);
}

TEST_F(RankingReports, keepsAPositionAgainstOneThatIsNoNumber)
{
    EXPECT_EQ(matrix({row(u"shoes"_s, u"10"_s, Own), row(u"shoes(2)"_s, u"x"_s, Own)})[0].Positions[0],
              u"10"_s);
}

TEST_F(RankingReports, replacesWhatIsNoNumberByWhateverComes)
{
    EXPECT_EQ(matrix({row(u"shoes"_s, u"x"_s, Own), row(u"shoes(2)"_s, u"y"_s, Own)})[0].Positions[0],
              u"y"_s);
}

TEST_F(RankingReports, putsAKeywordChangedByAFurtherHitAtTheEnd)
{
    EXPECT_EQ(matrixKeywords({row(u"a"_s, u"7"_s, Rival), row(u"b"_s), row(u"a(2)"_s, u"9"_s, Own)}),
              QStringList({u"b"_s, u"a"_s}));
}

TEST_F(RankingReports, leavesAKeywordInPlaceWhenAFurtherHitChangesNothing)
{
    EXPECT_EQ(matrixKeywords({row(u"a"_s, u"7"_s, Own), row(u"b"_s), row(u"a(2)"_s, u"9"_s, Own),
                              row(u"a(3)"_s, u"3"_s, u"http://other.example"_s), row(u"a(4)"_s, u"2"_s)}),
              QStringList({u"a"_s, u"b"_s}));
}

TEST_F(RankingReports, ordersSeveralMovedKeywordsByTheirLastChange)
{
    EXPECT_EQ(matrixKeywords({row(u"a"_s, u"7"_s, Own), row(u"b"_s, u"7"_s, Own), row(u"c"_s),
                              row(u"a(2)"_s, u"6"_s, Own), row(u"b(2)"_s, u"6"_s, Own),
                              row(u"a(3)"_s, u"5"_s, Own)}),
              QStringList({u"c"_s, u"b"_s, u"a"_s}));
}

TEST_F(RankingReports, keepsATypedBracketWhole)
{
    EXPECT_EQ(matrixKeywords({row(u"report (2005)"_s)}), QStringList(u"report (2005)"_s));
}

TEST_F(RankingReports, cutsABracketBehindAnotherKeywordWhateverItHolds)
{
    EXPECT_EQ(matrixKeywords({row(u"report"_s), row(u"Report  (2005) x"_s)}), QStringList(u"report"_s));
}

TEST_F(RankingReports, ignoresABracketThatClosesFirst)
{
    EXPECT_EQ(matrixKeywords({row(u"a"_s), row(u"a)(2"_s)}), QStringList({u"a"_s, u"a)(2"_s}));
}

TEST_F(RankingReports, takesTheCountOfTheFirstRowOnly)
{
    EXPECT_EQ(matrix({row(u"a"_s, {}, {}, u"about 7"_s), row(u"a(2)"_s, u"3"_s, Own, u"500"_s)})[0].Count,
              u""_s);
}

TEST_F(RankingReports, leavesTheColumnsOfAForeignUrlEmpty)
{
    EXPECT_EQ(matrix({row(u"a"_s, u"3"_s, u"http://other.example/"_s)})[0].Positions,
              (std::vector<QString>{{}, {}}));
}

TEST_F(RankingReports, takesTheFirstTrackedUrlThatMatches)
{
    setUrls({{u"site.example/shop"_s, false}, {u"site.example"_s, false}});
    EXPECT_EQ(matrix({row(u"a"_s, u"3"_s, u"http://site.example/shop/x"_s)})[0].Positions,
              (std::vector<QString>{u"3"_s, {}}));
}

TEST_F(RankingReports, endsTheMatrixAtAPositionBeyondSixteenBits)
{
    const auto stored = rows({row(u"shoes"_s, u"40000"_s, Own), row(u"shoes(2)"_s, u"12"_s, Own)});
    EXPECT_FALSE(GetReportcol(app, account, stored).has_value());
    EXPECT_EQ(takeLog(), u"frmSondrel_GetReportcol error: Overflow"_s);
    EXPECT_EQ(desktop.resets, 1);
    EXPECT_TRUE(desktop.boxes.empty());
    EXPECT_EQ(KeywordURLReport(app, account, u"Finder"_s, stored), QString());
}

TEST_F(RankingReports, isEmptyWithoutUrlsOrKeywords)
{
    EXPECT_EQ(keywordUrls({}), QString());
    setUrls({});
    EXPECT_EQ(keywordUrls({row(u"a"_s)}), QString());
    account.URLs.reset();
    EXPECT_EQ(keywordUrls({row(u"a"_s)}), QString());
    EXPECT_EQ(takeLog(), QString());
}

TEST_F(RankingReports, headsTheColumnOfASingleUrlRanking)
{
    setUrls({{u"site.example"_s, false}});
    const QString text = keywordUrls({row(u"a"_s)});
    EXPECT_EQ(text.count(u">Ranking</font>"_s), 2); // at the head and at the foot
    EXPECT_EQ(text.count(u">URL1</font>"_s), 0);
    EXPECT_TRUE(text.contains(u"1=site.example<br>\r\n</font>"_s));
}

TEST_F(RankingReports, numbersTheColumnsOfSeveralUrls)
{
    const QString text = keywordUrls({row(u"a"_s)});
    EXPECT_EQ(text.count(u">URL1</font></th>\r\n"_s), 2);
    EXPECT_EQ(text.count(u">URL2</font></th>\r\n</tr>"_s), 2);
    EXPECT_EQ(text.count(u">Ranking</font>"_s), 0);
    EXPECT_TRUE(text.contains(u"1=http://www.site.example<br>\r\n2=rival.example<br>\r\n"_s));
}

TEST_F(RankingReports, alternatesTheColoursOfTheMatrix)
{
    const QString text = keywordUrls({row(u"a"_s), row(u"b"_s), row(u"c"_s)});
    EXPECT_LT(text.indexOf(White), text.indexOf(u">a<"_s));
    EXPECT_LT(text.indexOf(Grey), text.indexOf(u">b<"_s));
    EXPECT_EQ(text.count(White), 2);
    EXPECT_EQ(text.count(Grey), 1);
    EXPECT_EQ(text.count(u"</tr>  "_s), 3);
}

TEST_F(RankingReports, showsARowThatRankedLastTime)
{
    account.ExcludeUnRanking = true;
    clsKeyword lost = row(u"lost"_s);
    lost.LastPosition = u"7"_s;
    const QString text = summary({row(u"a"_s, u"1"_s), row(u"never"_s), lost});
    EXPECT_FALSE(text.contains(u">never<"_s));
    EXPECT_TRUE(
        text.contains(Grey + u"<td><a href = \""_s + app.AppPath + u"\\Reports\\Demo\\Finder_lost.html"_s));
    EXPECT_EQ(text.count(White), 1); // the hidden row takes no colour
}

TEST_F(RankingReports, showsEveryRowUnlessToldOtherwise)
{
    EXPECT_TRUE(summary({row(u"never"_s)}).contains(u">never<"_s));
}

TEST_F(RankingReports, showsOnlyALossInRed)
{
    std::vector<clsKeyword> stored;
    for (const QString &change : {u"-3"_s, u"+3"_s, u"3"_s, u""_s, u"7+"_s, u"0"_s}) {
        stored.push_back(row(u"k:"_s + change));
        stored.back().Change = change;
    }
    const QString text = summary(stored);
    EXPECT_EQ(text.count(u"<font color=#FF0000>"_s), 1);
    EXPECT_TRUE(text.contains(u"<font face=arial size=2><font color=#FF0000>-3</font></font></td>\r\n"_s));
    EXPECT_TRUE(text.contains(u"<td align=center><font face=arial size=2>+3</font></td>\r\n"_s));
}

TEST_F(RankingReports, linksAFurtherHitToThePageOfItsKeyword)
{
    const QString text = summary({row(u"shoes"_s, u"12"_s, Own), row(u"shoes(2)"_s, u"30"_s, Rival)});
    EXPECT_EQ(text.count(u"\\Reports\\Demo\\Finder_shoes.html\">"_s), 2);
    EXPECT_TRUE(text.contains(u"<font face=arial size=2>shoes(2)</font></a></td><td align=center>"_s));
}

TEST_F(RankingReports, namesThePagesOfKeywordsAsLookupsDo)
{
    const struct
    {
        const char16_t *keyword;
        const char16_t *page;
    } cases[] = {
        {u"two words", u"Finder_two_words.html"},
        {u"two words(2)", u"Finder_two_words.html"},
        {u"shoes(12345)", u"Finder_shoes%2812345%29.html"},
        {u"shoes (new)", u"Finder_shoes_%28new%29.html"},
        {u"shoes (a)", u"Finder_shoes_.html"},
        {u"report (2005)", u"Finder_report_%282005%29.html"},
        {u"tcp/ip", u"Finder_tcp%2Fip.html"},
        {u"it's", u"Finder_it%27s.html"},
        {u"say \"hi\"", u"Finder_say_%27hi%27.html"},
        {u"Caf\u00E9", u"Finder_Caf\u00E9.html"},
    };
    for (const auto &[keyword, page] : cases) {
        const QString link =
            u"<a href = \""_s + app.AppPath + u"\\Reports\\Demo\\"_s + QString::fromUtf16(page) + u"\">"_s;
        EXPECT_TRUE(summary({row(QString::fromUtf16(keyword))}).contains(link)) << qPrintable(link);
    }
}

TEST_F(RankingReports, hasHeadAndFootWithoutAnyRow)
{
    const QString text = summary({});
    EXPECT_EQ(text.count(u">Search Term<"_s), 2);
    EXPECT_TRUE(text.contains(u"</tr><br><tr bgcolor=#0080C0>"_s));
    EXPECT_TRUE(text.endsWith(u"</tr></table><br><!--end report section -->"_s));
    EXPECT_EQ(text.count(u"<!-- begin report section -->"_s), 1);
}

TEST_F(RankingReports, passesHostileTextsOnAsTheyAre)
{
    clsKeyword hostile = row(u"<script>alert(1)</script>"_s, u"1"_s, u"http://x.example/\"><b>"_s);
    hostile.Status = u"</table>"_s;
    const QString text = summary({hostile});
    EXPECT_TRUE(text.contains(u"<font face=arial size=2><script>alert(1)</script></font></a></td>"_s));
    EXPECT_TRUE(text.contains(u"<font face=arial size=2>http://x.example/\"><b></font></td>\r\n"_s));
    // Only the name of the page is made safe.
    EXPECT_TRUE(text.contains(u"Finder_%3Cscript%3Ealert%281%29%3C%2Fscript%3E.html\">"_s));
}

TEST(ColumnLetters, reachFromOneTo156)
{
    const std::pair<int, const char16_t *> cases[] = {
        {0, u""},     {-1, u""},    {1, u"A"},    {26, u"Z"},   {27, u"AA"},
        {52, u"AZ"},  {53, u"BA"},  {78, u"BZ"},  {79, u"CA"},  {104, u"CZ"},
        {105, u"DA"}, {130, u"DZ"}, {131, u"EA"}, {156, u"EZ"}, {157, u""},
    };
    for (const auto &[number, letters] : cases)
        EXPECT_EQ(getColumn(number), QString::fromUtf16(letters)) << number;
}

} // namespace sondrel
