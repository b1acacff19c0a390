#include "core/text_fold.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

TEST(TextFold, findsAccentedLettersInEitherCase)
{
    EXPECT_EQ(indexOfIgnoringCase(u"caf\u00c9", u"\u00e9"), 3);
}

TEST(TextFold, keepsLengthForEveryUnit)
{
    for (int unit = 0; unit < 0x10000; ++unit)
        ASSERT_EQ(folded(QString(QChar(unit))).size(), 1);
}

TEST(TextFold, findsEmptyNeedleUpToTheEndOnly)
{
    EXPECT_EQ(indexOfIgnoringCase(u"abc", u"", 3), 3);
    EXPECT_EQ(indexOfIgnoringCase(u"abc", u"", 4), -1);
    EXPECT_EQ(indexOfExactly(u"abc", u"", 3), 3);
    EXPECT_EQ(indexOfExactly(u"abc", u"", 4), -1);
}

TEST(TextFold, doesNotFindAcrossHalvesOfUnits)
{
    // The bytes of U+4142 U+4341 hold those of U+4241 at an odd place.
    EXPECT_EQ(indexOfExactly(u"\u4142\u4341", u"\u4241"), -1);
    EXPECT_EQ(indexOfExactly(u"\u4142\u4341\u4241", u"\u4241"), 2);
}

TEST(TextFold, replacesFromLeftToRightWithoutOverlap)
{
    EXPECT_EQ(replacedIgnoringCase(u"aAaAa"_s, u"aa", u"b"), u"bba"_s);
    EXPECT_EQ(replacedIgnoringCase(u"abc"_s, u"", u"x"), u"abc"_s);
}

TEST(TextFold, trimsBlanksOnly)
{
    EXPECT_EQ(trimBlanks(u"  \t a \t  "), u"\t a \t"_s);
    EXPECT_EQ(trimBlanks(u"   "), QStringView());
}
