#include "core/modCommon.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

QStringList itemsOf(const Collection<QString> &collection)
{
    QStringList items;
    for (const QString &item : collection)
        items.append(item);
    return items;
}

Collection<QString> engines()
{
    Collection<QString> collection;
    collection.Add(u" Alpha "_s, u"first"_s);
    collection.Add(u"Beta"_s, u"second"_s);
    return collection;
}

} // namespace

TEST(IsCollectionItem, trimsTheElementsButNotTheText)
{
    World world;
    const Collection<QString> collection = engines();
    EXPECT_TRUE(IsCollectionItem(world.app, u"ALPHA"_s, &collection));
    EXPECT_TRUE(IsCollectionItem(world.app, u"beta"_s, &collection));
    EXPECT_FALSE(IsCollectionItem(world.app, u" Alpha "_s, &collection));
}

TEST(IsCollectionItem, findsNothingInAnAbsentOrEmptyCollection)
{
    World world;
    const Collection<QString> empty;
    EXPECT_FALSE(IsCollectionItem(world.app, u""_s, nullptr));
    EXPECT_FALSE(IsCollectionItem(world.app, u""_s, &empty));
}

TEST(HasCollectionKey, findsKeysInEitherCase)
{
    const Collection<QString> collection = engines();
    EXPECT_TRUE(HasCollectionKey(&collection, u"SECOND"_s));
    EXPECT_FALSE(HasCollectionKey(&collection, u"Beta"_s));
}

TEST(HasCollectionKey, findsKeysOfObjects)
{
    Collection<std::pair<int, int>> collection;
    collection.Add({1, 2}, u"pair"_s);
    EXPECT_TRUE(HasCollectionKey(&collection, u"Pair"_s));
}

TEST(HasCollectionKey, findsNothingInAnAbsentOrEmptyCollection)
{
    const Collection<QString> empty;
    EXPECT_FALSE(HasCollectionKey<QString>(nullptr, u"a"_s));
    EXPECT_FALSE(HasCollectionKey(&empty, u"a"_s));
}

TEST(StringToCollection, keepsTheFirstOfEqualPieces)
{
    EXPECT_EQ(itemsOf(StringToCollection(u"b;B;a"_s, u";"_s)), (QStringList{u"b"_s, u"a"_s}));
}

TEST(StringToCollection, trimsPiecesAndDropsEmptyOnes)
{
    EXPECT_EQ(itemsOf(StringToCollection(u" a ;;b"_s, u";"_s)), (QStringList{u"a"_s, u"b"_s}));
    EXPECT_EQ(itemsOf(StringToCollection(u"a; "_s, u";"_s)), (QStringList{u"a"_s, u""_s}));
}

TEST(StringToCollection, givesKeysToItsPieces)
{
    const Collection<QString> collection = StringToCollection(u" One ;two"_s, u";"_s);
    EXPECT_TRUE(HasCollectionKey(&collection, u"one"_s));
}

TEST(StringToCollection, isEmptyForAnEmptyText)
{
    EXPECT_TRUE(StringToCollection(u""_s, u";"_s).isEmpty());
}

TEST(StringToCollection, takesTheWholeTextWithoutADelimiter)
{
    EXPECT_EQ(itemsOf(StringToCollection(u"a;b"_s, u""_s)), QStringList{u"a;b"_s});
}

TEST(StringToCollection, takesOneHundredThousandLines)
{
    QString text;
    for (int line = 0; line < 100'000; ++line)
        text += QString::number(line) + u"\r\n"_s;
    EXPECT_EQ(StringToCollection(text, u"\r\n"_s).Count(), 100'000);
}

TEST(LoadFileAsCollection, readsLines)
{
    World world;
    world.write(u"words.txt"_s, "one\r\n two \r\n\r\nONE\r\n");
    const auto lines = LoadFileAsCollection(world.app, world.app.appFile({u"words.txt"_s}));
    ASSERT_TRUE(lines);
    EXPECT_EQ(itemsOf(*lines), (QStringList{u"one"_s, u"two"_s}));
}

TEST(LoadFileAsCollection, isAbsentForAMissingOrEmptyFile)
{
    World world;
    world.write(u"empty.txt"_s, "");
    EXPECT_FALSE(LoadFileAsCollection(world.app, world.app.appFile({u"empty.txt"_s})));
    EXPECT_FALSE(LoadFileAsCollection(world.app, world.app.appFile({u"missing.txt"_s})));
}

TEST(TrimNull, cutsAtTheFirstNull)
{
    World world;
    EXPECT_EQ(TrimNull(world.app, QString::fromUtf16(u"ab\0c\0", 5)), u"ab"_s);
    EXPECT_EQ(TrimNull(world.app, u"abc "_s), u"abc "_s);
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST(IsTrueText, knowsTwoForms)
{
    EXPECT_TRUE(IsTrueText(u"-1"_s));
    EXPECT_TRUE(IsTrueText(u"tRuE"_s));
    for (const QString &text : {u"1"_s, u""_s, u" True"_s, u"-1 "_s, u"0"_s, u"False"_s, u"yes"_s})
        EXPECT_FALSE(IsTrueText(text)) << text.toStdString();
}

TEST(IsNumberText, overlooksSeparators)
{
    for (const QString &text : {u"1,240,000"_s, u"1.240.000"_s, u"1 240 000"_s, u"-5"_s, u"7"_s})
        EXPECT_TRUE(IsNumberText(text)) << text.toStdString();
    for (const QString &text : {u""_s, u" ., "_s, u"12a"_s, u"about 12"_s})
        EXPECT_FALSE(IsNumberText(text)) << text.toStdString();
}

TEST(IsValidProjectName, refusesWhatFileNamesCannotHold)
{
    for (const QChar mark : u"\\/:*?\"<>|"_s)
        EXPECT_FALSE(IsValidProjectName(u"a"_s + mark)) << mark.toLatin1();
    EXPECT_TRUE(IsValidProjectName(u"My shop & co. (2)"_s));
    EXPECT_TRUE(IsValidProjectName(u""_s));
}

TEST(ShellOpenDocument, opensUnderTheWaitCursor)
{
    World world;
    EXPECT_TRUE(ShellOpenDocument(world.app, u"http://a.example"_s, ShowMode::Maximised));
    ASSERT_EQ(world.desktop.opened.size(), 1U);
    EXPECT_EQ(world.desktop.opened[0].first, u"http://a.example"_s);
    EXPECT_EQ(world.desktop.opened[0].second, ShowMode::Maximised);
    EXPECT_EQ(world.desktop.waits, 1);
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST(ShellOpenDocument, tellsThatNothingOpensTheTarget)
{
    World world;
    world.desktop.opens = false;
    EXPECT_FALSE(ShellOpenDocument(world.app, u"x.unknown"_s, ShowMode::Normal));
}

TEST(GetEngineFlag, isOnUnlessSwitchedOff)
{
    World world;
    EXPECT_TRUE(GetEngineFlag(world.app, u"Engine1"_s));
    world.settings.createKey(world.app.RegEngine);
    world.settings.setValue(world.app.RegEngine, u"Engine1"_s, u"0"_s);
    world.settings.setValue(world.app.RegEngine, u"Engine2"_s, u"True"_s);
    EXPECT_FALSE(GetEngineFlag(world.app, u"Engine1"_s));
    EXPECT_TRUE(GetEngineFlag(world.app, u"Engine2"_s));
}

TEST(GetEngineFlag, isOffForAValueThatIsNeither)
{
    World world;
    world.settings.createKey(world.app.RegEngine);
    world.settings.setValue(world.app.RegEngine, u"Engine1"_s, u"maybe"_s);
    EXPECT_FALSE(GetEngineFlag(world.app, u"Engine1"_s));
}
