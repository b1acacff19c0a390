#include "shell/frmSplash.h"

#include "tests/support/world.h"

#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class Splash : public testing::Test
{
protected:
    QString text(const frmSplash &splash, const QString &name) const
    {
        return splash.findChild<QLabel *>(name)->text();
    }

    World world;
};

} // namespace

TEST_F(Splash, namesProgramVersionAndVendor)
{
    const frmSplash splash(world.app);
    EXPECT_EQ(text(splash, u"lblTitle"_s), u"Marovia Sondrel V4"_s);
    EXPECT_EQ(text(splash, u"lblVersion"_s), u"Version: 4.0.00"_s);
    EXPECT_EQ(text(splash, u"lblDealer"_s), u"Kestrune Pty Ltd"_s);
}

TEST_F(Splash, showsTheMakersLogo)
{
    frmSplash splash(world.app);
    splash.show();
    EXPECT_FALSE(splash.findChild<QLabel *>(u"lblHideLogo"_s)->isVisible());
}

TEST_F(Splash, coversTheMakersLogoInADealersCopy)
{
    world.write(u"../system/orbelsoft.ini"_s, "[Dealer]\r\nName=<b>Dealer</b>\r\nWebSite=order.example\r\n");
    frmSplash splash(world.app);
    splash.show();
    EXPECT_EQ(text(splash, u"lblDealer"_s), u"<b>Dealer</b>"_s);
    EXPECT_EQ(splash.findChild<QLabel *>(u"lblDealer"_s)->textFormat(), Qt::PlainText);
    const auto *patch = splash.findChild<QLabel *>(u"lblHideLogo"_s);
    EXPECT_TRUE(patch->isVisible());
    EXPECT_TRUE(patch->autoFillBackground());
    EXPECT_TRUE(patch->geometry().contains(splash.findChild<QLabel *>(u"lblLogo"_s)->geometry()));
}

TEST_F(Splash, standsAboveAllWithoutTakingTheFocus)
{
    const frmSplash splash(world.app);
    EXPECT_TRUE(splash.windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_TRUE(splash.windowFlags() & Qt::WindowDoesNotAcceptFocus);
    EXPECT_TRUE(splash.testAttribute(Qt::WA_ShowWithoutActivating));
}

TEST_F(Splash, standsInTheMiddle)
{
    frmSplash splash(world.app);
    splash.show();
    const QRect screen = splash.screen()->geometry();
    EXPECT_NEAR(splash.geometry().center().x(), screen.center().x(), 1);
    EXPECT_TRUE(screen.contains(splash.geometry()));
}

TEST_F(Splash, endsAfterTwoAndAHalfSeconds)
{
    frmSplash splash(world.app);
    const QSignalSpy finished(&splash, &frmSplash::finished);
    world.desktop.beginWait();
    world.clock.advance(2499);
    EXPECT_EQ(finished.size(), 0);
    EXPECT_EQ(world.desktop.resets, 0);
    world.clock.advance(1);
    EXPECT_EQ(finished.size(), 1);
    EXPECT_EQ(world.desktop.resets, 1);
    world.clock.advance(10000);
    EXPECT_EQ(finished.size(), 1);
}
