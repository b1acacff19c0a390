#include "shell/program.h"

#include "shell/damaged_stores.h"
#include "shell/frmAbout.h"
#include "shell/frmMain.h"
#include "shell/frmSplash.h"

#include <QApplication>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

Program::Program(ApplicationContext &app, TrayIcon &tray, QString problem)
    : m_app(app), m_trayIcon(tray), m_problem(std::move(problem))
{
}

Program::~Program()
{
    delete m_splash;
}

void Program::showSplash()
{
    tellProblems();
    createSplash();
}

// Before the splash window, which would cover the boxes.
void Program::tellProblems()
{
    for (const QString &problem : {m_problem, unwritableFolder(m_app), repairProjectList(m_app)}) {
        if (problem.isEmpty())
            continue;
        m_app.WriteErrorLog(u"modStartUp_Main error:  "_s + problem);
        m_app.desktop.showMessage(
            {m_app.deployment.Title, problem, MessageIcon::Exclamation, MessageButtons::Ok});
    }
}

// What is wrong at the start is told there.
void Program::tellUnwritten(const QString &problem)
{
    if (m_main)
        m_main->tellUnwritten(problem);
}

void Program::createSplash()
{
    if (!m_splash) {
        m_splash = new frmSplash(m_app);
        connect(m_splash, &frmSplash::finished, this, &Program::unloadSplash);
    }
    m_splash->show();
}

void Program::unloadSplash()
{
    if (!m_splash)
        return;
    m_splash->hide();
    m_splash->deleteLater(); // it may be the one that asks for it
    m_splash.clear();
}

void Program::Display()
{
    m_main = std::make_unique<frmMain>(m_app);
    connect(m_main.get(), &frmMain::splashHidden, this, [this] {
        if (m_splash)
            m_splash->hide();
    });
    connect(m_main.get(), &frmMain::splashShown, this, &Program::createSplash);
    connect(m_main.get(), &frmMain::splashUnloaded, this, &Program::unloadSplash);
    connect(m_main.get(), &frmMain::trayWanted, this, &Program::loadTrayIcon);
    connect(m_main.get(), &frmMain::closed, this, &Program::end);
    connect(m_main.get(), &frmMain::minimised, this, [this] {
        if (m_tray)
            m_tray->mainMinimised();
    });
    m_main->load();
}

void Program::loadTrayIcon()
{
    if (!m_tray)
        m_tray = std::make_unique<frmTrayIcon>(m_app, m_trayIcon, *this);
}

void Program::end()
{
    m_tray.reset();
    m_app.desktop.runPendingEvents();
    m_ended = true;
    Q_EMIT ended();
}

void Program::raise()
{
    if (m_main && (m_main->isVisible() || m_tray))
        OpenWindow();
    if (hasDialog())
        raiseDialog();
}

bool Program::isMinimised() const
{
    return m_main->isMinimized();
}

bool Program::isHidden() const
{
    return m_main->isHidden();
}

bool Program::hasDialog() const
{
    return QApplication::activeModalWidget();
}

void Program::raiseDialog()
{
    if (QWidget *dialog = QApplication::activeModalWidget()) {
        dialog->raise();
        dialog->activateWindow();
    }
}

void Program::hide()
{
    m_main->hide();
}

void Program::OpenWindow()
{
    m_main->setWindowState(m_main->windowState() & ~Qt::WindowMinimized);
    m_main->show();
    m_main->raise();
    m_main->activateWindow();
}

void Program::showMinimised()
{
    m_main->showMinimized();
}

void Program::about()
{
    frmAbout dialog(m_app);
    dialog.exec();
}

void Program::unloadMain()
{
    m_main->close();
}

} // namespace sondrel
