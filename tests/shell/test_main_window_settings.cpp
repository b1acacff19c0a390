#include "shell/main_window_settings.h"

#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class MainWindow : public testing::Test
{
protected:
    World world;
    ApplicationContext &app = world.app;

    QString stored(const QString &name) const
    {
        return world.settings.value(app.RegPreference, name).value_or(QVariant()).toString();
    }
};

} // namespace

TEST_F(MainWindow, storesItsPlaceAsNumbersInOrder)
{
    saveMainWindowSettings(app, {-8, 20, 1024, 768}, true, false);
    EXPECT_EQ(stored(u"MainFormPos"_s), u"-8,20,1024,768"_s);
    EXPECT_EQ(stored(u"URLBoxStatus"_s), u"True"_s);
}

TEST_F(MainWindow, comesBackWhereItWas)
{
    saveMainWindowSettings(app, {1, 2, 3, 4}, true, false);
    EXPECT_EQ(loadMainWindowSettings(app), (MainWindowSettings{WindowPlace{1, 2, 3, 4}, true}));
    saveMainWindowSettings(app, {5, 6, 7, 8}, false, false);
    EXPECT_EQ(loadMainWindowSettings(app), (MainWindowSettings{WindowPlace{5, 6, 7, 8}, false}));
}

TEST_F(MainWindow, storesNothingWhenItIsMinimised)
{
    saveMainWindowSettings(app, {1, 2, 3, 4}, true, false);
    saveMainWindowSettings(app, {-32000, -32000, 160, 24}, false, true);
    EXPECT_EQ(stored(u"MainFormPos"_s), u"1,2,3,4"_s);
    EXPECT_EQ(stored(u"URLBoxStatus"_s), u"True"_s);
}

TEST_F(MainWindow, hasNoPlaceAtFirst)
{
    EXPECT_EQ(loadMainWindowSettings(app), MainWindowSettings());
}

TEST_F(MainWindow, hasNoPlaceWhenTheStoredOneIsDamaged)
{
    for (const QString &text : {u"1,2,3"_s, u"1,2,3,4,5"_s, u"1,2,3,x"_s, u",,,"_s, u"1,2,3,99999999999"_s}) {
        world.setPreference(u"MainFormPos"_s, text);
        EXPECT_FALSE(loadMainWindowSettings(app).place) << qPrintable(text);
    }
}

TEST_F(MainWindow, comesUpWithoutSettings)
{
    world.settings.broken = true;
    EXPECT_EQ(loadMainWindowSettings(app), MainWindowSettings());
    saveMainWindowSettings(app, {1, 2, 3, 4}, true, false);
    EXPECT_TRUE(world.takeLog().endsWith(u"RegistryAPI_SetRegistryValue:  The settings cannot be read"_s));
}
