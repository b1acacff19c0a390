// What the main window's menus and tool bar show, and what of it can be used when.
#include "shell/frmMain.h"
#include "tests/shell/main_window_test.h"
#include "tests/support/picture.h"

#include <QAccessible>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <QProxyStyle>
#include <QToolBar>
#include <QToolButton>

#include <set>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

using C = Command;

class MainMenus : public MainWindowTest
{
protected:
    QStringList captions(const QString &menuName)
    {
        QStringList texts;
        for (const QAction *item : control<QMenu>(*window, menuName).actions())
            texts.append(item->isSeparator() ? u"-"_s : item->text());
        return texts;
    }

    QToolButton &button(const QString &name) { return control<QToolButton>(*window, name); }

    QStringList dropDown(const QString &buttonName)
    {
        QStringList texts;
        if (const QMenu *menu = button(buttonName).menu()) {
            for (const QAction *item : menu->actions())
                texts.append(item->text());
        }
        return texts;
    }

    /// The commands that can be used, of those that have a window.
    std::set<Command> enabledOf(const std::set<Command> &asked)
    {
        std::set<Command> result;
        for (const Command command : asked) {
            if (enabled(command))
                result.insert(command);
        }
        return result;
    }
};

// What a desktop says of tool buttons.
class DesktopStyle final : public QProxyStyle
{
public:
    explicit DesktopStyle(Qt::ToolButtonStyle wanted) : QProxyStyle(u"Fusion"_s), m_wanted(wanted) {}

    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override
    {
        return hint == SH_ToolButtonStyle ? static_cast<int>(m_wanted)
                                          : QProxyStyle::styleHint(hint, option, widget, data);
    }

private:
    Qt::ToolButtonStyle m_wanted;
};

TEST_F(MainMenus, followTheDesktopWithTheToolButtons)
{
    writeShop();
    open();
    auto &bar = control<QToolBar>(*window, u"tlbToolbar"_s);
    const std::vector<std::pair<Qt::ToolButtonStyle, Qt::ToolButtonStyle>> shown{
        {Qt::ToolButtonTextBesideIcon, Qt::ToolButtonTextBesideIcon},
        {Qt::ToolButtonTextOnly, Qt::ToolButtonTextOnly},
        {Qt::ToolButtonIconOnly, Qt::ToolButtonTextUnderIcon}}; // the toolkit's when the desktop is silent
    for (const auto &[wanted, given] : shown) {
        DesktopStyle style(wanted);
        window->setStyle(&style);
        EXPECT_EQ(bar.toolButtonStyle(), given);
        EXPECT_EQ(button(u"LookUp"_s).toolButtonStyle(), given);
        window->setStyle(nullptr);
    }
}

TEST_F(MainMenus, sayInTheColourOfTextThatTheToolBarHasMore)
{
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::ButtonText, Qt::white);
    QApplication::setPalette(dark);
    writeShop();
    open();
    const QImage picture = button(u"qt_toolbar_ext_button"_s).icon().pixmap(24).toImage();
    QApplication::setPalette(before);
    EXPECT_GT(lightestOf(picture), 200);
}

TEST_F(MainMenus, haveTheirItemsInOrder)
{
    writeShop();
    open();
    QStringList titles;
    for (const QAction *menu : window->menuBar()->actions())
        titles.append(menu->text());
    EXPECT_EQ(titles, (QStringList{u"&File"_s, u"&Keywords"_s, u"&Show"_s, u"&URL"_s, u"&LookUp"_s,
                                   u"&Report"_s, u"&Help"_s}));
    const std::vector<std::pair<QString, QStringList>> menus{
        {u"mnuFile"_s,
         {u"&New Project"_s, u"&Edit Project"_s, u"&Delete Project"_s, u"-"_s, u"&Update Engine Data File"_s,
          u"Engine &Builder"_s, u"-"_s, u"&Configuration..."_s, u"-"_s, u"E&xit"_s}},
        {u"mnuKeywords"_s,
         {u"Add Key&words"_s, u"Dele&te Keywords"_s, u"-"_s, u"&Copy"_s, u"&Paste"_s, u"-"_s,
          u"Keyword &Builder"_s, u"&Export Keywords"_s}},
        {u"mnuShow"_s, {u"Show &All Keywords"_s, u"Show &Optimized Keywords"_s}},
        {u"mnuURL"_s, {u"&Show Position"_s, u"&Go to Competitor Web Site"_s}},
        {u"mnuLookUp"_s,
         {u"Lookup &Selected Keywords"_s, u"Lookup &All Keywords"_s, u"Lookup All Keyword for All Engine"_s,
          u"-"_s, u"St&op"_s}},
        {u"mnuReport"_s,
         {u"&HTML Format"_s, u"&Text Format"_s, u"&Excel Format"_s, u"-"_s, u"&Send Report"_s, u"-"_s,
          u"Optimizer"_s}},
        {u"mnuHelp"_s,
         {u"&Contents"_s, u"-"_s, u"&Support"_s, u"&Marovia Software on the Web"_s, u"-"_s,
          u"&About Marovia Sondrel"_s}},
        {u"mnuEnginePopup"_s, {u"Go to Engine"_s, u"Go to Login Page"_s}},
    };
    for (const auto &[name, items] : menus)
        EXPECT_EQ(captions(name), items) << name.toStdString();
}

TEST_F(MainMenus, givePicturesTipsAndShortcuts)
{
    writeShop();
    open();
    for (const CommandText &text : commandTexts()) {
        const QAction &item = *window->action(text.command);
        EXPECT_FALSE(item.icon().isNull()) << text.caption.toStdString();
        EXPECT_FALSE(item.toolTip().isEmpty()) << text.caption.toStdString();
        EXPECT_EQ(item.shortcut().toString(QKeySequence::PortableText), text.shortcut);
    }
    const std::vector<std::pair<Command, QString>> standard{
        {C::NewProject, u"Ctrl+N"_s},   {C::LookupSelected, u"F5"_s},
        {C::LookupAll, u"Shift+F5"_s},  {C::Stop, u"Esc"_s},
        {C::HelpContents, u"F1"_s},     {C::Exit, u"Ctrl+Q"_s},
        {C::Configuration, u"Ctrl+,"_s}};
    for (const auto &[command, keys] : standard)
        EXPECT_EQ(window->action(command)->shortcut(), QKeySequence(keys)) << keys.toStdString();
}

TEST_F(MainMenus, standOnTheToolBarToo)
{
    writeShop();
    open();
    struct Row
    {
        QString name;
        QStringList dropDown;
    };
    const std::vector<Row> buttons{
        {u"NewAccount"_s, {u"&New Project"_s, u"&Edit Project"_s, u"&Delete Project"_s}},
        {u"AddKW"_s, {}},
        {u"Property"_s, {}},
        {u"Show"_s, {u"Show &All Keywords"_s, u"Show &Optimized Keywords"_s}},
        {u"LookUp"_s,
         {u"Lookup &Selected Keywords"_s, u"Lookup &All Keywords"_s, u"Lookup All Keyword for All Engine"_s}},
        {u"Stop"_s, {}},
        {u"Report"_s, {u"&HTML Format"_s, u"&Text Format"_s, u"&Excel Format"_s, u"&Send Report"_s}},
        {u"Optimizer"_s, {}},
        {u"Stats"_s, {}},
        {u"Help"_s, {}}};
    for (const Row &row : buttons) {
        EXPECT_EQ(dropDown(row.name), row.dropDown) << row.name.toStdString();
        EXPECT_FALSE(button(row.name).icon().isNull()) << row.name.toStdString();
        EXPECT_FALSE(button(row.name).text().isEmpty()) << row.name.toStdString();
        EXPECT_FALSE(button(row.name).toolTip().isEmpty()) << row.name.toStdString();
    }
}

TEST_F(MainMenus, ofAnEmptyWindowOfferAProject)
{
    world.write(u"project.dat"_s, "[Accounts]\r\nLast=0\r\n");
    whenModal<QDialog>([](QDialog &dialog) { dialog.reject(); });
    open();
    EXPECT_EQ(enabledOf({C::NewProject,    C::EditProject,      C::DeleteProject,  C::Configuration,
                         C::Exit,          C::AddKeywords,      C::DeleteKeywords, C::CopyKeywords,
                         C::PasteKeywords, C::KeywordBuilder,   C::ExportKeywords, C::ShowAll,
                         C::ShowOptimized, C::ShowPosition,     C::GoToCompetitor, C::LookupSelected,
                         C::LookupAll,     C::LookupAllEngines, C::Stop,           C::HtmlReport,
                         C::TextReport,    C::ExcelReport,      C::SendReport,     C::Optimizer,
                         C::HelpContents,  C::Support,          C::HomePage,       C::About}),
              (std::set<Command>{C::NewProject, C::Configuration, C::Exit, C::HelpContents, C::Support,
                                 C::HomePage, C::About}));
    EXPECT_TRUE(button(u"NewAccount"_s).isEnabled());
    for (const char *name : {"AddKW", "Property", "Show", "LookUp", "Stop", "Report"})
        EXPECT_FALSE(button(QString::fromLatin1(name)).isEnabled()) << name;
    EXPECT_TRUE(button(u"Stats"_s).isEnabled());
    EXPECT_TRUE(button(u"Help"_s).isEnabled());
}

TEST_F(MainMenus, ofAnIdleGrid)
{
    writeShop();
    open();
    grid().clearSelection();
    EXPECT_EQ(
        enabledOf({C::NewProject, C::EditProject, C::DeleteProject, C::DeleteKeywords, C::CopyKeywords,
                   C::PasteKeywords, C::ExportKeywords, C::ShowAll, C::ShowOptimized, C::LookupSelected,
                   C::LookupAll, C::Stop, C::HtmlReport, C::TextReport}),
        (std::set<Command>{C::NewProject, C::EditProject, C::DeleteProject, C::ExportKeywords, C::ShowAll,
                           C::ShowOptimized, C::LookupSelected, C::LookupAll, C::HtmlReport, C::TextReport}));
    for (const char *name : {"NewAccount", "Property", "Show", "LookUp", "Report"})
        EXPECT_TRUE(button(QString::fromLatin1(name)).isEnabled()) << name;
    EXPECT_FALSE(button(u"Stop"_s).isEnabled());
}

TEST_F(MainMenus, followTheSelection)
{
    writeShop();
    open();
    grid().clearSelection();
    EXPECT_EQ(enabledOf({C::DeleteKeywords, C::CopyKeywords}), std::set<Command>{});
    grid().selectRow(1);
    EXPECT_EQ(enabledOf({C::DeleteKeywords, C::CopyKeywords, C::PasteKeywords}),
              (std::set<Command>{C::DeleteKeywords, C::CopyKeywords}));
    window->give(C::CopyKeywords);
    EXPECT_TRUE(enabled(C::PasteKeywords));
}

TEST_F(MainMenus, ofAGridWithoutRowsReportNothing)
{
    writeProject(u"Shop"_s, {u"Zeta"_s});
    open();
    EXPECT_EQ(enabledOf({C::ExportKeywords, C::HtmlReport, C::TextReport, C::ShowAll, C::LookupAll}),
              (std::set<Command>{C::ShowAll, C::LookupAll}));
    EXPECT_FALSE(button(u"Report"_s).isEnabled());
}

TEST_F(MainMenus, duringALookupStopItAndChangeNothing)
{
    writeShop();
    open();
    window->give(C::LookupAll);
    ASSERT_TRUE(child().Online());
    grid().selectRow(0);
    EXPECT_EQ(enabledOf({C::NewProject, C::EditProject, C::DeleteProject, C::DeleteKeywords, C::CopyKeywords,
                         C::ExportKeywords, C::ShowAll, C::ShowOptimized, C::LookupSelected, C::LookupAll,
                         C::Stop, C::HtmlReport}),
              (std::set<Command>{C::CopyKeywords, C::ExportKeywords, C::ShowAll, C::ShowOptimized, C::Stop,
                                 C::HtmlReport}));
    for (const char *name : {"NewAccount", "LookUp"})
        EXPECT_FALSE(button(QString::fromLatin1(name)).isEnabled()) << name;
    EXPECT_TRUE(button(u"Stop"_s).isEnabled());
}

TEST_F(MainMenus, areReachedByTheirAccessKeys)
{
    writeShop();
    open();
    window->activateWindow();
    QTest::keyClick(window.get(), Qt::Key_S, Qt::AltModifier);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    EXPECT_EQ(menu->title(), u"&Show"_s);
    QTest::keyClick(menu, Qt::Key_A);
    EXPECT_TRUE(window->action(C::ShowAll)->isChecked());
}

TEST_F(MainMenus, nameEveryControlForAScreenReader)
{
    writeShop();
    open();
    int controls = 0;
    for (QWidget *widget : window->findChildren<QWidget *>()) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || widget->objectName().startsWith(u"qt_"))
            continue;
        if (!widget->isVisible())
            continue;
        ++controls;
        const QAccessibleInterface *face = QAccessible::queryAccessibleInterface(widget);
        ASSERT_TRUE(face);
        EXPECT_FALSE(face->text(QAccessible::Name).isEmpty())
            << widget->metaObject()->className() << " " << widget->objectName().toStdString();
    }
    EXPECT_GT(controls, 10);
}

} // namespace
} // namespace sondrel
