#include "core/modBase64Encode.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

TEST(Base64Encode, fillsWithBlanks)
{
    World world;
    EXPECT_EQ(Base64Encode(world.app, u"abc"_s), u"YWJj"_s);
    EXPECT_EQ(Base64Encode(world.app, u"ab"_s), u"YWI="_s);
    EXPECT_EQ(Base64Encode(world.app, u"a"_s), u"YS=="_s);
}

TEST(Base64Encode, isEmptyForAnEmptyText)
{
    World world;
    EXPECT_EQ(Base64Encode(world.app, u""_s), u""_s);
}

TEST(Base64Encode, joinsChunksWithoutLineBreaks)
{
    World world;
    const QString text = Base64Encode(world.app, QString(55, u'a'));
    EXPECT_EQ(text, u"YWFh"_s.repeated(18) + u"YS=="_s);
    EXPECT_EQ(Base64Encode(world.app, QString(1080, u'a')), u"YWFh"_s.repeated(360));
}

TEST(Base64Encode, isReadBackByDecoders)
{
    World world;
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes.append(static_cast<char>(byte));
    for (qsizetype length = 0; length <= bytes.size(); ++length) {
        const QByteArray part = bytes.last(length);
        ASSERT_EQ(QByteArray::fromBase64(Base64Encode(world.app, world.app.fromBytes(part)).toLatin1()),
                  part);
    }
}

TEST(Base64Encode, encodesAQuestionMarkForWhatThePageLacks)
{
    World world;
    EXPECT_EQ(Base64Encode(world.app, u"\u4e2d\u6587?"_s), u"Pz8/"_s);
}

TEST(Base64Encode, reportsCharactersOfTwoBytes)
{
    World world;
    world.setPreference(u"CodePage"_s, u"936"_s);
    EXPECT_EQ(Base64Encode(world.app, u"user:\u554a"_s), u""_s);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0],
              (MessageBox{u"Error"_s, u"EncodeSubscript out of range"_s, MessageIcon::Exclamation}));
}
