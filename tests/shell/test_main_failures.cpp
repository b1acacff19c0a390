// What the main window and the keyword grid say when memory runs out.
#include "tests/shell/main_window_test.h"
#include "tests/support/failing_allocation.h"

#include <QDialog>
#include <QShortcut>
#include <QToolButton>

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

constexpr int MostAllocations = 300;

class MainFailures : public MainWindowTest
{
protected:
    // Lets one allocation after the other fail until the log tells what is wanted.
    void expectLog(
        const QString &tag, const std::function<void()> &act, const std::function<void()> &prepare = [] {})
    {
        for (int successes = 0; successes < MostAllocations; ++successes) {
            prepare();
            world.takeLog();
            {
                const FailingAllocation failure(successes);
                try {
                    act();
                } catch (const std::bad_alloc &) {
                    continue; // the call itself had none
                }
                ASSERT_TRUE(failure.happened()) << "no such line after " << successes;
            }
            if (world.takeLog().contains(tag + u"Out of memory"_s))
                return;
        }
        ADD_FAILURE() << "no such line";
    }
};

TEST_F(MainFailures, areLoggedByANewProject)
{
    writeShop();
    open();
    expectLog(u"frmMain_AddAccount error: "_s, [&] { window->give(Command::NewProject); });
    EXPECT_EQ(projects().count(), 1);
}

TEST_F(MainFailures, areLoggedByAChangedProject)
{
    writeShop();
    open();
    expectLog(u"frmMain_EditAccount error: "_s, [&] { window->give(Command::EditProject); });
    EXPECT_EQ(projects().currentText(), u"Shop"_s);
}

TEST_F(MainFailures, areLoggedByTheUrlBox)
{
    writeShop();
    open();
    auto &arrow = control<QToolButton>(*window, u"cmdArrow"_s);
    expectLog(u"frmMain_resizeControl error : "_s, [&] { Q_EMIT arrow.clicked(); });
}

// Nothing of its own needs memory here: one who follows its commands fails.
TEST_F(MainFailures, areLoggedByTheCommandsOfAnEmptyWindow)
{
    whenModal<QDialog>([](QDialog &dialog) { dialog.reject(); }); // no project yet
    open();
    QAction &command = *window->action(Command::AddKeywords);
    command.setEnabled(true);
    QObject::connect(&command, &QAction::enabledChanged, &command, [] { throw Failure(u"No menu"_s); });
    Q_EMIT urls().itemSelectionChanged();
    EXPECT_EQ(world.takeLog(), u"frmMain_UpdateUI error: No menu"_s);
}

TEST_F(MainFailures, areLoggedByTheCommandsOfTheGrid)
{
    writeShop();
    open();
    expectLog(u"frmSondrel_UpdateUI error: "_s, [&] { Q_EMIT urls().itemSelectionChanged(); });
}

// While a lookup runs the tree is to go back to its node, from the event loop.
TEST_F(MainFailures, areLoggedByAClickOnANode)
{
    writeShop();
    open();
    window->give(Command::LookupAll);
    ASSERT_TRUE(child().Online());
    QTreeWidgetItem *zeta = tree().topLevelItem(0)->child(0);
    QTreeWidgetItem *gamma = tree().topLevelItem(1)->child(0);
    expectLog(u"frmMain_tvwAccount_NodeClick error: "_s,
              [&] { Q_EMIT tree().currentItemChanged(gamma, zeta); });
}

// A hash that cannot grow ends the program, so that here one fails who follows the grid.
TEST_F(MainFailures, areLoggedByTheChangeOfTheGrid)
{
    writeShop();
    open();
    QObject::connect(&child(), &frmSondrel::factsChanged, window.get(), [] { throw Failure(u"No grid"_s); });
    clickNode(u"China"_s, u"Gamma"_s);
    EXPECT_EQ(world.takeLog(), u"frmMain_MenuBid error:  No grid"_s);
}

TEST_F(MainFailures, areLoggedByTheLoadingOfTheGrid)
{
    writeShop();
    open();
    expectLog(u"frmSondrel_ResetForm error: "_s, [&] { child().ResetForm(); });
}

TEST_F(MainFailures, areLoggedByTheStartOfAnEdit)
{
    writeShop();
    open();
    grid().selectRow(1);
    QShortcut *edit = nullptr;
    for (QShortcut *shortcut : grid().findChildren<QShortcut *>())
        edit = shortcut->key() == QKeySequence(Qt::Key_F2) ? shortcut : edit;
    ASSERT_TRUE(edit);
    expectLog(u"frmSondrel_grdBidsManage_BeforeEdit error: "_s, [&] { Q_EMIT edit->activated(); });
}

TEST_F(MainFailures, areLoggedByTheCopying)
{
    writeShop();
    open();
    grid().selectAll();
    expectLog(u"frmAuto_CopyKeywords error :  "_s, [&] { window->give(Command::CopyKeywords); });
}

TEST_F(MainFailures, areLoggedByTheExport)
{
    writeShop();
    open();
    expectLog(u"frmSondrel_Exportkeywords error:  "_s, [&] { window->give(Command::ExportKeywords); });
}

TEST_F(MainFailures, areLoggedByTheOpeningOfAListing)
{
    world.write(u"Results/Zeta/shoes.dat"_s, "www.site.example/shop;#Own;#1\r\n");
    writeShop();
    open();
    grid().selectRow(0);
    const QModelIndex first = listings().model()->index(0, 0);
    expectLog(u"frmSondrel_lvwRanking_DblClick error :  "_s, [&] { Q_EMIT listings().doubleClicked(first); });
    EXPECT_TRUE(world.desktop.opened.empty());
}

TEST_F(MainFailures, areLoggedByTheRemovalOfFurtherHits)
{
    writeProject(u"Shop"_s, {u"Zeta"_s}, {u"shoes"_s, u"shoes(2)"_s});
    open();
    expectLog(
        u"frmSondrel_DeleteAllDuplicateKeywords error :  "_s, [&] { child().session().LookupALLKeyword(); },
        [&] { child().session().Disconnect(); });
}

// Settings with which memory runs out once one of them has been asked for.
class LastSettings final : public SettingsStore
{
public:
    LastSettings(MemorySettings &settings, QString last, int successes)
        : m_settings(settings), m_last(std::move(last)), m_successes(successes)
    {
    }

    bool hasKey(const QString &path) const override { return m_settings.hasKey(path); }
    void createKey(const QString &path) override { m_settings.createKey(path); }
    std::optional<QVariant> value(const QString &path, const QString &name) const override
    {
        auto found = m_settings.value(path, name);
        if (name == m_last)
            m_failure.emplace(m_successes);
        return found;
    }
    void setValue(const QString &path, const QString &name, const QVariant &value) override
    {
        m_settings.setValue(path, name, value);
    }
    void storeTogether(const std::function<void()> &changes) override { m_settings.storeTogether(changes); }
    quint64 revision() const override { return m_settings.revision(); }

    void restore() { m_failure.reset(); }

private:
    MemorySettings &m_settings;
    QString m_last;
    int m_successes;
    mutable std::optional<FailingAllocation> m_failure;
};

// Whether the grid's coming up tells of the failure that follows the reading of a setting.
bool logsBehindSetting(const QString &tag, const QString &setting)
{
    for (int successes = 0; successes < MostAllocations; ++successes) {
        World world;
        world.setPreference(u"ColumOrder"_s, u"3,0,1,2,4,5,6,7,8"_s);
        world.setPreference(u"ColumnWidths"_s, u"10,20,30,40,50,60,70,80,90"_s);
        LastSettings settings(world.settings, setting, successes);
        ApplicationContext app(world.app.AppPath, world.folder.filePath(u"system"_s),
                               Doors{world.clock, world.desktop, settings, world.http, &world.smtp},
                               world.app.locale);
        QAction offered;
        const frmSondrel grid(app, {&offered, &offered, &offered});
        settings.restore();
        if (world.read(u"Error.log"_s).contains((tag + u"Out of memory"_s).toLatin1()))
            return true;
    }
    return false;
}

TEST(GridSettings, areLoggedByTheWidthsWhenMemoryRunsOut)
{
    EXPECT_TRUE(logsBehindSetting(u"frmSondrel_FormatColum error   "_s, u"ColumnWidths"_s));
}

TEST(GridSettings, areLoggedByTheOrderWhenMemoryRunsOut)
{
    EXPECT_TRUE(logsBehindSetting(u"frmSondrel_FormLoad error:  "_s, u"ColumOrder"_s));
}

} // namespace
} // namespace sondrel
