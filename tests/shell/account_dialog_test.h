// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "project/clsAccount.h"
#include "shell/account_urls.h"
#include "shell/frmAccount.h"
#include "shell/frmURLs.h"
#include "shell/tree_nodes.h"
#include "shell/url_list_view.h"
#include "tests/shell/dialog_test.h"

#include <QTabWidget>
#include <QTreeWidget>

namespace sondrel {

inline const QDate Today(2026, 11, 15);

/// The project dialog on a small catalogue.
class AccountDialog : public testing::Test
{
protected:
    AccountDialog() : account(std::make_shared<clsAccount>(world.app)), dialog(world.app) {}

    void SetUp() override { dialog.setAccount(account); }

    // A project that could be saved as it is.
    void fillAccount()
    {
        account->Name = QStringLiteral("Shop");
        account->Frequency = 2;
        account->ReportFormat = 1;
        account->LinksNum = 35;
        account->StartDate = Today.addDays(3);
        account->StartTime = QStringLiteral("09:30:00 PM");
        account->ReportTo = QStringLiteral("ab@cd.example");
        account->CC = QStringLiteral("copy@cd.example");
        account->Subject = QStringLiteral("Positions");
        account->URLs.emplace();
        for (const auto &[url, competitor] : {std::pair(QStringLiteral("www.site.example"), false),
                                              {QStringLiteral("other.example"), true},
                                              {QStringLiteral("third.example"), false}})
            account->URLs->Add({url, competitor}, url);
        account->Engine.emplace();
        account->Engine->Add(QStringLiteral("Alpha"), QStringLiteral("Alpha"));
    }

    void open()
    {
        fillAccount();
        dialog.show();
    }

    QTabWidget &tabs() { return control<QTabWidget>(dialog, QStringLiteral("SSTab1")); }
    UrlListView &urls() { return control<UrlListView>(dialog, QStringLiteral("lvwURLs")); }
    QTreeWidget &engines() { return control<QTreeWidget>(dialog, QStringLiteral("tvwEngine")); }
    QLineEdit &text(const QString &name) { return control<QLineEdit>(dialog, name); }
    bool checked(const QString &name) { return control<QAbstractButton>(dialog, name).isChecked(); }
    QString competitors()
    {
        QStringList marked;
        for (int row = 0; row < urls().topLevelItemCount(); ++row) {
            if (isCompetitor(*urls().topLevelItem(row)))
                marked.append(urls().topLevelItem(row)->text(0));
        }
        return marked.join(u' ');
    }
    QString shownUrls()
    {
        QStringList shown;
        for (int row = 0; row < urls().topLevelItemCount(); ++row)
            shown.append(urls().topLevelItem(row)->text(0));
        return shown.join(u' ');
    }
    void select(const std::vector<int> &rows)
    {
        urls().clearSelection();
        for (const int row : rows)
            urls().topLevelItem(row)->setSelected(true);
    }
    void toFront(int tab) { tabs().setCurrentIndex(tab); }
    void clickCheckBox(QTreeWidgetItem *node)
    {
        toFront(1);
        const QRect row = engines().visualItemRect(node);
        QTest::mouseClick(engines().viewport(), Qt::LeftButton, {}, {row.left() + 8, row.center().y()});
    }

    CatalogueWorld world;
    std::shared_ptr<clsAccount> account;
    frmAccount dialog;
};

} // namespace sondrel
