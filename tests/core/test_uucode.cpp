#include "core/uucode.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const QString Crlf = u"\r\n"_s;

class Uucode : public testing::Test
{
protected:
    World world;
};

using EncodedStringXTest = Uucode;
using EncodedStringTest = Uucode;
using StrToUTF8EncodeTest = Uucode;
using QuotedPrintableTest = Uucode;
using CharSetTest = Uucode;

} // namespace

TEST_F(EncodedStringXTest, escapesEveryCharacter)
{
    EXPECT_EQ(EncodedStringX(world.app, u"a Z9\u00e9\u20ac"_s), u"%61%20%5A%39%E9%80"_s);
    EXPECT_EQ(EncodedStringX(world.app, u""_s), u""_s);
}

TEST_F(EncodedStringXTest, doesNotPad)
{
    EXPECT_EQ(EncodedStringX(world.app, u"\t\r"_s), u"%9%D"_s);
    EXPECT_EQ(EncodedStringX(world.app, QString(QChar(0))), u"%0"_s);
}

TEST_F(EncodedStringXTest, writesAQuestionMarkForWhatThePageLacks)
{
    EXPECT_EQ(EncodedStringX(world.app, u"\u554a"_s), u"%3F"_s);
}

TEST_F(EncodedStringXTest, writesBothBytesOfATwoByteCharacter)
{
    world.setPreference(u"CodePage"_s, u"936"_s);
    EXPECT_EQ(EncodedStringX(world.app, u"\u554aa\u963f"_s), u"%B0%A1%61%B0%A2"_s);
}

TEST_F(EncodedStringTest, escapesByItsTable)
{
    EXPECT_EQ(EncodedString(world.app, u"~!#$%^&()+`=?/{}|[]\\:';<>, "_s),
              u"%7E%21%23%24%25%5E%26%28%29%2B%60%3D%3F%2F%7B%7D%7C%5B%5D%5C%3A%27%3B%3C%3E%2C+"_s);
}

TEST_F(EncodedStringTest, givesTheQuotationMarkTheCodeOfTheApostrophe)
{
    EXPECT_EQ(EncodedString(world.app, u"\""_s), u"%27"_s);
}

TEST_F(EncodedStringTest, leavesOtherCharacters)
{
    const QString text = u"AZaz09@*-_.\t\r\n\u007f\u00a0\u00e9\u20ac\u4e2d"_s;
    EXPECT_EQ(EncodedString(world.app, text), text);
}

TEST_F(StrToUTF8EncodeTest, writesLatinLettersAsTwoBytes)
{
    EXPECT_EQ(StrToUTF8Encode(world.app, u"\u00e9 x"_s), u"%C3%A9+x"_s);
    EXPECT_EQ(StrToUTF8Encode(world.app, u"\u00c0\u00ff"_s), u"%C3%80%C3%BF"_s);
}

TEST_F(StrToUTF8EncodeTest, coversAllOfTheRange)
{
    for (char16_t code = 0xC0; code <= 0xFF; ++code) {
        const QString character(1, QChar(code));
        QString wanted;
        for (const char byte : character.toUtf8())
            wanted += u'%' + QString::number(static_cast<unsigned char>(byte), 16).toUpper();
        ASSERT_EQ(StrToUTF8Encode(world.app, character), wanted);
    }
}

TEST_F(StrToUTF8EncodeTest, passesWhatLiesOutsideTheRange)
{
    EXPECT_EQ(StrToUTF8Encode(world.app, u"\u00a1\u00bf\u0080\u0100\u4e2d"_s),
              u"\u00a1\u00bf\u0080\u0100\u4e2d"_s);
    EXPECT_EQ(StrToUTF8Encode(world.app, u"a&\"b\""_s), u"a%26%27b%27"_s);
}

TEST_F(QuotedPrintableTest, keepsALineThatNothingBroke)
{
    EXPECT_EQ(QuotedPrintableEncode(world.app, u"abc"_s), u"abc"_s);
    EXPECT_EQ(QuotedPrintableEncode(world.app, u""_s), u""_s);
    EXPECT_EQ(QuotedPrintableEncode(world.app, u"a\rb"_s), u"a\rb"_s);
}

TEST_F(QuotedPrintableTest, losesTheLastLineOfSeveral)
{
    EXPECT_EQ(QuotedPrintableEncode(world.app, u"a\r\nbc"_s), u"a\r\n"_s);
    EXPECT_EQ(QuotedPrintableEncode(world.app, u"a\nb\nc"_s), u"a\nb\n"_s);
}

TEST_F(QuotedPrintableTest, escapesEqualsSignsControlsAndLatinLetters)
{
    EXPECT_EQ(QuotedPrintableEncode(world.app, u"="_s), u"=3D"_s);
    EXPECT_EQ(QuotedPrintableEncode(world.app, u"\u00e9\u007f\u000b\u000c\u000e\u001f\u0007"_s),
              u"=E9=7F=0B=0C=0E=1F=07"_s);
    EXPECT_EQ(QuotedPrintableEncode(world.app, u"\b\t <>~"_s), u"\b\t <>~"_s);
}

TEST_F(QuotedPrintableTest, escapesABlankInColumn75Only)
{
    const QString start(74, u'a');
    EXPECT_EQ(QuotedPrintableEncode(world.app, start + u" b\n"_s), start + u"=20\r\nb\n"_s);
    EXPECT_EQ(QuotedPrintableEncode(world.app, start.first(73) + u" b\n"_s), start.first(73) + u" b\n"_s);
    EXPECT_EQ(QuotedPrintableEncode(world.app, u"a \r\n"_s), u"a \r\n"_s);
}

TEST_F(QuotedPrintableTest, breaksBehindCharacter76)
{
    EXPECT_EQ(QuotedPrintableEncode(world.app, QString(76, u'a')), QString(76, u'a'));
    EXPECT_EQ(QuotedPrintableEncode(world.app, QString(77, u'a')), QString(76, u'a') + u"="_s + Crlf);
}

TEST_F(QuotedPrintableTest, breaksBehindAnEscapeThatPassesTheColumn)
{
    EXPECT_EQ(QuotedPrintableEncode(world.app, QString(74, u'a') + u"=b"_s),
              QString(74, u'a') + u"=3D="_s + Crlf);
    EXPECT_EQ(QuotedPrintableEncode(world.app, QString(75, u'a') + u"=b"_s),
              QString(75, u'a') + u"=3D="_s + Crlf);
}

TEST_F(QuotedPrintableTest, startsAnewBehindASoftBreak)
{
    const QString line = QString(76, u'a');
    EXPECT_EQ(QuotedPrintableEncode(world.app, line + line + u"b\n"_s),
              line + u"=\r\n"_s + line + u"=\r\nb\n"_s);
}

TEST_F(QuotedPrintableTest, escapesBothBytesOfATwoByteCharacter)
{
    world.setPreference(u"CodePage"_s, u"936"_s);
    EXPECT_EQ(QuotedPrintableEncode(world.app, u"\u554aa"_s), u"=B0=A1a"_s);
}

TEST_F(QuotedPrintableTest, takesOneCharacterAtATime)
{
    EXPECT_EQ(QuotedPrintableChar(world.app, u"\u00e9"_s), u"=E9"_s);
    EXPECT_EQ(QuotedPrintableChar(world.app, u"\n"_s), u"=0A"_s);
    EXPECT_EQ(QuotedPrintableChar(world.app, u"\u4e2d"_s), u"=3F"_s);
    EXPECT_EQ(QuotedPrintableChar(world.app, u""_s), u""_s);
}

TEST_F(CharSetTest, tellsWhetherAValuePasses127)
{
    EXPECT_EQ(CharSet(world.app, u"abc\u007f"_s), u"7bit"_s);
    EXPECT_EQ(CharSet(world.app, u"abc\u00e9"_s), u"8bit"_s);
    EXPECT_EQ(CharSet(world.app, u"\u4e2d"_s), u"7bit"_s);
    EXPECT_EQ(CharSet(world.app, u""_s), u"7bit"_s);
}

TEST_F(CharSetTest, doesNotCountTwoByteCharacters)
{
    world.setPreference(u"CodePage"_s, u"936"_s);
    EXPECT_EQ(CharSet(world.app, u"\u554a"_s), u"7bit"_s);
    EXPECT_EQ(CharSet(world.app, u"\u20ac"_s), u"8bit"_s);
}
