// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "automation/tray_icon.h"
#include "core/application_context.h"

#include <memory>

namespace sondrel {

/// What the icon in the notification area does to the program.
class TrayedProgram
{
public:
    virtual ~TrayedProgram() = default;

    virtual bool isMinimised() const = 0;
    virtual bool isHidden() const = 0;
    /// True while a dialog waits for its end.
    virtual bool hasDialog() const = 0;
    /// Brings the waiting dialog to the front.
    virtual void raiseDialog() = 0;
    virtual void hide() = 0;
    /// Shows the main window again, as it was before it was minimised, in front and with the focus.
    virtual void OpenWindow() = 0;
    /// Back to the other minimised windows.
    virtual void showMinimised() = 0;
    /// Shows the about box until it is closed.
    virtual void about() = 0;
    /// Asks the main window to close, which ends the program.
    virtual void unloadMain() = 0;
};

/// Keeps the icon in the notification area: a minimised main window goes out of the way there, and comes back
/// from there. The icon is there for as long as this is.
class frmTrayIcon final : public QObject
{
    Q_OBJECT

public:
    frmTrayIcon(ApplicationContext &app, TrayIcon &tray, TrayedProgram &program);
    ~frmTrayIcon() override;

    /// The entries of the menu "mnuPopup".
    static TrayMenu mnuPopup();

    /// To be called when the main window has been minimised. Where the desktop has no notification area, the
    /// window stays where minimised windows are.
    void mainMinimised();

private:
    void OnIcon(qint16 code);
    void choose(int index);
    void open();
    void watch();

    TrayIcon &m_tray;
    TrayedProgram &m_program;
    Desktop &m_desktop;
    std::unique_ptr<ClockTimer> m_watchTimer; // while the window is hidden
};

} // namespace sondrel
