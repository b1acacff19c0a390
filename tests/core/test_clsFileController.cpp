#include "core/clsFileController.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QDir>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class FileController : public testing::Test
{
protected:
    World world;
    const clsFileController controller{world.app};
    const QString path = world.app.appFile({u"notes.txt"_s});
};

} // namespace

TEST_F(FileController, readsAWholeFileUnderTheWaitCursor)
{
    world.write(u"notes.txt"_s, QByteArray("caf\xe9\r\n\0x\x1a", 9));
    EXPECT_EQ(controller.openTextFile(path), QString::fromUtf16(u"caf\u00e9\r\n\0x\u001a", 9));
    EXPECT_EQ(world.desktop.waits, 1);
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(FileController, readsNothingFromAMissingFile)
{
    EXPECT_EQ(controller.openTextFile(path), u""_s);
    EXPECT_EQ(controller.openTextFile(u""_s), u""_s);
    EXPECT_EQ(world.takeLog(), u""_s);
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(FileController, readsNothingFromAFolder)
{
    ASSERT_TRUE(QDir().mkpath(world.path(u"notes.txt"_s)));
    EXPECT_EQ(controller.openTextFile(path), u""_s);
    EXPECT_EQ(world.takeLog(), u""_s);
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(FileController, addsALineEndToWhatItWrites)
{
    EXPECT_TRUE(controller.saveTextFile(path, u"caf\u00e9\u4e2d"_s));
    EXPECT_EQ(world.read(u"notes.txt"_s), "caf\xe9?\r\n");
    EXPECT_EQ(world.desktop.waits, 1);
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(FileController, overwritesWithoutAQuestion)
{
    world.write(u"notes.txt"_s, "a much longer text than the new one");
    EXPECT_TRUE(controller.saveTextFile(path, u"new"_s));
    EXPECT_EQ(world.read(u"notes.txt"_s), "new\r\n");
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(FileController, asksBeforeItReplacesAFile)
{
    world.write(u"notes.txt"_s, "old");
    EXPECT_TRUE(controller.saveTextFile(path, u"new"_s, true));
    EXPECT_EQ(world.read(u"notes.txt"_s), "new\r\n");
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0],
              (MessageBox{u"Save File"_s,
                          u"The file "_s + path + u" already existing, do you want to replace it?"_s,
                          MessageIcon::Question, MessageButtons::YesNo}));
}

TEST_F(FileController, leavesTheFileWhenTheAnswerIsNo)
{
    world.write(u"notes.txt"_s, "old");
    world.desktop.answer = MessageAnswer::No;
    EXPECT_FALSE(controller.saveTextFile(path, u"new"_s, true));
    EXPECT_EQ(world.read(u"notes.txt"_s), "old");
}

TEST_F(FileController, asksNothingAboutANewFile)
{
    EXPECT_TRUE(controller.saveTextFile(path, u"new"_s, true));
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(FileController, writesNothingToAnEmptyPath)
{
    EXPECT_FALSE(controller.saveTextFile(u""_s, u"new"_s, true));
    EXPECT_EQ(world.desktop.waits, 0);
}

TEST_F(FileController, failsSilently)
{
    EXPECT_FALSE(controller.saveTextFile(world.app.appFile({u"missing"_s, u"notes.txt"_s}), u"new"_s));
    EXPECT_FALSE(controller.saveTextFile(world.app.AppPath + u"\\..\\..\\notes.txt"_s, u"new"_s));
    EXPECT_EQ(world.takeLog(), u""_s);
    EXPECT_TRUE(world.desktop.boxes.empty());
    EXPECT_EQ(world.desktop.waiting, 0);
}
