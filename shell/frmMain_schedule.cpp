// What the main window shows and asks of the scheduler.
#include "shell/frmMain.h"

#include "shell/status_panels.h"

namespace sondrel {

void frmMain::setScheduler(bool enabled, const QString &panelText)
{
    m_schedulerEnabled = enabled;
    m_panels->setAutoRun(panelText);
}

// TODO: the scheduler says here how the chosen project stands with it.
void frmMain::ShowAutoRunState() {}

// TODO: the scheduler's hidden run, once there is one.
std::optional<AutoLookup> frmMain::autoLookup()
{
    return std::nullopt;
}

void frmMain::unloadAutoLookup() {}

} // namespace sondrel
