// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

#include <array>
#include <bitset>
#include <cstddef>
#include <vector>

namespace sondrel {

/// Every command of the main window's menus.
enum class Command {
    NewProject,
    EditProject,
    DeleteProject,
    UpdateEngineData,
    EngineBuilder,
    Configuration,
    Exit,
    AddKeywords,
    DeleteKeywords,
    CopyKeywords,
    PasteKeywords,
    KeywordBuilder,
    ExportKeywords,
    ShowAll,
    ShowOptimized,
    ShowPosition,
    GoToCompetitor,
    LookupSelected,
    LookupAll,
    LookupAllEngines,
    Stop,
    HtmlReport,
    TextReport,
    ExcelReport,
    SendReport,
    Optimizer,
    HelpContents,
    Support,
    HomePage,
    About,
    EnginePage,
    EngineLogin,
};
inline constexpr std::size_t CommandCount = static_cast<std::size_t>(Command::EngineLogin) + 1;

/// Where a command stands.
enum class Menu { File, Keywords, Show, Url, LookUp, Report, Help, EnginePopup };

/// How a command shows: its menu and number there (a gap in the numbers is a separator), caption with access
/// key, icon, shortcut and tool tip.
struct CommandText
{
    Command command;
    Menu menu;
    int number;
    QString caption;
    QString icon;     // name of a drawing of ours; empty for none
    QString shortcut; // portable form; empty for none
    QString tip;
};

/// All commands in the order of their menus.
const std::vector<CommandText> &commandTexts();
const CommandText &textOf(Command command);
QString menuTitle(Menu menu);

/// What decides which commands can be given.
struct CommandFacts
{
    bool hasProject = false;  // a project is selected
    bool hasGrid = false;     // the keyword grid is open
    bool lookupRuns = false;  // in the open grid
    bool hasEngine = false;   // an engine is selected in the tree
    bool hasUrl = false;      // a tracked URL is selected
    bool hasListings = false; // the list under the grid shows some
    bool hasCopied = false;   // a copied list of keywords exists
    int selectedRows = 0;
    int dataRows = 0;
};

using CommandSet = std::bitset<CommandCount>;

/// The commands that can be given.
CommandSet enabledCommands(const CommandFacts &facts);

inline bool holds(const CommandSet &set, Command command)
{
    return set.test(static_cast<std::size_t>(command));
}

} // namespace sondrel
