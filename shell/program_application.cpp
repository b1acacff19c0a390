#include "shell/program_application.h"

#include "shell/program_icons.h"

namespace sondrel {

ProgramApplication::ProgramApplication(int &argc, char **argv) : QApplication(argc, argv)
{
    setApplicationName(QStringLiteral("marovia-sondrel"));
    setDesktopFileName(QStringLiteral("marovia-sondrel"));
    setWindowIcon(applicationIcon());
    // The main window may be in the notification area when a dialog closes.
    setQuitOnLastWindowClosed(false);
}

bool ProgramApplication::notify(QObject *receiver, QEvent *event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception &error) {
        if (onError)
            onError(error);
        return false;
    }
}

} // namespace sondrel
