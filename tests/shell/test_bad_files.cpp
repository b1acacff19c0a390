#include "core/modStartUp.h"
#include "lookup/listing_file.h"
#include "lookup/lookup_session.h"
#include "shell/start_up.h"
#include "tests/support/bad_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDirIterator>

#include <array>
#include <map>
#include <ostream>
#include <string>
#include <tuple>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

// Every file that the program reads when it starts and shows a project, in every bad form: it comes up, tells
// of what it cannot read, and writes over none of its files.

namespace {

enum Form { Empty, Random, Folder, Unreadable };

struct BadFile
{
    const char *name;
    QString path;
    std::array<QString, 4> told; // by form: how the record in the log begins; empty where none is written
};

void PrintTo(const BadFile &file, std::ostream *out)
{
    *out << file.name;
}

const QString CannotRead = u"Cannot read"_s;

std::array<QString, 4> always(const QString &text)
{
    return {text, text, text, text};
}

std::array<QString, 4> whenItCannotBeRead(const QString &tag)
{
    return {QString(), QString(), tag + CannotRead, tag + CannotRead};
}

const BadFile badFiles[] = {
    {"log", u"Error.log"_s, always(QString())},
    {"deployment", u"../program/deployment.ini"_s, whenItCannotBeRead(u"modStartUp_Main error:  "_s)},
    {"dealer", u"../system/orbelsoft.ini"_s, always(QString())},
    {"engines",
     u"../system/qlteng4.dat"_s,
     {u"FrmMain_load_Error: The engine data file holds no engine"_s,
      u"FrmMain_load_Error: The engine data file holds no engine"_s, u"FrmMain_load_Error: "_s,
      u"FrmMain_load_Error: "_s + CannotRead}},
    {"usersEngines", u"Engines.dat"_s, whenItCannotBeRead(u"FrmMain_load_Error: "_s)},
    {"projects", u"project.dat"_s, whenItCannotBeRead(u"clsMain_loadAccount_Error: "_s)},
    {"project",
     u"Projects/Demo/Demo.dat"_s,
     {u"clsAccount_Getsettings error: Type mismatch"_s, u"clsAccount_Getsettings error: Type mismatch"_s,
      u"clsAccount_Getsettings error: "_s + CannotRead, u"clsAccount_Getsettings error: "_s + CannotRead}},
    {"keywords", u"Projects/Demo/Keywords.dat"_s, whenItCannotBeRead(u"clsKeywords_LoadKeywords error : "_s)},
    {"results", u"Projects/Demo/Finder.dat"_s,
     whenItCannotBeRead(u"clsKeywords_FillKeywordsValueFromLookup error: "_s)},
    {"urls", u"Projects/Demo/URLs.dat"_s, always(QString())},
    {"listings", u"Results/Finder/boots.dat"_s, always(QString())}, // told by the grid that shows them
};

using BadCase = std::tuple<BadFile, Form>;

std::string nameOf(const testing::TestParamInfo<BadCase> &info)
{
    constexpr std::array forms{"Empty", "Random", "Folder", "Unreadable"};
    const auto &[file, form] = info.param;
    return std::string(file.name) + forms.at(form);
}

class BadFiles : public testing::TestWithParam<BadCase>, protected StartUpWindows, protected MainWindowSteps
{
protected:
    BadFiles()
    {
        world.write(u"Error.log"_s, "\r\nbefore");
        world.write(u"../program/deployment.ini"_s, "[Deployment]\r\nTitle=Title\r\n");
        world.write(u"../system/orbelsoft.ini"_s, "[Dealer]\r\nName=Dealer\r\nWebSite=http://d.example\r\n");
        world.writeEngineData("[Markets]\r\n1=Global\r\n[Global]\r\n1=Finder\r\n");
        world.write(u"Engines.dat"_s, "[Markets]\r\n1=Own\r\n[Own]\r\n1=Mine\r\n");
        world.write(u"project.dat"_s, "[Accounts]\r\n1=Demo\r\nLast=1\r\n");
        world.write(u"Projects/Demo/Demo.dat"_s,
                    "[Schedler]\r\nSchedlerEnable=True\r\nNextLookup=November,20 2026\r\n"
                    "[URL]\r\n1=site.example|False\r\nNumURL=1\r\n[Engine]\r\n1=Finder\r\nNumEngine=1\r\n");
        world.write(u"Projects/Demo/Keywords.dat"_s, "boots;-1\r\n");
        world.write(u"Projects/Demo/Finder.dat"_s, "boots;5;1;1;;1+;http://site.example/;\r\n");
        world.write(u"Projects/Demo/URLs.dat"_s, "site.example\r\n");
        world.write(u"Results/Finder/boots.dat"_s, "http://site.example/;#Title;#1\r\n");
        world.setPreference(u"Version"_s, versionText());
    }

    ~BadFiles() override { releaseMainWindow(world.app, state); }

    void put(const QString &path, Form form) const
    {
        QFile::remove(world.path(path));
        switch (form) {
        case Empty:
            world.write(path, QByteArray());
            break;
        case Random:
            world.write(path, randomBytes(20000));
            break;
        case Folder:
            putFolder(world, path);
            break;
        case Unreadable:
            if (path == "Error.log"_L1) // which is written only
                QFile::link(u"/proc/self/nowhere"_s, world.path(path));
            else
                putUnreadable(world, path);
            break;
        }
    }

    // All files with what they hold, but for the log.
    std::map<QString, QByteArray> files() const
    {
        std::map<QString, QByteArray> result;
        QDirIterator it(world.folder.path(),
                        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QFileInfo file(it.next());
            if (file.isSymLink()) {
                result[file.filePath()] = file.symLinkTarget().toUtf8();
            } else if (file.isFile() && file.fileName() != "Error.log"_L1) {
                QFile opened(file.filePath());
                result[file.filePath()] = opened.open(QIODevice::ReadOnly) ? opened.readAll() : "(closed)";
            }
        }
        return result;
    }

    // As the main window and the grid do when a project is shown.
    void selectProject(int index) override
    {
        auto project = std::make_shared<clsAccount>(world.app);
        project->Name = state.Projects.at(index);
        project->GetSettings();
        project->GetURLCollectionX(project->Name);
        LookupSession session(world.app);
        session.Account = project;
        session.EngineName = u"Finder"_s;
        session.open();
        try {
            loadListings(world.app, u"Finder"_s, u"boots"_s);
        } catch (const Failure &failure) {
            EXPECT_TRUE(failure.text().startsWith(CannotRead));
        }
        clsDealerProfile().GetSettings(world.app);
    }
    void Display() override { loadMainWindow(world.app, *this, state); }
    void showMainWindow() override { shown = true; }

    void showSplash() override {}
    void placeWindow(const MainWindowSettings &) override {}
    void setHelpFile(const QString &) override {}
    void buildURLColumn() override {}
    void setScheduler(bool, const QString &) override {}
    void hideSplash() override {}
    void unloadSplash() override {}
    void updateEngines() override {}
    void giveTreeItsImages() override {}
    void showProjects() override {}
    void AddAccount() override {}
    void loadTrayIcon() override {}

    World world;
    MainWindowState state;
    bool shown = false;
};

} // namespace

TEST_P(BadFiles, areToldAndLeftAsTheyAre)
{
    const auto &[file, form] = GetParam();
    put(file.path, form);
    const auto before = files();
    EXPECT_TRUE(Main(world.app, world.path(u"../program"_s), *this));
    EXPECT_TRUE(shown);
    auto after = files();
    for (const auto &[path, bytes] : before)
        EXPECT_EQ(after[path], bytes) << qPrintable(path);
    // Of the first engine this is told at every load.
    const QString log = world.takeLog().remove(u"IsEngineExist_Error: "_s);
    const QString &told = file.told[form];
    if (told.isEmpty())
        EXPECT_FALSE(log.contains("rror: "_L1)) << qPrintable(log);
    else
        EXPECT_TRUE(log.contains(u"\r\n"_s + told)) << qPrintable(log);
}

INSTANTIATE_TEST_SUITE_P(Places, BadFiles,
                         testing::Combine(testing::ValuesIn(badFiles),
                                          testing::Values(Empty, Random, Folder, Unreadable)),
                         nameOf);
