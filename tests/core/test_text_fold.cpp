#include "core/text_fold.h"

#include "tests/support/random_bytes.h"

#include <gtest/gtest.h>

#include <random>

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

TEST(TextFold, foldsLongTextsUnitByUnit)
{
    QString text;
    for (int unit = 0; unit < 0x10000; ++unit)
        text += u"Plain ASCII in between, LONG enough for any block of 64 units: "_s.first(unit % 64) +
                QChar(unit);
    const QString whole = folded(text);
    ASSERT_EQ(whole.size(), text.size());
    for (qsizetype at = 0; at < text.size(); ++at)
        ASSERT_EQ(whole[at].unicode(), foldCase(text[at].unicode())) << "at " << at;
}

// Whatever is in the way: letters of the other case, bytes one bit apart from letters, bytes above ASCII.
TEST(TextFold, findsAsciiInBytesAsInText)
{
    std::mt19937 random(20261121);
    const QByteArray alphabet = "aA@`zZ[{<kK\xeb\xc1\xe1";
    const QByteArrayView letters = QByteArrayView(alphabet).first(11);
    for (int round = 0; round < 50'000; ++round) {
        const QByteArray text = randomBytes(random, alphabet, static_cast<qsizetype>(random() % 300));
        const QByteArray needle =
            randomBytes(random, letters, static_cast<qsizetype>(random() % 4)).toLower();
        const auto from = static_cast<qsizetype>(random() % 300);
        const QString wide = QString::fromLatin1(text);
        ASSERT_EQ(indexOfAscii(text, needle, from),
                  indexOfIgnoringCase(wide, QString::fromLatin1(needle), from))
            << text.toHex().toStdString() << ' ' << needle.toStdString() << ' ' << from;
        ASSERT_EQ(lastIndexOfAscii(text, needle), folded(wide).lastIndexOf(QString::fromLatin1(needle)))
            << text.toHex().toStdString() << ' ' << needle.toStdString();
    }
}

TEST(TextFold, findsTheFirstOccurrenceAtEveryPlace)
{
    const QString needle = u"<li>"_s;
    for (qsizetype place = 0; place < 300; ++place) {
        const QString text = QString(place, u'<') + needle + u"<li><li"_s;
        ASSERT_EQ(indexOfExactly(text, needle), place);
        ASSERT_EQ(indexOfExactly(text, needle, place), place);
        ASSERT_EQ(indexOfExactly(text, needle, place + 1), place + 4);
        ASSERT_EQ(indexOfExactly(text, needle, place + 5), -1);
        ASSERT_EQ(indexOfIgnoringCase(text.toUpper(), needle), place);
    }
}

TEST(TextFold, findsTheLastOccurrenceWithinTheText)
{
    const QString text = u"a<li>b<li>c<"_s;
    EXPECT_EQ(lastIndexOfExactly(text, u"<li>"), 6);
    EXPECT_EQ(lastIndexOfExactly(QStringView(text).first(9), u"<li>"), 1);
    EXPECT_EQ(lastIndexOfExactly(QStringView(text).first(11), u"<"), 6) << "the next one stands behind it";
    EXPECT_EQ(lastIndexOfExactly(text, u"<ul>"), -1);
    EXPECT_EQ(lastIndexOfExactly(text, u""), 12);
    EXPECT_EQ(lastIndexOfExactly(u"li", u"<li>"), -1);
}

TEST(TextFold, findsNothingThatIsLongerThanTheText)
{
    EXPECT_EQ(indexOfExactly(u"ab", u"abc"), -1);
    EXPECT_EQ(indexOfIgnoringCase(u"ab", u"abc"), -1);
    EXPECT_EQ(indexOfExactly(u"", u"a"), -1);
    EXPECT_EQ(indexOfExactly(u"abc", u"abc", 1), -1);
}

TEST(TextFold, comparesWithoutRegardToCase)
{
    EXPECT_TRUE(equalsIgnoringCase(u"LastLookUp", u"LASTLOOKUP"));
    EXPECT_FALSE(equalsIgnoringCase(u"ab", u"abc"));
    EXPECT_FALSE(equalsIgnoringCase(u"stra\u00dfe", u"strasse"));
    EXPECT_TRUE(equalsIgnoringCase(u"", u""));
    EXPECT_TRUE(startsWithIgnoringCase(u"HTTPS://a", u"http"));
    EXPECT_TRUE(startsWithIgnoringCase(u"a", u""));
    EXPECT_FALSE(startsWithIgnoringCase(u"ht", u"http"));
    EXPECT_TRUE(containsIgnoringCase(u"x[MARKETS]y", u"[markets]"));
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

// Long texts are folded and searched in blocks; a place may lie in, between and behind them.
TEST(TextFold, agreesWithAPlainSearchInTextsOfEveryLength)
{
    std::mt19937 random(20261115);
    for (qsizetype size = 0; size < 400; ++size) {
        QString text(size, Qt::Uninitialized);
        for (QChar &unit : text)
            unit = u"ABab<\u00c9\u00e9"[random() % (size % 3 == 0 ? 7 : 5)];
        const QString plain = folded(text);
        for (qsizetype i = 0; i < size; ++i)
            ASSERT_EQ(plain[i].unicode(), foldCase(text[i].unicode()));
        for (int round = 0; round < 20; ++round) {
            const qsizetype begin = static_cast<qsizetype>(random()) % (size + 1);
            const QString needle = plain.mid(begin, 1 + static_cast<qsizetype>(random() % 5));
            const qsizetype from = static_cast<qsizetype>(random()) % (size + 1);
            qsizetype expected = from;
            while (expected + needle.size() <= size && plain.mid(expected, needle.size()) != needle)
                ++expected;
            if (expected + needle.size() > size)
                expected = -1;
            ASSERT_EQ(indexOfExactly(plain, needle, from), expected) << size << ' ' << from;
        }
    }
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
