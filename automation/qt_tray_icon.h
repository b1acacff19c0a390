// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "automation/tray_icon.h"

#include <QMenu>
#include <QSystemTrayIcon>

namespace sondrel {

/// The desktop's notification area, by StatusNotifier or the older tray, whichever it has.
class QtTrayIcon final : public TrayIcon
{
    Q_OBJECT

public:
    QtTrayIcon();

    bool isAvailable() const override;
    bool knowsDoubleClick() const override;
    void setMenu(const TrayMenu &menu) override;
    void CallPopupMenu() override;

    /// The menu as it is shown.
    QMenu &menu() { return m_menu; }
    /// What a click as the toolkit tells it is passed on as.
    void pass(QSystemTrayIcon::ActivationReason reason);

protected:
    void show(const QString &tip) override;
    void change(const QString &tip) override;
    void remove() override;

private:
    QMenu m_menu; // outlives the icon
    QSystemTrayIcon m_icon;
};

} // namespace sondrel
