#include "automation/qt_tray_icon.h"

#include "automation/frmTrayIcon.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

std::vector<int> codesOf(const std::vector<QSystemTrayIcon::ActivationReason> &reasons)
{
    QtTrayIcon tray;
    std::vector<int> codes;
    QObject::connect(&tray, &TrayIcon::OnIcon, [&](qint16 code) { codes.push_back(code); });
    for (const auto reason : reasons)
        tray.pass(reason);
    return codes;
}

} // namespace

TEST(NotificationArea, tellsADoubleClickAsFourEvents)
{
    EXPECT_EQ(codesOf({QSystemTrayIcon::Trigger, QSystemTrayIcon::DoubleClick}), (std::vector{1, 2, 3, 2}));
}

TEST(NotificationArea, tellsARightClickAsTwoEvents)
{
    EXPECT_EQ(codesOf({QSystemTrayIcon::Context}), (std::vector{4, 5}));
}

TEST(NotificationArea, passesOverOtherButtons)
{
    EXPECT_TRUE(codesOf({QSystemTrayIcon::MiddleClick, QSystemTrayIcon::Unknown}).empty());
}

TEST(NotificationArea, showsTheMenuAndTellsWhatWasChosen)
{
    QtTrayIcon tray;
    tray.setMenu(frmTrayIcon::mnuPopup());
    const QList<QAction *> items = tray.menu().actions();
    ASSERT_EQ(items.size(), 4);
    EXPECT_EQ(items[0]->text(), u"O&pen"_s);
    EXPECT_EQ(items[1]->text(), u"&About Marovia Sondrel"_s);
    EXPECT_TRUE(items[2]->isSeparator());
    EXPECT_EQ(items[3]->text(), u"&Exit"_s);
    EXPECT_EQ(tray.menu().defaultAction(), items[1]);
    std::vector<int> chosen;
    QObject::connect(&tray, &TrayIcon::chosen, [&](int index) { chosen.push_back(index); });
    for (const int number : {0, 1, 3})
        items[number]->trigger();
    EXPECT_EQ(chosen, (std::vector{1, 2, 4}));
}

TEST(NotificationArea, popsItsMenuUpOnce)
{
    QtTrayIcon tray;
    tray.setMenu(frmTrayIcon::mnuPopup());
    const QSignalSpy shown(&tray.menu(), &QMenu::aboutToShow);
    tray.CallPopupMenu();
    tray.CallPopupMenu();
    EXPECT_EQ(shown.size(), 1);
    EXPECT_TRUE(tray.menu().isVisible());
    tray.menu().close();
}

TEST(NotificationArea, isMissingWithoutADesktop)
{
    QtTrayIcon tray;
    tray.Icon = u"marovia-sondrel"_s;
    tray.Add();
    tray.Modify();
    EXPECT_FALSE(tray.isAvailable());
    EXPECT_FALSE(tray.knowsDoubleClick());
    tray.Delete();
}
