#include "engines/frmEngineBuilder.h"

#include "shell/hint_tree.h"
#include "tests/shell/dialog_test.h"
#include "tests/support/bad_files.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QToolBar>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const auto File = u"Engines.dat"_s;

const QByteArray TwoEngines =
    "[Markets]\r\n1=US/Global\r\n2=Asia\r\n[US/Global]\r\n1=First\r\n[Asia]\r\n1=Second\r\n"
    "[First]\r\nEngineKey=first\r\nEngineURL =http://first.example\r\n"
    "QueryKeyword1 =/find?q=\r\nQueryKeyword2=&n=10\r\nSubmitMethod =Get\r\n"
    "ResultStartString =<ol>\r\nResultEndString =</ol>\r\nSectionstart=<li>\r\n"
    "SectionEnd=</li>\r\nbeginTitle =<b>\r\nendTitle =</b>\r\nbeginURL =href='\r\n"
    "endURL ='\r\nbeginMatches =of\r\nendMatches =</p>\r\nNextPage1 =Next\r\n"
    "[Second]\r\nEngineURL=http://second.example\r\nSubmitMethod=POST\r\n"
    "PostString=q=<KEYWORD>\r\n";

const QByteArray ResultPage = "<p>1 of 2,340</p><ol><li><b>One</b><a href='http://one.example/'></a></li>"
                              "<li><b>Caf\xc3\xa9</b><a href='http://two.example/a'></a></li></ol>"
                              "<a href='/find?q=tea&p=2'>Next</a>";

class EngineBuilderDialog : public testing::Test
{
protected:
    EngineBuilderDialog() : dialog(world.app) {}

    void open(const QByteArray &file = {})
    {
        if (!file.isEmpty())
            world.write(File, file);
        dialog.show();
    }
    HintTree &list() { return control<HintTree>(dialog, u"lvwEngines"_s); }
    HintTree &trial() { return control<HintTree>(dialog, u"lvwTry"_s); }
    QString text(const QString &field) { return control<QLineEdit>(dialog, field).text(); }
    QString chosen(const QString &list) { return control<QComboBox>(dialog, list).currentText(); }
    QString status() { return control<QLabel>(dialog, u"stbStatus"_s).text(); }
    QString trialText() { return control<QLabel>(dialog, u"lblTry"_s).text(); }
    bool isShown(const QString &name) { return control<QWidget>(dialog, name).isVisible(); }
    // Of the tool bar.
    void press(const QString &key)
    {
        auto &bar = control<QToolBar>(dialog, u"tlbEngines"_s);
        QTest::mouseClick(bar.widgetForAction(bar.findChild<QAction *>(key)
                                                  ? bar.findChild<QAction *>(key)
                                                  : dialog.findChild<QAction *>(key)),
                          Qt::LeftButton);
    }
    void addNew(const QString &name)
    {
        world.desktop.texts = {name};
        press(u"New"_s);
    }
    void clickRow(int row)
    {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {},
                          list().visualItemRect(list().topLevelItem(row)).center());
    }
    void choose(const QString &list, const QString &entry)
    {
        auto &box = control<QComboBox>(dialog, list);
        box.setFocus();
        while (box.currentText() != entry) {
            const int before = box.currentIndex();
            QTest::keyClick(&box, box.findText(entry) > before ? Qt::Key_Down : Qt::Key_Up);
            ASSERT_NE(box.currentIndex(), before);
        }
    }
    QString names()
    {
        QStringList names;
        for (int row = 0; row < list().topLevelItemCount(); ++row)
            names.append(list().topLevelItem(row)->text(0));
        return names.join(u',');
    }
    QString listings()
    {
        QStringList rows;
        for (int row = 0; row < trial().topLevelItemCount(); ++row) {
            const QTreeWidgetItem &item = *trial().topLevelItem(row);
            rows.append(item.text(0) + u' ' + item.text(1) + u' ' + item.text(2));
        }
        return rows.join(u'\n');
    }
    QString saved()
    {
        dialog.close();
        return world.app.fromBytes(world.read(File));
    }
    void getSource(const QString &url)
    {
        type(dialog, u"txtSearchURL"_s, url);
        click(dialog, u"cmdGetSource"_s);
    }

    World world;
    frmEngineBuilder dialog;
};

TEST_F(EngineBuilderDialog, isTitledAndCaptioned)
{
    open();
    EXPECT_EQ(dialog.windowTitle(), u"Engine Builder"_s);
    EXPECT_EQ(control<QAbstractButton>(dialog, u"cmdGetSource"_s).text(), u"Get source from submit page"_s);
    EXPECT_EQ(list().headerItem()->text(0), u"Engines"_s);
    EXPECT_EQ(list().columnCount(), 1);
    QHash<QString, QString> captions;
    for (const QLabel *label : dialog.findChildren<QLabel *>()) {
        if (label->buddy())
            captions.insert(label->buddy()->objectName(), label->text());
    }
    for (const auto &[field, caption] : std::initializer_list<std::pair<QString, QString>>{
             {u"cboMarket"_s, u"Market:"_s},
             {u"txtEngineName"_s, u"Engine Name:"_s},
             {u"txtEngineKey"_s, u"Engine Key:"_s},
             {u"txtEngineURL"_s, u"Engine URL:"_s},
             {u"txtQueryKeyword1"_s, u"Query String:"_s},
             {u"txtPostString"_s, u"PostString:"_s},
             {u"cboSubmitMethod"_s, u"SubmitMethod:"_s},
             {u"txtResultStartString"_s, u"Results Start String:"_s},
             {u"txtResultEndString"_s, u"Results End String:"_s},
             {u"txtSectionstart"_s, u"Section Start String:"_s},
             {u"txtSectionEnd"_s, u"Section End String:"_s},
             {u"txtbeginTitle"_s, u"Title Start String:"_s},
             {u"txtendTitle"_s, u"Title End String:"_s},
             {u"txtNextPage1"_s, u"Next Page1:"_s},
             {u"txtNextPage2"_s, u"Next Page2:"_s},
             {u"txtNextPage3"_s, u"Next Page3:"_s},
             {u"txtNextPage4"_s, u"Next Page4:"_s},
             {u"txtbeginURL"_s, u"URL Start String:"_s},
             {u"txtendURL"_s, u"URL End String:"_s},
             {u"txtbeginMatches"_s, u"Matches Start String"_s},
             {u"txtendMatches"_s, u"Matches End String:"_s}})
        EXPECT_EQ(captions.value(field), caption) << field.toStdString();
}

TEST_F(EngineBuilderDialog, offersItsMarketsAndMethods)
{
    open();
    const auto entries = [&](const QString &name) {
        QStringList texts;
        auto &box = control<QComboBox>(dialog, name);
        for (int entry = 0; entry < box.count(); ++entry)
            texts.append(box.itemText(entry));
        return texts.join(u'|');
    };
    EXPECT_EQ(entries(u"cboMarket"_s), u"US/Global|UK/European|Australia/NZ|Asia|Others"_s);
    EXPECT_EQ(entries(u"cboSubmitMethod"_s), u"Get|Post"_s);
    EXPECT_EQ(chosen(u"cboMarket"_s), u"US/Global"_s);
    EXPECT_EQ(chosen(u"cboSubmitMethod"_s), u"Get"_s);
}

TEST_F(EngineBuilderDialog, showsTheFirstEngineOfItsFile)
{
    open(TwoEngines);
    EXPECT_EQ(names(), u"First,Second"_s);
    EXPECT_EQ(text(u"txtEngineName"_s), u"First"_s);
    EXPECT_EQ(text(u"txtEngineURL"_s), u"http://first.example"_s);
    EXPECT_EQ(text(u"txtbeginURL"_s), u"href='"_s);
    EXPECT_TRUE(isShown(u"txtQueryKeyword1"_s));
    EXPECT_FALSE(isShown(u"txtPostString"_s));
}

TEST_F(EngineBuilderDialog, showsTheEngineOfAClickedRow)
{
    open(TwoEngines);
    clickRow(1);
    EXPECT_EQ(text(u"txtEngineName"_s), u"Second"_s);
    EXPECT_EQ(text(u"txtEngineKey"_s), QString());
    EXPECT_EQ(chosen(u"cboMarket"_s), u"Asia"_s);
    EXPECT_EQ(chosen(u"cboSubmitMethod"_s), u"Post"_s);
    EXPECT_FALSE(isShown(u"txtQueryKeyword1"_s));
    EXPECT_TRUE(isShown(u"txtPostString"_s));
}

TEST_F(EngineBuilderDialog, showsTheFirstMarketForAnUnknownOne)
{
    open("[Markets]\n1=Moon\n[Moon]\n1=Far\n[Far]\nSubmitMethod=x\n");
    EXPECT_EQ(chosen(u"cboMarket"_s), u"US/Global"_s);
    EXPECT_EQ(chosen(u"cboSubmitMethod"_s), u"Get"_s);
}

TEST_F(EngineBuilderDialog, showsTheFieldOfTheChosenMethod)
{
    open(TwoEngines);
    choose(u"cboSubmitMethod"_s, u"Post"_s);
    EXPECT_FALSE(isShown(u"txtQueryKeyword1"_s));
    EXPECT_TRUE(isShown(u"txtPostString"_s));
    choose(u"cboSubmitMethod"_s, u"Get"_s);
    EXPECT_TRUE(isShown(u"txtQueryKeyword1"_s));
    EXPECT_FALSE(isShown(u"txtPostString"_s));
}

TEST_F(EngineBuilderDialog, keepsWhatWasEnteredWhenAnotherRowIsClicked)
{
    open(TwoEngines);
    type(dialog, u"txtNextPage2"_s, u"more"_s);
    clickRow(1);
    EXPECT_EQ(text(u"txtNextPage2"_s), QString());
    clickRow(0);
    EXPECT_EQ(text(u"txtNextPage2"_s), u"more"_s);
}

TEST_F(EngineBuilderDialog, writesItsFileOnlyWhenItCloses)
{
    open(TwoEngines);
    type(dialog, u"txtEngineKey"_s, u"changed"_s);
    press(u"Save"_s);
    EXPECT_EQ(world.read(File), TwoEngines);
    const QString text = saved();
    EXPECT_TRUE(text.contains(u"[First]\r\nEngineKey=changed\r\nEngineURL =http://first.example\r\n"
                              "Host =first.example\r\nQueryKeyword1 =/find?q=\r\nQueryKeyword2=&n=10\r\n"_s));
    EXPECT_EQ(world.read(File + u".bak"_s), TwoEngines);
    EXPECT_EQ(status(), QString());
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(EngineBuilderDialog, takesWhatIsPasted)
{
    open(TwoEngines);
    paste(dialog, u"txtEngineKey"_s, u" shop\r\n"_s);
    paste(dialog, u"txtEngineURL"_s, u"\thttp://shop.example\n"_s);
    paste(dialog, u"txtSectionstart"_s, u"<li>\r\n "_s);
    dialog.close();
    const QByteArray file = world.read(File);
    EXPECT_TRUE(file.contains("\r\nEngineKey=shop\r\nEngineURL =http://shop.example\r\n"))
        << file.toStdString();
    EXPECT_TRUE(file.contains("\r\nSectionstart=<li> \r\n")) << file.toStdString();
}

TEST_F(EngineBuilderDialog, saysThatItWritesItsFile)
{
    // Keeps what a label shows whenever it is painted.
    class Painted final : public QObject
    {
    public:
        QStringList texts;

    protected:
        bool eventFilter(QObject *label, QEvent *event) override
        {
            if (event->type() == QEvent::Paint)
                texts.append(static_cast<QLabel *>(label)->text());
            return false;
        }
    } painted;
    open(TwoEngines);
    QApplication::processEvents(); // until it is on the screen
    control<QLabel>(dialog, u"stbStatus"_s).installEventFilter(&painted);
    dialog.SaveFile();
    EXPECT_TRUE(painted.texts.contains(u"Save file please wait... "_s));
    EXPECT_EQ(status(), QString());
}

TEST_F(EngineBuilderDialog, writesTheMarketsAloneWithoutEngines)
{
    open();
    EXPECT_EQ(saved(),
              u"[Markets]\r\n1=US/Global\r\n2=UK/European\r\n3=Australia/NZ\r\n4=Asia\r\n5=Others\r\n\r\n"_s);
}

TEST_F(EngineBuilderDialog, isClosedByExitAndByEscape)
{
    open(TwoEngines);
    press(u"Exit"_s);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_NE(world.read(File), TwoEngines);
    frmEngineBuilder next(world.app);
    next.show();
    QTest::keyClick(&next, Qt::Key_Escape);
    EXPECT_FALSE(next.isVisible());
}

TEST_F(EngineBuilderDialog, isWorkedByKeysAlone)
{
    open();
    dialog.activateWindow(); // shortcuts ask for it
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    world.desktop.texts = {u"Mine"_s};
    QTest::keyClick(&dialog, Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(names(), u"Mine"_s);
    QTest::keyClick(&dialog, Qt::Key_F1);
    EXPECT_EQ(world.desktop.opened.size(), 1U);
    type(dialog, u"txtEngineKey"_s, u"mine"_s);
    QTest::keyClick(&dialog, Qt::Key_S, Qt::ControlModifier);
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(names(), QString());
    QTest::keyClick(&dialog, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(EngineBuilderDialog, addsAnEngineUnderTheMarketOnScreen)
{
    open();
    addNew(u"Mine"_s);
    EXPECT_EQ(names(), u"Mine"_s);
    EXPECT_EQ(text(u"txtEngineName"_s), u"Mine"_s);
    EXPECT_TRUE(saved().contains(u"[US/Global]\r\n1=Mine\r\n\r\n[Mine]\r\n"_s));
}

TEST_F(EngineBuilderDialog, addsAnEngineUnderTheMarketChosen)
{
    open(TwoEngines);
    addNew(u"Mine"_s);
    EXPECT_EQ(text(u"txtEngineURL"_s), QString());
    choose(u"cboMarket"_s, u"Others"_s);
    const QString text = saved();
    EXPECT_TRUE(text.contains(u"[Others]\r\n1=Mine\r\n"_s));
    EXPECT_TRUE(text.contains(u"[First]\r\nEngineKey=first\r\n"_s)); // the one on screen before
}

TEST_F(EngineBuilderDialog, addsNothingWhenCancelled)
{
    open(TwoEngines);
    press(u"New"_s);
    EXPECT_EQ(names(), u"First,Second"_s);
    EXPECT_EQ(world.desktop.textQuestions.size(), 1U);
}

TEST_F(EngineBuilderDialog, keepsTheRowOfARenamedEngine)
{
    open(TwoEngines);
    type(dialog, u"txtEngineName"_s, u"Renamed"_s);
    press(u"Save"_s);
    EXPECT_EQ(names(), u"First,Second"_s);
    EXPECT_TRUE(saved().contains(u"[US/Global]\r\n1=Renamed\r\n"_s));
}

TEST_F(EngineBuilderDialog, deletesTheSelectedEngineWithoutAQuestion)
{
    open(TwoEngines);
    press(u"Delete"_s);
    EXPECT_EQ(names(), u"Second"_s);
    EXPECT_EQ(text(u"txtEngineName"_s), u"Second"_s);
    EXPECT_TRUE(world.desktop.boxes.empty());
    EXPECT_FALSE(saved().contains(u"First"_s));
}

TEST_F(EngineBuilderDialog, clearsItsFieldsBehindTheLastEngine)
{
    open(TwoEngines);
    type(dialog, u"txtSearchURL"_s, u"http://x.example"_s);
    clickRow(1);
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(text(u"txtEngineName"_s), u"First"_s);
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(names(), QString());
    for (const QLineEdit *field : dialog.findChildren<QLineEdit *>())
        EXPECT_EQ(field->text(), QString()) << field->objectName().toStdString();
    EXPECT_FALSE(isEnabled(dialog, u"txtEngineName"_s));
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(EngineBuilderDialog, opensItsTutorial)
{
    open();
    press(u"Help"_s);
    ASSERT_EQ(world.desktop.opened.size(), 1U);
    EXPECT_EQ(world.desktop.opened[0].first,
              world.app.deployment.KnowledgeBase + u"/knowledgebase/tutorial/sondrel/enginebuilder.html"_s);
}

TEST_F(EngineBuilderDialog, tellsOfAFileThatStopsHalfWay)
{
    const QByteArray handMade = "[Markets]\n1=A\n[A]\n1=one\n2=one\n3=two\n";
    open(handMade);
    EXPECT_EQ(names(), u"one"_s);
    EXPECT_EQ(world.desktop.boxes.at(0).title, u"Engine Builder"_s);
    EXPECT_TRUE(world.desktop.boxes.at(0).text.startsWith(u"loadCustomEngineError: "_s));
    saved();
    EXPECT_EQ(world.read(File + u".damaged"_s), handMade);
}

TEST_F(EngineBuilderDialog, wantsAnAddressToGetTheSourceOf)
{
    open(TwoEngines);
    getSource({});
    EXPECT_EQ(world.desktop.boxes,
              (std::vector{MessageBox{u"Engine Builder"_s,
                                      u"Please specify the full URL of the keyword search string."_s}}));
    EXPECT_EQ(dialog.focusWidget()->objectName(), u"txtSearchURL"_s);
    EXPECT_TRUE(world.http.requests.empty());
}

TEST_F(EngineBuilderDialog, fillsInTheQueryOfASampleSearch)
{
    open(TwoEngines);
    clickRow(1);
    getSource(u"https://www.finder.example/find?q=tea"_s);
    EXPECT_EQ(text(u"txtEngineURL"_s), u"http://www.finder.example"_s);
    EXPECT_EQ(text(u"txtEngineKey"_s), u"finder.example"_s);
    EXPECT_EQ(text(u"txtQueryKeyword1"_s), u"/find?q=tea"_s);
    EXPECT_EQ(chosen(u"cboSubmitMethod"_s), u"Get"_s);
    EXPECT_EQ(status(),
              u"Please wait while retrieving data from https://www.finder.example/find?q=tea ...."_s);
    EXPECT_EQ(world.desktop.waiting, 1);
    ASSERT_EQ(world.http.requests.size(), 1U);
    EXPECT_EQ(world.http.requests[0].url, u"https://www.finder.example/find?q=tea"_s);
    EXPECT_FALSE(world.http.requests[0].post);
}

TEST_F(EngineBuilderDialog, fillsInASlashForAnAddressWithoutAPath)
{
    open(TwoEngines);
    getSource(u"http://finder.example"_s);
    EXPECT_EQ(text(u"txtQueryKeyword1"_s), u"/"_s);
}

TEST_F(EngineBuilderDialog, opensTheSourceOfThePage)
{
    open(TwoEngines);
    getSource(u"http://first.example/find?q=tea"_s);
    world.http.answer(0, ResultPage);
    EXPECT_EQ(world.read(u"temp.txt"_s), ResultPage);
    ASSERT_EQ(world.desktop.opened.size(), 1U);
    EXPECT_EQ(world.desktop.opened[0].first, world.path(u"temp.txt"_s));
    EXPECT_EQ(status(), QString());
    EXPECT_EQ(world.desktop.waiting, 0);
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(EngineBuilderDialog, tellsOfAnAddressWithoutAnswer)
{
    open(TwoEngines);
    getSource(u"http://first.example/find?q=tea"_s);
    world.http.answer(0, {});
    EXPECT_EQ(
        world.desktop.boxes,
        (std::vector{MessageBox{u"Engine Builder"_s,
                                u"Unable to connect to URL. Please check the search URL and try again."_s}}));
    EXPECT_FALSE(world.has(u"temp.txt"_s));
    EXPECT_EQ(status(), QString());
}

TEST_F(EngineBuilderDialog, logsASourceThatCannotBeKept)
{
    putFolder(world, u"temp.txt"_s);
    open(TwoEngines);
    getSource(u"http://first.example/find?q=tea"_s);
    world.http.answer(0, ResultPage);
    EXPECT_TRUE(world.takeLog().startsWith(u"frmEngineBuilder_m_frmHttp_Completed error: "_s));
    EXPECT_EQ(status(), QString());
}

TEST_F(EngineBuilderDialog, releasesItsTransferWhenItCloses)
{
    open(TwoEngines);
    getSource(u"http://first.example/find?q=tea"_s);
    dialog.close();
    EXPECT_EQ(world.http.controlsAlive, 0);
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(EngineBuilderDialog, logsARowWithoutARecord)
{
    open(TwoEngines);
    list().topLevelItem(1)->setText(0, u"gone"_s);
    clickRow(1);
    EXPECT_TRUE(world.takeLog().startsWith(u"frmEngineBuilder_lvwEngines_ItemClick error: "_s));
    press(u"Delete"_s);
    EXPECT_TRUE(world.takeLog().startsWith(u"frmEngineBuilder_DeleteEngine error: "_s));
}

TEST_F(EngineBuilderDialog, triesItsStringsOnTheSourceOfASearch)
{
    open(TwoEngines);
    getSource(u"http://first.example/find?q=tea"_s);
    world.http.answer(0, ResultPage);
    EXPECT_EQ(listings(), u"1 One http://one.example/\n2 Café http://two.example/a"_s);
    EXPECT_EQ(trial().topLevelItem(1)->toolTip(1), u"Café"_s);
    EXPECT_EQ(trialText(), u"http://first.example/find?q=tea\n2 listings found.\nMatches: 2,340.\n"
                           "Next page: http://first.example/find?q=tea&p=2"_s);
}

TEST_F(EngineBuilderDialog, triesItsStringsAnewAsTheyChange)
{
    open(TwoEngines);
    getSource(u"http://first.example/find?q=tea"_s);
    world.http.answer(0, ResultPage);
    type(dialog, u"txtEngineKey"_s, u"one.example"_s);
    type(dialog, u"txtNextPage1"_s, u"Nothing"_s);
    type(dialog, u"txtbeginMatches"_s, {});
    click(dialog, u"cmdTry"_s);
    EXPECT_EQ(listings(), u"1 Café http://two.example/a"_s);
    EXPECT_EQ(trialText(), u"http://first.example/find?q=tea\n1 listing found.\nNo number of matches found.\n"
                           "No link to a next page found."_s);
    type(dialog, u"txtResultStartString"_s, u"<ul>"_s);
    type(dialog, u"txtSectionstart"_s, u"<dd>"_s);
    type(dialog, u"txtNextPage1"_s, {});
    click(dialog, u"cmdTry"_s);
    EXPECT_EQ(listings(), QString());
    EXPECT_TRUE(trialText().contains(u"The Results Start String is not in the page.\nNo listing found."_s));
    EXPECT_TRUE(trialText().endsWith(u"Without Next Page1 a lookup reads one page."_s));
}

TEST_F(EngineBuilderDialog, triesItsStringsOnASavedPage)
{
    open(TwoEngines);
    EXPECT_TRUE(trialText().startsWith(u"No page yet."_s));
    world.write(u"saved.html"_s, ResultPage);
    world.desktop.files = {world.path(u"saved.html"_s)};
    click(dialog, u"cmdTryFile"_s);
    EXPECT_EQ(trial().topLevelItemCount(), 2);
    EXPECT_TRUE(trialText().startsWith(u"saved.html\n2 listings found."_s));
    EXPECT_TRUE(trialText().endsWith(u"Next page: http://first.example/find?q=tea&p=2"_s));
    click(dialog, u"cmdTryFile"_s); // given up
    EXPECT_EQ(trial().topLevelItemCount(), 2);
}

TEST_F(EngineBuilderDialog, tellsWhichStringOfTheListIsMissing)
{
    open(TwoEngines);
    world.write(u"saved.html"_s, ResultPage);
    world.desktop.files = {world.path(u"saved.html"_s)};
    type(dialog, u"txtResultEndString"_s, {});
    click(dialog, u"cmdTryFile"_s);
    EXPECT_TRUE(trialText().startsWith(u"saved.html\nThe Results End String is empty.\n"_s));
    type(dialog, u"txtResultEndString"_s, u"</dl>"_s);
    click(dialog, u"cmdTry"_s);
    EXPECT_TRUE(trialText().startsWith(u"saved.html\nThe Results End String is not in the page.\n"_s));
    type(dialog, u"txtResultStartString"_s, {});
    click(dialog, u"cmdTry"_s);
    EXPECT_TRUE(trialText().startsWith(u"saved.html\nThe Results Start String is empty.\n"_s));
}

TEST_F(EngineBuilderDialog, tellsOfASavedPageThatIsGone)
{
    open(TwoEngines);
    world.desktop.files = {world.path(u"gone.html"_s)};
    click(dialog, u"cmdTryFile"_s);
    EXPECT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_TRUE(world.takeLog().contains(u"gone.html"_s));
}

TEST_F(EngineBuilderDialog, triesItsStringsAsALookupReadsThem)
{
    open(TwoEngines);
    world.write(u"saved.html"_s, ResultPage);
    world.desktop.files = {world.path(u"saved.html"_s)};
    click(dialog, u"cmdTryFile"_s);
    type(dialog, u"txtbeginTitle"_s, u" '<b>' "_s); // the file's reader takes the marks away
    click(dialog, u"cmdTry"_s);
    EXPECT_EQ(listings(), u"1 One http://one.example/\n2 Café http://two.example/a"_s);
}

} // namespace
} // namespace sondrel
