#include "automation/frmTrayIcon.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int WatchInterval = 3000; // ms

enum Item { Open = 1, About = 2, Separator = 3, Exit = 4 };

} // namespace

TrayMenu frmTrayIcon::mnuPopup()
{
    return {{{Open, u"O&pen"_s}, {About, u"&About Marovia Sondrel"_s}, {Separator, {}}, {Exit, u"&Exit"_s}},
            About};
}

frmTrayIcon::frmTrayIcon(ApplicationContext &app, TrayIcon &tray, TrayedProgram &program)
    : m_tray(tray),
      m_program(program),
      m_desktop(app.desktop),
      m_watchTimer(app.clock.createTimer(WatchInterval, [this] { watch(); }))
{
    connect(&tray, &TrayIcon::OnIcon, this, &frmTrayIcon::OnIcon);
    connect(&tray, &TrayIcon::chosen, this, &frmTrayIcon::choose);
    tray.Icon = u"marovia-sondrel"_s;
    tray.ToolTipText = app.deployment.Title;
    tray.setMenu(mnuPopup());
    tray.Add();
}

frmTrayIcon::~frmTrayIcon()
{
    m_tray.Delete();
}

void frmTrayIcon::mainMinimised()
{
    // A dialog belongs to its window; the two stay together.
    if (!m_program.isMinimised() || m_program.isHidden() || m_program.hasDialog() || !m_tray.isAvailable())
        return;
    m_program.hide();
    m_desktop.runPendingEvents();
    m_watchTimer->setEnabled(true);
}

// A window whose icon went with the desktop's panel could not be reached any more.
void frmTrayIcon::watch()
{
    if (m_program.isHidden() && m_tray.isAvailable())
        return;
    m_watchTimer->setEnabled(false);
    if (m_program.isHidden())
        m_program.showMinimised();
}

void frmTrayIcon::OnIcon(qint16 code)
{
    const bool isOnlyClick = code == TrayIcon::LeftUp && !m_tray.knowsDoubleClick() && m_program.isHidden();
    if (code == TrayIcon::RightUp)
        m_tray.CallPopupMenu();
    else if (code == TrayIcon::LeftDoubleClick || isOnlyClick)
        open();
}

void frmTrayIcon::open()
{
    if (m_program.isMinimised())
        m_program.OpenWindow();
}

void frmTrayIcon::choose(int index)
{
    if (m_program.hasDialog()) {
        m_program.raiseDialog();
        return;
    }
    switch (index) {
    case Open:
        open();
        break;
    case About:
        m_program.about();
        break;
    case Exit:
        m_program.unloadMain();
        break;
    default:
        break;
    }
}

} // namespace sondrel
