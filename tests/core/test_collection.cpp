#include "core/collection.h"

#include "tests/support/printing.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

Collection<QString> words(const QStringList &list)
{
    Collection<QString> collection;
    for (const QString &word : list)
        collection.Add(word, word);
    return collection;
}

template <typename Item>
QStringList itemsOf(const Collection<Item> &collection)
{
    QStringList items;
    for (const Item &item : collection)
        items.append(item);
    return items;
}

template <typename Step>
QString failureOf(Step &&step)
{
    try {
        step();
        return QString();
    } catch (const Failure &failure) {
        return failure.text();
    }
}

} // namespace

TEST(Collection, isEmptyAtFirst)
{
    const Collection<QString> collection;
    EXPECT_EQ(collection.Count(), 0);
    EXPECT_TRUE(collection.isEmpty());
    EXPECT_FALSE(collection.HasKey(u""_s));
    EXPECT_THROW(collection.at(1), Failure);
}

TEST(Collection, countsPositionsFromOne)
{
    const auto collection = words({u"a"_s, u"b"_s});
    EXPECT_EQ(collection.at(1), u"a"_s);
    EXPECT_EQ(collection.at(2), u"b"_s);
    EXPECT_EQ(failureOf([&] { collection.at(0); }), u"Position 0 is outside the collection"_s);
    EXPECT_EQ(failureOf([&] { collection.at(3); }), u"Position 3 is outside the collection"_s);
}

TEST(Collection, ignoresTheCaseOfKeys)
{
    const auto collection = words({u"Caf\u00e9"_s});
    EXPECT_TRUE(collection.HasKey(u"CAF\u00c9"_s));
    EXPECT_EQ(collection.at(u"caf\u00e9"_s), u"Caf\u00e9"_s);
}

TEST(Collection, refusesAKeyThatItHas)
{
    auto collection = words({u"b"_s});
    EXPECT_EQ(failureOf([&] { collection.Add(u"x"_s, u"B"_s); }),
              u"This key is already associated with an element of this collection: B"_s);
    EXPECT_EQ(itemsOf(collection), QStringList{u"b"_s});
}

TEST(Collection, takesItemsWithoutAKey)
{
    Collection<QString> collection;
    collection.Add(u"a"_s);
    collection.Add(u"a"_s);
    EXPECT_EQ(collection.Count(), 2);
    EXPECT_FALSE(collection.HasKey(u"a"_s));
}

TEST(Collection, takesAnEmptyTextAsAKey)
{
    Collection<QString> collection;
    collection.Add(u"a"_s, u""_s);
    EXPECT_TRUE(collection.HasKey(u""_s));
    EXPECT_THROW(collection.Add(u"b"_s, QString()), Failure);
}

TEST(Collection, insertsBeforeAPosition)
{
    auto collection = words({u"a"_s, u"c"_s});
    collection.Add(u"b"_s, u"b"_s, 2);
    collection.Add(u"0"_s, u"0"_s, 1);
    EXPECT_EQ(itemsOf(collection), (QStringList{u"0"_s, u"a"_s, u"b"_s, u"c"_s}));
    EXPECT_EQ(collection.at(u"c"_s), u"c"_s);
    EXPECT_EQ(collection.at(u"0"_s), u"0"_s);
}

TEST(Collection, insertsNothingOutsideItsPositions)
{
    auto collection = words({u"a"_s});
    EXPECT_THROW(collection.Add(u"b"_s, u"b"_s, 0), Failure);
    EXPECT_THROW(collection.Add(u"b"_s, u"b"_s, 2), Failure);
    EXPECT_EQ(itemsOf(collection), QStringList{u"a"_s});
    EXPECT_FALSE(collection.HasKey(u"b"_s));
}

TEST(Collection, removesByPositionAndByKey)
{
    auto collection = words({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    collection.Remove(1);
    collection.Remove(u"C"_s);
    EXPECT_EQ(itemsOf(collection), (QStringList{u"b"_s, u"d"_s}));
    EXPECT_FALSE(collection.HasKey(u"a"_s));
    EXPECT_EQ(collection.at(u"d"_s), u"d"_s);
    EXPECT_EQ(collection.at(2), u"d"_s);
}

TEST(Collection, removesNothingThatItHasNot)
{
    auto collection = words({u"a"_s});
    EXPECT_EQ(failureOf([&] { collection.Remove(2); }), u"Position 2 is outside the collection"_s);
    EXPECT_EQ(failureOf([&] { collection.Remove(u"b"_s); }),
              u"No element of the collection has the key: b"_s);
    EXPECT_EQ(collection.Count(), 1);
}

TEST(Collection, takesAKeyAgainThatWasRemoved)
{
    auto collection = words({u"a"_s, u"b"_s});
    collection.Remove(2);
    collection.Add(u"new"_s, u"b"_s);
    collection.Remove(1);
    collection.Add(u"newer"_s, u"a"_s);
    EXPECT_EQ(collection.at(u"b"_s), u"new"_s);
    EXPECT_EQ(collection.at(u"a"_s), u"newer"_s);
}

TEST(Collection, findsByKeyAfterEveryKindOfChange)
{
    auto collection = words({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    collection.removeIf([](const QString &item) { return item == u"b"_s; });
    collection.Add(u"e"_s, u"e"_s);
    collection.Add(u"0"_s, u"0"_s, 1);
    collection.Remove(collection.Count());
    collection.Add(u"f"_s, u"f"_s);
    EXPECT_EQ(itemsOf(collection), (QStringList{u"0"_s, u"a"_s, u"c"_s, u"d"_s, u"f"_s}));
    for (const QString &item : collection)
        EXPECT_EQ(collection.at(item), item);
    EXPECT_EQ(collection.find(u"e"_s), nullptr);
    EXPECT_EQ(collection.find(u"b"_s), nullptr);
}

TEST(Collection, letsItsItemsBeChanged)
{
    auto collection = words({u"a"_s, u"b"_s});
    collection.at(1) = u"x"_s;
    *collection.find(u"b"_s) = u"y"_s;
    EXPECT_EQ(itemsOf(collection), (QStringList{u"x"_s, u"y"_s}));
    EXPECT_EQ(collection.at(u"a"_s), u"x"_s);
}

TEST(Collection, worksWithAlgorithms)
{
    const auto collection = words({u"a"_s, u"b"_s, u"a2"_s});
    const auto startsWithB = [](const QString &item) { return item.startsWith(u'b'); };
    EXPECT_EQ(std::count_if(collection.begin(), collection.end(), startsWithB), 1);
    EXPECT_EQ(*std::find_if(collection.begin(), collection.end(), startsWithB), u"b"_s);
    static_assert(std::forward_iterator<decltype(collection.begin())>);
}

TEST(Collection, isCopiedAsAWhole)
{
    auto collection = words({u"a"_s});
    const auto copy = collection;
    collection.clear();
    collection.Add(u"z"_s, u"z"_s);
    EXPECT_EQ(itemsOf(copy), QStringList{u"a"_s});
    EXPECT_TRUE(copy.HasKey(u"a"_s));
    EXPECT_FALSE(collection.HasKey(u"a"_s));
}
