#include "engines/frmUpdateEngines.h"

#include "tests/shell/dialog_test.h"
#include "tests/support/bad_files.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const auto DataFile = u"../system/qlteng4.dat"_s;

const auto ProxyMessage =
    u"Error occur when update engine data. If you are connected to the internet through a proxy server, "
    "please enter your correct 'Proxy Server' address in the 'File/Configuration' window then try again. "_s;

class UpdateEngines : public testing::Test
{
protected:
    UpdateEngines() : dialog(world.app)
    {
        world.writeEngineData("[Markets] old");
        dialog.show();
    }

    QString text(const QString &label) { return control<QLabel>(dialog, label).text(); }
    QString message() { return text(u"lblMessage"_s); }
    bool isRed()
    {
        const QColor colour = control<QLabel>(dialog, u"lblMessage"_s).palette().color(QPalette::WindowText);
        return colour == QColor(Qt::red);
    }
    QString caption(const QString &button) { return control<QPushButton>(dialog, button).text(); }
    int progress() { return control<QProgressBar>(dialog, u"pbrUpdate"_s).value(); }
    void start() { click(dialog, u"cmdStart"_s); }
    void answer(const QByteArray &body) { world.http.answer(world.http.requests.size() - 1, body); }
    // Captions of both buttons, a "-" in front of a disabled one.
    QString buttons()
    {
        QStringList states;
        for (const QString &name : {u"cmdStart"_s, u"cmdClose"_s})
            states.append((isEnabled(dialog, name) ? QString() : u"-"_s) + caption(name));
        return states.join(u' ');
    }

    World world;
    frmUpdateEngines dialog;
};

TEST_F(UpdateEngines, comesUpIdle)
{
    EXPECT_EQ(dialog.windowTitle(), u"Update Engine Data"_s);
    EXPECT_EQ(buttons(), u"Start Close"_s);
    EXPECT_EQ(control<QProgressBar>(dialog, u"pbrUpdate"_s).maximum(), 3);
    EXPECT_EQ(progress(), 0);
    EXPECT_TRUE(control<QLabel>(dialog, u"lblStatus"_s).isHidden());
    EXPECT_TRUE(world.http.requests.empty());
}

TEST_F(UpdateEngines, isClosedWhileIdle)
{
    click(dialog, u"cmdClose"_s);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(UpdateEngines, fetchesWhenStarted)
{
    start();
    ASSERT_EQ(world.http.requests.size(), 1U);
    EXPECT_EQ(world.http.requests[0].url, world.app.deployment.EngineDataHost + u"/enginedata/qlteng4.dat"_s);
    EXPECT_FALSE(world.http.requests[0].post);
    EXPECT_EQ(buttons(), u"Stop -Close"_s);
    EXPECT_EQ(progress(), 1);
    EXPECT_EQ(message(), u"Please wait while updating your engine data. It will take a few minutes depending "
                         "on your Internet connection ......."_s);
    EXPECT_FALSE(isRed());
    EXPECT_EQ(text(u"lblStatus"_s), u"Connecting to web server ....."_s);
    EXPECT_TRUE(control<QLabel>(dialog, u"lblStatus"_s).isVisible());
    EXPECT_EQ(world.desktop.pendingEventRuns, 1);
    EXPECT_TRUE(dialog.isRunning());
}

TEST_F(UpdateEngines, replacesTheFile)
{
    start();
    answer("[Markets]\r\n1=Global\r\n");
    EXPECT_EQ(world.read(DataFile), "[Markets]\r\n1=Global\r\n\r\n");
    EXPECT_EQ(world.read(DataFile + u".bak"_s), "[Markets] old");
    EXPECT_EQ(buttons(), u"-Start Finish"_s);
    EXPECT_EQ(progress(), 3);
    EXPECT_EQ(message(),
              u"The Engine data file has been downloaded successfully.\n\nPlease make sure to update "
              "your engine data file frequently at least once per month by clicking the 'File/Update "
              "Engine Data' menu item from the menu bar."_s);
    EXPECT_FALSE(isRed());
    EXPECT_TRUE(control<QLabel>(dialog, u"lblStatus"_s).isHidden());
    EXPECT_EQ(world.desktop.beeps, 1);
    EXPECT_EQ(world.takeLog(), QString());
    click(dialog, u"cmdClose"_s);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(UpdateEngines, takesMarketsInLowerCase)
{
    start();
    answer("[markets]\n");
    EXPECT_EQ(world.read(DataFile), "[markets]\n\r\n");
}

TEST_F(UpdateEngines, refusesAnErrorPage)
{
    start();
    answer("<html><body>Not found</body></html>");
    EXPECT_EQ(message(), ProxyMessage);
    EXPECT_TRUE(isRed());
    EXPECT_EQ(world.read(DataFile), "[Markets] old");
    EXPECT_FALSE(world.has(DataFile + u".bak"_s));
    EXPECT_EQ(buttons(), u"Start Finish"_s);
    EXPECT_EQ(progress(), 1);
    EXPECT_EQ(world.desktop.beeps, 1);
}

TEST_F(UpdateEngines, refusesAnAnswerThatStaysEmpty)
{
    start();
    for (int attempt = 0; attempt < 4; ++attempt) {
        answer({});
        world.clock.advance(100);
    }
    EXPECT_EQ(world.http.requests.size(), 4U);
    EXPECT_EQ(message(), ProxyMessage);
    EXPECT_EQ(buttons(), u"Start Finish"_s);
}

TEST_F(UpdateEngines, startsAgainAfterAFailure)
{
    start();
    answer("no");
    start();
    EXPECT_EQ(buttons(), u"Stop -Finish"_s);
    EXPECT_FALSE(isRed());
    EXPECT_EQ(world.http.controlsAlive, 1);
    answer("[Markets] new");
    EXPECT_EQ(world.read(DataFile), "[Markets] new\r\n");
}

TEST_F(UpdateEngines, tellsOfAFileThatCannotBeWritten)
{
    putFolder(world, DataFile + u".bak"_s);
    start();
    answer("[Markets] new");
    EXPECT_TRUE(message().startsWith(
        u"The Engine data file could not be written, so the old one stays in use.\n\n"_s));
    EXPECT_TRUE(isRed());
    EXPECT_EQ(world.read(DataFile), "[Markets] old");
    EXPECT_TRUE(world.takeLog().startsWith(u"frmUpdateEngines_ProcessData:  "_s));
    EXPECT_EQ(buttons(), u"Start Finish"_s);
    EXPECT_EQ(progress(), 2);
}

TEST_F(UpdateEngines, stopsWithTheOldFileInPlace)
{
    start();
    world.http.requests[0].control->hangsOnAbort = true;
    start();
    EXPECT_EQ(buttons(), u"Stop -Close"_s);
    EXPECT_EQ(world.desktop.waiting, 1);
    answer("[Markets] half");
    EXPECT_EQ(buttons(), u"Start Finish"_s);
    EXPECT_EQ(world.desktop.waiting, 0);
    EXPECT_EQ(world.read(DataFile), "[Markets] old");
    EXPECT_FALSE(dialog.isRunning());
}

TEST_F(UpdateEngines, stopsWhileItWaitsForTheNextTry)
{
    start();
    answer({});
    start();
    EXPECT_EQ(buttons(), u"Start Finish"_s);
    world.clock.advance(1000);
    EXPECT_EQ(world.http.requests.size(), 1U);
}

TEST_F(UpdateEngines, stopsATransferThatNeverBegan)
{
    world.http.failStart = u"No network"_s;
    start();
    EXPECT_EQ(buttons(), u"Stop -Close"_s);
    start();
    EXPECT_EQ(buttons(), u"Start Finish"_s);
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(UpdateEngines, fetchesNothingWhenItIsStoppedAtOnce)
{
    world.desktop.onPendingEvents = [this] {
        world.desktop.onPendingEvents = nullptr;
        click(dialog, u"cmdStart"_s);
    };
    start();
    EXPECT_TRUE(world.http.requests.empty());
    EXPECT_EQ(buttons(), u"Start Finish"_s);
}

TEST_F(UpdateEngines, refusesItsCloseBoxWhileItRuns)
{
    start();
    dialog.close();
    EXPECT_TRUE(dialog.isVisible());
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible());
    answer("no");
    dialog.close();
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(UpdateEngines, reportsAStartThatFails)
{
    world.http.failControl = u"No control"_s;
    start();
    EXPECT_EQ(world.desktop.boxes,
              (std::vector{
                  MessageBox{u"Update Engine Data"_s,
                             u"Error occur while update Engine Data file. Please report this error to '"_s +
                                 world.app.deployment.SupportEmail + u"' for help."_s}}));
    EXPECT_EQ(world.takeLog(), u"StatsUpdate_Error: No control"_s);
    EXPECT_EQ(buttons(), u"Start Finish"_s);
}

TEST_F(UpdateEngines, reportsAStopThatFails)
{
    start();
    world.http.failAbort = u"No abort"_s;
    start();
    EXPECT_EQ(world.takeLog(), u"StatsUpdate_Error: No abort"_s);
    EXPECT_EQ(world.desktop.boxes.size(), 1U);
    world.http.failAbort.clear();
}

TEST_F(UpdateEngines, closesItselfWhenAutomatic)
{
    dialog.AutoUpdate();
    answer("[Markets] new");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(world.read(DataFile), "[Markets] new\r\n");
    EXPECT_EQ(world.desktop.beeps, 0);
}

TEST_F(UpdateEngines, closesItselfWhenAutomaticAndRefused)
{
    dialog.AutoUpdate();
    answer("no");
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(UpdateEngines, keepsItsFailureReadableInTheDark)
{
    start();
    answer("no");
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(40, 40, 40));
    dark.setColor(QPalette::WindowText, Qt::white);
    dialog.setPalette(dark);
    const QColor colour = control<QLabel>(dialog, u"lblMessage"_s).palette().color(QPalette::WindowText);
    EXPECT_EQ(colour.red(), 255);
    EXPECT_GT(colour.green(), 64);
    EXPECT_LT(colour.green(), 192);
}

TEST(UpdateEnginesEnd, releasesTheTransfer)
{
    World world;
    {
        frmUpdateEngines dialog(world.app);
        dialog.show();
        dialog.DoStart();
        EXPECT_EQ(world.http.pending(), 1);
    }
    EXPECT_EQ(world.http.controlsAlive, 0);
}

} // namespace
} // namespace sondrel
