// The Optimizer command, from the menu to the report on the disk.
#include "optimizer/frmOptimizer.h"
#include "shell/status_panels.h"
#include "tests/shell/main_window_test.h"

#include <QAction>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

class OptimizerCommand : public MainWindowTest
{
protected:
    void openShop()
    {
        writeShop();
        open();
    }
    frmOptimizer *dialog() { return window->findChild<frmOptimizer *>(); }
};

TEST_F(OptimizerCommand, showsOneDialogThatLeavesTheWindowFree)
{
    openShop();
    ASSERT_TRUE(enabled(Command::Optimizer));
    window->action(Command::Optimizer)->trigger();
    frmOptimizer *first = dialog();
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->isVisible());
    EXPECT_FALSE(first->isModal());
    window->action(Command::Optimizer)->trigger();
    EXPECT_EQ(window->findChildren<frmOptimizer *>().size(), 1);
}

TEST_F(OptimizerCommand, writesTheReportOfALocalPage)
{
    world.write(u"page.html"_s, "<title>t</title>");
    openShop();
    window->action(Command::Optimizer)->trigger();
    type(*dialog(), u"cboSiteURL"_s, world.path(u"page.html"_s));
    click(*dialog(), u"cmdRenovator"_s);
    EXPECT_TRUE(world.has(u"Optimizer/page.html.html"_s));
}

TEST_F(OptimizerCommand, startsAnewOnceTheDialogIsClosed)
{
    openShop();
    window->action(Command::Optimizer)->trigger();
    click(*dialog(), u"cmdClose"_s);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(dialog(), nullptr);
    window->action(Command::Optimizer)->trigger();
    ASSERT_NE(dialog(), nullptr);
    EXPECT_TRUE(dialog()->isVisible());
}

TEST_F(OptimizerCommand, clearsTheStatusWhenARunFails)
{
    openShop();
    window->action(Command::Optimizer)->trigger();
    window->panels().setFirst(u"something"_s);
    type(*dialog(), u"cboSiteURL"_s, u"a.example"_s);
    click(*dialog(), u"cmdRenovator"_s);
    world.http.answer(world.http.requests.size() - 1, "<title>" + QByteArray(32768, 't') + "</title>");
    EXPECT_EQ(window->panels().first(), QString());
}

TEST_F(OptimizerCommand, endsWithTheWindow)
{
    openShop();
    window->action(Command::Optimizer)->trigger();
    type(*dialog(), u"cboSiteURL"_s, u"a.example"_s);
    click(*dialog(), u"cmdRenovator"_s);
    window->close();
    EXPECT_EQ(world.read(u"dmlist.dat"_s), "[Optimizer]\r\n1=a.example\r\n");
}

} // namespace
} // namespace sondrel
