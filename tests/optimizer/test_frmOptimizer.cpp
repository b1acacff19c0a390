#include "optimizer/frmOptimizer.h"

#include "tests/shell/dialog_test.h"
#include "tests/support/bad_files.h"

#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const QString Site = u"http://site.example/"_s;

class OptimizerDialog : public testing::Test
{
protected:
    OptimizerDialog() : dialog(world.app) {}

    void open() { dialog.show(); }
    QComboBox &site() { return control<QComboBox>(dialog, u"cboSiteURL"_s); }
    QPushButton &renovator() { return control<QPushButton>(dialog, u"cmdRenovator"_s); }
    QPushButton &closeButton() { return control<QPushButton>(dialog, u"cmdClose"_s); }
    QProgressBar &progress() { return control<QProgressBar>(dialog, u"prgProgress"_s); }
    QString status() { return control<QStatusBar>(dialog, u"StatusBar1"_s).currentMessage(); }
    void start(const QString &text)
    {
        type(dialog, u"cboSiteURL"_s, text);
        click(dialog, u"cmdRenovator"_s);
    }
    // Caption, and which of the two buttons can be pressed.
    QString buttons()
    {
        return renovator().text() + (renovator().isEnabled() ? u" on"_s : u" off"_s) +
               (closeButton().isEnabled() ? u", close on"_s : u", close off"_s);
    }
    QString remembered()
    {
        QStringList list;
        for (int entry = 0; entry < site().count(); ++entry)
            list.append(site().itemText(entry));
        return list.join(u' ');
    }
    void expectBox(const QString &title, const QString &text, MessageIcon icon = MessageIcon::Information)
    {
        ASSERT_EQ(world.desktop.boxes.size(), 1U);
        EXPECT_EQ(world.desktop.boxes[0], (MessageBox{title, text, icon, MessageButtons::Ok}));
    }

    World world;
    frmOptimizer dialog;
};

const QString Idle = u"&Optimizer on, close on"_s;
const QString Fetching = u"&Cancel on, close off"_s;
const QString Busy = u"&Optimizer off, close off"_s;

TEST_F(OptimizerDialog, comesUpIdle)
{
    open();
    EXPECT_EQ(dialog.windowTitle(), u"Optimizer"_s);
    EXPECT_EQ(buttons(), Idle);
    EXPECT_EQ(closeButton().text(), u"&Close"_s);
    EXPECT_EQ(site().currentText(), QString());
    EXPECT_EQ(status(), QString());
    EXPECT_EQ(progress().value(), 0);
    EXPECT_EQ(progress().maximum(), 17);
    EXPECT_TRUE(renovator().isDefault());
}

TEST_F(OptimizerDialog, asksForAnAddress)
{
    open();
    click(dialog, u"cmdRenovator"_s);
    expectBox(
        u"Optimizer"_s,
        u"Please enter your web site URL or a valid local HTML file you want to process and try again."_s);
    EXPECT_EQ(buttons(), Idle);
}

TEST_F(OptimizerDialog, fetchesAnAddressAndOpensItsReport)
{
    open();
    start(Site);
    EXPECT_EQ(buttons(), Fetching);
    EXPECT_EQ(status(), u"Please wait while connecting to : http://site.example/ ...."_s);
    EXPECT_EQ(world.desktop.waiting, 1);
    ASSERT_EQ(world.http.requests.size(), 1U);
    EXPECT_EQ(world.http.requests[0].url, Site);
    world.http.answer(0, "<title>t</title>", 404);
    EXPECT_EQ(buttons(), Idle);
    EXPECT_EQ(status(), u"Done"_s);
    EXPECT_EQ(progress().value(), 0);
    EXPECT_EQ(world.desktop.waiting, 0);
    ASSERT_EQ(world.desktop.opened.size(), 1U);
    EXPECT_EQ(world.desktop.opened[0].first, world.path(u"Optimizer/site.example_.html"_s));
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(OptimizerDialog, isStartedByEnter)
{
    open();
    type(dialog, u"cboSiteURL"_s, u"site.example"_s);
    QTest::keyClick(&site(), Qt::Key_Return);
    EXPECT_EQ(world.http.requests.size(), 1U);
}

TEST_F(OptimizerDialog, showsHowFarTheRunIs)
{
    open();
    QStringList seen;
    world.desktop.onPendingEvents = [&] {
        seen.append(QString::number(progress().value()));
        EXPECT_EQ(buttons(), Fetching);
        EXPECT_EQ(world.desktop.waiting, 1);
    };
    start(Site);
    world.http.answer(0, "<p>");
    EXPECT_EQ(seen.join(u' '), u"3 5 7 8 9 10 11 12 13 14 15 16"_s);
}

TEST_F(OptimizerDialog, remembersAddresses)
{
    world.write(u"dmlist.dat"_s, "[Optimizer]\r\n1=old.example\r\n2=older.example\r\n");
    open();
    EXPECT_EQ(remembered(), u"old.example older.example"_s);
    start(u"new.example"_s);
    EXPECT_EQ(remembered(), u"new.example old.example older.example"_s);
    EXPECT_EQ(site().currentText(), u"new.example"_s);
    world.http.answer(0, "<p>");
    start(u"OLD.example"_s);
    EXPECT_EQ(remembered(), u"new.example old.example older.example"_s);
    EXPECT_EQ(site().currentText(), u"OLD.example"_s);
    world.http.answer(1, "<p>");
    click(dialog, u"cmdClose"_s);
    EXPECT_EQ(world.read(u"dmlist.dat"_s),
              "[Optimizer]\r\n1=new.example\r\n2=old.example\r\n3=older.example\r\n");
}

TEST_F(OptimizerDialog, readsALocalFileWithoutRememberingIt)
{
    world.write(u"page.html"_s, "<title>f\xFCr</title>");
    open();
    QString during;
    world.desktop.onPendingEvents = [&] { during = buttons(); };
    start(world.path(u"page.html"_s));
    EXPECT_EQ(during, Busy);
    EXPECT_EQ(buttons(), Idle);
    EXPECT_EQ(remembered(), QString());
    EXPECT_TRUE(world.http.requests.empty());
    EXPECT_TRUE(world.read(u"Optimizer/page.html.html"_s).contains("f\xFCr"));
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(OptimizerDialog, refusesWhatIsNoFile)
{
    putFolder(world, u"folder"_s);
    open();
    for (const QString &path : {world.path(u"none.html"_s), world.path(u"folder"_s), u"C:\\none.html"_s}) {
        world.desktop.boxes.clear();
        start(path);
        expectBox(
            u"Optimizer"_s,
            u"Invalid path or file name for your local HTML file, please open a valid HTML file and try again."_s);
        EXPECT_EQ(buttons(), Idle);
    }
}

TEST_F(OptimizerDialog, speaksOfARunNoMoreBehindTheNextPress)
{
    world.write(u"page.html"_s, "<p>");
    open();
    start(world.path(u"page.html"_s));
    EXPECT_EQ(status(), u"Done"_s);
    start(world.path(u"none.html"_s));
    EXPECT_EQ(status(), QString());
}

TEST_F(OptimizerDialog, staysBusyBehindAnEmptyFile)
{
    world.write(u"empty.html"_s, "");
    QSignalSpy unloaded(&dialog, &frmOptimizer::Unloaded);
    open();
    start(world.path(u"empty.html"_s));
    expectBox(u"Optimizer"_s,
              u"No document found from HTML file, please check your HTML file and try again."_s);
    EXPECT_EQ(buttons(), Busy);
    EXPECT_EQ(world.desktop.waiting, 1);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible());
    dialog.close();
    EXPECT_EQ(unloaded.size(), 1);
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(OptimizerDialog, canBeUsedAgainBehindAnEmptyFileOnceTheTextChanges)
{
    world.write(u"empty.html"_s, "");
    open();
    start(world.path(u"empty.html"_s));
    type(dialog, u"cboSiteURL"_s, u"a"_s);
    EXPECT_EQ(buttons(), u"&Optimizer on, close off"_s);
}

TEST_F(OptimizerDialog, tellsOfAFileThatCannotBeRead)
{
    putUnreadable(world, u"closed.html"_s);
    open();
    const QString text = dialog.getFileData(world.path(u"closed.html"_s));
    EXPECT_EQ(text, QString());
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0].title, u"Error"_s);
    EXPECT_TRUE(world.desktop.boxes[0].text.startsWith(u"getFileData_Error: "_s));
}

TEST_F(OptimizerDialog, tellsOfAFileThatIsTooLarge)
{
    world.write(u"large.html"_s, "x");
    QFile::resize(world.path(u"large.html"_s), qint64(100) << 20);
    open();
    start(world.path(u"large.html"_s));
    ASSERT_EQ(world.desktop.boxes.size(), 2U);
    EXPECT_EQ(world.desktop.boxes[0].text, u"getFileData_Error: The file "_s + world.path(u"large.html"_s) +
                                               u" is larger than 32 MiB, too large for a web page"_s);
    EXPECT_TRUE(world.desktop.boxes[1].text.startsWith(u"No document found"_s));
}

TEST_F(OptimizerDialog, cancelsAFetch)
{
    open();
    start(Site);
    click(dialog, u"cmdRenovator"_s);
    EXPECT_EQ(world.http.pending(), 0);
    EXPECT_EQ(buttons(), u"&Optimizer on, close off"_s); // closing waits for the end of a run
    EXPECT_EQ(world.desktop.waiting, 0);
    EXPECT_TRUE(world.desktop.boxes.empty());
    click(dialog, u"cmdRenovator"_s);
    world.http.answer(1, "<p>");
    EXPECT_EQ(buttons(), Idle);
}

TEST_F(OptimizerDialog, cancelsAFetchByEscape)
{
    open();
    start(Site);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_EQ(world.http.pending(), 0);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(renovator().text(), u"&Optimizer"_s);
}

TEST_F(OptimizerDialog, showsTheWayOutByThePointer)
{
    open();
    start(Site);
    QEnterEvent enter({}, {}, {});
    QApplication::sendEvent(&renovator(), &enter);
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(OptimizerDialog, asksForAnEmptyPageFourTimesAndStaysAsItIs)
{
    open();
    start(Site);
    for (std::size_t request = 0; request < 4; ++request) {
        ASSERT_EQ(world.http.requests.size(), request + 1);
        world.http.answer(request, {});
        world.clock.advance(100);
    }
    expectBox(u"Optimizer"_s,
              u"No document found from HTML file, please check your HTML file and try again."_s);
    EXPECT_EQ(buttons(), Fetching);
}

TEST_F(OptimizerDialog, takesTheChosenFile)
{
    open();
    world.desktop.files = {u"/home/me/page.html"_s};
    click(dialog, u"cmdFileLocation"_s);
    ASSERT_EQ(world.desktop.questions.size(), 1U);
    EXPECT_EQ(world.desktop.questions[0].filter,
              u"HTML Files (*.html;*.htm)|*.htm;*.html|Text Files (*.txt)|*.txt|All Files (*.*)|*.*"_s);
    EXPECT_EQ(site().currentText(), u"/home/me/page.html"_s);
    EXPECT_TRUE(dialog.isEnabled());
    click(dialog, u"cmdFileLocation"_s);
    EXPECT_EQ(site().currentText(), u"/home/me/page.html"_s);
}

TEST_F(OptimizerDialog, resetsItselfWhenARunFails)
{
    QSignalSpy cleared(&dialog, &frmOptimizer::statusCleared);
    open();
    start(Site);
    world.http.answer(0, "<title>" + QByteArray(32768, 't') + "</title>");
    expectBox(u"Optimizer Error"_s, u"Module: Optimizer\r\nOverflow\r\nFile: "_s);
    EXPECT_EQ(buttons(), Idle);
    EXPECT_EQ(progress().value(), 0);
    EXPECT_EQ(world.desktop.waiting, 0);
    EXPECT_EQ(cleared.size(), 1);
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(OptimizerDialog, unloadsItselfBehindARunWhenItWasClosed)
{
    QSignalSpy unloaded(&dialog, &frmOptimizer::Unloaded);
    QSignalSpy cleared(&dialog, &frmOptimizer::statusCleared);
    open();
    world.desktop.onPendingEvents = [&] {
        dialog.close();
        EXPECT_EQ(unloaded.size(), 0);
    };
    start(Site);
    world.http.answer(0, "<p>");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(unloaded.size(), 1);
    EXPECT_EQ(cleared.size(), 1);
    EXPECT_EQ(world.http.controlsAlive, 0);
    EXPECT_EQ(world.desktop.opened.size(), 1U);
}

TEST_F(OptimizerDialog, takesNoOtherPressDuringARun)
{
    open();
    world.desktop.onPendingEvents = [&] { Q_EMIT renovator().clicked(); };
    start(Site);
    world.http.answer(0, "<p>");
    EXPECT_EQ(world.http.requests.size(), 1U);
    EXPECT_EQ(world.desktop.opened.size(), 1U);
    EXPECT_EQ(buttons(), Idle);
}

TEST_F(OptimizerDialog, letsGoOfAFetchWhenItIsClosed)
{
    QSignalSpy unloaded(&dialog, &frmOptimizer::Unloaded);
    open();
    start(Site);
    dialog.close();
    EXPECT_EQ(unloaded.size(), 1);
    EXPECT_EQ(world.http.controlsAlive, 0);
    EXPECT_EQ(world.desktop.waiting, 0);
    EXPECT_EQ(world.read(u"dmlist.dat"_s), "[Optimizer]\r\n1=http://site.example/\r\n");
}

TEST_F(OptimizerDialog, logsWhenItCannotConnect)
{
    world.http.failControl = u"no socket"_s;
    open();
    EXPECT_EQ(world.takeLog(), u"frmOptimizer_Connect Error:  no socket"_s);
    start(Site);
    EXPECT_EQ(world.takeLog(), u"frmOptimizer_Connect Error:  There is no connection"_s);
    click(dialog, u"cmdRenovator"_s);
    EXPECT_EQ(renovator().text(), u"&Optimizer"_s);
}

TEST_F(OptimizerDialog, survivesMessagesThatCannotBeShown)
{
    open();
    world.desktop.failing = true;
    click(dialog, u"cmdRenovator"_s);
    EXPECT_EQ(world.takeLog(), u"Optimizer_Error: The message cannot be shown The message cannot be shown"_s);
    EXPECT_EQ(buttons(), Idle);
}

} // namespace
} // namespace sondrel
