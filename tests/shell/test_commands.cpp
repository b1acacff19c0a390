#include "shell/commands.h"

#include <gmock/gmock.h>

#include <set>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using C = Command;

namespace {

std::set<Command> setOf(const CommandSet &set)
{
    std::set<Command> result;
    for (const CommandText &text : commandTexts()) {
        if (holds(set, text.command))
            result.insert(text.command);
    }
    return result;
}

const std::set<Command> Always{C::EngineBuilder, C::Configuration, C::Exit, C::HelpContents,
                               C::Support,       C::HomePage,      C::About};

std::set<Command> with(std::set<Command> more)
{
    more.insert(Always.begin(), Always.end());
    return more;
}

} // namespace

TEST(Commands, haveATextEach)
{
    EXPECT_EQ(commandTexts().size(), CommandCount);
    std::set<Command> commands;
    for (const CommandText &text : commandTexts())
        commands.insert(text.command);
    EXPECT_EQ(commands.size(), CommandCount);
}

TEST(Commands, haveShortcutsOfTheirOwn)
{
    std::set<QString> shortcuts;
    for (const CommandText &text : commandTexts()) {
        if (!text.shortcut.isEmpty()) {
            EXPECT_TRUE(shortcuts.insert(text.shortcut).second) << text.shortcut.toStdString();
        }
    }
}

TEST(Commands, ofAnEmptyProgramLeadToAProject)
{
    EXPECT_EQ(setOf(enabledCommands({})), with({C::NewProject, C::UpdateEngineData}));
}

TEST(Commands, ofAProjectWithoutGridConcernTheProject)
{
    CommandFacts facts;
    facts.hasProject = true;
    facts.hasUrl = true;
    EXPECT_EQ(setOf(enabledCommands(facts)), with({C::NewProject, C::EditProject, C::DeleteProject,
                                                   C::UpdateEngineData, C::GoToCompetitor}));
}

TEST(Commands, ofAnEmptyGridLeadToKeywords)
{
    CommandFacts facts;
    facts.hasProject = facts.hasGrid = facts.hasEngine = true;
    EXPECT_EQ(setOf(enabledCommands(facts)),
              with({C::NewProject, C::EditProject, C::DeleteProject, C::UpdateEngineData, C::AddKeywords,
                    C::KeywordBuilder, C::ShowAll, C::ShowOptimized, C::LookupSelected, C::LookupAll,
                    C::LookupAllEngines, C::Optimizer, C::EnginePage, C::EngineLogin}));
}

TEST(Commands, ofAnIdleGridWithSelectedRows)
{
    CommandFacts facts;
    facts.hasProject = facts.hasGrid = facts.hasCopied = facts.hasListings = facts.hasUrl = true;
    facts.selectedRows = 1;
    facts.dataRows = 3;
    EXPECT_EQ(setOf(enabledCommands(facts)),
              with({C::NewProject,       C::EditProject,    C::DeleteProject,  C::UpdateEngineData,
                    C::AddKeywords,      C::DeleteKeywords, C::CopyKeywords,   C::PasteKeywords,
                    C::KeywordBuilder,   C::ExportKeywords, C::ShowAll,        C::ShowOptimized,
                    C::ShowPosition,     C::GoToCompetitor, C::LookupSelected, C::LookupAll,
                    C::LookupAllEngines, C::HtmlReport,     C::TextReport,     C::ExcelReport,
                    C::SendReport,       C::Optimizer}));
}

TEST(Commands, duringALookupStopItAndChangeNothingElse)
{
    CommandFacts facts;
    facts.hasProject = facts.hasGrid = facts.lookupRuns = true;
    facts.selectedRows = 1;
    facts.dataRows = 3;
    EXPECT_EQ(setOf(enabledCommands(facts)),
              with({C::AddKeywords, C::CopyKeywords, C::KeywordBuilder, C::ExportKeywords, C::ShowAll,
                    C::ShowOptimized, C::Stop, C::HtmlReport, C::TextReport, C::ExcelReport, C::SendReport,
                    C::Optimizer}));
}
