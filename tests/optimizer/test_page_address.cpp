#include "optimizer/page_address.h"

#include "optimizer/optimizer_form.h"
#include "tests/support/bad_files.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

TEST(LocalPage, isAPathOfAnyForm)
{
    EXPECT_EQ(localPage(u"C:\\pages\\a.html"_s), u"C:\\pages\\a.html"_s);
    EXPECT_EQ(localPage(u"/home/me/a.html"_s), u"/home/me/a.html"_s);
    EXPECT_EQ(localPage(u"~/a.html"_s), QDir::homePath() + u"/a.html"_s);
    EXPECT_EQ(localPage(u"file:///home/a%20b.html"_s), u"/home/a b.html"_s);
    EXPECT_EQ(localPage(u"FILE:///a.html"_s), u"/a.html"_s);
}

TEST(LocalPage, isNoAddress)
{
    for (const QString &text :
         {u"http://a.example/"_s, u"a.example"_s, u"\\\\server\\share\\a.html"_s, u"~a"_s, u"a/b"_s})
        EXPECT_EQ(localPage(text), std::nullopt) << text.toStdString();
}

TEST(PageAddress, hasASchemeUnlessItIsAPath)
{
    EXPECT_EQ(pageAddress(u"site.example"_s), u"http://site.example"_s);
    for (const QString &text :
         {u"HTTPS://site.example"_s, u"httpd.example"_s, u"C:\\a.html"_s, u"\\\\server\\share\\a.html"_s,
          u"/a.html"_s, u"~/a.html"_s, u"file:///a.html"_s})
        EXPECT_EQ(pageAddress(text), text);
}

TEST(ReportFileName, isMadeOfTheAddress)
{
    World world;
    const auto name = [&](const QString &text) { return reportFileName(world.app, text); };
    EXPECT_EQ(name(u"http://host.example/a/b.htm?x=1"_s), u"host.example_a_b.htm_x_1.html"_s);
    EXPECT_EQ(name(u"http://host.example"_s), u"host.example_.html"_s);
    EXPECT_EQ(name(u"host.example"_s), u"host.example_.html"_s);
    EXPECT_EQ(name(u"C:\\pages\\index.html"_s), u"index.html.html"_s);
    EXPECT_EQ(name(u"\\\\server\\share\\a.html"_s), u"a.html.html"_s);
    EXPECT_EQ(name(u"/home/me/a.html"_s), u"a.html.html"_s);
    EXPECT_EQ(name(u"/home/me\\b.html"_s), u"b.html.html"_s);
    EXPECT_EQ(name(u"~/a.html"_s), u"a.html.html"_s);
    EXPECT_EQ(name(u"file:///home/a%20b.html"_s), u"a b.html.html"_s);
}

TEST(LocalPageText, isReadInTheSystemCodePage)
{
    World world;
    world.write(u"a.html"_s, "\xFC\x80");
    EXPECT_EQ(localPageText(world.app, world.path(u"a.html"_s)), u"ü€"_s);
}

TEST(LocalPageText, failsForWhatIsNoPage)
{
    World world;
    putFolder(world, u"folder"_s);
    putUnreadable(world, u"closed"_s);
    world.write(u"large"_s, {});
    QFile::resize(world.path(u"large"_s), qint64(100) << 20);
    EXPECT_THROW(localPageText(world.app, world.path(u"folder"_s)), Failure);
    EXPECT_THROW(localPageText(world.app, world.path(u"closed"_s)), Failure);
    EXPECT_THROW(localPageText(world.app, world.path(u"none"_s)), Failure);
    try {
        localPageText(world.app, world.path(u"large"_s));
        FAIL();
    } catch (const Failure &failure) {
        EXPECT_EQ(failure.text(), u"The file "_s + world.path(u"large"_s) +
                                      u" is larger than 32 MiB, too large for a web page"_s);
    }
}

TEST(OptimizerPress, dependsOnTheText)
{
    World world;
    putFolder(world, u"folder"_s);
    world.write(u"a.html"_s, "x");
    const auto press = [&](const QString &text) { return optimizerPress(world.app, {}, text); };
    EXPECT_EQ(press({}), OptimizerPress::AskForAddress);
    EXPECT_EQ(press(u"a.example"_s), OptimizerPress::Fetch);
    EXPECT_EQ(press(u"\\\\server\\share\\a.html"_s), OptimizerPress::Fetch);
    EXPECT_EQ(press(world.path(u"a.html"_s)), OptimizerPress::ReadFile);
    EXPECT_EQ(press(u"file://"_s + world.path(u"a.html"_s)), OptimizerPress::ReadFile);
    EXPECT_EQ(press(world.path(u"b.html"_s)), OptimizerPress::RefuseFile);
    EXPECT_EQ(press(world.path(u"folder"_s)), OptimizerPress::RefuseFile);
    EXPECT_EQ(press(u"C:\\a.html"_s), OptimizerPress::RefuseFile);
    EXPECT_EQ(optimizerPress(world.app, {true, true, false}, {}), OptimizerPress::Cancel);
}

TEST(OptimizerForm, followsThePresses)
{
    EXPECT_EQ(afterPress({}, OptimizerPress::AskForAddress), OptimizerForm());
    EXPECT_EQ(afterPress({}, OptimizerPress::RefuseFile), OptimizerForm());
    EXPECT_EQ(afterPress({}, OptimizerPress::ReadFile), (OptimizerForm{false, false, false}));
    const OptimizerForm fetching = afterPress({}, OptimizerPress::Fetch);
    EXPECT_EQ(fetching, (OptimizerForm{true, true, false}));
    EXPECT_EQ(afterPress(fetching, OptimizerPress::Cancel), (OptimizerForm{false, true, false}));
    EXPECT_EQ(afterRun(), (OptimizerForm{false, true, true}));
}

} // namespace
} // namespace sondrel
