// The command that adds keywords, from the main window to the disk.
#include "keywords/frmAddkeywords.h"
#include "shell/keyword_entry.h"
#include "tests/shell/main_window_test.h"

#include <QAction>
#include <QPlainTextEdit>
#include <QTabWidget>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

class AddKeywordsCommand : public MainWindowTest
{
protected:
    void openShop()
    {
        writeShop();
        open();
    }
    void add(const QString &typed)
    {
        whenModal<frmAddkeywords>([&](frmAddkeywords &dialog) {
            QTest::keyClicks(&control<QPlainTextEdit>(dialog, u"txtKeywords"_s), typed);
            click(dialog, u"cmdOK"_s);
        });
        window->action(Command::AddKeywords)->trigger();
    }
    void import(const QByteArray &bytes, const QString &separetor = {})
    {
        world.write(u"list.txt"_s, bytes);
        importFile(world.path(u"list.txt"_s), separetor);
    }
    void importFile(const QString &file, const QString &separetor = {})
    {
        world.desktop.files = {file};
        whenModal<frmAddkeywords>([separetor](frmAddkeywords &dialog) {
            control<QTabWidget>(dialog, u"SSTab1"_s).setCurrentIndex(1);
            if (!separetor.isEmpty())
                type(dialog, u"cboSeparetor"_s, separetor);
            click(dialog, u"cmdImport"_s);
        });
        window->action(Command::AddKeywords)->trigger();
    }
    QString keywords()
    {
        QStringList texts;
        for (int row = 0; row < child().model().rowCount(); ++row)
            texts.append(child().model().cell(row, GridField::Keyword));
        return texts.join(u'/');
    }
    QByteArray stored() { return world.read(u"Projects/Shop/Keywords.dat"_s); }
};

TEST_F(AddKeywordsCommand, isEnabledWithAGrid)
{
    openShop();
    EXPECT_TRUE(enabled(Command::AddKeywords));
}

TEST_F(AddKeywordsCommand, addsAndStoresTypedKeywords)
{
    openShop();
    add(u"red shoes\rBoots\rhats"_s);
    EXPECT_EQ(keywords(), u"shoes/boots/socks/red shoes/hats"_s);
    EXPECT_EQ(stored(), "shoes;-1\r\nboots;-1\r\nsocks;-1\r\nred shoes;-1\r\nhats;-1\r\n\r\n");
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(AddKeywordsCommand, offersTheProjectsURLs)
{
    openShop();
    whenModal<frmAddkeywords>([](frmAddkeywords &dialog) {
        EXPECT_EQ(control<QComboBox>(dialog, u"cboURL"_s).itemText(0), u"http://www.site.example"_s);
        click(dialog, u"cmdCancel"_s);
    });
    window->action(Command::AddKeywords)->trigger();
    EXPECT_EQ(keywords(), u"shoes/boots/socks"_s);
}

TEST_F(AddKeywordsCommand, cleansAKeywordThatWouldBreakTheList)
{
    openShop();
    add(u"a;b"_s);
    EXPECT_EQ(keywords(), u"shoes/boots/socks/a b"_s);
    EXPECT_EQ(stored(), "shoes;-1\r\nboots;-1\r\nsocks;-1\r\na b;-1\r\n\r\n");
    QApplication::processEvents(); // it is said when the rows are there
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0], (MessageBox{u"Keywords"_s, cleanedKeywordsText(1),
                                                  MessageIcon::Information, MessageButtons::Ok}));
}

TEST_F(AddKeywordsCommand, importsAFile)
{
    openShop();
    import("\xEF\xBB\xBFth\xC3\xA9,\nboots,Th\xC3\x89,hats", u","_s);
    EXPECT_EQ(keywords(), u"shoes/boots/socks/thé/hats"_s);
    EXPECT_EQ(stored(), "shoes;-1\r\nboots;-1\r\nsocks;-1\r\nth\xE9;-1\r\nhats;-1\r\n\r\n");
}

TEST_F(AddKeywordsCommand, importsManyLinesWithProgress)
{
    openShop();
    QByteArray lines;
    constexpr int Lines = 100000;
    for (int line = 0; line < Lines; ++line)
        lines += "keyword number " + QByteArray::number(line) + "\n";
    world.desktop.pendingEventRuns = 0;
    import(lines);
    EXPECT_EQ(child().model().rowCount(), Lines + 3);
    EXPECT_EQ(stored().count('\n'), Lines + 4);
    EXPECT_GT(world.desktop.pendingEventRuns, 20);
}

TEST_F(AddKeywordsCommand, logsAFileThatCannotBeRead)
{
    openShop();
    importFile(world.path(u"none.txt"_s));
    EXPECT_TRUE(world.takeLog().startsWith(u"frmSondrel_AddKeywords:  "_s));
    EXPECT_EQ(keywords(), u"shoes/boots/socks"_s);
}

} // namespace
} // namespace sondrel
