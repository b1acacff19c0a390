#include "mail/mail_text.h"

#include "tests/support/printing.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

TEST(WrapWords, leavesATextWithoutLineEnds)
{
    const QString text(100, u'x');
    EXPECT_EQ(wrapWords(text), text);
}

TEST(WrapWords, leavesALongTextWithoutLineEndsQuickly)
{
    const QString text(20'000'000, u'x');
    EXPECT_EQ(wrapWords(text).size(), text.size());
}

TEST(WrapWords, wrapsALongTextOfManyLines)
{
    const QString line = QString(40, u'a') + u' ' + QString(60, u'b') + u"\r\n"_s;
    const QString wrapped = QString(40, u'a') + u" \r\n"_s + QString(60, u'b') + u"\r\n"_s;
    EXPECT_EQ(wrapWords(line.repeated(50'000)), wrapped.repeated(50'000));
}

TEST(WrapWords, breaksAtTheLastBlankInFrontOfTheColumn)
{
    const QString line = QString(73, u'a') + u' ' + QString(16, u'b') + u"\r\ntail\r\n"_s;
    EXPECT_EQ(wrapWords(line), QString(73, u'a') + u" \r\n"_s + QString(16, u'b') + u"\r\ntail\r\n"_s);
}

TEST(WrapWords, cutsAWordThatFillsTheLine)
{
    const QString line(90, u'a');
    EXPECT_EQ(wrapWords(line + u'\n'), line.first(74) + u"\r\n"_s + line.sliced(74) + u'\n');
}

TEST(WrapWords, letsTheFirstKindOfLineEndDecide)
{
    // The CR LF at the end counts, the LF in front of it does not end a line.
    const QString text = u"short\n"_s + QString(80, u'a') + u"\r\n"_s;
    EXPECT_EQ(wrapWords(text), u"short\n"_s + QString(68, u'a') + u"\r\n"_s + QString(12, u'a') + u"\r\n"_s);
}

TEST(WrapWords, keepsEmptyLines)
{
    const QString text = u"\r\n"_s.repeated(60);
    EXPECT_EQ(wrapWords(text), text);
}

TEST(MailLineEnds, becomeOneKind)
{
    EXPECT_EQ(withMailLineEnds("a\rb\nc\r\nd\n\re"), "a\r\nb\r\nc\r\nd\r\n\r\ne");
}

TEST(NeedsEncoding, onlyWhereLinesCannotTravel)
{
    EXPECT_FALSE(needsEncoding(QByteArray(998, 'a') + "\r\n" + QByteArray(998, 'b')));
    EXPECT_TRUE(needsEncoding(QByteArray(999, 'a')));
    EXPECT_TRUE(needsEncoding("caf\xE9"));
    EXPECT_TRUE(needsEncoding(QByteArray("a\0b", 3)));
    EXPECT_FALSE(needsEncoding(""));
}

TEST(QuotedPrintableLines, loseNothing)
{
    EXPECT_EQ(quotedPrintableLines("a=b \r\n\xE9"), "a=3Db=20\r\n=E9");
    EXPECT_EQ(quotedPrintableLines(QByteArray(80, 'a')), QByteArray(75, 'a') + "=\r\n" + QByteArray(5, 'a'));
}

TEST(QuotedPrintableLines, stayShort)
{
    const QByteArray quoted = quotedPrintableLines(QByteArray(3000, '\xE9') + QByteArray(3000, ' '));
    for (const QByteArray &line : quoted.split('\n'))
        EXPECT_LE(line.size(), 77);
}

} // namespace
