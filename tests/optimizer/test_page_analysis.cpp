#include "optimizer/page_analysis.h"

#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

QString words(int count, const QString &word = u"w"_s)
{
    QStringList list;
    for (int i = 0; i < count; ++i)
        list.append(word);
    return list.join(u' ');
}

TEST(WordCount, isOneTooHighForTheBody)
{
    EXPECT_EQ(countBodyWords({}), 0);
    EXPECT_EQ(countBodyWords(u"one"_s), 2);
    EXPECT_EQ(countBodyWords(u"a b"_s), 3);
}

TEST(WordCount, isRightForTheDescription)
{
    EXPECT_EQ(countDescriptionWords({}), 0);
    EXPECT_EQ(countDescriptionWords(u"one two"_s), 2);
    EXPECT_EQ(countDescriptionWords(u" one  two"_s),
              4); // blanks side by side have an empty word between them
    EXPECT_EQ(countDescriptionWords(QString(32766, u' ')), 32767);
    EXPECT_THROW(countDescriptionWords(QString(32767, u' ')), Failure);
}

TEST(DensityBand, goesByTheWordsOfTheBody)
{
    const DensityBand low{0.05F, 0.1F};
    const DensityBand middle{0.03F, 0.05F};
    const DensityBand high{0.01F, 0.03F};
    EXPECT_EQ(bodyBandOf(0), low);
    EXPECT_EQ(bodyBandOf(299), low);
    EXPECT_EQ(bodyBandOf(300), middle);
    EXPECT_EQ(bodyBandOf(800), middle);
    EXPECT_EQ(bodyBandOf(801), high);
}

TEST(DensityBand, goesByTheLengthOfTheDescription)
{
    EXPECT_EQ(descriptionBandOf(0), (DensityBand{0.2F, 0.3F}));
    EXPECT_EQ(descriptionBandOf(19), (DensityBand{0.2F, 0.3F}));
    EXPECT_EQ(descriptionBandOf(20), (DensityBand{0.1F, 0.2F}));
    EXPECT_EQ(descriptionBandOf(100), (DensityBand{0.1F, 0.2F}));
    EXPECT_EQ(descriptionBandOf(101), (DensityBand{0.05F, 0.1F}));
}

KeywordUse use(const QString &keyword, const QString &text, qint32 wordCount,
               DensityBand band = {0.05F, 0.1F})
{
    return keywordUses(keyword, text, wordCount, band).at(0);
}

TEST(KeywordUses, countsOccurrencesAnywhere)
{
    EXPECT_EQ(use(u"car"_s, u"carpet scar"_s, 100).matches, 2);
    EXPECT_EQ(use(u"CAR"_s, u"Carpet scar"_s, 100).matches, 2);
    EXPECT_EQ(use(u"aa"_s, u"aaaaa"_s, 100).matches, 2);
    EXPECT_EQ(use(u" red   shoes "_s, u"red shoes"_s, 100).matches, 1);
    EXPECT_EQ(use(u"none"_s, u"text"_s, 100).matches, 0);
}

TEST(KeywordUses, countsAtAnyPlaceOfALongText)
{
    EXPECT_EQ(use(u"aa"_s, QString(60001, u'a'), 100).matches, 30000);
    for (qsizetype before = 16370; before < 16390; ++before)
        EXPECT_EQ(use(u"needle"_s, QString(before, u'e') + u"needleneedle"_s, 100).matches, 2) << before;
    EXPECT_EQ(use(QString(40000, u'a'), QString(120001, u'a'), 100).matches, 3);
}

TEST(KeywordUses, keepsTheKeywordAsItIs)
{
    EXPECT_EQ(use(u" red   shoes "_s, {}, 0).keyword, u" red   shoes "_s);
}

TEST(KeywordUses, hasNoRowForAnEmptyPiece)
{
    const auto uses = keywordUses(u"a,,b,"_s, u"a b"_s, 3, {0.05F, 0.1F});
    ASSERT_EQ(uses.size(), 2U);
    EXPECT_EQ(uses[1].keyword, u"b"_s);
    EXPECT_TRUE(keywordUses({}, u"a"_s, 1, {}).empty());
}

TEST(KeywordUses, hasARowForABlankPiece)
{
    const auto uses = keywordUses(u"a, ,b"_s, u"a b"_s, 3, {0.05F, 0.1F});
    ASSERT_EQ(uses.size(), 3U);
    EXPECT_EQ(uses[1], (KeywordUse{u" "_s, 0, u"0%"_s, Verdict::TooFew}));
}

TEST(KeywordUses, roundsTheDensityToTheEvenHundredth)
{
    const auto density = [](int matches, qint32 wordCount) {
        return use(u"w"_s, words(matches), wordCount).density;
    };
    EXPECT_EQ(density(34, 1000), u"3%"_s);
    EXPECT_EQ(density(5, 200), u"2%"_s); // 2.5 to the even digit
    EXPECT_EQ(density(7, 200), u"4%"_s); // 3.5
    EXPECT_EQ(density(1, 8), u"12%"_s);
    EXPECT_EQ(density(3, 8), u"38%"_s);
    EXPECT_EQ(density(109, 200), u"55%"_s); // the share is a little more than 0.545
    EXPECT_EQ(density(23, 40), u"57%"_s);   // and here less than 0.575
    EXPECT_EQ(density(5, 2), u"250%"_s);
    EXPECT_EQ(density(5, 0), u"0%"_s);
    EXPECT_EQ(density(0, 10), u"0%"_s);
}

TEST(KeywordUses, takesTheBoundsForGood)
{
    const DensityBand band{0.03F, 0.05F};
    const auto verdict = [&](int matches) { return use(u"w"_s, words(matches), 100, band).verdict; };
    EXPECT_EQ(verdict(2), Verdict::TooFew);
    EXPECT_EQ(verdict(3), Verdict::Good);
    EXPECT_EQ(verdict(5), Verdict::Good);
    EXPECT_EQ(verdict(6), Verdict::TooMany);
}

TEST(KeywordUses, takesEveryBoundForGoodInSinglePrecision)
{
    for (const int low : {1, 3, 5, 10, 20}) {
        const auto bound = static_cast<float>(low / 100.0);
        EXPECT_EQ(use(u"w"_s, words(low), 100, {bound, bound}).verdict, Verdict::Good) << low;
    }
}

TEST(KeywordUses, failsBeyondSixteenBits)
{
    EXPECT_EQ(use(u"w"_s, QString(32767, u'w'), 2).matches, 32767);
    EXPECT_THROW(use(u"w"_s, QString(32768, u'w'), 2), Failure);
}

class Analysis : public testing::Test
{
protected:
    PageAnalysis analyse(const QString &html) { return analysePage(world.app, u"site.example/x/"_s, html); }

    World world;
};

TEST_F(Analysis, judgesAKeywordInEachTextForItself)
{
    const PageAnalysis page =
        analyse(u"<meta name=keywords content=shoes><meta name=description content=shoes><body>text<p>"_s);
    ASSERT_EQ(page.bodyRows.size(), 1U);
    ASSERT_EQ(page.descriptionRows.size(), 1U);
    EXPECT_EQ(page.bodyRows[0], (KeywordUse{u"shoes"_s, 0, u"0%"_s, Verdict::TooFew}));
    EXPECT_EQ(page.descriptionRows[0], (KeywordUse{u"shoes"_s, 1, u"100%"_s, Verdict::TooMany}));
}

TEST_F(Analysis, findsNothingInAnEmptyBody)
{
    const PageAnalysis page = analyse(u"<meta name=keywords content=\"a,b\">"_s);
    EXPECT_EQ(page.bodyWords, 0);
    for (const KeywordUse &row : page.bodyRows)
        EXPECT_EQ(row, (KeywordUse{row.keyword, 0, u"0%"_s, Verdict::TooFew}));
    EXPECT_EQ(page.bodyRows.size(), 2U);
}

TEST_F(Analysis, listsTheFramesOfAFrameset)
{
    const PageAnalysis page = analyse(u"<FrameSet>\n<frame src=\"a.html\"></frameset>"_s);
    EXPECT_TRUE(page.isFrameset);
    EXPECT_TRUE(page.frameAdvice.contains(u"<lo><li>http://site.example/x/a.html</li></lo>"_s));
    EXPECT_EQ(page.frameWarning.indexOf(u"<font face=arial COLOR=#ff0000><blink>Warning:</blink>"_s), 0);
}

TEST_F(Analysis, warnsOfNoFramesWithoutAFrameset)
{
    const PageAnalysis page = analyse(u"<frame src=a.html>"_s);
    EXPECT_FALSE(page.isFrameset);
    EXPECT_EQ(page.frameWarning, QString());
    EXPECT_EQ(page.frameAdvice, QString());
}

TEST_F(Analysis, tellsItsSteps)
{
    QList<int> steps;
    analysePage(world.app, {}, u"<p>"_s, [&](int step) { steps.append(step); });
    EXPECT_EQ(steps, QList<int>({3, 4, 5, 6, 7, 8, 9, 10}));
}

} // namespace
} // namespace sondrel
