// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "automation/frmTrayIcon.h"
#include "core/modStartUp.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

#include <memory>

namespace sondrel {

class frmMain;
class frmSplash;

/// The windows of the running program, from the splash window to the end: brings them up in their order,
/// keeps the icon in the notification area, and ends when the main window has been closed.
class Program final : public QObject, public StartUpWindows, public TrayedProgram
{
    Q_OBJECT

public:
    /// problem: what is to be told of the settings, empty for nothing.
    Program(ApplicationContext &app, TrayIcon &tray, QString problem);
    ~Program() override;

    void showSplash() override;
    void Display() override;

    /// Shows in the main window that something could not be stored, and why.
    void tellUnwritten(const QString &problem);
    /// Brings the program forward, from wherever it is.
    void raise();
    bool hasEnded() const { return m_ended; }
    frmMain *mainWindow() const { return m_main.get(); }

Q_SIGNALS:
    /// The main window has been closed, and nothing is left to be done.
    void ended();

private:
    bool isMinimised() const override;
    bool isHidden() const override;
    bool hasDialog() const override;
    void raiseDialog() override;
    void hide() override;
    void OpenWindow() override;
    void showMinimised() override;
    void about() override;
    void unloadMain() override;

    void tellProblems();
    void createSplash();
    void unloadSplash();
    void loadTrayIcon();
    void end();

    ApplicationContext &m_app;
    TrayIcon &m_trayIcon;
    QString m_problem;
    QPointer<frmSplash> m_splash;
    std::unique_ptr<frmMain> m_main;
    std::unique_ptr<frmTrayIcon> m_tray;
    bool m_ended = false;
};

} // namespace sondrel
