#include "shell/start_up.h"

#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QDir>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const QByteArray EngineData = "[Markets]\r\n1=Global\r\n[Global]\r\n1=Finder\r\n"
                              "[Finder]\r\nEngineURL=http://finder.example/find\r\n";

class RecordingSteps final : public MainWindowSteps
{
public:
    explicit RecordingSteps(World &world) : m_world(world) {}

    QStringList steps;
    QString failingStep;

    void placeWindow(const MainWindowSettings &settings) override
    {
        add(u"place"_s + (settings.place ? u" at %1"_s.arg(settings.place->left) : QString()));
    }
    void setHelpFile(const QString &path) override { add(u"help "_s + path.section(u'\\', -1)); }
    void buildURLColumn() override { add(u"column"_s); }
    void setScheduler(bool enabled, const QString &text) override
    {
        add((enabled ? u"on: "_s : u"off: "_s) + text);
    }
    void hideSplash() override { add(u"hide splash"_s); }
    void showSplash() override { add(u"show splash"_s); }
    void unloadSplash() override { add(u"unload splash"_s); }
    void updateEngines() override
    {
        add(u"update"_s);
        if (!downloaded.isEmpty())
            m_world.writeEngineData(downloaded);
    }
    void giveTreeItsImages() override { add(u"images"_s); }
    void showProjects() override { add(u"projects"_s); }
    void selectProject(int index) override { add(u"select %1"_s.arg(index)); }
    void AddAccount() override { add(u"new project"_s); }
    void showMainWindow() override { add(u"show"_s); }
    void loadTrayIcon() override { add(u"tray"_s); }

    QByteArray downloaded; // what the engine update brings

private:
    void add(const QString &step)
    {
        // The number of boxes and of pointer resets so far places these in the order.
        QString entry = step;
        if (!m_world.desktop.boxes.empty())
            entry += u" /boxes %1"_s.arg(m_world.desktop.boxes.size());
        if (m_world.desktop.resets > 0)
            entry += u" /normal"_s;
        steps.append(entry);
        if (step == failingStep)
            throw Failure(u"No "_s + step);
    }

    World &m_world;
};

class MainWindowLoad : public testing::Test
{
protected:
    World world;
    ApplicationContext &app = world.app;
    RecordingSteps steps{world};
    MainWindowState state;

    MainWindowLoad() { world.setPreference(u"Version"_s, u"4.0.0"_s); }

    void load() { loadMainWindow(app, steps, state); }

    MessageBox failureBox(const QString &problem) const
    {
        return {u"Marovia Sondrel V4"_s,
                u"Error occur while loading the program. Please report this error to the the software "
                "vendor at 'support@kestrune.example'.\r\n\r\nError: "_s +
                    problem,
                MessageIcon::Critical, MessageButtons::Ok};
    }
};

} // namespace

TEST_F(MainWindowLoad, takesItsStepsInOrder)
{
    world.writeEngineData(EngineData);
    world.write(u"project.dat"_s, "[Accounts]\r\n1=Shop\r\n2=Blog\r\nLast=2\r\n");
    world.setPreference(u"MainFormPos"_s, u"7,8,900,600"_s);
    load();
    EXPECT_EQ(steps.steps, (QStringList{u"place at 7"_s, u"help qlt40.hlp"_s, u"column"_s,
                                        u"on: Scheduler On"_s, u"images"_s, u"projects"_s, u"select 0"_s,
                                        u"show"_s, u"tray"_s, u"unload splash"_s}));
    EXPECT_EQ(state.Projects, (QStringList{u"Shop"_s, u"Blog"_s}));
    EXPECT_EQ(world.desktop.resets, 1);
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(MainWindowLoad, makesTheOneCatalogue)
{
    world.writeEngineData(EngineData);
    load();
    ASSERT_NE(app.EngineCatalogue, nullptr);
    EXPECT_EQ(app.EngineCatalogue, state.Catalogue.get());
    EXPECT_EQ(app.EngineCatalogue->GetEngineCount(), 1);
}

TEST_F(MainWindowLoad, makesTheReportsFolder)
{
    world.writeEngineData(EngineData);
    load();
    EXPECT_TRUE(app.files.folderExists(app.appFile({u"reports"_s})));
}

TEST_F(MainWindowLoad, opensTheDialogForANewProjectBeforeItShowsItself)
{
    world.writeEngineData(EngineData);
    load();
    EXPECT_EQ(steps.steps,
              (QStringList{u"place"_s, u"help qlt40.hlp"_s, u"column"_s, u"on: Scheduler On"_s, u"images"_s,
                           u"projects"_s, u"unload splash"_s, u"new project /normal"_s, u"show /normal"_s,
                           u"tray /normal"_s, u"unload splash /normal"_s}));
}

TEST_F(MainWindowLoad, updatesTheEnginesAtTheFirstRun)
{
    world.setPreference(u"Version"_s, u""_s);
    steps.downloaded = EngineData;
    load();
    EXPECT_EQ(steps.steps.mid(3, 5), (QStringList{u"on: Scheduler On"_s, u"hide splash"_s, u"update"_s,
                                                  u"show splash"_s, u"images"_s}));
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(MainWindowLoad, leavesTheSchedulerOffWhereTheSettingsSaySo)
{
    world.writeEngineData(EngineData);
    world.setPreference(u"SchedlerEnable"_s, u"False"_s);
    load();
    EXPECT_TRUE(steps.steps.contains(u"off: Scheduler off"_s));
}

TEST_F(MainWindowLoad, comesUpEmptyWithoutEngineData)
{
    load();
    EXPECT_EQ(steps.steps, (QStringList{u"place"_s, u"help qlt40.hlp"_s, u"column"_s, u"on: Scheduler On"_s,
                                        u"unload splash"_s, u"tray /boxes 2 /normal"_s,
                                        u"unload splash /boxes 2 /normal"_s, u"show /boxes 2 /normal"_s}));
    ASSERT_EQ(world.desktop.boxes.size(), 2U);
    EXPECT_EQ(world.desktop.boxes[0].title, u"Error"_s);
    EXPECT_EQ(world.desktop.boxes[1], failureBox(u""_s));
    EXPECT_EQ(world.takeLog(), u"FrmMain_load_Error: "_s);
    EXPECT_NE(app.EngineCatalogue, nullptr) << "the engine update loads it anew";
}

TEST_F(MainWindowLoad, tellsWhatIsWrongWithTheEngineData)
{
    world.writeEngineData("no engines");
    load();
    const QString problem = state.Catalogue->loadError();
    EXPECT_FALSE(problem.isEmpty());
    EXPECT_EQ(world.desktop.boxes, std::vector<MessageBox>{failureBox(problem)});
    EXPECT_TRUE(world.takeLog().endsWith(u"FrmMain_load_Error: "_s + problem));
    EXPECT_EQ(steps.steps.mid(4),
              (QStringList{u"tray /boxes 1 /normal"_s, u"unload splash /boxes 1 /normal"_s,
                           u"show /boxes 1 /normal"_s}));
}

TEST_F(MainWindowLoad, comesUpWhenAStepFails)
{
    world.writeEngineData(EngineData);
    steps.failingStep = u"images"_s;
    load();
    EXPECT_EQ(world.desktop.boxes, std::vector<MessageBox>{failureBox(u"No images"_s)});
    EXPECT_TRUE(world.takeLog().endsWith(u"FrmMain_load_Error: No images"_s));
    EXPECT_EQ(steps.steps.last(), u"show /boxes 1 /normal"_s);
}

TEST_F(MainWindowLoad, comesUpWhenTheReportsFolderCannotBeMade)
{
    world.writeEngineData(EngineData);
    world.write(u"reports"_s, "a file");
    world.write(u"Reports"_s, "a file");
    load();
    EXPECT_TRUE(world.takeLog().contains(u"FrmMain_load_Error: "_s));
    EXPECT_EQ(steps.steps.last(), u"show /boxes 1 /normal"_s);
}

TEST_F(MainWindowLoad, comesUpWithSettingsThatCannotBeRead)
{
    world.writeEngineData(EngineData);
    world.settings.broken = true;
    steps.downloaded = EngineData;
    load();
    EXPECT_TRUE(steps.steps.contains(u"on: Scheduler On"_s));
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(MainWindowLoad, isUndoneAtItsEnd)
{
    world.writeEngineData(EngineData);
    load();
    releaseMainWindow(app, state);
    EXPECT_EQ(app.EngineCatalogue, nullptr);
    EXPECT_EQ(state.Catalogue, nullptr);
    EXPECT_EQ(state.Main, nullptr);
}

TEST(HelpFile, isTheCompiledOneWhereItIsThere)
{
    World world;
    EXPECT_EQ(helpFile(world.app), world.app.AppPath + u"\\qlt40.hlp"_s);
    world.write(u"QLT40.CHM"_s, "help");
    EXPECT_EQ(helpFile(world.app), world.app.AppPath + u"\\qlt40.chm"_s);
}

TEST(SchedulerState, isToldInThePanelsWords)
{
    EXPECT_EQ(schedulerStateText(true), u"Scheduler On"_s);
    EXPECT_EQ(schedulerStateText(false), u"Scheduler off"_s);
}

TEST(MakersLogo, isHiddenInADealersCopy)
{
    clsDealerProfile dealer;
    dealer.Dealername = u"KESTRUNE Pty Ltd"_s;
    EXPECT_FALSE(hidesMakersLogo(dealer));
    dealer.Dealername = u"Dealer Ltd"_s;
    EXPECT_TRUE(hidesMakersLogo(dealer));
}
