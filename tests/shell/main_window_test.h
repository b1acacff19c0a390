// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "project/clsAccount.h"
#include "shell/frmMain.h"
#include "shell/frmSondrel.h"
#include "tests/shell/dialog_test.h"

#include <QComboBox>
#include <QTableView>
#include <QTreeWidget>

namespace sondrel {

/// The main window on a small world: two markets with three engines, and the project "Shop" on two of them.
class MainWindowTest : public testing::Test
{
protected:
    MainWindowTest()
    {
        world.writeEngineData(
            "[Markets]\r\n1=Global\r\n2=China\r\n[Global]\r\n1=Zeta\r\n2=Alpha\r\n"
            "[China]\r\n1=Gamma\r\n"
            "[Zeta]\r\nEngineKey=zeta\r\nEngineURL=http://zeta.example/find\r\nQueryKeyword1=?q=\r\n"
            "ResultStartString=<ol>\r\nResultEndString=</ol>\r\nSectionstart=<li>\r\n"
            "SectionEnd=</li>\r\nbeginTitle=<b>\r\nendTitle=</b>\r\nbeginURL=href=\"\r\n"
            "endURL=\"\r\nNextPage1=Next page\r\n"
            "[Alpha]\r\nEngineURL=http://alpha.example/find\r\n");
        world.setPreference(QStringLiteral("Version"), QStringLiteral("4.0.0"));
    }

    /// A project as its dialog would have saved it.
    void writeProject(const QString &name, const QStringList &engines, const QStringList &keywords = {})
    {
        clsEngine catalogue(world.app);
        catalogue.loadEngineData();
        world.app.EngineCatalogue = &catalogue;
        clsAccount account(world.app);
        account.Name = name;
        account.LinksNum = 10;
        account.URLs.emplace();
        account.URLs->Add({QStringLiteral("www.site.example"), false}, QStringLiteral("www.site.example"));
        account.URLs->Add({QStringLiteral("rival.example"), true}, QStringLiteral("rival.example"));
        account.Engine.emplace();
        for (const QString &engine : engines)
            account.Engine->Add(engine, engine);
        account.SaveSettings();
        world.app.EngineCatalogue = nullptr;
        QByteArray terms;
        for (const QString &keyword : keywords)
            terms += world.app.toBytes(keyword) + ";-1\r\n";
        world.write(QStringLiteral("Projects/%1/Keywords.dat").arg(name), terms);
        m_projects.append(name);
        QByteArray list = "[Accounts]\r\n";
        for (int i = 0; i < m_projects.size(); ++i)
            list += QByteArray::number(i + 1) + "=" + m_projects[i].toLatin1() + "\r\n";
        world.write(QStringLiteral("project.dat"),
                    list + "Last=" + QByteArray::number(m_projects.size()) + "\r\n");
    }

    void writeShop()
    {
        writeProject(QStringLiteral("Shop"), {QStringLiteral("Zeta"), QStringLiteral("Gamma")},
                     {QStringLiteral("shoes"), QStringLiteral("boots"), QStringLiteral("socks")});
    }

    /// Comes up as at the program's start.
    void open()
    {
        window = std::make_unique<frmMain>(world.app);
        window->load();
        window->activateWindow(); // shortcuts ask for it
        QApplication::processEvents();
        world.takeLog();
    }

    /// Chooses a project as the arrow keys do.
    void chooseProject(int index)
    {
        projects().setFocus();
        while (projects().currentIndex() != index) {
            const int before = projects().currentIndex();
            QTest::keyClick(&projects(), before < index ? Qt::Key_Down : Qt::Key_Up);
            if (projects().currentIndex() == before)
                return; // refused
        }
    }

    /// Clicks a node of the tree; names are those of its market and of its engine, if it is one.
    void clickNode(const QString &market, const QString &engine = {})
    {
        for (int i = 0; i < tree().topLevelItemCount(); ++i) {
            QTreeWidgetItem *node = tree().topLevelItem(i);
            if (node->text(0) != market)
                continue;
            for (int j = 0; !engine.isEmpty() && j < node->childCount(); ++j) {
                if (node->child(j)->text(0) == engine)
                    return clickNode(node->child(j));
            }
            if (engine.isEmpty())
                return clickNode(node);
        }
        ADD_FAILURE() << "no such node";
    }
    void clickNode(QTreeWidgetItem *node)
    {
        tree().scrollToItem(node);
        QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, tree().visualItemRect(node).center());
    }

    frmSondrel &child() { return *window->child(); }
    QComboBox &projects() { return control<QComboBox>(*window, QStringLiteral("cboAccount")); }
    QTreeWidget &tree() { return control<QTreeWidget>(*window, QStringLiteral("tvwAccount")); }
    QTreeWidget &urls() { return control<QTreeWidget>(*window, QStringLiteral("lvwURLs")); }
    QTableView &grid() { return control<QTableView>(*window, QStringLiteral("grdBidsManage")); }
    QTableView &listings() { return control<QTableView>(*window, QStringLiteral("lvwRanking")); }
    bool enabled(Command command) { return window->action(command)->isEnabled(); }

    World world;
    std::unique_ptr<frmMain> window;

private:
    QStringList m_projects;
};

} // namespace sondrel
