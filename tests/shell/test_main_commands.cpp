// The main window's commands that open something, and its configuration.
#include "core/clsDealerProfile.h"
#include "shell/frmAbout.h"
#include "shell/frmPreference.h"
#include "tests/shell/main_window_test.h"

#include <QLabel>
#include <QMenu>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

class MainCommands : public MainWindowTest
{
protected:
    void openShop()
    {
        writeShop();
        open();
    }

    QStringList opened() const
    {
        QStringList targets;
        for (const auto &[target, mode] : world.desktop.opened)
            targets.append(target);
        return targets;
    }

    void selectUrl(int row)
    {
        if (!urls().isVisible())
            click(*window, u"cmdArrow"_s);
        urls().setCurrentItem(urls().topLevelItem(row));
    }

    QPoint placeOf(QTreeWidget &list, QTreeWidgetItem *item) { return list.visualItemRect(item).center(); }
};

TEST_F(MainCommands, openTheSelectedUrl)
{
    openShop();
    EXPECT_FALSE(enabled(Command::GoToCompetitor));
    selectUrl(1);
    EXPECT_TRUE(enabled(Command::GoToCompetitor));
    window->give(Command::GoToCompetitor);
    EXPECT_EQ(opened(), QStringList{u"http://rival.example"_s});
}

TEST_F(MainCommands, openADoubleClickedUrlWithTheHourglass)
{
    openShop();
    click(*window, u"cmdArrow"_s);
    const int waits = world.desktop.waits;
    QTreeWidgetItem *item = urls().topLevelItem(0);
    QTest::mouseClick(urls().viewport(), Qt::LeftButton, {}, placeOf(urls(), item));
    QTest::mouseDClick(urls().viewport(), Qt::LeftButton, {}, placeOf(urls(), item));
    EXPECT_EQ(opened(), QStringList{u"http://www.site.example"_s});
    EXPECT_GT(world.desktop.waits, waits);
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(MainCommands, openAUrlByEnter)
{
    openShop();
    selectUrl(0);
    urls().setFocus();
    QTest::keyClick(&urls(), Qt::Key_Return);
    EXPECT_EQ(opened(), QStringList{u"http://www.site.example"_s});
}

TEST_F(MainCommands, leaveAnAddressAloneThatHoldsHttp)
{
    openShop();
    click(*window, u"cmdArrow"_s);
    urls().topLevelItem(0)->setText(0, u"https://secure.example"_s);
    selectUrl(0);
    window->give(Command::GoToCompetitor);
    EXPECT_EQ(opened(), QStringList{u"https://secure.example"_s});
}

TEST_F(MainCommands, ofAUrlComeUpByARightClick)
{
    openShop();
    click(*window, u"cmdArrow"_s);
    Q_EMIT urls().customContextMenuRequested(placeOf(urls(), urls().topLevelItem(0)));
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    EXPECT_EQ(menu->objectName(), u"mnuURL"_s);
    menu->close();
}

TEST_F(MainCommands, ofAnEngineComeUpByARightClick)
{
    openShop();
    Q_EMIT tree().customContextMenuRequested(placeOf(tree(), tree().topLevelItem(0)));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << "a market has none";
    Q_EMIT tree().customContextMenuRequested(placeOf(tree(), tree().topLevelItem(0)->child(0)));
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    EXPECT_EQ(menu->objectName(), u"mnuEnginePopup"_s);
    menu->close();
}

TEST_F(MainCommands, openAnEnginesPage)
{
    openShop();
    window->give(Command::EnginePage);
    EXPECT_EQ(opened(), QStringList{u"http://zeta.example/find"_s});
}

TEST_F(MainCommands, refuseAMissingLoginPage)
{
    openShop();
    window->give(Command::EngineLogin);
    const MessageBox box{u"Login"_s,
                         u"Invalid login URL. Please report this error to 'support@kestrune.example'."_s,
                         MessageIcon::None, MessageButtons::Ok};
    EXPECT_EQ(world.desktop.boxes, std::vector<MessageBox>{box});
    EXPECT_EQ(opened(), QStringList());
}

TEST_F(MainCommands, logARefusalThatCannotBeShown)
{
    openShop();
    world.desktop.failing = true;
    window->give(Command::EngineLogin);
    EXPECT_TRUE(world.takeLog().startsWith(u"mnuOpenPageItem_Click error: "));
    world.desktop.failing = false;
}

TEST_F(MainCommands, openTheDealersPages)
{
    openShop();
    clsDealerProfile dealer;
    dealer.GetSettings(world.app);
    window->give(Command::Support);
    window->give(Command::HomePage);
    click(*window, u"Stats"_s);
    ASSERT_EQ(opened().size(), 3);
    EXPECT_TRUE(opened()[0].contains(dealer.SupportURL)) << opened()[0].toStdString();
    EXPECT_TRUE(opened()[1].contains(dealer.DealerURL)) << opened()[1].toStdString();
    EXPECT_TRUE(opened()[2].contains(dealer.SiteStatsURL)) << opened()[2].toStdString();
}

TEST_F(MainCommands, openTheHelpFile)
{
    openShop();
    world.write(u"qlt40.hlp"_s, "help");
    window->give(Command::HelpContents);
    world.write(u"qlt40.chm"_s, "help");
    QTest::keyClick(window.get(), Qt::Key_F1);
    ASSERT_EQ(opened().size(), 2);
    EXPECT_EQ(opened()[0], world.path(u"qlt40.hlp"_s));
    EXPECT_EQ(opened()[1], world.path(u"qlt40.chm"_s));
}

TEST_F(MainCommands, openTheManualsPagesWhereNothingReadsTheHelpFile)
{
    openShop();
    world.write(u"qlt40.chm"_s, "help");
    world.write(u"manual/index.html"_s, "<html>");
    world.app.Manual = world.path(u"manual/index.html"_s);
    window->give(Command::HelpContents);
    world.desktop.hasReaders = false;
    window->give(Command::HelpContents);
    EXPECT_EQ(opened(), (QStringList{world.path(u"qlt40.chm"_s), world.app.Manual}));
}

TEST_F(MainCommands, openTheHelpFileWhereThereAreNoPages)
{
    openShop();
    world.write(u"qlt40.chm"_s, "help");
    world.app.Manual = world.path(u"manual/index.html"_s);
    world.desktop.hasReaders = false;
    window->give(Command::HelpContents);
    EXPECT_EQ(opened(), QStringList{world.path(u"qlt40.chm"_s)});
}

TEST_F(MainCommands, nameTheHelpFileThatIsMissing)
{
    openShop();
    click(*window, u"Help"_s);
    const MessageBox box{
        u"Help Contents"_s,
        u"Cannot find the '"_s + world.app.AppPath +
            u"\\qlt40.hlp' Help file. Please check to see that the file exists on your disk. If "
            "it doesn't, you need to reinstall it."_s,
        MessageIcon::Information, MessageButtons::Ok};
    EXPECT_EQ(world.desktop.boxes, std::vector<MessageBox>{box});
}

TEST_F(MainCommands, showTheAboutBox)
{
    openShop();
    QString title;
    whenModal<frmAbout>([&](frmAbout &dialog) {
        title = dialog.windowTitle();
        click(dialog, u"cmdOK"_s);
    });
    window->give(Command::About);
    EXPECT_EQ(title, u"About Marovia Sondrel V4"_s);
}

TEST_F(MainCommands, takeTheSettingsOverFromTheConfiguration)
{
    openShop();
    const auto panel = [this] { return control<QLabel>(*window, u"panelAutoRun"_s).text(); };
    whenModal<frmPreference>([&](frmPreference &dialog) {
        auto &box = control<QAbstractButton>(dialog, u"chkSchedulerEnable"_s);
        if (box.isChecked())
            click(dialog, u"chkSchedulerEnable"_s);
        click(dialog, u"cmdOK"_s);
    });
    QTest::keyClick(window.get(), Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_EQ(panel(), u"Scheduler off"_s);
}

TEST_F(MainCommands, askForAProjectBeforeALookup)
{
    whenModal<QDialog>([](QDialog &dialog) { dialog.reject(); });
    open();
    window->give(Command::LookupAll);
    const MessageBox box{
        u"Marovia Sondrel V4"_s,
        u"Please create a new Account by clicking the 'Project' button on the toolbar before you "
        "can doing ranking look up."_s,
        MessageIcon::None, MessageButtons::Ok};
    EXPECT_EQ(world.desktop.boxes, std::vector<MessageBox>{box});
}

TEST_F(MainCommands, doNothingWithoutAGrid)
{
    writeProject(u"Bare"_s, {});
    open();
    for (const Command command :
         {Command::DeleteKeywords, Command::CopyKeywords, Command::PasteKeywords, Command::ExportKeywords,
          Command::LookupAll, Command::Stop, Command::ShowPosition, Command::EnginePage})
        window->give(command);
    EXPECT_TRUE(world.desktop.boxes.empty());
    EXPECT_EQ(opened(), QStringList());
    EXPECT_EQ(world.takeLog(), QString());
}

} // namespace
} // namespace sondrel
