// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QObject>
#include <QString>

#include <vector>

namespace sondrel {

/// One entry of the icon's menu; a separator has no caption.
struct TrayMenuItem
{
    int index = 0;
    QString caption;

    bool operator==(const TrayMenuItem &) const = default;
};

/// The entries, and the index of the one that stands out.
struct TrayMenu
{
    std::vector<TrayMenuItem> items;
    int defaultItem = 0;

    bool operator==(const TrayMenu &) const = default;
};

/// The door to the desktop's notification area: one icon with a tip and a menu, and the clicks on it.
class TrayIcon : public QObject
{
    Q_OBJECT

public:
    /// What a click is told as.
    enum Code : qint16 {
        LeftDown = 1,
        LeftUp = 2,
        LeftDoubleClick = 3,
        RightDown = 4,
        RightUp = 5,
        RightDoubleClick = 6
    };
    /// The number of a click among mouse messages is this and its code.
    static constexpr int MouseMessages = 0x200;
    static constexpr int TwipsPerPixel = 15;

    /// Name of a drawing of ours.
    QString Icon;
    /// Shown up to 63 characters.
    QString ToolTipText;

    /// Whether the desktop has a notification area now.
    virtual bool isAvailable() const = 0;
    /// False where the desktop tells single clicks only.
    virtual bool knowsDoubleClick() const = 0;
    /// The menu of the icon; some desktops show it by themselves. chosen tells what was chosen.
    virtual void setMenu(const TrayMenu &menu) = 0;
    /// Shows the menu at the pointer; it closes when the user clicks elsewhere.
    virtual void CallPopupMenu() = 0;

    void Add() { show(shownTip()); }
    void Modify() { change(shownTip()); }
    void Delete() { remove(); }

    /// A mouse event of the icon: a message of the notification area comes with its number in twips as x, and
    /// 0 as y. Others are real mouse events, and ignored.
    void CallEvent(int x, int y);

Q_SIGNALS:
    /// A Code.
    void OnIcon(qint16 code);
    /// Index of a menu's entry.
    void chosen(int index);

protected:
    virtual void show(const QString &tip) = 0;
    virtual void change(const QString &tip) = 0;
    virtual void remove() = 0;

private:
    QString shownTip() const;
};

} // namespace sondrel
