#include "shell/commands.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

const std::vector<CommandText> &commandTexts()
{
    using C = Command;
    static const std::vector<CommandText> texts{
        {C::NewProject, Menu::File, 1, u"&New Project"_s, u"project-new"_s, u"Ctrl+N"_s, u"Make a project"_s},
        {C::EditProject, Menu::File, 2, u"&Edit Project"_s, u"project-edit"_s, {}, u"Change the project"_s},
        {C::DeleteProject,
         Menu::File,
         3,
         u"&Delete Project"_s,
         u"project-delete"_s,
         {},
         u"Delete the project's settings; its keywords and results stay on disk"_s},
        {C::UpdateEngineData,
         Menu::File,
         5,
         u"&Update Engine Data File"_s,
         u"engine-update"_s,
         {},
         u"Fetch the latest search engine definitions"_s},
        {C::EngineBuilder,
         Menu::File,
         6,
         u"Engine &Builder"_s,
         u"engine-builder"_s,
         {},
         u"Define search engines of your own"_s},
        {C::Configuration, Menu::File, 8, u"&Configuration..."_s, u"configure"_s, u"Ctrl+,"_s,
         u"Change the program's settings"_s},
        {C::Exit, Menu::File, 10, u"E&xit"_s, u"exit"_s, u"Ctrl+Q"_s, u"End the program"_s},
        {C::AddKeywords, Menu::Keywords, 1, u"Add Key&words"_s, u"keyword-add"_s, u"Ctrl+K"_s,
         u"Add keywords: typed, from a file or from a page"_s},
        {C::DeleteKeywords, Menu::Keywords, 2, u"Dele&te Keywords"_s, u"keyword-delete"_s, u"Del"_s,
         u"Delete the selected keywords"_s},
        {C::CopyKeywords, Menu::Keywords, 4, u"&Copy"_s, u"copy"_s, u"Ctrl+C"_s,
         u"Copy the selected keywords"_s},
        {C::PasteKeywords, Menu::Keywords, 5, u"&Paste"_s, u"paste"_s, u"Ctrl+V"_s,
         u"Add the copied keywords here"_s},
        {C::KeywordBuilder,
         Menu::Keywords,
         7,
         u"Keyword &Builder"_s,
         u"keyword-builder"_s,
         {},
         u"Collect suggestions from search engines"_s},
        {C::ExportKeywords,
         Menu::Keywords,
         8,
         u"&Export Keywords"_s,
         u"export"_s,
         {},
         u"Write the keywords to a text file"_s},
        {C::ShowAll, Menu::Show, 1, u"Show &All Keywords"_s, u"show"_s, {}, u"Show every keyword"_s},
        {C::ShowOptimized,
         Menu::Show,
         2,
         u"Show &Optimized Keywords"_s,
         u"show-checked"_s,
         {},
         u"Show only keywords whose box is checked"_s},
        {C::ShowPosition,
         Menu::Url,
         1,
         u"&Show Position"_s,
         u"position"_s,
         {},
         u"Select the listings of the chosen URL"_s},
        {C::GoToCompetitor,
         Menu::Url,
         2,
         u"&Go to Competitor Web Site"_s,
         u"web"_s,
         {},
         u"Open the chosen URL in the browser"_s},
        {C::LookupSelected, Menu::LookUp, 1, u"Lookup &Selected Keywords"_s, u"lookup"_s, u"F5"_s,
         u"Look the selected keywords up"_s},
        {C::LookupAll, Menu::LookUp, 2, u"Lookup &All Keywords"_s, u"lookup-all"_s, u"Shift+F5"_s,
         u"Look every keyword up"_s},
        {C::LookupAllEngines,
         Menu::LookUp,
         3,
         u"Lookup All Keyword for All Engine"_s,
         u"lookup-engines"_s,
         {},
         u"Look every keyword up on each engine of the project"_s},
        {C::Stop, Menu::LookUp, 5, u"St&op"_s, u"stop"_s, u"Esc"_s, u"Stop the lookup"_s},
        {C::HtmlReport,
         Menu::Report,
         1,
         u"&HTML Format"_s,
         u"report"_s,
         {},
         u"Write and open the HTML reports"_s},
        {C::TextReport,
         Menu::Report,
         2,
         u"&Text Format"_s,
         u"report-text"_s,
         {},
         u"Write and open the text report"_s},
        {C::ExcelReport,
         Menu::Report,
         3,
         u"&Excel Format"_s,
         u"report-table"_s,
         {},
         u"Write and open the workbook"_s},
        {C::SendReport, Menu::Report, 5, u"&Send Report"_s, u"mail"_s, {}, u"Mail the reports"_s},
        {C::Optimizer, Menu::Report, 7, u"Optimizer"_s, u"optimizer"_s, {}, u"Judge a web page"_s},
        {C::HelpContents, Menu::Help, 1, u"&Contents"_s, u"help"_s, u"F1"_s, u"Open the help"_s},
        {C::Support, Menu::Help, 6, u"&Support"_s, u"support"_s, {}, u"Open the support page"_s},
        {C::HomePage,
         Menu::Help,
         7,
         u"&Marovia Software on the Web"_s,
         u"web"_s,
         {},
         u"Open the home page"_s},
        {C::About, Menu::Help, 9, u"&About Marovia Sondrel"_s, u"about"_s, {}, u"About this program"_s},
        {C::EnginePage,
         Menu::EnginePopup,
         1,
         u"Go to Engine"_s,
         u"web"_s,
         {},
         u"Open the engine's query page in the browser"_s},
        {C::EngineLogin,
         Menu::EnginePopup,
         2,
         u"Go to Login Page"_s,
         u"web"_s,
         {},
         u"Open the engine's login page in the browser"_s},
    };
    return texts;
}

const CommandText &textOf(Command command)
{
    const auto &texts = commandTexts();
    return *std::find_if(texts.begin(), texts.end(),
                         [command](const CommandText &text) { return text.command == command; });
}

QString menuTitle(Menu menu)
{
    switch (menu) {
    case Menu::File:
        return u"&File"_s;
    case Menu::Keywords:
        return u"&Keywords"_s;
    case Menu::Show:
        return u"&Show"_s;
    case Menu::Url:
        return u"&URL"_s;
    case Menu::LookUp:
        return u"&LookUp"_s;
    case Menu::Report:
        return u"&Report"_s;
    case Menu::Help:
        return u"&Help"_s;
    case Menu::EnginePopup:
        break;
    }
    return {};
}

CommandSet enabledCommands(const CommandFacts &facts)
{
    using C = Command;
    CommandSet set;
    const auto enable = [&set](Command command, bool condition) {
        set.set(static_cast<std::size_t>(command), condition);
    };
    const bool idle = !facts.lookupRuns;
    enable(C::NewProject, idle);
    enable(C::EditProject, idle && facts.hasProject);
    enable(C::DeleteProject, idle && facts.hasProject);
    enable(C::UpdateEngineData, idle);
    enable(C::EngineBuilder, true);
    enable(C::Configuration, true);
    enable(C::Exit, true);
    enable(C::AddKeywords, facts.hasGrid);
    enable(C::DeleteKeywords, facts.hasGrid && idle && facts.selectedRows > 0);
    enable(C::CopyKeywords, facts.hasGrid && facts.selectedRows > 0);
    enable(C::PasteKeywords, facts.hasGrid && facts.hasCopied);
    enable(C::KeywordBuilder, facts.hasGrid);
    enable(C::ExportKeywords, facts.hasGrid && facts.dataRows > 0);
    enable(C::ShowAll, facts.hasGrid);
    enable(C::ShowOptimized, facts.hasGrid);
    enable(C::ShowPosition, facts.hasListings && facts.hasUrl);
    enable(C::GoToCompetitor, facts.hasUrl);
    enable(C::LookupSelected, facts.hasGrid && idle);
    enable(C::LookupAll, facts.hasGrid && idle);
    enable(C::LookupAllEngines, facts.hasGrid && idle);
    enable(C::Stop, facts.hasGrid && facts.lookupRuns);
    for (const C report : {C::HtmlReport, C::TextReport, C::ExcelReport, C::SendReport})
        enable(report, facts.hasGrid && facts.dataRows > 0);
    enable(C::Optimizer, facts.hasGrid);
    enable(C::HelpContents, true);
    enable(C::Support, true);
    enable(C::HomePage, true);
    enable(C::About, true);
    enable(C::EnginePage, facts.hasEngine);
    enable(C::EngineLogin, facts.hasEngine);
    return set;
}

} // namespace sondrel
