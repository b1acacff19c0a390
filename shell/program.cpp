#include "shell/program.h"

#include "shell/damaged_stores.h"
#include "shell/frmAbout.h"
#include "shell/frmMain.h"
#include "shell/frmSplash.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// A lookup writes several files a second, and one box is enough for all of them.
constexpr qint64 SecondsBetweenBoxes = 10;

} // namespace

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
    if (!m_main || m_tellingUnwritten ||
        (m_unwrittenTold.isValid() && m_unwrittenTold.secsTo(m_app.clock.now()) < SecondsBetweenBoxes))
        return;
    m_tellingUnwritten = true;
    QTimer::singleShot(0, this, [this, problem] {
        showUnwritten(problem);
        m_tellingUnwritten = false;
    });
}

void Program::showUnwritten(const QString &problem)
{
    // Whoever has a box of his own for it shows it by now.
    const auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (box && box->text().contains(problem))
        return;
    const QString advice = u"The change is not stored, and what was stored before is as it was. Make room on "
                           u"the disk, or see why "
                           u"nothing can be changed there, and do it again."_s;
    m_app.desktop.showMessage({m_app.deployment.Title, problem + u".\r\n\r\n"_s + advice,
                               MessageIcon::Exclamation, MessageButtons::Ok});
    m_unwrittenTold = m_app.clock.now();
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
