#include "keywords/add_keywords_form.h"

#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const QString LineDelimiter = u"One keyword per line"_s;

TEST(AddKeywordsForm, offersTheDelimiters)
{
    EXPECT_EQ(delimiterChoices(),
              QStringList({u"One keyword per line"_s, u","_s, u"."_s, u"|"_s, u";"_s, u":"_s, u"#"_s}));
}

TEST(AddKeywordsForm, enablesItsButtons)
{
    EXPECT_EQ(addKeywordsButtons(false, {}), (AddKeywordsButtons{false, true}));
    EXPECT_EQ(addKeywordsButtons(false, u"a"_s), (AddKeywordsButtons{true, true}));
    EXPECT_EQ(addKeywordsButtons(true, u"a"_s), (AddKeywordsButtons{true, false}));
}

TEST(AddKeywordsForm, listsTheProjectsAddresses)
{
    World world;
    clsAccount account(world.app);
    EXPECT_EQ(accountAddresses(nullptr), QStringList());
    EXPECT_EQ(accountAddresses(&account), QStringList());
    account.URLs.emplace();
    for (const QString &url :
         {u"www.a.example"_s, u"http://b.example"_s, u"HTTP://c.example"_s, u"https://d"_s})
        account.URLs->Add({url, false}, url);
    EXPECT_EQ(accountAddresses(&account), QStringList({u"http://www.a.example"_s, u"http://b.example"_s,
                                                       u"http://HTTP://c.example"_s, u"https://d"_s}));
}

TEST(AddKeywordsForm, wantsADotInAnAddress)
{
    EXPECT_TRUE(isFetchable(u"http://a.example"_s));
    EXPECT_TRUE(isFetchable(u"C:\\pages\\a.html"_s));
    EXPECT_FALSE(isFetchable(u"localhost"_s));
    EXPECT_FALSE(isFetchable({}));
}

TEST(AddKeywordsForm, splitsThePagesKeywords)
{
    World world;
    const auto of = [&](const QByteArray &content) {
        return pageKeywords(world.app, "<meta name=keywords content=\"" + content + "\">");
    };
    EXPECT_EQ(of("a b c"), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    EXPECT_EQ(of("a b, c"), QStringList({u"a b"_s, u"c"_s}));
    EXPECT_EQ(of("a,, a ,"), QStringList({u"a"_s, QString(), u"a"_s, QString()}));
    EXPECT_EQ(of(""), QStringList());
    EXPECT_EQ(pageKeywords(world.app, "<body>"), QStringList());
    EXPECT_EQ(pageKeywords(world.app, {}), QStringList());
}

TEST(AddKeywordsForm, readsPagesInUtf8AndInTheCodePage)
{
    World world;
    EXPECT_EQ(pageKeywords(world.app, "<meta name=keywords content=\"th\xC3\xA9,x\">"),
              QStringList({u"thé"_s, u"x"_s}));
    EXPECT_EQ(pageKeywords(world.app, "<meta name=keywords content=\"th\xE9,x\">"),
              QStringList({u"thé"_s, u"x"_s}));
}

TEST(AddKeywordsForm, joinsTheListDirectlyToWhatIsTyped)
{
    EXPECT_EQ(joinedKeywords(u"a\r\nb"_s, {u"c;d"_s, u"e"_s}), u"a\r\nbc d\r\ne\r\n"_s);
    EXPECT_EQ(joinedKeywords({}, {}), QString());
}

TEST(AddKeywordsForm, answersWithTheKeywordsOfOk)
{
    World world;
    const auto of = [&](AddKeywordsAction action, const QString &text) {
        return enteredKeywords(world.app, {action, text, {}, {}});
    };
    EXPECT_EQ(of(AddKeywordsAction::Ok, u"a\r\nb\r\n"_s), QStringList({u"a"_s, u"b"_s}));
    EXPECT_EQ(of(AddKeywordsAction::Ok, LineDelimiter), QStringList());
    EXPECT_EQ(of(AddKeywordsAction::Cancelled, u"a"_s), QStringList());
    EXPECT_EQ(of(AddKeywordsAction::None, u"a"_s), QStringList());
}

TEST(AddKeywordsForm, answersWithTheKeywordsOfAFile)
{
    World world;
    world.write(u"list.txt"_s, "\xEF\xBB\xBFth\xC3\xA9|b\nc|d");
    const QString file = world.path(u"list.txt"_s);
    const auto of = [&](const QString &separetor) {
        return enteredKeywords(world.app, {AddKeywordsAction::Import, {}, file, separetor});
    };
    EXPECT_EQ(of(LineDelimiter), QStringList({u"thé|b"_s, u"c|d"_s}));
    EXPECT_EQ(of(u"|"_s), QStringList({u"thé"_s, u"b\nc"_s, u"d"_s}));
}

TEST(AddKeywordsForm, failsWithoutTheFile)
{
    World world;
    EXPECT_THROW(enteredKeywords(world.app, {AddKeywordsAction::Import, {}, world.path(u"none"_s), u","_s}),
                 Failure);
}

} // namespace
} // namespace sondrel
