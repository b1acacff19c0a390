#include "shell/frmMain.h"

#include "tests/shell/main_window_test.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

class MainWindow : public MainWindowTest
{
};

TEST_F(MainWindow, showsTheFirstProjectAtStart)
{
    writeShop();
    open();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(projects().currentText(), u"Shop"_s);
    ASSERT_EQ(tree().topLevelItemCount(), 2);
    EXPECT_EQ(tree().topLevelItem(0)->text(0), u"Global"_s);
    EXPECT_EQ(tree().topLevelItem(1)->child(0)->text(0), u"Gamma"_s);
    EXPECT_EQ(window->CurrentEngine(), u"Zeta"_s);
    ASSERT_NE(window->child(), nullptr);
    EXPECT_EQ(child().windowTitle(), u"Shop - Zeta"_s);
    EXPECT_EQ(grid().model()->rowCount(), 3);
}

} // namespace
} // namespace sondrel
