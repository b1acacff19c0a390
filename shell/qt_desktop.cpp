#include "shell/qt_desktop.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QMimeDatabase>
#include <QProcess>
#include <QUrl>

#include <algorithm>
#include <utility>

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

// "Text Files (*.txt)|*.txt|..." to "Text Files (*.txt)", ...: the toolkit reads the patterns from the name.
QStringList qtFilters(const QString &pairs)
{
    const QStringList parts = pairs.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString patterns =
            QString(parts[i + 1]).replace(u';', u' ').replace(QStringLiteral("*.*"), QStringLiteral("*"));
        const qsizetype bracket = parts[i].indexOf(u'(');
        const QString name = bracket < 0 ? parts[i] : parts[i].first(bracket).trimmed();
        filters.append(name + QStringLiteral(" (") + patterns + u')');
    }
    return filters;
}

} // namespace

MessageAnswer QtDesktop::showMessage(const MessageBox &box)
{
    const bool asks = box.buttons == MessageButtons::YesNo;
    QMessageBox dialog(qtIcon(box.icon), box.title, box.text,
                       asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok,
                       QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("messageBox"));
    // Texts hold names and addresses of strangers; none of it is markup.
    dialog.setTextFormat(Qt::PlainText);
    pauseWaits();
    const int answer = dialog.exec();
    resumeWaits();
    if (!asks)
        return MessageAnswer::Ok;
    return answer == QMessageBox::Yes ? MessageAnswer::Yes : MessageAnswer::No;
}

QString QtDesktop::askText(const TextQuestion &question)
{
    QInputDialog dialog(QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("textDialog"));
    dialog.setWindowTitle(question.title);
    dialog.setLabelText(question.prompt);
    // Prompts are no markup.
    for (QLabel *label : dialog.findChildren<QLabel *>())
        label->setTextFormat(Qt::PlainText);
    return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
}

QString QtDesktop::pickFile(FileQuestion &question)
{
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("fileDialog"));
    dialog.setDirectory(question.folder);
    const QStringList filters = qtFilters(question.filter);
    dialog.setNameFilters(filters);
    if (question.filterIndex >= 1 && question.filterIndex <= filters.size())
        dialog.selectNameFilter(filters[question.filterIndex - 1]);
    const bool saves = question.kind == FilePick::Save;
    dialog.setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(saves ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (saves) {
        dialog.selectFile(question.name);
        dialog.setDefaultSuffix(QStringLiteral("txt"));
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    question.filterIndex = static_cast<int>(filters.indexOf(dialog.selectedNameFilter())) + 1;
    return dialog.selectedFiles().first();
}

void QtDesktop::beginWait()
{
    ++m_waiting;
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

void QtDesktop::endWait()
{
    if (m_waiting == 0) {
        // Reset meanwhile, or begun before a box that is still there.
        m_paused = std::max(0, m_paused - 1);
        return;
    }
    --m_waiting;
    QApplication::restoreOverrideCursor();
}

void QtDesktop::resetPointer()
{
    m_paused = 0;
    while (m_waiting > 0)
        endWait();
}

// Who has to answer is not waiting for the program.
void QtDesktop::pauseWaits()
{
    const int waits = m_waiting;
    while (m_waiting > 0)
        endWait();
    m_paused += waits;
}

void QtDesktop::resumeWaits()
{
    for (int waits = std::exchange(m_paused, 0); waits > 0; --waits)
        beginWait();
}

void QtDesktop::beep()
{
    QApplication::beep();
}

bool QtDesktop::open(const QString &target, ShowMode)
{
    // How large the window comes up is the opened program's own affair here.
    QString address = target;
    // Callers put "http://" in front of whatever does not hold it, secure addresses included.
    if (const auto doubled = QStringLiteral("http://https://");
        address.startsWith(doubled, Qt::CaseInsensitive))
        address.remove(0, 7);
    const QFileInfo file(address);
    const QUrl url = file.isAbsolute() ? QUrl::fromLocalFile(address) : QUrl::fromUserInput(address);
    return url.isValid() && QDesktopServices::openUrl(url);
}

bool QtDesktop::canOpen(const QString &file)
{
    QProcess question;
    question.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"),
                                                QMimeDatabase().mimeTypeForFile(file).name()});
    // It asks the desktop in turn; one that has not answered by then has nothing to say.
    constexpr int Patience = 5000;
    return question.waitForFinished(Patience) && !question.readAllStandardOutput().trimmed().isEmpty();
}

void QtDesktop::runPendingEvents()
{
    QApplication::processEvents();
}

} // namespace sondrel
