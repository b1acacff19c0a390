#include "core/code_page.h"

#include <gtest/gtest.h>

#include <ostream>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const CodePage &page(int number)
{
    return *CodePage::find(number);
}

QByteArray allBytes()
{
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.append(static_cast<char>(byte));
    return bytes;
}

class SingleBytePage : public testing::TestWithParam<int>
{
};

class AnyPage : public testing::TestWithParam<int>
{
};

struct Sample
{
    int number;
    const char *bytes;
    const char16_t *text;
};

void PrintTo(const Sample &row, std::ostream *out)
{
    *out << row.number;
}

class PageSample : public testing::TestWithParam<Sample>
{
};

const Sample samples[] = {
    {1250,
     "\xaf"
     "elazo",
     u"\u017belazo"},
    {1251, "\xc6\xe0\xe1\xe0", u"\u0416\u0430\u0431\u0430"},
    {1252, "caf\xe9 \x80 \x81\x8d\x8f\x90\x9d", u"caf\u00e9 \u20ac \u0081\u008d\u008f\u0090\u009d"},
    {1253, "\xc1\xe8\xde\xed\xe1", u"\u0391\u03b8\u03ae\u03bd\u03b1"},
    {866, "\x96\xa5\xad\xa0", u"\u0426\u0435\u043d\u0430"},
    {874, "\xa1\xa2", u"\u0e01\u0e02"},
    {932, "\x93\xfa\x96{\xb1\\", u"\u65e5\u672c\uff71\\"},
    {936, "\xb0\xa1 \x80\xd6\xd0", u"\u554a \u20ac\u4e2d"},
    {949, "\xc7\xd1\xb1\xdb", u"\ud55c\uae00"},
    {950, "\xa5x\xc6W", u"\u53f0\u7063"},
    {1200, "a\x01-N", u"\u0161\u4e2d"},
    {1201,
     "\x01"
     "aN-",
     u"\u0161\u4e2d"},
    {20866, "\xc6", u"\u0444"},
    {28592, "\xb1", u"\u0105"},
    {50220, "\x1b$BF|\x1b(B", u"\u65e5"},
    {51949, "\xc7\xd1", u"\ud55c"},
    {54936, "\xd6\xd0\x81\x30\x84\x36", u"\u4e2d\u00a5"},
    {65000, "+Ti0-", u"\u4e2d"},
    {65001, "\xd0\x96\xe4\xb8\xad\xf0\x9f\x98\x80", u"\u0416\u4e2d\U0001F600"},
};

} // namespace

TEST_P(PageSample, readsAndWritesItsText)
{
    const Sample &row = GetParam();
    EXPECT_EQ(page(row.number).fromBytes(row.bytes), QString::fromUtf16(row.text));
    EXPECT_EQ(page(row.number).toBytes(QString::fromUtf16(row.text)), row.bytes);
}

INSTANTIATE_TEST_SUITE_P(Pages, PageSample, testing::ValuesIn(samples));

TEST_P(SingleBytePage, mapsAllBytesBothWays)
{
    const QByteArray bytes = allBytes();
    const CodePage &tested = page(GetParam());
    ASSERT_TRUE(tested.isSingleByte());
    const QString text = tested.fromBytes(bytes);
    EXPECT_EQ(text.size(), 256);
    EXPECT_EQ(tested.toBytes(text), bytes);
}

// Long texts are read and written in blocks.
TEST_P(SingleBytePage, readsAndWritesEveryByteAtEveryPlace)
{
    const CodePage &tested = page(GetParam());
    const QString units = tested.fromBytes(allBytes());
    const QByteArray filling(100, 'x');
    for (int byte = 0; byte < 256; ++byte) {
        const QByteArray bytes = filling.first(byte % 100) + static_cast<char>(byte) + filling + "yz";
        const QString text = tested.fromBytes(bytes);
        ASSERT_EQ(text, QString(byte % 100, u'x') + units[byte] + QString(100, u'x') + u"yz"_s) << byte;
        ASSERT_EQ(tested.toBytes(text), bytes) << byte;
    }
}

TEST(CodePage, writesNoLowerHalvesOfUnits)
{
    const QByteArray filling(100, 'x');
    for (int place = 0; place < 100; ++place)
        ASSERT_EQ(page(1252).toBytes(QString(place, u'x') + u"\u4e41"_s + QString(100, u'x')),
                  filling.first(place) + '?' + filling);
}

TEST_P(SingleBytePage, leavesAscii)
{
    const QByteArray bytes = allBytes().first(128);
    EXPECT_EQ(page(GetParam()).fromBytes(bytes), QString::fromLatin1(bytes));
}

INSTANTIATE_TEST_SUITE_P(Pages, SingleBytePage,
                         testing::Values(437, 850, 852, 857, 866, 874, 1250, 1251, 1252, 1253, 1254, 1255,
                                         1256, 1257, 1258, 20866, 28591, 28592));

TEST_P(AnyPage, givesEveryUnitTheBytesOfItsValue)
{
    const CodePage &tested = page(GetParam());
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        const QChar character(static_cast<char16_t>(unit));
        const auto value = static_cast<quint16>(tested.ansiValue(character));
        QByteArray bytes;
        if (value > 0xFF)
            bytes.append(static_cast<char>(value >> 8U));
        bytes.append(static_cast<char>(value & 0xFFU));
        ASSERT_EQ(tested.toBytes(QStringView(&character, 1)), bytes) << unit;
    }
}

TEST_P(AnyPage, leavesAscii)
{
    const QByteArray bytes = allBytes().first(128);
    EXPECT_EQ(page(GetParam()).fromBytes(bytes), QString::fromLatin1(bytes));
    EXPECT_EQ(page(GetParam()).toBytes(QString::fromLatin1(bytes)), bytes);
}

INSTANTIATE_TEST_SUITE_P(Pages, AnyPage, testing::Values(932, 936, 949, 950, 1252));

TEST(CodePage, isNothingForUnknownNumbers)
{
    for (const int number : {0, 1, 3, -1252, 1259, 12345, 99999, 123456, -2'147'483'647 - 1, 2'147'483'647})
        EXPECT_EQ(CodePage::find(number), nullptr) << number;
}

TEST(CodePage, isTheSameForOneNumber)
{
    EXPECT_EQ(CodePage::find(1252), CodePage::western());
    EXPECT_EQ(CodePage::western()->number(), 1252);
}

TEST(CodePage, writesAQuestionMarkForEveryUnitItLacks)
{
    for (const int number : {1252, 936, 932, 28592})
        EXPECT_EQ(page(number).toBytes(u"a\u0e01\u200b\U0001F600\xd800z"), "a?????z") << number;
}

TEST(CodePage, writesAQuestionMarkForHalvesOfSurrogates)
{
    EXPECT_EQ(page(65001).toBytes(u"a\xd800z"), "a?z");
    EXPECT_EQ(page(1200).toBytes(u"\xd800"), QByteArray("?\0", 2));
}

TEST(CodePage, givesFreeBytesNoOtherCharacter)
{
    // 1257 leaves A1 free and has no inverted exclamation mark; that one must not be written as A1.
    EXPECT_EQ(page(1257).toBytes(u"\u00a1"), "?");
    // In 857 the letter of D5 in Latin-1 has a place of its own.
    EXPECT_EQ(page(857).toBytes(u"\u00d5"), "\xe5");
}

TEST(CodePage, readsBrokenPairsAsReplacements)
{
    EXPECT_EQ(page(936).fromBytes("a\xb0"), u"a\ufffd"_s);
    EXPECT_EQ(page(936).fromBytes("\xb0<br>"), u"\ufffd<br>"_s);
    EXPECT_EQ(page(936).fromBytes("\xb0\r\n"), u"\ufffd\r\n"_s);
    EXPECT_EQ(page(936).fromBytes("\x81\xff\xb0\xa1"), u"\ufffd\u554a"_s);
}

TEST(CodePage, readsBrokenUtf8AsReplacements)
{
    EXPECT_EQ(page(65001).fromBytes("a\xc3<\xe4\xb8"), u"a\ufffd<\ufffd"_s);
}

TEST(CodePage, readsAndWritesNothing)
{
    for (const int number : {1252, 936, 65001, 1200, 50220}) {
        EXPECT_EQ(page(number).fromBytes(QByteArrayView()), u""_s) << number;
        EXPECT_EQ(page(number).toBytes(QStringView()), "") << number;
    }
}

TEST(CodePage, takesTextsOfManyChunks)
{
    const QString text = u"\u4e2da\U0001F600"_s.repeated(50'000);
    for (const int number : {65001, 54936, 1201, 65000})
        EXPECT_EQ(page(number).fromBytes(page(number).toBytes(text)), text) << number;
}

TEST(CodePage, takesPairsAcrossLongTexts)
{
    const QString text = u"\u554aab"_s.repeated(50'000);
    EXPECT_EQ(page(936).toBytes(text).size(), 200'000);
    EXPECT_EQ(page(936).fromBytes(page(936).toBytes(text)), text);
}

TEST(CodePage, hasNegativeValuesForTwoBytes)
{
    EXPECT_EQ(page(936).ansiValue(u'\u554a'), static_cast<qint16>(0xB0A1));
    EXPECT_EQ(page(936).ansiValue(u'\u20ac'), 0x80);
    EXPECT_EQ(page(936).ansiValue(u'a'), 'a');
}

TEST(CodePage, hasTheValueOfAQuestionMarkForWhatItLacks)
{
    EXPECT_EQ(page(1252).ansiValue(u'\u4e2d'), '?');
    EXPECT_EQ(page(936).ansiValue(u'\u0e01'), '?');
    EXPECT_EQ(page(65001).ansiValue(u'\u4e2d'), '?'); // three bytes
    EXPECT_EQ(page(50220).ansiValue(u'\u4e2d'), '?');
}

TEST(CodePage, findsTheCharacterOfAValue)
{
    EXPECT_EQ(page(1252).fromAnsiValue(0xE9), QChar(u'\u00e9'));
    EXPECT_EQ(page(936).fromAnsiValue(static_cast<qint16>(0xB0A1)), QChar(u'\u554a'));
    EXPECT_EQ(page(936).fromAnsiValue('a'), QChar(u'a'));
    EXPECT_EQ(page(65001).fromAnsiValue('a'), QChar(u'a'));
}
