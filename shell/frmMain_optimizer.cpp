// The main window's way to the optimizer.
#include "shell/frmMain.h"

#include "optimizer/frmOptimizer.h"
#include "shell/status_panels.h"

namespace sondrel {

void frmMain::showOptimizer()
{
    if (!m_optimizer) {
        m_optimizer = new frmOptimizer(m_app, this);
        connect(m_optimizer, &frmOptimizer::statusCleared, this, [this] { m_panels->setFirst({}); });
        connect(m_optimizer, &frmOptimizer::Unloaded, this, [this] {
            m_optimizer->deleteLater();
            m_optimizer = nullptr;
        });
    }
    m_optimizer->show();
    m_optimizer->raise();
    m_optimizer->activateWindow();
}

} // namespace sondrel
