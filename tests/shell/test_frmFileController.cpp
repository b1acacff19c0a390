#include "shell/frmFileController.h"

#include "tests/shell/dialog_test.h"

#include <QLabel>
#include <QListWidget>
#include <QProgressBar>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const QString TextFilter = u"Text Files (*.txt)|*.txt|All Files (*.*)|*.*"_s;

class FileController : public testing::Test
{
protected:
    FileController() : controller(world.app) {}

    QString file() { return world.app.appFile({u"list.txt"_s}); }
    QProgressBar &progress() { return control<QProgressBar>(controller, u"ProgressBar1"_s); }
    // What the window showed while events could run: "message|value of maximum".
    void watch()
    {
        world.desktop.onPendingEvents = [this] {
            ASSERT_TRUE(controller.isVisible());
            seen.append(control<QLabel>(controller, u"lblMessage"_s).text() +
                        u"|%1 of %2"_s.arg(progress().value()).arg(progress().maximum()));
        };
    }

    World world;
    frmFileController controller;
    QListWidget list;
    QStringList seen;
};

TEST_F(FileController, isTitled)
{
    EXPECT_EQ(controller.windowTitle(), u"Open/Save File"_s);
}

TEST_F(FileController, loadsEveryLineAndEnablesTheList)
{
    world.write(u"list.txt"_s, "one\r\n\r\nthree\r\n");
    list.setEnabled(false);
    controller.openListFile(file(), list);
    ASSERT_EQ(list.count(), 3);
    EXPECT_EQ(list.item(0)->text(), u"one"_s);
    EXPECT_EQ(list.item(1)->text(), QString());
    EXPECT_EQ(list.item(2)->text(), u"three"_s);
    EXPECT_TRUE(list.isEnabled());
    EXPECT_FALSE(controller.isVisible());
}

TEST_F(FileController, showsHowFarTheLoadingIs)
{
    QByteArray bytes;
    for (int line = 0; line < 1000; ++line)
        bytes += "1234567\r\n";
    world.write(u"list.txt"_s, bytes);
    watch();
    controller.openListFile(file(), list);
    EXPECT_EQ(seen, QStringList({u"Please wait for loading file ......|0 of 9000"_s,
                                 u"Please wait for loading file ......|4500 of 9000"_s,
                                 u"Please wait for loading file ......|9000 of 9000"_s,
                                 u"Please wait for loading file ......|9000 of 9000"_s}));
}

TEST_F(FileController, stopsAtMoreThanThirtyTwoThousandEntries)
{
    world.write(u"list.txt"_s, QByteArray("line\r\n").repeated(40000));
    controller.openListFile(file(), list);
    EXPECT_EQ(list.count(), 32001);
}

TEST_F(FileController, addsOneLineToAListThatIsFull)
{
    for (int entry = 0; entry < 32005; ++entry)
        list.addItem(QString());
    world.write(u"list.txt"_s, "one\r\ntwo\r\n");
    controller.openListFile(file(), list);
    EXPECT_EQ(list.count(), 32006);
}

TEST_F(FileController, endsSilentlyWithoutAFile)
{
    list.setEnabled(false);
    controller.openListFile(file(), list);
    EXPECT_EQ(list.count(), 0);
    EXPECT_FALSE(list.isEnabled());
    EXPECT_EQ(world.takeLog(), QString());
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(FileController, savesEntriesInTheirOrderAndLeavesTheOldTail)
{
    world.write(u"list.txt"_s, "first\r\nsecond\r\n");
    list.addItems({u"b"_s, u"ä"_s});
    controller.saveListFile(file(), list);
    EXPECT_EQ(world.read(u"list.txt"_s), "b\r\n\xE4\r\n\nsecond\r\n");
}

TEST_F(FileController, showsHowFarTheSavingIs)
{
    for (int entry = 0; entry < 600; ++entry)
        list.addItem(u"x"_s);
    watch();
    controller.saveListFile(file(), list);
    EXPECT_EQ(seen, QStringList({u"Please wait for saving to file ......|0 of 600"_s,
                                 u"Please wait for saving to file ......|500 of 600"_s,
                                 u"Please wait for saving to file ......|600 of 600"_s}));
    EXPECT_FALSE(controller.isVisible());
}

TEST_F(FileController, endsASaveSilentlyThatFails)
{
    list.addItem(u"x"_s);
    controller.saveListFile(world.app.AppPath + u"\\none\\list.txt"_s, list);
    EXPECT_EQ(world.takeLog(), QString());
    EXPECT_FALSE(controller.isVisible());
}

TEST_F(FileController, asksForAFileToOpenInTheApplicationFolder)
{
    world.desktop.files = {u"/tmp/picked.txt"_s};
    EXPECT_EQ(controller.GetFileName(0, TextFilter, u"ignored"_s), u"/tmp/picked.txt"_s);
    ASSERT_EQ(world.desktop.questions.size(), 1U);
    EXPECT_EQ(world.desktop.questions[0],
              (FileQuestion{FilePick::Open, TextFilter, world.app.AppPath, QString(), 1}));
}

TEST_F(FileController, asksForAFileToSaveAndHandsTheFilterBack)
{
    world.desktop.files = {u"/tmp/picked.txt"_s};
    int index = 0;
    EXPECT_EQ(controller.GetFileName(1, TextFilter, u"words.txt"_s, &index), u"/tmp/picked.txt"_s);
    EXPECT_EQ(world.desktop.questions[0],
              (FileQuestion{FilePick::Save, TextFilter, world.app.AppPath, u"words.txt"_s, 1}));
    EXPECT_EQ(index, 1);
}

TEST_F(FileController, givesNothingWhenThePersonGivesUp)
{
    int index = 7;
    EXPECT_EQ(controller.GetFileName(1, TextFilter, u"words.txt"_s, &index), QString());
    EXPECT_EQ(index, 7);
}

TEST_F(FileController, leavesTheFolderOfACallersQuestion)
{
    FileQuestion question;
    question.folder = u"/somewhere"_s;
    question.filterIndex = 2;
    world.desktop.files = {u"/somewhere/else.txt"_s};
    int index = 0;
    EXPECT_EQ(controller.GetFileNameX(question, true, TextFilter, u"words.txt"_s, &index),
              u"/somewhere/else.txt"_s);
    EXPECT_EQ(world.desktop.questions[0],
              (FileQuestion{FilePick::Save, TextFilter, u"/somewhere"_s, u"words.txt"_s, 2}));
    EXPECT_EQ(index, 2);
    controller.GetFileNameX(question, false, TextFilter, u"words.txt"_s);
    EXPECT_EQ(world.desktop.questions[1].kind, FilePick::Open);
    EXPECT_EQ(world.desktop.questions[1].name, QString());
}

} // namespace
} // namespace sondrel
