// How the main window's engine data is renewed and edited.
#include "shell/frmMain.h"

#include "engines/frmEngineBuilder.h"
#include "engines/frmUpdateEngines.h"
#include "shell/status_panels.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

void frmMain::updateEngines()
{
    frmUpdateEngines dialog(m_app, this);
    dialog.exec();
}

// False when there is no catalogue now, which a message has told.
bool frmMain::reloadCatalogue()
{
    const WaitCursor wait(m_app.desktop);
    if (!m_state.Catalogue) {
        m_state.Catalogue = std::make_unique<clsEngine>(m_app);
        m_app.EngineCatalogue = m_state.Catalogue.get();
    }
    const bool was = m_state.Catalogue->isLoaded();
    if (!m_state.Catalogue->loadEngineData()) {
        const QString problem = m_state.Catalogue->loadError();
        if (!problem.isEmpty()) {
            m_app.WriteErrorLog(u"frmMain_reloadCatalogue error: "_s + problem);
            m_app.desktop.showMessage({m_app.deployment.Title,
                                       tr("The engine data could not be loaded.") + u"\n\n"_s + problem,
                                       MessageIcon::Critical});
        }
        return false;
    }
    if (!was)
        loadProjects(m_app, *this, m_state); // the start left them out
    return true;
}

void frmMain::UpdateEngineData()
{
    updateEngines();
    m_panels->setFirst(u"Please wait while re-loading Engine Data file ..."_s);
    m_app.desktop.runPendingEvents();
    reportFailure(m_app, u"frmMain_UpdateEngineData error: "_s, [this] { reloadCatalogue(); });
    m_panels->setFirst({});
    UpdateUI();
}

void frmMain::BuildEngines()
{
    reportFailure(m_app, u"frmMain_BuildEngines error: "_s, [this] {
        {
            frmEngineBuilder dialog(m_app, this);
            dialog.exec();
        }
        // A catalogue that did not load knows no engine, and the project would lose them all.
        if (reloadCatalogue() && m_account)
            m_account->DeleteInvalidEngine();
        PopulateEngine();
    });
    UpdateUI();
}

} // namespace sondrel
