// What the main window's commands do.
#include "shell/frmMain.h"

#include "core/clsPreference.h"
#include "core/modCommon.h"
#include "core/text_fold.h"
#include "shell/frmAbout.h"
#include "shell/frmPreference.h"
#include "shell/frmSondrel.h"
#include "shell/help_contents.h"
#include "shell/project_tree.h"

#include <QAction>
#include <QComboBox>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString withHttp(const QString &url)
{
    return containsIgnoringCase(url, u"http") ? url : u"http://"_s + url;
}

} // namespace

void frmMain::setHandler(Command command, std::function<void()> handler)
{
    m_handlers[command] = std::move(handler);
}

void frmMain::give(Command command)
{
    if (const auto handler = m_handlers.find(command); handler != m_handlers.end())
        handler->second();
}

void frmMain::connectCommands()
{
    using C = Command;
    setHandler(C::NewProject, [this] { AddAccount(); });
    setHandler(C::EditProject, [this] { EditAccount(); });
    setHandler(C::DeleteProject, [this] { DeleteAccount(); });
    setHandler(C::UpdateEngineData, [this] { UpdateEngineData(); });
    setHandler(C::EngineBuilder, [this] { BuildEngines(); });
    setHandler(C::Configuration, [this] { Config(); });
    setHandler(C::Exit, [this] { close(); });
    for (const C command : {C::AddKeywords, C::DeleteKeywords, C::CopyKeywords, C::PasteKeywords,
                            C::ExportKeywords, C::KeywordBuilder})
        setHandler(command, [this, command] { passToChild(command); });
    for (const C command : {C::ShowAll, C::ShowOptimized})
        setHandler(command, [this, command] { ShowOrOptimized(textOf(command).number); });
    setHandler(C::ShowPosition, [this] { ShowURLPosition(); });
    setHandler(C::GoToCompetitor, [this] { openUrl(); });
    for (const C command : {C::LookupSelected, C::LookupAll, C::LookupAllEngines, C::Stop})
        setHandler(command, [this, command] { LookUp(textOf(command).number); });
    setHandler(C::HtmlReport, [this] { Report(ReportFormat::Html); });
    setHandler(C::TextReport, [this] { Report(ReportFormat::Text); });
    setHandler(C::Optimizer, [this] { showOptimizer(); });
    setHandler(C::ExcelReport, [this] { Report(ReportFormat::Excel); });
    setHandler(C::SendReport, [this] { SendReport(); });
    setHandler(C::HelpContents, [this] { showHelpContents(m_app); });
    setHandler(C::Support, [this] { openDealerPage(&clsDealerProfile::SupportURL); });
    setHandler(C::HomePage, [this] { openDealerPage(&clsDealerProfile::DealerURL); });
    setHandler(C::About, [this] { about(); });
    setHandler(C::EnginePage, [this] { openEnginePage(false); });
    setHandler(C::EngineLogin, [this] { openEnginePage(true); });
}

void frmMain::passToChild(Command command)
{
    if (m_child)
        m_child->mnuKeywordsItemClick(textOf(command).number);
}

void frmMain::Config()
{
    const bool was = m_scheduler->isEnabled();
    frmPreference dialog(m_app, this);
    dialog.exec();
    clsPreference preference;
    preference.GetSettings(m_app);
    ResetReporter();
    setScheduler(preference.SchedulerEnable, schedulerStateText(preference.SchedulerEnable));
    if (m_scheduler->isEnabled() && !was)
        ShowAutoRunState();
}

void frmMain::ShowOrOptimized(int item)
{
    // A checkable item has changed its own tick already when it is chosen.
    action(Command::ShowAll)->setChecked(item == textOf(Command::ShowAll).number);
    action(Command::ShowOptimized)->setChecked(item == textOf(Command::ShowOptimized).number);
    if (m_child && m_shownFilter != item)
        m_child->ShowButtonItemsClick(item);
    m_shownFilter = item;
}

void frmMain::LookUp(int item)
{
    if (m_projects->currentText().isEmpty()) {
        m_app.desktop.showMessage(
            {m_app.deployment.Title,
             u"Please create a new Account by clicking the 'Project' button on the toolbar "
             "before you can doing ranking look up."_s,
             MessageIcon::None, MessageButtons::Ok});
        return;
    }
    if (item == textOf(Command::Stop).number)
        m_scheduler->requestStop();
    if (item == textOf(Command::LookupAllEngines).number) {
        m_scheduler->startAllEngines();
        return;
    }
    if (!m_child)
        return;
    if (item != textOf(Command::Stop).number) {
        m_app.LookupRequested = true;
        m_reports.ReportsFresh = false;
    }
    m_child->mnuRunMenuBidsItemsClick(item);
}

void frmMain::ShowURLPosition()
{
    reportFailure(m_app, u"frmMain_ShowURLPosition error:  "_s, [&] {
        if (m_child && !selectedUrl().isEmpty())
            m_child->ShowURLPosition(selectedUrl());
    });
}

void frmMain::openUrl()
{
    reportFailure(m_app, u"frmMain_lvwURLs_DblClick error: "_s, [&] {
        if (selectedUrl().isEmpty())
            return;
        const WaitCursor wait(m_app.desktop);
        ShellOpenDocument(m_app, withHttp(selectedUrl()), ShowMode::Normal);
    });
}

void frmMain::openEnginePage(bool login)
{
    reportFailure(m_app, u"mnuOpenPageItem_Click error: "_s, [&] {
        if (m_engine.isEmpty() || !m_app.EngineCatalogue)
            return;
        const clsEngine &catalogue = *m_app.EngineCatalogue;
        const qint16 index = catalogue.GetEngineIndex(m_engine);
        const auto address =
            enginePageAddress(login ? catalogue.GetLoginURL(index) : catalogue.GetEngineURL(index), login);
        if (!address) {
            m_app.desktop.showMessage({u"Login"_s,
                                       u"Invalid login URL. Please report this error to '"_s +
                                           m_app.deployment.SupportEmail + u"'."_s,
                                       MessageIcon::None, MessageButtons::Ok});
            return;
        }
        const WaitCursor wait(m_app.desktop);
        ShellOpenDocument(m_app, *address, ShowMode::Normal);
    });
}

void frmMain::openDealerPage(QString clsDealerProfile::*address)
{
    clsDealerProfile dealer;
    dealer.GetSettings(m_app);
    ShellOpenDocument(m_app, AddHTTPToURL(m_app, dealer.*address), ShowMode::Normal);
}

void frmMain::about()
{
    frmAbout dialog(m_app, this);
    dialog.exec();
}

} // namespace sondrel
