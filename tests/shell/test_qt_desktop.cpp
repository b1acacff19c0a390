#include "shell/qt_desktop.h"

#include "tests/shell/dialog_test.h"

#include <QInputDialog>
#include <QLabel>

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

} // namespace
} // namespace sondrel
