#include "tests/shell/main_window_test.h"

#include "engines/frmEngineBuilder.h"
#include "engines/frmUpdateEngines.h"
#include "keywords/frmKeywordBuilder.h"
#include "shell/hint_tree.h"
#include "shell/status_panels.h"

#include <QAction>
#include <QLineEdit>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

class MainWindowEngines : public MainWindowTest
{
protected:
    void give(Command command) { window->action(command)->trigger(); }
    QString nodes()
    {
        QStringList names;
        for (int i = 0; i < tree().topLevelItemCount(); ++i) {
            for (int j = 0; j < tree().topLevelItem(i)->childCount(); ++j)
                names.append(tree().topLevelItem(i)->child(j)->text(0));
        }
        return names.join(u',');
    }
    QByteArray engineData(const QByteArray &engines)
    {
        return "[Markets]\r\n1=Global\r\n[Global]\r\n" + engines;
    }
};

TEST_F(MainWindowEngines, offersItsCommands)
{
    writeShop();
    open();
    EXPECT_TRUE(enabled(Command::UpdateEngineData));
    EXPECT_TRUE(enabled(Command::EngineBuilder));
    EXPECT_TRUE(enabled(Command::KeywordBuilder));
}

TEST_F(MainWindowEngines, updatesAndLoadsItsEngines)
{
    writeShop();
    open();
    QStringList told;
    world.desktop.onPendingEvents = [&] { told.append(window->panels().first()); };
    whenModal<frmUpdateEngines>([&](frmUpdateEngines &dialog) {
        click(dialog, u"cmdStart"_s);
        world.http.answer(world.http.requests.size() - 1, engineData("1=Zeta\r\n2=New\r\n"));
        click(dialog, u"cmdClose"_s);
    });
    give(Command::UpdateEngineData);
    EXPECT_EQ(world.app.EngineCatalogue->GetEngineCount(), 2);
    EXPECT_TRUE(told.contains(u"Please wait while re-loading Engine Data file ..."_s));
    EXPECT_EQ(window->panels().first(), QString());
    // A project keeps an engine that has gone until it is loaded again.
    EXPECT_TRUE(window->CurrentAccount()->Engine->HasKey(u"Gamma"_s));
}

TEST_F(MainWindowEngines, dropsAnEngineThatHasGoneWhenTheProjectIsLoadedAgain)
{
    writeShop();
    open();
    world.writeEngineData(engineData("1=Zeta\r\n"));
    whenModal<frmUpdateEngines>([&](frmUpdateEngines &dialog) { click(dialog, u"cmdClose"_s); });
    give(Command::UpdateEngineData);
    clsAccount account(world.app);
    account.Name = u"Shop"_s;
    account.GetSettings();
    EXPECT_FALSE(account.Engine->HasKey(u"Gamma"_s));
    EXPECT_TRUE(account.Engine->HasKey(u"Zeta"_s));
}

TEST_F(MainWindowEngines, tellsOfEngineDataThatHoldNoEngine)
{
    writeShop();
    open();
    world.writeEngineData("[Markets]\r\n");
    whenModal<frmUpdateEngines>([&](frmUpdateEngines &dialog) { click(dialog, u"cmdClose"_s); });
    give(Command::UpdateEngineData);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_TRUE(world.desktop.boxes[0].text.startsWith(u"The engine data could not be loaded."_s));
    EXPECT_TRUE(world.takeLog().contains(u"frmMain_reloadCatalogue error: "_s));
}

TEST_F(MainWindowEngines, loadsItsProjectsOnceThereAreEngines)
{
    writeShop();
    QFile::remove(world.path(u"../system/qlteng4.dat"_s));
    open();
    EXPECT_FALSE(window->hasProjects());
    whenModal<frmUpdateEngines>([&](frmUpdateEngines &dialog) {
        click(dialog, u"cmdStart"_s);
        world.http.answer(world.http.requests.size() - 1, engineData("1=Zeta\r\n"));
        click(dialog, u"cmdClose"_s);
    });
    give(Command::UpdateEngineData);
    EXPECT_TRUE(window->hasProjects());
    EXPECT_EQ(nodes(), u"Zeta"_s);
}

TEST_F(MainWindowEngines, loadsWhatTheEngineBuilderHasWritten)
{
    writeShop();
    open();
    whenModal<frmEngineBuilder>([&](frmEngineBuilder &dialog) {
        world.desktop.texts = {u"Mine"_s};
        dialog.findChild<QAction *>(u"New"_s)->trigger();
        dialog.close();
    });
    give(Command::EngineBuilder);
    EXPECT_GT(world.app.EngineCatalogue->GetEngineIndex(u"Mine"_s), 0);
    EXPECT_GT(world.desktop.waits, 0);
    EXPECT_EQ(nodes(), u"Zeta,Gamma"_s);
}

TEST_F(MainWindowEngines, dropsAnEngineThatWasDeletedInTheEngineBuilder)
{
    world.write(u"Engines.dat"_s,
                "[Markets]\r\n1=Others\r\n[Others]\r\n1=Mine\r\n[Mine]\r\nEngineKey=mine\r\n");
    writeProject(u"Shop"_s, {u"Zeta"_s, u"Mine"_s}, {u"shoes"_s});
    open();
    ASSERT_EQ(nodes(), u"Zeta,Mine"_s);
    whenModal<frmEngineBuilder>([&](frmEngineBuilder &dialog) {
        QTest::keyClick(&control<HintTree>(dialog, u"lvwEngines"_s), Qt::Key_Delete);
        dialog.close();
    });
    give(Command::EngineBuilder);
    EXPECT_EQ(nodes(), u"Zeta"_s);
    EXPECT_FALSE(window->CurrentAccount()->Engine->HasKey(u"Mine"_s));
}

TEST_F(MainWindowEngines, keepsTheProjectsEnginesWhenTheirDataAreGone)
{
    writeShop();
    open();
    whenModal<frmEngineBuilder>([&](frmEngineBuilder &dialog) {
        QFile::remove(world.path(u"../system/qlteng4.dat"_s));
        dialog.close();
    });
    give(Command::EngineBuilder);
    EXPECT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(window->CurrentAccount()->Engine->Count(), 2);
}

TEST_F(MainWindowEngines, updatesAtTheFirstStartOfAVersionInFrontOfAllElse)
{
    writeShop();
    world.setPreference(u"Version"_s, {});
    QStringList steps;
    window = std::make_unique<frmMain>(world.app);
    QObject::connect(window.get(), &frmMain::splashHidden, [&] { steps.append(u"hidden"_s); });
    QObject::connect(window.get(), &frmMain::splashShown, [&] { steps.append(u"shown"_s); });
    QObject::connect(window.get(), &frmMain::splashUnloaded, [&] { steps.append(u"unloaded"_s); });
    whenModal<frmUpdateEngines>([&](frmUpdateEngines &dialog) {
        steps.append(world.app.EngineCatalogue ? u"late"_s : u"update"_s);
        EXPECT_FALSE(window->isVisible());
        click(dialog, u"cmdStart"_s);
        world.http.answer(0, engineData("1=Gamma\r\n"));
        click(dialog, u"cmdClose"_s);
    });
    window->load();
    EXPECT_EQ(steps.first(3), (QStringList{u"hidden"_s, u"update"_s, u"shown"_s}));
    EXPECT_EQ(nodes(), u"Gamma"_s);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(MainWindowEngines, showsTheSuggestionsThatWereAdded)
{
    world.write(u"KeywordBuilder/Keywords.dat"_s, "tea\r\n");
    world.write(u"KeywordBuilder/Finder/tea.dat"_s, "green tea;12\r\n");
    writeShop();
    open();
    world.writeEngineData("[KeywordBuilder]\r\n1=Finder\r\n");
    whenModal<frmKeywordBuilder>([&](frmKeywordBuilder &dialog) {
        auto &rows = control<HintTree>(dialog, u"lvwKeywords"_s);
        QTest::keyClick(&rows, Qt::Key_A, Qt::ControlModifier);
        click(dialog, u"cmdAddToList"_s);
        click(dialog, u"cmdClose"_s);
    });
    give(Command::KeywordBuilder);
    EXPECT_TRUE(child().Keywords().Keywords.HasKey(u"green tea"_s));
    EXPECT_EQ(child().model().rowCount(), 4);
    EXPECT_TRUE(world.read(u"Projects/Shop/Keywords.dat"_s).contains("green tea;"));
}

} // namespace
} // namespace sondrel
