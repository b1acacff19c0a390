#include "shell/frmURLs.h"

#include "shell/tree_nodes.h"
#include "shell/url_list_view.h"
#include "tests/shell/dialog_test.h"

#include <QDir>
#include <QHeaderView>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const QString File = u"../system/qltULs.dat"_s;

class UrlsDialog : public testing::Test
{
protected:
    UrlsDialog() : dialog(world.app) {}

    void open(const QByteArray &known, const QStringList &chosen = {})
    {
        world.write(File, known);
        Collection<clsURL> urls;
        for (const QString &url : chosen)
            urls.Add({url, true}, url);
        dialog.setURLCollection(urls);
        dialog.show();
    }
    UrlListView &list() { return control<UrlListView>(dialog, u"lvwURLs"_s); }
    // "+" for a checked row, "-" for one that is not.
    QString rows()
    {
        QStringList shown;
        for (int row = 0; row < list().topLevelItemCount(); ++row) {
            const QTreeWidgetItem &item = *list().topLevelItem(row);
            shown.append((item.checkState(0) == Qt::Checked ? u'+' : u'-') + item.text(0));
        }
        return shown.join(u' ');
    }
    QString chosen() const
    {
        QStringList urls;
        for (const clsURL &url : dialog.URLCollection())
            urls.append(url.URL + (url.IsCompetitor ? u"!"_s : QString()));
        return urls.join(u' ');
    }
    void clickRow(int row)
    {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {},
                          list().visualItemRect(list().topLevelItem(row)).center());
    }
    void clickBox(int row)
    {
        const QRect place = list().visualItemRect(list().topLevelItem(row));
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, {place.left() + 8, place.center().y()});
    }

    World world;
    frmURLs dialog;
};

TEST_F(UrlsDialog, isTitledAndCaptioned)
{
    EXPECT_EQ(dialog.windowTitle(), u"Add Web Site"_s);
    EXPECT_EQ(control<QAbstractButton>(dialog, u"cmdAdd"_s).text(), u"&Add"_s);
    EXPECT_EQ(control<QAbstractButton>(dialog, u"cmdDelete"_s).text(), u"&Delete"_s);
    EXPECT_EQ(list().headerItem()->text(0), u"URLs"_s);
    EXPECT_EQ(list().columnCount(), 1);
}

TEST_F(UrlsDialog, showsTheKnownURLsWithTheProjectsChecked)
{
    open("a.example\r\nB.example\r\nc.example\r\n", {u"c.example"_s, u"b.example"_s, u"lost.example"_s});
    EXPECT_EQ(rows(), u"-a.example -B.example +c.example"_s);
}

TEST_F(UrlsDialog, losesAProjectsURLThatIsNotKnown)
{
    open("a.example\r\n", {u"a.example"_s, u"lost.example"_s});
    click(dialog, u"cmdOK"_s);
    EXPECT_EQ(chosen(), u"a.example"_s);
    EXPECT_EQ(world.read(File), "a.example\r\n\r\n");
}

TEST_F(UrlsDialog, clearsAllCompetitorMarks)
{
    open("a.example\r\nb.example\r\n", {u"a.example"_s, u"b.example"_s});
    click(dialog, u"cmdOK"_s);
    EXPECT_EQ(chosen(), u"a.example b.example"_s);
    EXPECT_FALSE(dialog.Cancelled());
}

TEST_F(UrlsDialog, addsWhatIsTypedBehindItsScheme)
{
    open("");
    type(dialog, u"txtURLs"_s, u"http://www.site.example"_s);
    click(dialog, u"cmdAdd"_s);
    EXPECT_EQ(rows(), u"+www.site.example"_s);
    EXPECT_EQ(nodeKey(list().topLevelItem(0)), u"www.site.example"_s);
    EXPECT_EQ(control<QLineEdit>(dialog, u"txtURLs"_s).text(), QString());
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(UrlsDialog, refusesWhatIsNoDomain)
{
    open("");
    type(dialog, u"txtURLs"_s, u"site"_s);
    click(dialog, u"cmdAdd"_s);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0],
              (MessageBox{u"Add Web Site"_s, u"Invalid URL."_s, MessageIcon::Critical, MessageButtons::Ok}));
    EXPECT_EQ(rows(), QString());
    EXPECT_EQ(control<QLineEdit>(dialog, u"txtURLs"_s).selectedText(), u"site"_s);
    EXPECT_EQ(dialog.focusWidget()->objectName(), u"txtURLs"_s);
}

TEST_F(UrlsDialog, addsNothingTwiceAndSaysNothing)
{
    open("a.example\r\n");
    type(dialog, u"txtURLs"_s, u"http://A.example"_s);
    click(dialog, u"cmdAdd"_s);
    EXPECT_EQ(rows(), u"+a.example"_s);
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(UrlsDialog, enablesAddWhileSomethingIsTyped)
{
    open("");
    EXPECT_FALSE(isEnabled(dialog, u"cmdAdd"_s));
    type(dialog, u"txtURLs"_s, u"a"_s);
    EXPECT_TRUE(isEnabled(dialog, u"cmdAdd"_s));
    type(dialog, u"txtURLs"_s, {});
    EXPECT_FALSE(isEnabled(dialog, u"cmdAdd"_s));
}

TEST_F(UrlsDialog, enablesDeleteWhileARowIsSelected)
{
    open("a.example\r\nb.example\r\n");
    EXPECT_FALSE(isEnabled(dialog, u"cmdDelete"_s));
    clickRow(1);
    EXPECT_TRUE(isEnabled(dialog, u"cmdDelete"_s));
    list().clearSelection();
    EXPECT_FALSE(isEnabled(dialog, u"cmdDelete"_s));
}

TEST_F(UrlsDialog, removesTheSelectedRowsAfterAQuestion)
{
    open("a.example\r\nb.example\r\nc.example\r\n");
    clickRow(0);
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::ControlModifier,
                      list().visualItemRect(list().topLevelItem(2)).center());
    click(dialog, u"cmdDelete"_s);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0],
              (MessageBox{u"URLs"_s, u"Are you sure you want to remove selected URLs?"_s, MessageIcon::None,
                          MessageButtons::YesNo}));
    EXPECT_EQ(rows(), u"-b.example"_s);
    EXPECT_TRUE(list().topLevelItem(0)->isSelected());
}

TEST_F(UrlsDialog, keepsTheRowsAfterANo)
{
    open("a.example\r\n");
    world.desktop.answer = MessageAnswer::No;
    clickRow(0);
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(rows(), u"-a.example"_s);
}

TEST_F(UrlsDialog, asksNothingForTheDeleteKeyWithoutASelection)
{
    open("a.example\r\n");
    list().clearSelection();
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(UrlsDialog, keepsAnUncheckedURLInTheListOfAll)
{
    open("a.example\r\nb.example\r\n", {u"a.example"_s, u"b.example"_s});
    clickBox(0);
    click(dialog, u"cmdOK"_s);
    EXPECT_EQ(chosen(), u"b.example"_s);
    EXPECT_EQ(world.read(File), "a.example\r\nb.example\r\n\r\n");
    frmURLs again(world.app);
    again.setURLCollection(dialog.URLCollection());
    again.show();
    control<UrlListView>(again, u"lvwURLs"_s).topLevelItem(0)->setCheckState(0, Qt::Checked);
    click(again, u"cmdOK"_s);
    EXPECT_EQ(again.URLCollection().Count(), 2);
}

TEST_F(UrlsDialog, sortsByAClickOnTheHeader)
{
    open("b.example\r\nC.example\r\na.example\r\n", {u"b.example"_s});
    QHeaderView &header = *list().header();
    const QPoint place(header.sectionSize(0) / 2, header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(rows(), u"-a.example +b.example -C.example"_s);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(rows(), u"-C.example +b.example -a.example"_s);
}

TEST_F(UrlsDialog, checksAllSelectedRowsBySpace)
{
    open("a.example\r\nb.example\r\n", {u"b.example"_s});
    clickRow(0);
    QTest::keyClick(&list(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_EQ(rows(), u"+a.example +b.example"_s);
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_EQ(rows(), u"-a.example -b.example"_s);
}

TEST_F(UrlsDialog, addsByEnterAndClosesByTheNext)
{
    open("");
    type(dialog, u"txtURLs"_s, u"a.example"_s);
    QTest::keyClick(&control<QLineEdit>(dialog, u"txtURLs"_s), Qt::Key_Return);
    EXPECT_EQ(rows(), u"+a.example"_s);
    EXPECT_TRUE(dialog.isVisible());
    QTest::keyClick(&control<QLineEdit>(dialog, u"txtURLs"_s), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(chosen(), u"a.example"_s);
}

TEST_F(UrlsDialog, changesNothingWhenCancelled)
{
    open("a.example\r\n", {u"a.example"_s});
    type(dialog, u"txtURLs"_s, u"b.example"_s);
    click(dialog, u"cmdAdd"_s);
    click(dialog, u"cmdCancel"_s);
    EXPECT_TRUE(dialog.Cancelled());
    EXPECT_EQ(world.read(File), "a.example\r\n");
    EXPECT_EQ(chosen(), u"a.example!"_s);
}

TEST_F(UrlsDialog, isCancelledByItsCloseBox)
{
    open("a.example\r\n");
    dialog.close();
    EXPECT_TRUE(dialog.Cancelled());
}

TEST_F(UrlsDialog, logsAListThatCannotBeReadAndLeavesIt)
{
    QDir().mkpath(world.path(File));
    dialog.show();
    EXPECT_TRUE(world.takeLog().startsWith(u"frmURL_Prepare error:  "_s));
    click(dialog, u"cmdOK"_s);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(UrlsDialog, logsAListThatCannotBeWrittenButTakesTheURLs)
{
    open("a.example\r\n", {u"a.example"_s});
    QFile::remove(world.path(File));
    QDir().mkpath(world.path(File));
    click(dialog, u"cmdOK"_s);
    EXPECT_TRUE(world.takeLog().startsWith(u"frmURLs_SaveForm error:  The list of known URLs"_s));
    EXPECT_EQ(chosen(), u"a.example"_s);
    EXPECT_FALSE(dialog.Cancelled());
}

TEST_F(UrlsDialog, logsMessagesThatCannotBeShown)
{
    open("a.example\r\n");
    world.desktop.failing = true;
    clickRow(0);
    click(dialog, u"cmdDelete"_s);
    EXPECT_EQ(world.takeLog(), u"frmURLs_DeleteURL error:  The message cannot be shown"_s);
    EXPECT_EQ(rows(), u"-a.example"_s);
    type(dialog, u"txtURLs"_s, u"site"_s);
    click(dialog, u"cmdAdd"_s);
    EXPECT_EQ(world.takeLog(), u"frmURLs_cmdAdd_Click error: The message cannot be shown"_s);
}

} // namespace
} // namespace sondrel
