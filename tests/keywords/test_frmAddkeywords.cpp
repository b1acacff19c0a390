#include "keywords/frmAddkeywords.h"

#include "tests/shell/dialog_test.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

class AddKeywordsDialog : public testing::Test
{
protected:
    AddKeywordsDialog() : dialog(world.app)
    {
        dialog.Account = std::make_shared<clsAccount>(world.app);
        dialog.Account->URLs.emplace();
        for (const QString &url : {u"www.site.example"_s, u"http://rival.example"_s})
            dialog.Account->URLs->Add({url, false}, url);
    }

    void open()
    {
        dialog.Prepare();
        dialog.show();
        QApplication::setActiveWindow(&dialog);
    }
    void showTab(int tab) { control<QTabWidget>(dialog, u"SSTab1"_s).setCurrentIndex(tab); }
    QPlainTextEdit &typed() { return control<QPlainTextEdit>(dialog, u"txtKeywords"_s); }
    QListWidget &list() { return control<QListWidget>(dialog, u"lstKeywords"_s); }
    QComboBox &url() { return control<QComboBox>(dialog, u"cboURL"_s); }
    QPushButton &button(const QString &name) { return control<QPushButton>(dialog, name); }
    QString status() { return control<QLabel>(dialog, u"lblStatus"_s).text(); }
    QString listed()
    {
        QStringList entries;
        for (int row = 0; row < list().count(); ++row)
            entries.append(list().item(row)->text());
        return entries.join(u'/');
    }
    void get(const QByteArray &keywords)
    {
        showTab(2);
        click(dialog, u"cmdGetWebSite"_s);
        world.http.answer(world.http.requests.size() - 1,
                          "<meta name=keywords content=\"" + keywords + "\">");
    }

    World world;
    frmAddkeywords dialog;
};

TEST_F(AddKeywordsDialog, isTitledAndCaptioned)
{
    open();
    EXPECT_EQ(dialog.windowTitle(), u"Add Keywords"_s);
    QStringList captions;
    for (const QLabel *label : dialog.findChildren<QLabel *>())
        captions.append(label->text());
    for (
        const QString &caption :
        {u"Please type your keywords below with one keyword per line:"_s, u"Delimited Character:"_s,
         u"Please select or enter a delimited character from the list box below and click the 'Import\" button:"_s,
         u"This will retrieve keywords from the meta tag of your web site. Please enter your web site URL:"_s})
        EXPECT_TRUE(captions.contains(caption)) << caption.toStdString();
    EXPECT_EQ(button(u"cmdImport"_s).text(), u"Import"_s);
    EXPECT_EQ(button(u"cmdImport"_s).toolTip(), u"Import keywords from a file"_s);
    EXPECT_EQ(button(u"cmdGetWebSite"_s).text(), u"&Get"_s);
    EXPECT_EQ(button(u"cmdCancel"_s).text(), u"Cancel"_s);
    EXPECT_EQ(control<QCheckBox>(dialog, u"chkAppend"_s).text(), u"Append"_s);
    EXPECT_EQ(status(), QString());
}

TEST_F(AddKeywordsDialog, offersAddressesAndDelimiters)
{
    open();
    EXPECT_EQ(url().count(), 2);
    EXPECT_EQ(url().itemText(1), u"http://rival.example"_s);
    EXPECT_EQ(url().currentText(), u"http://www.site.example"_s);
    auto &separetor = control<QComboBox>(dialog, u"cboSeparetor"_s);
    QStringList entries;
    for (int entry = 0; entry < separetor.count(); ++entry)
        entries.append(separetor.itemText(entry));
    EXPECT_EQ(entries, delimiterChoices());
    EXPECT_EQ(dialog.Separetor(), u"One keyword per line"_s);
}

TEST_F(AddKeywordsDialog, startsWithoutAnAddressWhenTheProjectHasNone)
{
    dialog.Account->URLs.reset();
    open();
    EXPECT_EQ(url().currentText(), QString());
}

TEST_F(AddKeywordsDialog, answersWithWhatIsTyped)
{
    open();
    EXPECT_FALSE(button(u"cmdOK"_s).isEnabled());
    QTest::keyClicks(&typed(), u"red shoes"_s);
    QTest::keyClick(&typed(), Qt::Key_Return);
    QTest::keyClicks(&typed(), u"boots"_s);
    EXPECT_TRUE(button(u"cmdOK"_s).isEnabled());
    click(dialog, u"cmdOK"_s);
    EXPECT_EQ(
        dialog.answer(),
        (AddKeywordsAnswer{AddKeywordsAction::Ok, u"red shoes\r\nboots"_s, {}, u"One keyword per line"_s}));
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(AddKeywordsDialog, showsWhatItStartsWith)
{
    dialog.NewKeywords = u"a\r\nb"_s;
    open();
    EXPECT_EQ(typed().toPlainText(), u"a\nb"_s);
    EXPECT_TRUE(button(u"cmdOK"_s).isEnabled());
    typed().clear();
    EXPECT_FALSE(button(u"cmdOK"_s).isEnabled());
}

TEST_F(AddKeywordsDialog, leavesEnterToTheTextWhileItIsTyped)
{
    open();
    typed().setFocus();
    EXPECT_FALSE(button(u"cmdOK"_s).isDefault());
    QTest::keyClick(&typed(), Qt::Key_Tab);
    EXPECT_FALSE(typed().hasFocus());
    EXPECT_TRUE(button(u"cmdOK"_s).isDefault());
}

TEST_F(AddKeywordsDialog, isConfirmedByEnterElsewhere)
{
    dialog.NewKeywords = u"a"_s;
    open();
    showTab(2);
    url().setFocus();
    QTest::keyClick(&url(), Qt::Key_Return);
    EXPECT_EQ(dialog.ActionType, AddKeywordsAction::Ok);
}

TEST_F(AddKeywordsDialog, isCancelledByButtonKeyAndCloseBox)
{
    for (int way = 0; way < 3; ++way) {
        frmAddkeywords other(world.app);
        other.Prepare();
        other.show();
        if (way == 0)
            click(other, u"cmdCancel"_s);
        else if (way == 1)
            QTest::keyClick(&other, Qt::Key_Escape);
        else
            other.close();
        EXPECT_EQ(other.ActionType, AddKeywordsAction::Cancelled);
        EXPECT_FALSE(other.isVisible());
    }
}

TEST_F(AddKeywordsDialog, asksForAFileToImport)
{
    open();
    showTab(1);
    world.desktop.files = {world.path(u"list.txt"_s)};
    control<QComboBox>(dialog, u"cboSeparetor"_s).lineEdit()->selectAll();
    QTest::keyClicks(control<QComboBox>(dialog, u"cboSeparetor"_s).lineEdit(), u"||"_s);
    click(dialog, u"cmdImport"_s);
    ASSERT_EQ(world.desktop.questions.size(), 1U);
    EXPECT_EQ(world.desktop.questions[0].filter, u"Text files (*.txt)|*.txt|All Files (*.*)|*.*"_s);
    EXPECT_EQ(world.desktop.questions[0].kind, FilePick::Open);
    EXPECT_EQ(dialog.answer(),
              (AddKeywordsAnswer{AddKeywordsAction::Import, {}, world.path(u"list.txt"_s), u"||"_s}));
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(AddKeywordsDialog, staysOpenWithoutAFile)
{
    open();
    showTab(1);
    click(dialog, u"cmdImport"_s);
    EXPECT_EQ(world.desktop.questions.size(), 1U);
    EXPECT_EQ(dialog.ActionType, AddKeywordsAction::None);
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(AddKeywordsDialog, importsNothingWhileAnEntryIsUpdated)
{
    dialog.UpdateStatus = true;
    open();
    showTab(1);
    EXPECT_FALSE(button(u"cmdImport"_s).isEnabled());
    click(dialog, u"cmdImport"_s);
    EXPECT_TRUE(world.desktop.questions.empty());
}

TEST_F(AddKeywordsDialog, takesTheKeywordsOfAPage)
{
    open();
    showTab(2);
    click(dialog, u"cmdGetWebSite"_s);
    EXPECT_EQ(button(u"cmdGetWebSite"_s).text(), u"&Cancel"_s);
    EXPECT_EQ(status(), u"Please wait while retrieving web site ..."_s);
    EXPECT_EQ(world.desktop.waiting, 1);
    ASSERT_EQ(world.http.requests.size(), 1U);
    EXPECT_EQ(world.http.requests[0].url, u"http://www.site.example"_s);
    world.http.answer(0, "<meta name=keywords content=\"a b, c,\">", 404);
    EXPECT_EQ(listed(), u"a b/c/"_s);
    EXPECT_EQ(button(u"cmdGetWebSite"_s).text(), u"&Get"_s);
    EXPECT_EQ(status(), QString());
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(AddKeywordsDialog, enablesOkBehindAFetchUntilTheTextChanges)
{
    open();
    get("a");
    EXPECT_TRUE(button(u"cmdOK"_s).isEnabled());
    QTest::keyClicks(&typed(), u"b"_s);
    QTest::keyClick(&typed(), Qt::Key_Backspace);
    EXPECT_FALSE(button(u"cmdOK"_s).isEnabled());
}

TEST_F(AddKeywordsDialog, putsTheTypedTextBeforeTheList)
{
    open();
    QTest::keyClicks(&typed(), u"typed"_s);
    get("a;x,b");
    click(dialog, u"cmdOK"_s);
    EXPECT_EQ(dialog.NewKeywords, u"typeda x\r\nb\r\n"_s);
}

TEST_F(AddKeywordsDialog, appendsOnlyWhenTold)
{
    open();
    get("a,b");
    get("c");
    EXPECT_EQ(listed(), u"c"_s);
    click(dialog, u"chkAppend"_s);
    get("a,c");
    EXPECT_EQ(listed(), u"c/a/c"_s);
}

TEST_F(AddKeywordsDialog, listsNothingOfAPageWithoutKeywords)
{
    open();
    get("");
    EXPECT_EQ(list().count(), 0);
    EXPECT_TRUE(world.desktop.boxes.empty());
    EXPECT_EQ(button(u"cmdGetWebSite"_s).text(), u"&Get"_s);
}

TEST_F(AddKeywordsDialog, refusesAnAddressWithoutADot)
{
    open();
    showTab(2);
    type(dialog, u"cboURL"_s, u"localhost"_s);
    click(dialog, u"cmdGetWebSite"_s);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0],
              (MessageBox{u"Get Keywords"_s,
                          u"Invalid web site URL. Please check your web site URL and try again."_s,
                          MessageIcon::Information, MessageButtons::Ok}));
    EXPECT_TRUE(world.http.requests.empty());
    EXPECT_EQ(url().lineEdit()->selectedText(), u"localhost"_s);
    EXPECT_EQ(dialog.focusWidget(), &url());
    EXPECT_EQ(button(u"cmdGetWebSite"_s).text(), u"&Get"_s);
}

TEST_F(AddKeywordsDialog, fetchesALocalPathAsAnAddress)
{
    open();
    showTab(2);
    type(dialog, u"cboURL"_s, u"/pages/a.html"_s);
    click(dialog, u"cmdGetWebSite"_s);
    ASSERT_EQ(world.http.requests.size(), 1U);
    EXPECT_EQ(world.http.requests[0].url, u"/pages/a.html"_s);
}

TEST_F(AddKeywordsDialog, cancelsAFetch)
{
    open();
    showTab(2);
    click(dialog, u"cmdGetWebSite"_s);
    click(dialog, u"cmdGetWebSite"_s);
    EXPECT_EQ(world.http.pending(), 0);
    EXPECT_EQ(button(u"cmdGetWebSite"_s).text(), u"&Get"_s);
    EXPECT_EQ(world.desktop.waiting, 0);
    EXPECT_EQ(listed(), QString());
    get("a");
    EXPECT_EQ(listed(), u"a"_s);
}

TEST_F(AddKeywordsDialog, letsGoOfAFetchWhenItCloses)
{
    open();
    showTab(2);
    click(dialog, u"cmdGetWebSite"_s);
    click(dialog, u"cmdCancel"_s);
    EXPECT_EQ(world.http.pending(), 0);
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(AddKeywordsDialog, removesTheSelectedEntry)
{
    open();
    QTest::keyClick(&list(), Qt::Key_Delete);
    get("a,b,c");
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(listed(), u"a/b/c"_s);
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualItemRect(list().item(1)).center());
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(listed(), u"a/c"_s);
}

TEST_F(AddKeywordsDialog, logsWhenItHasNoTransfer)
{
    world.http.failControl = u"no socket"_s;
    open();
    EXPECT_EQ(world.takeLog(), u"frmAddLeyword_Error: no socket"_s);
    showTab(2);
    type(dialog, u"cboURL"_s, u"a.example"_s);
    click(dialog, u"cmdGetWebSite"_s);
    EXPECT_EQ(button(u"cmdGetWebSite"_s).text(), u"&Get"_s);
    EXPECT_TRUE(dialog.isVisible());
}

} // namespace
} // namespace sondrel
