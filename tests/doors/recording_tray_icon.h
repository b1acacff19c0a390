// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "automation/tray_icon.h"

#include <QStringList>

namespace sondrel {

/// A notification area that keeps what it was asked for. Clicks are raised by CallEvent, or by click.
class RecordingTrayIcon final : public TrayIcon
{
public:
    /// As in "add: Title".
    QStringList calls;
    TrayMenu menu;
    bool available = true;
    bool doubleClicks = true;

    bool isAvailable() const override { return available; }
    bool knowsDoubleClick() const override { return doubleClicks; }
    void setMenu(const TrayMenu &shown) override { menu = shown; }
    void CallPopupMenu() override { calls.append(QStringLiteral("menu")); }

    void click(Code code) { CallEvent((MouseMessages + code) * TwipsPerPixel, 0); }

protected:
    void show(const QString &tip) override { calls.append(QStringLiteral("add: ") + tip); }
    void change(const QString &tip) override { calls.append(QStringLiteral("modify: ") + tip); }
    void remove() override { calls.append(QStringLiteral("delete")); }
};

} // namespace sondrel
