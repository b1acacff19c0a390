#include "keywords/frmKeywordBuilder.h"

#include "project/clsKeywords.h"
#include "shell/hint_tree.h"
#include "tests/shell/dialog_test.h"
#include "tests/support/bad_files.h"

#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const QByteArray EngineData = "[KeywordBuilder]\r\n1=Finder\r\n2=Perla\r\n"
                              "[Finder]\r\nQuerySuggest1=http://finder.example/s?q=\r\n"
                              "SuggestSectionStart=<li>\r\nSuggestSectionEnd=</li>\r\n"
                              "beginCountSection=<i>\r\nendCountSection=</i>\r\n"
                              "begineKeywordSection=<b>\r\nendKeywordSection=</b>\r\n";

const auto Keywords = u"KeywordBuilder/Keywords.dat"_s;
const auto Tea = u"KeywordBuilder/Finder/tea.dat"_s;

QByteArray page(const QByteArrayList &keywords)
{
    QByteArray text = "<html>";
    for (const QByteArray &keyword : keywords)
        text += "<li><i>" + QByteArray::number(keyword.size()) + "</i><b>" + keyword + "</b></li>";
    return text;
}

class KeywordBuilderDialog : public testing::Test
{
protected:
    KeywordBuilderDialog() : keywords(world.app), dialog(world.app) { world.writeEngineData(EngineData); }

    void open()
    {
        dialog.keywordsObject = &keywords;
        dialog.Prepare();
        dialog.show();
    }
    void openWith(const QByteArray &terms, const QByteArray &rowsOfTea = {})
    {
        world.write(Keywords, terms);
        if (!rowsOfTea.isEmpty())
            world.write(Tea, rowsOfTea);
        open();
    }
    HintTree &list() { return control<HintTree>(dialog, u"lvwKeywords"_s); }
    QComboBox &keyword() { return control<QComboBox>(dialog, u"cboKeyword"_s); }
    QComboBox &engine() { return control<QComboBox>(dialog, u"cboEngine"_s); }
    QString rows()
    {
        QStringList texts;
        for (int row = 0; row < list().topLevelItemCount(); ++row)
            texts.append(list().topLevelItem(row)->text(0) + u'=' + list().topLevelItem(row)->text(1));
        return texts.join(u',');
    }
    QString entries()
    {
        QStringList texts;
        for (int entry = 0; entry < keyword().count(); ++entry)
            texts.append(keyword().itemText(entry));
        return texts.join(u',');
    }
    QString status() { return control<QLabel>(dialog, u"stbStatus"_s).text(); }
    int progress() { return control<QProgressBar>(dialog, u"pbrSearch"_s).value(); }
    QString getCaption() { return control<QPushButton>(dialog, u"cmdGet"_s).text(); }
    // "+" for an enabled button, in the order add, delete, close.
    QString buttons()
    {
        QString states;
        for (const QString &name : {u"cmdAddToList"_s, u"cmdDelete"_s, u"cmdClose"_s})
            states += isEnabled(dialog, name) ? u'+' : u'-';
        return states;
    }
    void get(const QString &text)
    {
        type(dialog, u"cboKeyword"_s, text);
        click(dialog, u"cmdGet"_s);
    }
    void answer(const QByteArray &body) { world.http.answer(world.http.requests.size() - 1, body); }
    void clickRow(int row, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, modifiers,
                          list().visualItemRect(list().topLevelItem(row)).center());
    }
    QString selected()
    {
        QStringList texts;
        for (const QTreeWidgetItem *row : list().selectedItems())
            texts.append(row->text(0));
        return texts.join(u',');
    }
    MessageBox box(std::size_t number) { return world.desktop.boxes.at(number); }

    World world;
    clsKeywords keywords;
    frmKeywordBuilder dialog;
};

TEST_F(KeywordBuilderDialog, comesUpWithItsEnginesAndNoRows)
{
    open();
    EXPECT_EQ(dialog.windowTitle(), u"Keyword Builder"_s);
    EXPECT_EQ(engine().count(), 2);
    EXPECT_EQ(engine().currentText(), u"Finder"_s);
    EXPECT_EQ(entries(), QString());
    EXPECT_EQ(list().headerItem()->text(0), u"Keyword"_s);
    EXPECT_EQ(list().headerItem()->text(1), u"Count"_s);
    EXPECT_EQ(getCaption(), u"&Get..."_s);
    EXPECT_EQ(buttons(), u"--+"_s);
    EXPECT_EQ(control<QProgressBar>(dialog, u"pbrSearch"_s).maximum(), 3);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(KeywordBuilderDialog, showsTheKeptRowsOfTheFirstKeyword)
{
    openWith("tea\r\n\r\noak\r\n", "green tea;12\r\nblack tea;3\r\n\r\n");
    EXPECT_EQ(entries(), u"tea,oak"_s);
    EXPECT_EQ(keyword().currentText(), u"tea"_s);
    EXPECT_EQ(rows(), u"green tea=12,black tea=3"_s);
    EXPECT_EQ(buttons(), u"+++"_s);
}

TEST_F(KeywordBuilderDialog, showsOtherRowsForAnotherKeywordOrEngineWithoutAFetch)
{
    world.write(u"KeywordBuilder/Finder/oak.dat"_s, "oak tree;1\r\n");
    world.write(u"KeywordBuilder/Perla/oak.dat"_s, "acorn;2\r\n");
    openWith("tea\r\noak\r\n", "green tea;12\r\n");
    keyword().setFocus();
    QTest::keyClick(&keyword(), Qt::Key_Down);
    EXPECT_EQ(rows(), u"oak tree=1"_s);
    QTest::keyClick(&engine(), Qt::Key_Down);
    EXPECT_EQ(rows(), u"acorn=2"_s);
    EXPECT_EQ(buttons(), u"+++"_s);
    QTest::keyClick(&keyword(), Qt::Key_Up);
    EXPECT_EQ(rows(), QString());
    EXPECT_EQ(buttons(), u"--+"_s);
    EXPECT_TRUE(world.http.requests.empty());
}

TEST_F(KeywordBuilderDialog, wantsAKeyword)
{
    open();
    get(u" "_s);
    EXPECT_EQ(box(0),
              (MessageBox{u"Keyword Builder"_s, u"Please enter a Keyword."_s, MessageIcon::Exclamation}));
    EXPECT_EQ(dialog.focusWidget()->objectName(), u"cboKeyword"_s);
    EXPECT_TRUE(world.http.requests.empty());
}

TEST_F(KeywordBuilderDialog, wantsAnEngine)
{
    world.writeEngineData("[Markets]\n");
    open();
    get(u"tea"_s);
    EXPECT_EQ(box(0), (MessageBox{u"Keyword Builder"_s, u"Please select a Search Engine."_s,
                                  MessageIcon::Exclamation}));
    EXPECT_EQ(dialog.focusWidget()->objectName(), u"cboEngine"_s);
    EXPECT_EQ(getCaption(), u"&Get..."_s);
}

TEST_F(KeywordBuilderDialog, fetches)
{
    openWith("oak\r\n");
    get(u"tea"_s);
    ASSERT_EQ(world.http.requests.size(), 1U);
    EXPECT_EQ(world.http.requests[0].url, u"http://finder.example/s?q=tea"_s);
    EXPECT_EQ(getCaption(), u"S&top"_s);
    EXPECT_EQ(buttons(), u"---"_s);
    EXPECT_EQ(progress(), 1);
    EXPECT_EQ(status(), u"Retrieving data from the search engine ..."_s);
    EXPECT_EQ(entries(), u"oak,tea"_s);
    EXPECT_EQ(world.desktop.pendingEventRuns, 1);
}

TEST_F(KeywordBuilderDialog, keepsAndShowsWhatItHasFetched)
{
    open();
    get(u"tea"_s);
    answer(page({"green tea", "tea;pot"}));
    EXPECT_EQ(box(0),
              (MessageBox{u"Keyword Builder"_s, u"Retrieving data completed."_s, MessageIcon::Information}));
    EXPECT_EQ(world.read(Tea), "green tea;9\r\ntea;pot;7\r\n\r\n");
    EXPECT_EQ(rows(), u"green tea=9,tea=pot"_s); // as read back
    EXPECT_EQ(getCaption(), u"&Get..."_s);
    EXPECT_EQ(buttons(), u"+++"_s);
    EXPECT_EQ(progress(), 0);
    EXPECT_EQ(status(), QString());
}

TEST_F(KeywordBuilderDialog, fetchesByEnter)
{
    open();
    type(dialog, u"cboKeyword"_s, u"tea"_s);
    QTest::keyClick(keyword().lineEdit(), Qt::Key_Return);
    EXPECT_EQ(world.http.requests.size(), 1U);
}

TEST_F(KeywordBuilderDialog, addsAKeywordToTheListOnce)
{
    openWith("Tea\r\n");
    get(u"tea"_s);
    answer(page({"green tea"}));
    EXPECT_EQ(entries(), u"Tea"_s);
}

TEST_F(KeywordBuilderDialog, keepsTheOldRowsWhenNothingIsFound)
{
    openWith("tea\r\n", "green tea;12\r\n");
    click(dialog, u"cmdGet"_s);
    EXPECT_EQ(rows(), QString());
    answer("<html>nothing");
    EXPECT_EQ(world.read(Tea), "green tea;12\r\n");
    EXPECT_EQ(rows(), u"green tea=12"_s);
}

TEST_F(KeywordBuilderDialog, keepsTheOldRowsWhenTheConnectionFails)
{
    openWith("tea\r\n", "green tea;12\r\n");
    click(dialog, u"cmdGet"_s);
    for (int attempt = 0; attempt < 4; ++attempt) {
        answer({});
        world.clock.advance(100);
    }
    EXPECT_EQ(box(0), (MessageBox{u"Keyword Builder"_s, u"Connection error. Please try again"_s,
                                  MessageIcon::Critical}));
    EXPECT_EQ(rows(), u"green tea=12"_s);
    EXPECT_EQ(getCaption(), u"&Get..."_s);
}

TEST_F(KeywordBuilderDialog, stopsWhenTheTransferHasEnded)
{
    openWith("tea\r\n", "green tea;12\r\n");
    click(dialog, u"cmdGet"_s);
    world.http.requests[0].control->hangsOnAbort = true;
    click(dialog, u"cmdGet"_s);
    world.clock.advance(1000);
    EXPECT_EQ(getCaption(), u"S&top"_s);
    answer("late");
    EXPECT_EQ(getCaption(), u"S&top"_s);
    world.clock.advance(100);
    EXPECT_EQ(getCaption(), u"&Get..."_s);
    EXPECT_EQ(rows(), u"green tea=12"_s);
    EXPECT_EQ(status(), QString());
    EXPECT_EQ(progress(), 0);
    EXPECT_EQ(buttons(), u"+++"_s);
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(KeywordBuilderDialog, replacesTheTextOfADownloadThatHasEnded)
{
    openWith("tea\r\n");
    dialog.showStatus(u"Download data from server..."_s);
    dialog.DownLoadCompleted();
    EXPECT_EQ(status(), u" Download completed."_s);
    click(dialog, u"cmdGet"_s);
    dialog.showStatus(u"Download data from server..."_s);
    click(dialog, u"cmdGet"_s);
    world.clock.advance(100);
    EXPECT_EQ(status(), u"Stop."_s);
}

TEST_F(KeywordBuilderDialog, stopsAFetchThatNeverBegan)
{
    open();
    world.http.failControl = u"No control"_s;
    get(u"tea"_s);
    EXPECT_EQ(world.takeLog(), u"frmKeywordBuilder_DoGet: No control"_s);
    click(dialog, u"cmdGet"_s);
    world.clock.advance(100);
    EXPECT_EQ(getCaption(), u"&Get..."_s);
}

TEST_F(KeywordBuilderDialog, logsAStopThatFails)
{
    open();
    get(u"tea"_s);
    world.http.failAbort = u"No abort"_s;
    click(dialog, u"cmdGet"_s);
    EXPECT_EQ(world.takeLog(), u"frmKeywordBuilder_cmdGet_Click error:  No abort"_s);
    world.http.failAbort.clear();
}

TEST_F(KeywordBuilderDialog, addsTheSelectedRowsToTheProject)
{
    openWith("tea\r\n", "green tea;12\r\nblack tea;3\r\nmint;4\r\n");
    clsKeyword known;
    known.Keyword = u"Mint"_s;
    known.Count = u"1"_s;
    keywords.AddKeyword(known, -1);
    clickRow(2);
    clickRow(0, Qt::ControlModifier);
    EXPECT_FALSE(dialog.AddToList);
    click(dialog, u"cmdAddToList"_s);
    EXPECT_EQ(box(0),
              (MessageBox{u"Keyword Builder"_s, u"2 selected Keywords have been added to the Account."_s,
                          MessageIcon::Exclamation}));
    EXPECT_TRUE(dialog.AddToList);
    ASSERT_EQ(keywords.Count(), 2);
    EXPECT_EQ(keywords.Keywords.at(1).Count, u"4"_s);
    EXPECT_EQ(keywords.Keywords.at(2).Keyword, u"green tea"_s);
    EXPECT_EQ(keywords.Keywords.at(2).Count, u"12"_s);
}

TEST_F(KeywordBuilderDialog, addsNothingWithAnEmptyMessage)
{
    openWith("tea\r\n", "green tea;12\r\n");
    click(dialog, u"cmdAddToList"_s);
    EXPECT_EQ(box(0), (MessageBox{u"Keyword Builder"_s, QString(), MessageIcon::Exclamation}));
    EXPECT_EQ(keywords.Count(), 0);
}

TEST_F(KeywordBuilderDialog, logsAnAdditionWithoutAProject)
{
    openWith("tea\r\n", "green tea;12\r\n");
    dialog.keywordsObject = nullptr;
    click(dialog, u"cmdAddToList"_s);
    EXPECT_EQ(world.takeLog(),
              u"frmKeywordBuilder_DoADDToList error:  There is no project to add the keywords to"_s);
}

TEST_F(KeywordBuilderDialog, removesTheSelectedRowsAfterAQuestion)
{
    openWith("tea\r\n", "a;1\r\nb;2\r\nc;3\r\nd;4\r\n");
    clickRow(0);
    clickRow(2, Qt::ControlModifier);
    click(dialog, u"cmdDelete"_s);
    EXPECT_EQ(box(0),
              (MessageBox{u"Keyword Builder"_s, u"Are you sure you want to remove selected Keywords?"_s,
                          MessageIcon::Question, MessageButtons::YesNo}));
    EXPECT_EQ(rows(), u"b=2,d=4"_s);
    EXPECT_EQ(selected(), u"d"_s);
    EXPECT_EQ(world.read(Tea), "b;2\r\nd;4\r\n\r\n");
}

TEST_F(KeywordBuilderDialog, selectsTheFirstRowBehindTheLast)
{
    openWith("tea\r\n", "a;1\r\nb;2\r\nc;3\r\n");
    clickRow(2);
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(rows(), u"a=1,b=2"_s);
    EXPECT_EQ(selected(), u"a"_s);
}

TEST_F(KeywordBuilderDialog, keepsTheRowsAfterANoAndWritesThem)
{
    openWith("tea\r\n", "a;1\r\nb;2;x\r\n");
    world.desktop.answer = MessageAnswer::No;
    clickRow(0);
    click(dialog, u"cmdDelete"_s);
    EXPECT_EQ(rows(), u"a=1,b=2"_s);
    EXPECT_EQ(world.read(Tea), "a;1\r\nb;2\r\n\r\n");
}

TEST_F(KeywordBuilderDialog, findsDeletedRowsAgainWhenNoneWasLeft)
{
    openWith("tea\r\noak\r\n", "a;1\r\nb;2\r\n");
    QTest::keyClick(&list(), Qt::Key_A, Qt::ControlModifier);
    click(dialog, u"cmdDelete"_s);
    EXPECT_EQ(rows(), QString());
    EXPECT_EQ(buttons(), u"--+"_s);
    QTest::keyClick(&keyword(), Qt::Key_Down);
    QTest::keyClick(&keyword(), Qt::Key_Up);
    EXPECT_EQ(rows(), u"a=1,b=2"_s);
}

TEST_F(KeywordBuilderDialog, logsAQuestionThatCannotBeAsked)
{
    openWith("tea\r\n", "a;1\r\n");
    world.desktop.failing = true;
    click(dialog, u"cmdDelete"_s);
    EXPECT_EQ(world.takeLog(), u"frmKeywordBuilder_DoDelete error:  The message cannot be shown"_s);
}

TEST_F(KeywordBuilderDialog, removesAKeywordByTheDeleteKey)
{
    openWith("tea\r\noak\r\n", "a;1\r\n");
    QTest::keyClick(keyword().lineEdit(), Qt::Key_Delete);
    EXPECT_EQ(entries(), u"oak"_s);
}

TEST_F(KeywordBuilderDialog, clearsATypedKeywordByTheDeleteKey)
{
    openWith("tea\r\noak\r\n");
    type(dialog, u"cboKeyword"_s, u"elm"_s);
    QTest::keyClick(keyword().lineEdit(), Qt::Key_Delete);
    EXPECT_EQ(keyword().currentText(), QString());
    EXPECT_EQ(entries(), u"tea,oak"_s);
}

TEST_F(KeywordBuilderDialog, keepsItsKeywordsWhenClosed)
{
    openWith("tea\r\n");
    get(u"oak"_s);
    answer(page({"oak tree"}));
    click(dialog, u"cmdClose"_s);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(world.read(Keywords), "tea\r\noak\r\n");
    EXPECT_GT(world.desktop.waits, 0);
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(KeywordBuilderDialog, letsGoOfAFetchWhenItsCloseBoxIsUsed)
{
    open();
    get(u"oak"_s);
    dialog.close();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(world.http.controlsAlive, 0);
    EXPECT_EQ(world.read(Keywords), "oak\r\n");
}

TEST_F(KeywordBuilderDialog, logsMissingEngineData)
{
    QFile::remove(world.path(u"../system/qlteng4.dat"_s));
    open();
    EXPECT_EQ(engine().count(), 0);
    EXPECT_EQ(world.takeLog(), u"frmKeywordBulider_PopulateEngine: The engine data file is missing - "_s +
                                   world.app.EngineDataFile);
}

TEST_F(KeywordBuilderDialog, logsKeywordsThatCannotBeReadAndLeavesThem)
{
    putFolder(world, Keywords);
    open();
    EXPECT_TRUE(world.takeLog().startsWith(u"frmKeywordBulider_PopulateKeywordComBo: "_s));
    click(dialog, u"cmdClose"_s);
    EXPECT_TRUE(world.takeLog().startsWith(u"frmKeywordBuilder_SaveComboBox:  "_s));
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(KeywordBuilderDialog, logsKeywordsThatCannotBeWritten)
{
    open();
    putFolder(world, Keywords);
    click(dialog, u"cmdClose"_s);
    EXPECT_TRUE(world.takeLog().startsWith(u"frmKeywordBuilder_SaveComboBox:  "_s));
}

TEST_F(KeywordBuilderDialog, logsRowsThatCannotBeRead)
{
    putFolder(world, Tea);
    openWith("tea\r\n");
    EXPECT_TRUE(world.takeLog().startsWith(u"frmKeywordBuilder_PopulateListView: "_s));
}

TEST_F(KeywordBuilderDialog, logsRowsThatCannotBeKept)
{
    open();
    get(u"tcp/ip"_s);
    answer(page({"tcp port"}));
    EXPECT_TRUE(world.takeLog().startsWith(u"frmKeywordBuilder_SaveListView error:  "_s));
    EXPECT_EQ(rows(), QString());
    EXPECT_EQ(getCaption(), u"&Get..."_s);
}

TEST_F(KeywordBuilderDialog, logsAKeptRowThatComesTwice)
{
    openWith("tea\r\n", "a;1\r\nA;2\r\nb;3\r\n");
    EXPECT_TRUE(world.takeLog().startsWith(u"addListItem_Error: "_s));
    EXPECT_EQ(rows(), u"a=1,b=3"_s);
}

TEST_F(KeywordBuilderDialog, logsAPointerThatIsGone)
{
    open();
    world.desktop.pointerFails = true;
    click(dialog, u"cmdClose"_s);
    EXPECT_EQ(world.takeLog(), u"frmKeywordBuilder_DoOK: There is no pointer"_s);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(KeywordBuilderDialog, showsTheTextsOfItsServiceReadably)
{
    open();
    get(u"tea"_s);
    answer(page({"caf\xc3\xa9"}));
    EXPECT_EQ(list().topLevelItem(0)->text(0), u"café"_s);
    EXPECT_EQ(world.read(Tea), "caf\xc3\xa9;5\r\n\r\n");
}

TEST_F(KeywordBuilderDialog, showsNoMarkup)
{
    openWith("tea\r\n", "a<b>c</b>;1\r\n");
    EXPECT_EQ(rows(), u"a<b>c</b>=1"_s);
    EXPECT_EQ(list().topLevelItem(0)->toolTip(0), u"<qt>a&lt;b&gt;c&lt;/b&gt;</qt>"_s);
}

TEST_F(KeywordBuilderDialog, sharesItsWidth)
{
    open();
    dialog.resize(800, 500);
    QApplication::processEvents();
    const int room = list().width() - 22;
    EXPECT_EQ(list().header()->sectionSize(0), room * 3 / 4);
    EXPECT_EQ(list().header()->sectionSize(1), room / 4);
}

} // namespace
} // namespace sondrel
