// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "lookup/lookup_session.h"
#include "shell/commands.h"
#include "shell/keyword_model.h"
#include "shell/listing_model.h"

#include <QWidget>

#include <memory>

class QAction;
class QSplitter;
class QStackedLayout;

namespace sondrel {

class HintPage;
class RowTable;
struct AddKeywordsAnswer;

/// The keywords of one project on one engine: the grid, under it the listings of the chosen keyword, and the
/// lookup session that both show.
class frmSondrel final : public QWidget
{
    Q_OBJECT

public:
    /// The main window's commands that its empty areas offer.
    struct OfferedCommands
    {
        QAction *addKeywords = nullptr;
        QAction *showAll = nullptr;
        QAction *lookupSelected = nullptr;
    };

    explicit frmSondrel(ApplicationContext &app, const OfferedCommands &offered, QWidget *parent = nullptr);
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
    /// Gives the grid a command whose shortcut means something else, or nothing, outside of it.
    void addGridAction(QAction *action);

    /// Loads keywords and results of the project on the engine anew.
    void ResetForm();
    /// Fills the grid from the keywords, and selects the row of the remembered one.
    void PopulateKeywords();
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

    /// Opens the dialog for new keywords and adds what it answers.
    void AddKeywords();
    /// Opens the dialog for suggestions, which adds to the keywords itself.
    void BuildKeyword();
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
    void connectGrid();
    void showRowOf(const QString &keyword);
    void showCurrentRow();
    void ShowKeywordResults();
    void showHints();
    void shareWidth();
    void fitUrlColumn();
    void followRun();
    void toggleShown();
    void startRename();
    void addAnswered(const AddKeywordsAnswer &answer);
    void LookUpSelectedKeyword();
    void DeleteSelectedKeywords();
    void removeRows(const std::vector<int> &rows);
    void CopyKeywords();
    void Exportkeywords();
    void openListing(const QModelIndex &index);
    void tellOfCleaning(qsizetype count);
    void tellOfTakenName(const QString &name);
    void FormatColum();
    void restoreColumns();
    void storeColumns();

    ApplicationContext &m_app;
    OfferedCommands m_offered;
    std::unique_ptr<LookupSession> m_session;
    KeywordModel *m_model;
    ListingModel *m_listingModel;
    QSplitter *m_splitter;
    QStackedLayout *m_gridStack = nullptr;
    RowTable *m_grid = nullptr;
    HintPage *m_gridHint = nullptr;
    QStackedLayout *m_listingStack = nullptr;
    RowTable *m_listings = nullptr;
    HintPage *m_listingHint = nullptr;
    QString m_shownKeyword; // of the row whose listings are shown
    int m_shownRow = -1;
    bool m_filling = false;
    bool m_fitting = false;     // the URL column is being given its width
    bool m_widthsKept = false;  // because the user has dragged one
    bool m_heightsKept = false; // of grid and list
    QStringList m_copied;
};

} // namespace sondrel
