#include "shell/qt_desktop.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QMessageBox>
#include <QUrl>

namespace sondrel {

namespace {

QMessageBox::Icon qtIcon(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Question:
        return QMessageBox::Question;
    case MessageIcon::Exclamation:
        return QMessageBox::Warning;
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    case MessageIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

} // namespace

MessageAnswer QtDesktop::showMessage(const MessageBox &box)
{
    const bool asks = box.buttons == MessageButtons::YesNo;
    QMessageBox dialog(qtIcon(box.icon), box.title, box.text,
                       asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok, QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("messageBox"));
    // Texts hold names and addresses of strangers; none of it is markup.
    dialog.setTextFormat(Qt::PlainText);
    const int answer = dialog.exec();
    if (!asks)
        return MessageAnswer::Ok;
    return answer == QMessageBox::Yes ? MessageAnswer::Yes : MessageAnswer::No;
}

void QtDesktop::beginWait()
{
    ++m_waiting;
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

void QtDesktop::endWait()
{
    if (m_waiting == 0)
        return; // the pointer was reset meanwhile
    --m_waiting;
    QApplication::restoreOverrideCursor();
}

void QtDesktop::resetPointer()
{
    while (m_waiting > 0)
        endWait();
}

void QtDesktop::beep()
{
    QApplication::beep();
}

bool QtDesktop::open(const QString &target, ShowMode)
{
    // How large the window comes up is the opened program's own affair here.
    const QFileInfo file(target);
    const QUrl url = file.isAbsolute() ? QUrl::fromLocalFile(target) : QUrl::fromUserInput(target);
    return url.isValid() && QDesktopServices::openUrl(url);
}

void QtDesktop::runPendingEvents()
{
    QApplication::processEvents();
}

} // namespace sondrel
