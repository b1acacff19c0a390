// The main window's command that mails the reports.
#include "shell/frmMain.h"

#include "shell/frmSendReport.h"

namespace sondrel {

void frmMain::SendReport()
{
    if (!m_account)
        return;
    frmSendReport dialog(m_app, this);
    dialog.setAccount(m_account);
    dialog.exec();
}

} // namespace sondrel
