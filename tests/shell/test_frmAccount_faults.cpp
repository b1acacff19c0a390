// What the project dialog refuses to save, and what it logs.
#include "tests/shell/account_dialog_test.h"

#include <QDateEdit>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

struct FaultCase
{
    const char *name;
    std::function<void(frmAccount &)> spoil;
    QString message;
    int tab;
    QString focus;
};

class AccountDialogFaults : public AccountDialog, public testing::WithParamInterface<FaultCase>
{
};

TEST_P(AccountDialogFaults, areToldWithTheirTabAndFieldInFront)
{
    open();
    GetParam().spoil(dialog);
    toFront(GetParam().tab == 0 ? 3 : 0);
    click(dialog, u"cmdOK"_s);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0], (MessageBox{u"Project"_s, GetParam().message}));
    EXPECT_EQ(tabs().currentIndex(), GetParam().tab);
    EXPECT_EQ(dialog.focusWidget()->objectName(), GetParam().focus);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(world.has(u"Projects/Shop/Shop.dat"_s));
}

void rename(frmAccount &dialog, const QString &name)
{
    control<QLineEdit>(dialog, u"txtAccountName"_s).setText(name);
}

INSTANTIATE_TEST_SUITE_P(
    All, AccountDialogFaults,
    testing::Values(
        FaultCase{"noName", [](frmAccount &d) { rename(d, {}); }, u"Please enter a Project Name."_s, 0,
                  u"txtAccountName"_s},
        FaultCase{"badName",
                  [](frmAccount &d) {
                      rename(d, u"a/b"_s);
                      control<QTreeWidget>(d, u"tvwEngine"_s)
                          .topLevelItem(0)
                          ->child(0)
                          ->setCheckState(0, Qt::Unchecked);
                  },
                  u"Invalid project name. The project name can not contain: '\\ / : * ? \" < >|'."_s, 0,
                  u"txtAccountName"_s},
        FaultCase{"noUrl", [](frmAccount &d) { control<UrlListView>(d, u"lvwURLs"_s).clear(); },
                  u"Please add an URL."_s, 0, u"lvwURLs"_s},
        FaultCase{"linksAreText",
                  [](frmAccount &d) { control<QComboBox>(d, u"cboLinks"_s).setEditText(u"abc"_s); },
                  u"Please specify the number of links you want to scan."_s, 0, u"cboLinks"_s},
        FaultCase{"noEngine",
                  [](frmAccount &d) {
                      control<QTreeWidget>(d, u"tvwEngine"_s)
                          .topLevelItem(0)
                          ->child(0)
                          ->setCheckState(0, Qt::Unchecked);
                  },
                  u"Please select the engines you want to rank."_s, 1, u"tvwEngine"_s},
        FaultCase{
            "yesterday",
            [](frmAccount &d) {
                control<QAbstractButton>(d, u"chkSchedulerEnable"_s).click();
                control<QDateEdit>(d, u"dtStartDate"_s).setDate(Today.addDays(-1));
            },
            u"Your start date can not be earlier than today's date. Please select a valid date and try again. "_s,
            2, u"dtStartDate"_s},
        FaultCase{"noMail",
                  [](frmAccount &d) {
                      control<QAbstractButton>(d, u"chkSentReport"_s).click();
                      control<QLineEdit>(d, u"txtEmail"_s).setText(u"a@b"_s);
                  },
                  u"Please enter a valid email address."_s, 3, u"txtEmail"_s}),
    [](const auto &info) { return info.param.name; });

TEST_F(AccountDialog, logsThatItWasGivenNoProject)
{
    dialog.setAccount(nullptr);
    dialog.show();
    EXPECT_EQ(world.takeLog(), u"frmAccount_Load_Error: The dialog was given no project"_s);
    click(dialog, u"cmdAdd"_s);
    EXPECT_EQ(world.takeLog(), u"frmMain_EditURLs: The dialog was given no project"_s);
}

TEST_F(AccountDialog, logsAProjectThatIsGoneAtOK)
{
    open();
    dialog.setAccount(nullptr);
    click(dialog, u"cmdOK"_s);
    EXPECT_EQ(world.takeLog(), u"frmAccount_cmdOK_Click error: The dialog was given no project"_s);
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(AccountDialog, logsAMissingCatalogueAndShowsTheRest)
{
    world.app.EngineCatalogue = nullptr;
    open();
    EXPECT_EQ(world.takeLog(),
              u"frmAccount_PopulateEngine error: The catalogue has no list of its engines"_s);
    EXPECT_EQ(text(u"txtAccountName"_s).text(), u"Shop"_s);
}

TEST_F(AccountDialog, logsAMessageThatCannotBeShown)
{
    open();
    rename(dialog, {});
    world.desktop.failing = true;
    click(dialog, u"cmdOK"_s);
    EXPECT_EQ(world.takeLog(), u"frmAccount_ValidForm error: The message cannot be shown"_s);
    EXPECT_TRUE(dialog.isVisible());
}

} // namespace
} // namespace sondrel
