#include "shell/frmSondrel.h"

#include "core/registry.h"
#include "shell/keyword_entry.h"
#include "shell/row_table.h"
#include "tests/shell/main_window_test.h"
#include "tests/support/bad_files.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const QByteArray Listings = "http://www.site.example/shop;#Own caf\xC3\xA9;#1\r\n"
                            "http://rival.example/;#Rival;#1\r\n"
                            "http://odd.example/;#two;#marks;#1\r\n"
                            "http://else.example/;#Else;#1\r\n"
                            "\r\n"
                            "http://behind.example/;#Behind an empty line;#1\r\n";

class KeywordGrid : public MainWindowTest
{
protected:
    KeywordGrid() { writeShop(); }

    void SetUp() override { open(); }

    QModelIndex cell(int row, GridField field) { return grid().model()->index(row, static_cast<int>(field)); }
    QString keyword(int row) { return cell(row, GridField::Keyword).data().toString(); }
    QStringList keywords()
    {
        QStringList texts;
        for (int row = 0; row < grid().model()->rowCount(); ++row)
            texts.append(keyword(row));
        return texts;
    }
    QByteArray saved() { return world.read(u"Projects/Shop/Keywords.dat"_s); }
    void clickCell(int row, GridField field, Qt::KeyboardModifiers keys = {})
    {
        QTest::mouseClick(grid().viewport(), Qt::LeftButton, keys,
                          grid().visualRect(cell(row, field)).center());
    }
    QString label(const QString &name) { return control<QLabel>(*window, name).text(); }
    bool shows(const QString &name) { return control<QWidget>(*window, name).isVisible(); }
    ListingOwner ownerOf(int row)
    {
        return listings().model()->index(row, 0).data(ListingModel::OwnerRole).value<ListingOwner>();
    }
    QString listing(int row, int column) { return listings().model()->index(row, column).data().toString(); }
    QLineEdit *editor() { return grid().findChild<QLineEdit *>(); }
    void rename(const QString &name)
    {
        grid().setFocus();
        QTest::keyClick(&grid(), Qt::Key_F2);
        ASSERT_TRUE(editor());
        editor()->setText(name);
        QTest::keyClick(editor(), Qt::Key_Return);
        QApplication::processEvents();
        QApplication::processEvents();
    }
};

TEST_F(KeywordGrid, keepsTheRulesOfItsModels)
{
    const QAbstractItemModelTester keywordTester(grid().model(),
                                                 QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QAbstractItemModelTester listingTester(listings().model(),
                                                 QAbstractItemModelTester::FailureReportingMode::Fatal);
    world.write(u"Results/Zeta/boots.dat"_s, Listings);
    grid().selectRow(1);
    window->give(Command::CopyKeywords);
    window->give(Command::DeleteKeywords);
    window->give(Command::PasteKeywords);
    window->give(Command::ShowAll);
    EXPECT_EQ(keywords(), (QStringList{u"shoes"_s, u"socks"_s, u"boots"_s}));
}

TEST_F(KeywordGrid, changesABoxByAClick)
{
    clickCell(1, GridField::Show);
    EXPECT_EQ(saved(), "shoes;-1\r\nboots;0\r\nsocks;-1\r\n\r\n");
    clickCell(1, GridField::Show);
    EXPECT_EQ(saved(), "shoes;-1\r\nboots;-1\r\nsocks;-1\r\n\r\n");
}

TEST_F(KeywordGrid, changesTheBoxesOfAllSelectedRowsByTheSpaceBar)
{
    clickCell(0, GridField::Keyword);
    clickCell(2, GridField::Keyword, Qt::ControlModifier);
    QTest::keyClick(&grid(), Qt::Key_Space);
    EXPECT_EQ(saved(), "shoes;0\r\nboots;-1\r\nsocks;0\r\n\r\n");
}

TEST_F(KeywordGrid, renamesAKeywordByF2)
{
    grid().selectRow(1);
    rename(u"red boots"_s);
    EXPECT_EQ(keyword(1), u"red boots"_s);
    EXPECT_EQ(saved(), "shoes;-1\r\nred boots;-1\r\nsocks;-1\r\n\r\n");
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(KeywordGrid, renamesAKeywordByADoubleClick)
{
    clickCell(0, GridField::Keyword);
    QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {},
                       grid().visualRect(cell(0, GridField::Keyword)).center());
    ASSERT_TRUE(editor());
    QTest::keyClick(editor(), Qt::Key_Escape);
    EXPECT_EQ(keyword(0), u"shoes"_s);
}

TEST_F(KeywordGrid, editsNoOtherColumn)
{
    for (const GridField field :
         {GridField::Counts, GridField::Positions, GridField::Page, GridField::LastPosition,
          GridField::Change, GridField::URL, GridField::Status}) {
        clickCell(0, field);
        QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, grid().visualRect(cell(0, field)).center());
        EXPECT_FALSE(editor()) << static_cast<int>(field);
    }
}

TEST_F(KeywordGrid, cleansATypedKeywordAndSaysSo)
{
    grid().selectRow(0);
    rename(u"red;shoes"_s);
    EXPECT_EQ(keyword(0), u"red shoes"_s);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0].text, cleanedKeywordsText(1));
}

TEST_F(KeywordGrid, refusesANameThatIsTakenAndSaysSo)
{
    grid().selectRow(0);
    rename(u"BOOTS"_s);
    EXPECT_EQ(keyword(0), u"shoes"_s);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0].text, u"The list holds the keyword \"BOOTS\" already."_s);
}

TEST_F(KeywordGrid, saysWhenAnEditHasNoKeywordBehindIt)
{
    grid().selectRow(0);
    rename(u"red shoes"_s);
    clickCell(0, GridField::Show);
    EXPECT_TRUE(world.takeLog().startsWith(u"frmSondrel_grdBidsManage_AfterEdit error: "))
        << "the keyword keeps its old key until the project is loaded again";
}

TEST_F(KeywordGrid, readsTheListingsOfTheSelectedRow)
{
    world.write(u"Results/Zeta/boots.dat"_s, Listings);
    grid().selectRow(1);
    ASSERT_EQ(listings().model()->rowCount(), 3) << "up to the empty line, without the line of four fields";
    EXPECT_EQ(listing(0, ListingModel::Number), u"1"_s);
    EXPECT_EQ(listing(0, ListingModel::Title), u"Own caf\u00e9"_s);
    EXPECT_EQ(listing(2, ListingModel::Url), u"http://else.example/"_s);
    EXPECT_EQ(world.read(u"Results/Zeta/boots.dat"_s), Listings) << "shown decoded, kept as it is";
}

TEST_F(KeywordGrid, marksOwnAndCompetingListings)
{
    world.write(u"Results/Zeta/boots.dat"_s, Listings);
    grid().selectRow(1);
    EXPECT_EQ(ownerOf(0), ListingOwner::Own);
    EXPECT_EQ(ownerOf(1), ListingOwner::Competitor);
    EXPECT_EQ(ownerOf(2), ListingOwner::Nobody);
    EXPECT_EQ(listings().toolTip(),
              u"Red color indicates your URL, Green color indicates your competitor's URL."_s);
}

TEST_F(KeywordGrid, readsNoFileForTheRowThatIsShownAlready)
{
    grid().selectRow(1);
    world.write(u"Results/Zeta/boots.dat"_s, Listings);
    grid().selectRow(1);
    EXPECT_EQ(listings().model()->rowCount(), 0);
    grid().selectRow(0);
    grid().selectRow(1);
    EXPECT_EQ(listings().model()->rowCount(), 3);
}

TEST_F(KeywordGrid, showsNoListingsWithoutTheirFile)
{
    world.write(u"Results/Zeta/boots.dat"_s, Listings);
    grid().selectRow(1);
    grid().selectRow(2);
    EXPECT_EQ(listings().model()->rowCount(), 0);
    EXPECT_EQ(label(u"lblListingHint"_s), u"There are no listings of this keyword on Zeta yet."_s);
    EXPECT_TRUE(shows(u"cmdListingHint"_s));
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(KeywordGrid, logsListingsThatCannotBeRead)
{
    putUnreadable(world, u"Results/Zeta/boots.dat"_s);
    grid().selectRow(1);
    EXPECT_EQ(world.takeLog(), u"Error occured while loading ranking results."_s);
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(KeywordGrid, logsAMissingEngine)
{
    child().setEngineName({});
    grid().selectRow(1);
    EXPECT_EQ(world.takeLog(), u"Invalid Engine selection - engine name is empty."_s);
}

TEST_F(KeywordGrid, opensAListingByDoubleClickAndByEnter)
{
    world.write(u"Results/Zeta/boots.dat"_s, "www.plain.example/;#A;#1\r\nhttp://b.example/;#B;#1\r\n");
    grid().selectRow(1);
    const QPoint place = listings().visualRect(listings().model()->index(0, 1)).center();
    QTest::mouseClick(listings().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(listings().viewport(), Qt::LeftButton, {}, place);
    listings().selectRow(1);
    QTest::keyClick(&listings(), Qt::Key_Return);
    EXPECT_EQ(world.desktop.opened,
              (std::vector<std::pair<QString, ShowMode>>{{u"http://www.plain.example/"_s, ShowMode::Normal},
                                                         {u"http://b.example/"_s, ShowMode::Normal}}));
}

TEST_F(KeywordGrid, goesToTheListingsByEnter)
{
    world.write(u"Results/Zeta/boots.dat"_s, Listings);
    grid().setFocus();
    grid().selectRow(1);
    QTest::keyClick(&grid(), Qt::Key_Return);
    EXPECT_TRUE(listings().hasFocus());
    EXPECT_EQ(listings().currentIndex().row(), 0);
}

TEST_F(KeywordGrid, goesToItsEndsByHomeAndEnd)
{
    grid().setFocus();
    grid().selectRow(1);
    QTest::keyClick(&grid(), Qt::Key_End);
    EXPECT_EQ(grid().currentIndex().row(), 2);
    QTest::keyClick(&grid(), Qt::Key_Home);
    EXPECT_EQ(grid().currentIndex().row(), 0);
    QTest::keyClick(&grid(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(grid().selectionModel()->selectedRows().size(), 3);
}

TEST_F(KeywordGrid, hasTheKeyboardAtTheStart)
{
    EXPECT_TRUE(grid().hasFocus());
    EXPECT_EQ(label(u"lblListingHint"_s), u"Select a keyword to see the listings of its last lookup."_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    EXPECT_TRUE(enabled(Command::CopyKeywords)) << "a row has been selected";
    EXPECT_EQ(grid().currentIndex().row(), 0);
}

TEST_F(KeywordGrid, selectsThePositionsOfAUrl)
{
    world.write(u"Results/Zeta/boots.dat"_s, Listings);
    grid().selectRow(1);
    click(*window, u"cmdArrow"_s);
    urls().setCurrentItem(urls().topLevelItem(0));
    const int runs = world.desktop.pendingEventRuns;
    window->give(Command::ShowPosition);
    ASSERT_EQ(listings().selectionModel()->selectedRows().size(), 1);
    EXPECT_EQ(listings().selectionModel()->selectedRows().first().row(), 0);
    EXPECT_EQ(world.desktop.pendingEventRuns - runs, 3) << "after each listing";
    EXPECT_TRUE(listings().hasFocus());
}

TEST_F(KeywordGrid, logsWhatKeepsItFromSelectingPositions)
{
    world.write(u"Results/Zeta/boots.dat"_s, Listings);
    grid().selectRow(1);
    click(*window, u"cmdArrow"_s);
    urls().setCurrentItem(urls().topLevelItem(0));
    world.desktop.onPendingEvents = [] { throw Failure(u"no events"_s); };
    window->give(Command::ShowPosition);
    EXPECT_EQ(world.takeLog(), u"frmMain_ShowURLPosition error:  no events"_s);
    world.desktop.onPendingEvents = nullptr;
}

TEST_F(KeywordGrid, asksBeforeItDeletesKeywords)
{
    grid().setFocus();
    grid().selectRow(1);
    world.desktop.answers = {MessageAnswer::No};
    QTest::keyClick(&grid(), Qt::Key_Delete);
    const MessageBox question{u"Delete Keyword"_s, u"Are you sure you want to delete selected Keyword(s)?"_s,
                              MessageIcon::Question, MessageButtons::YesNo};
    EXPECT_EQ(world.desktop.boxes, std::vector<MessageBox>{question});
    EXPECT_EQ(keywords().size(), 3);
    QTest::keyClick(&grid(), Qt::Key_Delete);
    EXPECT_EQ(keywords(), (QStringList{u"shoes"_s, u"socks"_s}));
    EXPECT_EQ(grid().currentIndex().row(), 1) << "a row that is still there";
    EXPECT_EQ(saved(), "shoes;-1\r\nsocks;-1\r\n\r\n");
}

TEST_F(KeywordGrid, logsAQuestionThatCannotBeAsked)
{
    grid().selectRow(1);
    world.desktop.failing = true;
    window->give(Command::DeleteKeywords);
    EXPECT_TRUE(world.takeLog().startsWith(u"frmSondrel_DeleteSelectedKeywords error :  "));
    EXPECT_EQ(keywords().size(), 3);
}

TEST_F(KeywordGrid, deletesWithTheLastRowEverySelection)
{
    grid().selectAll();
    window->give(Command::DeleteKeywords);
    EXPECT_EQ(keywords(), QStringList());
    EXPECT_FALSE(enabled(Command::DeleteKeywords));
    EXPECT_EQ(label(u"lblGridHint"_s), u"This project has no keywords yet."_s);
    EXPECT_EQ(label(u"panelKeywordCount"_s), u"0 keywords"_s);
}

TEST_F(KeywordGrid, deletesNothingByAKeyElsewhere)
{
    grid().selectRow(1);
    tree().setFocus();
    QTest::keyClick(&tree(), Qt::Key_Delete);
    EXPECT_TRUE(world.desktop.boxes.empty());
    EXPECT_EQ(keywords().size(), 3);
}

TEST_F(KeywordGrid, pastesWhatItHasCopied)
{
    grid().setFocus();
    grid().selectRow(1);
    QTest::keyClick(&grid(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(enabled(Command::PasteKeywords));
    window->give(Command::DeleteKeywords);
    QTest::keyClick(&grid(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(keywords(), (QStringList{u"shoes"_s, u"socks"_s, u"boots"_s}));
    QTest::keyClick(&grid(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(keywords().size(), 3) << "a keyword that is there already makes no row";
    EXPECT_EQ(saved(), "shoes;-1\r\nsocks;-1\r\nboots;-1\r\n\r\n");
}

TEST_F(KeywordGrid, exportsItsRowsUnderTheirHeader)
{
    const QString file = world.path(u"list.txt"_s);
    world.desktop.files = {file};
    window->give(Command::ExportKeywords);
    ASSERT_EQ(world.desktop.questions.size(), 1U);
    EXPECT_EQ(world.desktop.questions[0].kind, FilePick::Save);
    EXPECT_EQ(world.desktop.questions[0].filter, u"Text files (*.txt)|*.txt|All Files (*.*)|*.*"_s);
    EXPECT_EQ(world.read(u"list.txt"_s), "Keyword\r\nshoes\r\nboots\r\nsocks\r\n\r\n");
}

TEST_F(KeywordGrid, exportsNothingWhenNoFileIsChosen)
{
    window->give(Command::ExportKeywords);
    EXPECT_EQ(world.desktop.questions.size(), 1U);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(KeywordGrid, showsOptimizedKeywordsUntilTold)
{
    clickCell(0, GridField::Show);
    window->give(Command::ShowAll);
    EXPECT_EQ(keywords().size(), 3);
    window->give(Command::ShowOptimized);
    EXPECT_EQ(keywords(), (QStringList{u"boots"_s, u"socks"_s}));
    EXPECT_EQ(label(u"panelKeywordCount"_s), u"2 keywords"_s);
    EXPECT_EQ(child().Keywords().Count(), 3);
    EXPECT_TRUE(window->action(Command::ShowOptimized)->isChecked());
    EXPECT_FALSE(window->action(Command::ShowAll)->isChecked());
}

TEST_F(KeywordGrid, keepsTheTickOfTheFilterThatIsChosenAgain)
{
    window->action(Command::ShowOptimized)->trigger();
    EXPECT_TRUE(window->action(Command::ShowOptimized)->isChecked());
    EXPECT_FALSE(window->action(Command::ShowAll)->isChecked());
}

TEST_F(KeywordGrid, offersAllKeywordsWhenNoneIsChecked)
{
    grid().selectAll();
    QTest::keyClick(&grid(), Qt::Key_Space);
    child().PopulateKeywords();
    EXPECT_EQ(label(u"lblGridHint"_s), u"The boxes of all 3 keywords are unchecked, so none is shown."_s);
    click(*window, u"cmdGridHint"_s);
    EXPECT_EQ(keywords().size(), 3);
    EXPECT_TRUE(grid().isVisible());
}

TEST_F(KeywordGrid, offersItsOnlyKeyword)
{
    child().Keywords().Remove(1);
    child().Keywords().Remove(1);
    child().Keywords().Keywords.at(1).Optimize = false;
    child().PopulateKeywords();
    EXPECT_EQ(label(u"lblGridHint"_s), u"The box of the only keyword is unchecked, so it is not shown."_s);
}

TEST_F(KeywordGrid, saysWhatToDoNextInDarkColoursToo)
{
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::PlaceholderText, Qt::black); // as some desktops leave it
    QApplication::setPalette(dark);
    QApplication::processEvents();
    const auto &line = control<QLabel>(*window, u"lblListingHint"_s);
    const QColor grey = line.palette().color(line.foregroundRole());
    EXPECT_EQ(grey.lightness(), 255);
    EXPECT_NEAR(grey.alpha(), 127, 1);
    QApplication::setPalette(before);
}

TEST_F(KeywordGrid, keepsTheSelectedKeywordWhenTheFilterChanges)
{
    grid().selectRow(2);
    window->give(Command::ShowAll);
    EXPECT_EQ(grid().currentIndex().row(), 2);
}

TEST_F(KeywordGrid, onlySavesByTheSaveButton)
{
    child().Keywords().Keywords.at(u"shoes"_s).CurPos = u"5"_s;
    click(*window, u"Property"_s);
    EXPECT_EQ(saved(), "shoes;-1\r\nboots;-1\r\nsocks;-1\r\n\r\n");
    EXPECT_TRUE(world.read(u"Projects/Shop/Zeta.dat"_s).startsWith("shoes;;5;"));
}

TEST_F(KeywordGrid, remembersDraggedColumns)
{
    grid().horizontalHeader()->moveSection(0, 3); // the box to the fourth place
    window->close();
    EXPECT_EQ(GetRegistryText(world.app, world.app.RegPreference, u"ColumOrder"_s, {}),
              u"3,0,1,2,4,5,6,7,8"_s);
    open();
    EXPECT_EQ(child().columnOrder().columnOf(GridField::Show), 3);
    EXPECT_EQ(grid().horizontalHeader()->visualIndex(static_cast<int>(GridField::Show)), 3);
    EXPECT_EQ(keyword(0), u"shoes"_s) << "every reader still finds its field";
    clickCell(0, GridField::Show);
    EXPECT_TRUE(saved().startsWith("shoes;0\r\n"));
}

TEST_F(KeywordGrid, remembersDraggedWidths)
{
    grid().horizontalHeader()->resizeSection(static_cast<int>(GridField::Keyword), 321);
    window->close();
    open();
    EXPECT_EQ(grid().columnWidth(static_cast<int>(GridField::Keyword)), 321);
}

TEST_F(KeywordGrid, bringsAddedKeywordsIntoView)
{
    QStringList many;
    for (int i = 0; i < 100; ++i)
        many.append(u"many %1"_s.arg(i));
    child().AddKeywordColToGrid(many);
    const auto isShown = [this](int row) {
        return grid().viewport()->rect().contains(grid().visualRect(cell(row, GridField::Keyword)));
    };
    const int first = grid().model()->rowCount();
    child().AddKeywordColToGrid({u"one more"_s, u"another"_s, u"the last"_s});
    EXPECT_TRUE(isShown(first));
    EXPECT_TRUE(isShown(first + 2));
    child().AddKeywordColToGrid(QStringList(many).replaceInStrings(u"many"_s, u"other"_s));
    EXPECT_TRUE(isShown(first + 3)) << "the first of more than fit";
    EXPECT_FALSE(isShown(first + 2));
}

TEST_F(KeywordGrid, fitsAColumnToItsLongestTextAndItsAir)
{
    const QString longest = u"a keyword of many words, and more than the column has room for"_s;
    child().AddKeywordColToGrid({longest});
    const QFontMetrics metrics = grid().fontMetrics();
    const int air = 2 * RowTable::air(metrics);
    for (const auto &[field, text] :
         {std::pair(GridField::Keyword, longest), {GridField::LastPosition, u"Last Position"_s}}) {
        const int column = static_cast<int>(field);
        grid().resizeColumnToContents(column);
        EXPECT_GT(grid().columnWidth(column), metrics.horizontalAdvance(text) + air);
    }
}

TEST_F(KeywordGrid, showsItsCaptionsWithAirAtTheirSides)
{
    QHeaderView &header = *grid().horizontalHeader();
    const int section = static_cast<int>(GridField::Keyword);
    const QRect place(header.sectionViewportPosition(section), 0, header.sectionSize(section),
                      header.height());
    const QImage picture = header.viewport()->grab(place).toImage();
    const auto inked = [&](int left, int right) {
        int pixels = 0;
        for (int x = left; x < right; ++x) {
            for (int y = 3; y < picture.height() - 3; ++y)
                pixels += qGray(picture.pixel(x, y)) < 128;
        }
        return pixels;
    };
    EXPECT_EQ(inked(1, RowTable::air(header.fontMetrics())), 0);
    EXPECT_GT(inked(0, picture.width() / 2), 20);
}

TEST_F(KeywordGrid, givesTheUrlTheRoomThatIsLeft)
{
    const int before = grid().columnWidth(static_cast<int>(GridField::URL));
    window->resize(window->width() + 900, window->height());
    QApplication::processEvents();
    EXPECT_GT(grid().columnWidth(static_cast<int>(GridField::URL)), before);
    window->close();
    EXPECT_EQ(GetRegistryText(world.app, world.app.RegPreference, u"ColumnWidths"_s, u"none"_s), u"none"_s);
}

TEST_F(KeywordGrid, takesWidthsThatMakeNoSenseAsNone)
{
    world.setPreference(u"ColumnWidths"_s, u"1,x,3"_s);
    world.setPreference(u"ListHeights"_s, u"7"_s);
    window->close();
    open();
    EXPECT_GT(grid().columnWidth(static_cast<int>(GridField::Keyword)), 50);
}

TEST_F(KeywordGrid, takesItsFirstColumnOrderWhenNoneCanBeRead)
{
    world.settings.broken = true;
    const frmSondrel other(world.app, {});
    EXPECT_EQ(other.columnOrder(), ColumnOrder());
    world.settings.broken = false;
}

TEST_F(KeywordGrid, logsAProjectThatCannotBeLoaded)
{
    auto account = std::make_shared<clsAccount>(world.app);
    account->Name = u"a/b"_s;
    child().setAccount(account);
    child().ResetForm();
    EXPECT_TRUE(world.takeLog().contains(u"a/b")) << "what went wrong is told";
    EXPECT_EQ(grid().model()->rowCount(), 0);
}

TEST_F(KeywordGrid, hasHeadsWithTips)
{
    const QAbstractItemModel &model = *grid().model();
    const auto tip = [&](GridField field) {
        return model.headerData(static_cast<int>(field), Qt::Horizontal, Qt::ToolTipRole).toString();
    };
    EXPECT_EQ(tip(GridField::Show), u"Check this box for the keywords you want to optimize"_s);
    EXPECT_EQ(tip(GridField::Keyword), u"Search term"_s);
    EXPECT_EQ(tip(GridField::Counts), QString());
    EXPECT_EQ(tip(GridField::Positions), u"Current position"_s);
    EXPECT_EQ(tip(GridField::Page), QString());
    EXPECT_EQ(tip(GridField::LastPosition), u"Last Position"_s);
    EXPECT_EQ(tip(GridField::Change), u"Change"_s);
    EXPECT_EQ(tip(GridField::URL), u"URL of your web site"_s);
    EXPECT_EQ(tip(GridField::Status), QString());
}

} // namespace
} // namespace sondrel
