// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "lookup/lookup_session.h"
#include "shell/commands.h"
#include "shell/keyword_model.h"
#include "shell/listing_model.h"

#include <QWidget>

#include <memory>

class QLabel;
class QSplitter;
class QStackedLayout;
class QTableView;

namespace sondrel {

/// The keywords of one project on one engine: the grid, under it the listings of the chosen keyword, and the
/// lookup session that both show.
class frmSondrel final : public QWidget
{
    Q_OBJECT

public:
    explicit frmSondrel(ApplicationContext &app, QWidget *parent = nullptr);
    ~frmSondrel() override;

    const std::shared_ptr<clsAccount> &Account() const { return m_session->Account; }
    void setAccount(std::shared_ptr<clsAccount> account);
    QString AccountName() const { return m_session->AccountName(); }
    QString EngineName() const { return m_session->EngineName; }
    void setEngineName(const QString &engineName);
    bool Online() const { return m_session->Online(); }
    bool KeywordsCount() const;
    clsKeywords &Keywords() { return *m_session->Keywords; }
    LookupSession &session() { return *m_session; }
    KeywordModel &model() { return *m_model; }
    /// Which column shows which field now.
    ColumnOrder columnOrder() const;

    /// Loads keywords and results of the project on the engine anew.
    void ResetForm();
    /// Marks the listings of tracked URLs.
    void HightLightResultURL();
    /// Selects the listings that match a URL, and gives their list the focus.
    void ShowURLPosition(const QString &url);

    /// The commands of the main window's menus, by their numbers there.
    void mnuKeywordsItemClick(int number);
    void mnuRunMenuBidsItemsClick(int number);
    void ShowButtonItemsClick(int number);
    /// What the commands of the main window depend on.
    void addFacts(CommandFacts &facts) const;

    /// Adds these keywords, as Paste and Add Keywords do.
    void AddKeywordColToGrid(const QStringList &texts);
    /// Lets go of a run and stores the column order, before the window goes.
    void unload();

Q_SIGNALS:
    /// What commands depend on has changed.
    void factsChanged();

private:
    void buildGrid();
    void buildListings();
    void PopulateKeywords();
    void ShowKeywordResults();
    void showCurrentRow();
    void showHint();
    void LookUpSelectedKeyword();
    void DeleteSelectedKeywords();
    void CopyKeywords();
    void Exportkeywords();
    void openListing(const QModelIndex &index);
    void restoreColumns();
    void storeColumns();
    std::vector<int> selectedRows() const;

    ApplicationContext &m_app;
    std::unique_ptr<LookupSession> m_session;
    KeywordModel *m_model;
    ListingModel *m_listingModel;
    QStackedLayout *m_gridStack;
    QSplitter *m_splitter;
    QTableView *m_grid;
    QLabel *m_gridHint;
    QTableView *m_listings;
    QLabel *m_listingHint;
    QStackedLayout *m_listingStack;
    QString m_shownKeyword; // of the row whose listings are shown
    int m_shownRow = -1;
    bool m_filling = false;
    QStringList m_copied;
};

} // namespace sondrel
