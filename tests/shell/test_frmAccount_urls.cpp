// The URLs of the project dialog, and the picker that it opens for them.
#include "tests/shell/account_dialog_test.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

TEST_F(AccountDialog, marksEachURLForTheEyeAndTheScreenReader)
{
    open();
    const QTreeWidgetItem &own = *urls().topLevelItem(0);
    const QTreeWidgetItem &competitor = *urls().topLevelItem(1);
    EXPECT_EQ(own.data(0, Qt::AccessibleTextRole).toString(), u"www.site.example (own site)"_s);
    EXPECT_EQ(competitor.data(0, Qt::AccessibleTextRole).toString(), u"other.example (competitor)"_s);
    EXPECT_EQ(nodeKey(&own), u"www.site.example"_s);
}

TEST_F(AccountDialog, invitesToAddURLsToAnEmptyList)
{
    dialog.show();
    EXPECT_FALSE(urls().accessibleDescription().isEmpty());
}

TEST_F(AccountDialog, setsTheSelectionAsCompetitorsAndAllOthersAsOwn)
{
    open();
    select({0, 2});
    click(dialog, u"cmdCompetitor"_s);
    EXPECT_EQ(competitors(), u"www.site.example third.example"_s);
}

TEST_F(AccountDialog, togglesTheMarkByDoubleClick)
{
    open();
    const QPoint place = urls().visualItemRect(urls().topLevelItem(0)).center();
    QTest::mouseClick(urls().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(urls().viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(competitors(), u"www.site.example other.example"_s);
    QTest::mouseDClick(urls().viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(competitors(), u"other.example"_s);
}

TEST_F(AccountDialog, togglesTheMarkOfAllSelectedBySpace)
{
    open();
    QTest::keyClick(&urls(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&urls(), Qt::Key_Space);
    EXPECT_EQ(competitors(), u"www.site.example third.example"_s);
}

TEST_F(AccountDialog, removesTheSelectedURLsAfterAQuestion)
{
    open();
    select({0, 2});
    click(dialog, u"cmdDelete"_s);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0],
              (MessageBox{u"URLs"_s, u"Are you sure you want to remove selected URLs?"_s, MessageIcon::None,
                          MessageButtons::YesNo}));
    EXPECT_EQ(shownUrls(), u"other.example"_s);
    EXPECT_EQ(competitors(), u"other.example"_s);
    EXPECT_TRUE(urls().topLevelItem(0)->isSelected());
}

TEST_F(AccountDialog, keepsTheURLsAfterANo)
{
    open();
    world.desktop.answer = MessageAnswer::No;
    select({0});
    QTest::keyClick(&urls(), Qt::Key_Delete);
    EXPECT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(urls().topLevelItemCount(), 3);
}

TEST_F(AccountDialog, asksAlsoWithNothingSelectedButNotWithAnEmptyList)
{
    open();
    select({});
    click(dialog, u"cmdDelete"_s);
    EXPECT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(urls().topLevelItemCount(), 3);
    urls().clear();
    click(dialog, u"cmdDelete"_s);
    EXPECT_EQ(world.desktop.boxes.size(), 1U);
}

TEST_F(AccountDialog, takesTheURLsThatWerePickedAsItsOwn)
{
    world.write(u"../system/qltULs.dat"_s, "other.example\r\nnew.example\r\n");
    open();
    whenModal<frmURLs>([](frmURLs &picker) {
        type(picker, u"txtURLs"_s, u"http://added.example"_s);
        click(picker, u"cmdAdd"_s);
        click(picker, u"cmdOK"_s);
    });
    click(dialog, u"cmdAdd"_s);
    EXPECT_EQ(shownUrls(), u"other.example added.example"_s);
    EXPECT_EQ(competitors(), QString());
}

TEST_F(AccountDialog, keepsURLsAndMarksWhenThePickerIsCancelled)
{
    world.write(u"../system/qltULs.dat"_s, "new.example\r\n");
    open();
    whenModal<frmURLs>([](frmURLs &picker) { click(picker, u"cmdCancel"_s); });
    click(dialog, u"cmdAdd"_s);
    EXPECT_EQ(urls().topLevelItemCount(), 3);
    EXPECT_EQ(competitors(), u"other.example"_s);
}

TEST_F(AccountDialog, leavesTheProjectAsItWasUntilOK)
{
    open();
    select({0});
    click(dialog, u"cmdDelete"_s);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog.Cancelled());
    EXPECT_EQ(account->URLs->Count(), 3);
    EXPECT_FALSE(world.has(u"Projects/Shop/Shop.dat"_s));
}

TEST_F(AccountDialog, logsAQuestionThatCannotBeAsked)
{
    open();
    world.desktop.failing = true;
    click(dialog, u"cmdDelete"_s);
    EXPECT_EQ(world.takeLog(), u"frmURLs_DeleteURL error:  The message cannot be shown"_s);
    EXPECT_EQ(urls().topLevelItemCount(), 3);
}

} // namespace
} // namespace sondrel
