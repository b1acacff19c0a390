#include "core/clsCodePage.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <cstdint>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class CodePageConversion : public testing::Test
{
protected:
    World world;
    const clsCodePage codePage{world.app};

    // Bytes of the text's 16-bit units, low byte first.
    static QByteArray memoryOf(const QString &packed)
    {
        QByteArray bytes;
        for (const QChar unit : packed) {
            bytes.append(static_cast<char>(unit.cell()));
            bytes.append(static_cast<char>(unit.row()));
        }
        return bytes;
    }
};

using PercentEncoding = CodePageConversion;

constexpr qint32 SignBit = INT32_MIN;

} // namespace

TEST_F(CodePageConversion, packsBytesWithZerosBehindThem)
{
    EXPECT_EQ(memoryOf(codePage.WToA(u"a\u554a"_s, 936, 0)), QByteArray("a\xb0\xa1\0\0\0", 6));
    EXPECT_EQ(codePage.WToA(u""_s, 936, 0), u""_s);
}

TEST_F(CodePageConversion, packsUpToTheFirstNull)
{
    EXPECT_EQ(memoryOf(codePage.WToA(QString::fromUtf16(u"ab\0c", 4), 1252, 0)), QByteArray("ab\0\0", 4));
}

TEST_F(CodePageConversion, packsNothingInAnUnknownPage)
{
    EXPECT_EQ(codePage.WToA(u"abc"_s, 99999, 0), u""_s);
}

TEST_F(CodePageConversion, readsBackWhatItPacked)
{
    for (const int page : {936, 1252, 65001})
        EXPECT_EQ(codePage.AToW(codePage.WToA(u"abc \u00e9"_s, page, 0), page, 0), u"abc \u00e9"_s) << page;
}

TEST_F(CodePageConversion, stopsAtTheFirstZeroByte)
{
    EXPECT_EQ(codePage.AToW(u"\u6261\u0063\u6464"_s, 1252, 0), u"abc"_s);
    EXPECT_EQ(codePage.AToW(u""_s, 1252, 0), u""_s);
}

TEST_F(CodePageConversion, readsUnknownPagesAsTheSystems)
{
    EXPECT_EQ(codePage.AToW(u"\ue961"_s, 99999, 0), u"a\u00e9"_s);
    world.setPreference(u"CodePage"_s, u"936"_s);
    EXPECT_EQ(codePage.AToW(u"\ua1b0"_s, 99999, 0), u"\u554a"_s);
}

TEST_F(CodePageConversion, readsTextAgainInAnotherPage)
{
    EXPECT_EQ(codePage.CovertToWideChar(u"\u00d0\u2013\u00d0\u00b0"_s, 65001), u"\u0416\u0430"_s);
    EXPECT_EQ(codePage.CovertToWideChar(u"\u00b0\u00a1!"_s, 936), u"\u554a!"_s);
    EXPECT_EQ(codePage.CovertToWideChar(u"\u4e2d"_s, 65001), u"?"_s);
}

TEST_F(CodePageConversion, givesTheSystemsTextForAnUnknownPage)
{
    const QString text = u"caf\u00e9 \u20ac \u0081"_s;
    EXPECT_EQ(codePage.CovertToWideChar(text, 99999), text);
    EXPECT_EQ(codePage.CovertToWideChar(text, 99999), codePage.CovertToWideChar(text, 1252));
}

TEST_F(CodePageConversion, readsBytesAsUnitsLowByteFirst)
{
    EXPECT_EQ(codePage.CovertToWideChar(u"abcd"_s, 1200), u"\u6261\u6463"_s);
    EXPECT_EQ(codePage.CovertToWideChar(u"abcd"_s, 1201), u"\u6261\u6463"_s);
    EXPECT_EQ(codePage.CovertToWideChar(QString::fromUtf16(u"a\0b\0", 4), 1200), u"ab"_s);
}

TEST_F(CodePageConversion, fillsTheLastUnitOfAnOddNumberOfBytes)
{
    EXPECT_EQ(codePage.CovertToWideChar(u"abc"_s, 1200), u"\u6261c"_s);
}

TEST_F(CodePageConversion, writesEveryUnitOnItsOwn)
{
    EXPECT_EQ(codePage.WideCharToUTF8(u"\u007f\u0080\u07ff\u0800\uffff"_s),
              "\x7f\xc2\x80\xdf\xbf\xe0\xa0\x80\xef\xbf\xbf");
    EXPECT_EQ(codePage.WideCharToUTF8(u"\U0001F600"_s), "\xed\xa0\xbd\xed\xb8\x80");
    EXPECT_EQ(codePage.WideCharToUTF8(u""_s), "");
}

TEST_F(PercentEncoding, leavesLettersAndDigitsOnly)
{
    EXPECT_EQ(codePage.fURLEncode("azAZ09 -_.~\n\xff"), u"azAZ09+%2D%5F%2E%7E%0A%FF"_s);
    EXPECT_EQ(codePage.fURLEncode(QByteArray(1, '\0')), u"%00"_s);
}

TEST_F(PercentEncoding, escapesUtf8)
{
    EXPECT_EQ(codePage.ConvertUnicodeToUTF8(u"\u5317\u4eac a"_s), u"%E5%8C%97%E4%BA%AC+a"_s);
    EXPECT_EQ(world.takeLog(), u""_s);
}

TEST_F(PercentEncoding, reportsAnEmptyText)
{
    EXPECT_EQ(codePage.ConvertUnicodeToUTF8(u""_s), u""_s);
    EXPECT_EQ(world.takeLog(), u"clsCodePage_ConvertUnicodeToUTF8: Subscript out of range"_s);
}

TEST(Shifts, areLogical)
{
    EXPECT_EQ(clsCodePage::RShift(-1, 1), INT32_MAX);
    EXPECT_EQ(clsCodePage::RShift(SignBit, 31), 1);
    EXPECT_EQ(clsCodePage::LShift(1, 31), SignBit);
    EXPECT_EQ(clsCodePage::LShift(-1, 4), -16);
    EXPECT_EQ(clsCodePage::LShift(INT32_MAX, 1), -2);
}

TEST(Shifts, leaveTheValueForCountZero)
{
    EXPECT_EQ(clsCodePage::LShift(-5, 0), -5);
    EXPECT_EQ(clsCodePage::RShift(-5, 0), -5);
}

TEST(Shifts, giveZeroFromCount32On)
{
    for (const int count : {32, 33, INT32_MAX}) {
        EXPECT_EQ(clsCodePage::LShift(-1, count), 0);
        EXPECT_EQ(clsCodePage::RShift(-1, count), 0);
    }
}

TEST(Pow2, countsToTheSignBit)
{
    EXPECT_EQ(clsCodePage::Pow2(0), 1);
    EXPECT_EQ(clsCodePage::Pow2(30), 1 << 30);
    EXPECT_EQ(clsCodePage::Pow2(31), SignBit);
}

TEST(Pow2, refusesOtherIndexes)
{
    EXPECT_THROW(clsCodePage::Pow2(-1), Failure);
    EXPECT_THROW(clsCodePage::Pow2(32), Failure);
}
