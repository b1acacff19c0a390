#include "automation/qt_tray_icon.h"

#include "shell/program_icons.h"

#include <QCursor>

namespace sondrel {

QtTrayIcon::QtTrayIcon()
{
    m_menu.setObjectName(QStringLiteral("mnuPopup"));
    connect(&m_icon, &QSystemTrayIcon::activated, this, &QtTrayIcon::pass);
    connect(&m_menu, &QMenu::triggered, this, [this](QAction *item) { Q_EMIT chosen(item->data().toInt()); });
}

bool QtTrayIcon::isAvailable() const
{
    return QSystemTrayIcon::isSystemTrayAvailable();
}

bool QtTrayIcon::knowsDoubleClick() const
{
    // StatusNotifier tells of activations alone; it does not tell where the icon is either.
    return m_icon.geometry().isValid();
}

void QtTrayIcon::setMenu(const TrayMenu &menu)
{
    m_menu.clear();
    for (const TrayMenuItem &item : menu.items) {
        QAction *action = item.caption.isEmpty() ? m_menu.addSeparator() : m_menu.addAction(item.caption);
        action->setData(item.index);
        if (item.index == menu.defaultItem)
            m_menu.setDefaultAction(action);
    }
    m_icon.setContextMenu(&m_menu);
}

void QtTrayIcon::CallPopupMenu()
{
    // Where the desktop or the toolkit has shown it already, once is enough.
    if (!m_menu.isVisible())
        m_menu.popup(QCursor::pos());
}

void QtTrayIcon::pass(QSystemTrayIcon::ActivationReason reason)
{
    const auto tell = [this](Code code) { CallEvent((MouseMessages + code) * TwipsPerPixel, 0); };
    switch (reason) {
    case QSystemTrayIcon::Trigger:
        tell(LeftDown);
        tell(LeftUp);
        break;
    case QSystemTrayIcon::DoubleClick: // the first click has been told
        tell(LeftDoubleClick);
        tell(LeftUp);
        break;
    case QSystemTrayIcon::Context:
        tell(RightDown);
        tell(RightUp);
        break;
    default:
        break;
    }
}

void QtTrayIcon::show(const QString &tip)
{
    change(tip);
    m_icon.show();
}

void QtTrayIcon::change(const QString &tip)
{
    m_icon.setIcon(Icon == u"marovia-sondrel" ? applicationIcon() : programIcon(Icon));
    m_icon.setToolTip(tip);
}

void QtTrayIcon::remove()
{
    m_icon.hide();
}

} // namespace sondrel
