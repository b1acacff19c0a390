#include "keywords/keyword_list.h"

#include "core/registry.h"
#include "tests/support/world.h"

#include <QStringEncoder>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

class KeywordListFile : public testing::Test
{
protected:
    QStringList split(const QString &text, const QString &delimiter)
    {
        return splitKeywords(text, delimiter);
    }

    World world;
};

TEST_F(KeywordListFile, splitsAtAnyLineEnd)
{
    const QStringList wanted{u"a"_s, u"b c"_s, u"d"_s, u"e"_s};
    EXPECT_EQ(split(u"a\r\n b c \nd\r\r\n\ne"_s, {}), wanted);
}

TEST_F(KeywordListFile, splitsAtEveryDelimiter)
{
    for (const QString &delimiter : {u","_s, u"."_s, u"|"_s, u";"_s, u":"_s, u"#"_s, u" - "_s, u"AND"_s}) {
        const QString text =
            u"red shoes"_s + delimiter.toLower() + u"boots"_s + delimiter + delimiter + u"socks"_s;
        EXPECT_EQ(split(text, delimiter), QStringList({u"red shoes"_s, u"boots"_s, u"socks"_s}))
            << delimiter.toStdString();
    }
}

TEST_F(KeywordListFile, passesLineEndsRoundAnotherDelimiter)
{
    EXPECT_EQ(split(u"a,b,\r\nc,\r\n"_s, u","_s), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    EXPECT_EQ(split(u"a\r\nb,c"_s, u","_s), QStringList({u"a\r\nb"_s, u"c"_s}));
}

TEST_F(KeywordListFile, takesEachKeywordOnce)
{
    EXPECT_EQ(split(u"Shoes\nboots\nSHOES\n shoes\nboots"_s, {}), QStringList({u"Shoes"_s, u"boots"_s}));
}

TEST_F(KeywordListFile, cutsNothing)
{
    const QString longOne(100000, u'x');
    EXPECT_EQ(split(longOne + u"\ny"_s, {}), QStringList({longOne, u"y"_s}));
}

TEST_F(KeywordListFile, tellsHowFarItIs)
{
    QString text;
    for (int line = 0; line < 100000; ++line)
        text += u"keyword number "_s + QString::number(line) + u"\r\n"_s;
    std::vector<qsizetype> told;
    const QStringList keywords = splitKeywords(text, {}, [&](qsizetype taken, qsizetype all) {
        EXPECT_EQ(all, text.size());
        told.push_back(taken);
    });
    EXPECT_EQ(keywords.size(), 100000);
    EXPECT_EQ(keywords.last(), u"keyword number 99999"_s);
    EXPECT_GT(told.size(), 20U);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_EQ(told.back(), text.size());
}

TEST_F(KeywordListFile, readsEveryEncoding)
{
    const QString text = u"Schuhe für\r\nthé\r\n"_s;
    const auto encoded = [&](QStringConverter::Encoding encoding, QStringConverter::Flag flag) {
        QStringEncoder encoder(encoding, flag);
        return QByteArray(encoder(text));
    };
    using Encoder = QStringConverter;
    const QByteArray files[] = {
        world.app.toBytes(text),
        encoded(Encoder::Utf8, Encoder::Flag::Default),
        encoded(Encoder::Utf8, Encoder::Flag::WriteBom),
        encoded(Encoder::Utf16LE, Encoder::Flag::Default),
        encoded(Encoder::Utf16LE, Encoder::Flag::WriteBom),
        encoded(Encoder::Utf16BE, Encoder::Flag::Default),
        encoded(Encoder::Utf16BE, Encoder::Flag::WriteBom),
    };
    for (const QByteArray &bytes : files)
        EXPECT_EQ(keywordFileText(world.app, bytes), text) << bytes.toHex().toStdString();
}

TEST_F(KeywordListFile, readsOtherFilesInTheSystemCodePage)
{
    EXPECT_EQ(keywordFileText(world.app, {}), QString());
    EXPECT_EQ(keywordFileText(world.app, "\xFC"), u"ü"_s);
    EXPECT_EQ(keywordFileText(world.app, "\xC3"), u"Ã"_s); // UTF-8 that breaks off
    world.setPreference(u"CodePage"_s, u"936"_s);
    EXPECT_EQ(keywordFileText(world.app, "\xD0\xAC\xD7\xD3"), u"鞋子"_s);
}

} // namespace
} // namespace sondrel
