#include "shell/qt_desktop.h"

#include "tests/shell/dialog_test.h"

#include <QFile>
#include <QInputDialog>
#include <QLabel>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

TEST(QtDesktopQuestion, asksForALineOfText)
{
    QtDesktop desktop;
    QString title;
    QString prompt;
    Qt::TextFormat format = Qt::AutoText;
    whenModal<QInputDialog>([&](QInputDialog &dialog) {
        title = dialog.windowTitle();
        prompt = dialog.labelText();
        format = dialog.findChild<QLabel *>()->textFormat();
        QTest::keyClicks(dialog.findChild<QLineEdit *>(), u"My Engine"_s);
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    EXPECT_EQ(desktop.askText({u"Create"_s, u"The <b>name</b>: "_s}), u"My Engine"_s);
    EXPECT_EQ(title, u"Create"_s);
    EXPECT_EQ(prompt, u"The <b>name</b>: "_s);
    EXPECT_EQ(format, Qt::PlainText);
}

TEST(QtDesktopQuestion, givesNoTextWhenItIsCancelled)
{
    QtDesktop desktop;
    whenModal<QInputDialog>([](QInputDialog &dialog) {
        QTest::keyClicks(dialog.findChild<QLineEdit *>(), u"My Engine"_s);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_EQ(desktop.askText({u"Create"_s, u"Name"_s}), QString());
}

/// A desktop whose "xdg-mime" is the given script.
class QtDesktopReaders : public testing::Test
{
protected:
    QTemporaryDir folder;
    QByteArray path = qgetenv("PATH");

    bool canOpen(const QByteArray &script) const
    {
        const QString tool = folder.filePath(u"xdg-mime"_s);
        QFile file(tool);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script);
        file.close();
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", folder.path().toUtf8() + ':' + path);
        const bool answer = QtDesktop().canOpen(folder.filePath(u"qlt40.chm"_s));
        qputenv("PATH", path);
        return answer;
    }
};

TEST_F(QtDesktopReaders, areAskedForByTheKindOfTheFile)
{
    EXPECT_TRUE(canOpen("[ \"$*\" = 'query default application/vnd.ms-htmlhelp' ] && echo reader.desktop\n"));
}

TEST_F(QtDesktopReaders, areNotThereWhenTheDesktopNamesNone)
{
    EXPECT_FALSE(canOpen("echo\n"));
}

TEST_F(QtDesktopReaders, areNotThereWithoutATool)
{
    qputenv("PATH", folder.path().toUtf8());
    EXPECT_FALSE(QtDesktop().canOpen(folder.filePath(u"qlt40.chm"_s)));
    qputenv("PATH", path);
}

} // namespace
} // namespace sondrel
