// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/clock.h"
#include "keywords/clsKeywordBuilder.h"
#include "keywords/suggestion_list.h"
#include "shell/program_dialog.h"

#include <memory>

class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace sondrel {

class HintTree;

/// Lists what a search engine suggests for a keyword, and adds the chosen suggestions to a project. What has
/// been looked up once is kept and shown again without a fetch.
class frmKeywordBuilder final : public ProgramDialog, public KeywordBuilderForm
{
    Q_OBJECT

public:
    explicit frmKeywordBuilder(ApplicationContext &app, QWidget *parent = nullptr);
    ~frmKeywordBuilder() override;

    /// The project's keywords; they outlive the dialog.
    clsKeywords *keywordsObject = nullptr;
    /// True once suggestions have been added.
    bool AddToList = false;

    /// Fills the lists; to be called before the dialog is shown.
    void Prepare();
    /// Adds a row; one that is there already is an error in the log.
    void addListItem(const QString &keyword, const QString &count);

    void showProgress(int step) override;
    void showStatus(const QString &text) override;
    void addSuggestion(const QString &keyword, const QString &count) override;
    void DownLoadCompleted() override;

    void done(int result) override;

protected:
    void load() override {}
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    void PopulateEngine();
    void PopulateKeywordComBo();
    void PopulateListView();
    void clearRows();
    void getOrStop();
    void DoGet();
    void onDisconnectTick();
    void setIdle(const QString &text);
    void setFetching(bool fetching);
    void updateRowButtons();
    void DoADDToList();
    void DoDelete();
    void removeKeyword();
    void SaveListView();
    void SaveComboBox();
    void shareWidth();
    QString engine() const;
    QString keyword() const;
    QList<int> selectedRows() const;

    SuggestionList m_list;
    std::unique_ptr<clsKeywordBuilder> m_builder; // of the last fetch
    std::unique_ptr<ClockTimer> m_tmrDisconnect;
    bool m_fetching = false;
    bool m_keywordsKnown = false; // whether the kept ones could be read; else they must not be lost

    QComboBox *m_engine = nullptr;
    QComboBox *m_keyword = nullptr;
    HintTree *m_rows = nullptr;
    QProgressBar *m_progress = nullptr;
    QLabel *m_status = nullptr;
    QPushButton *m_get = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_delete = nullptr;
    QPushButton *m_close = nullptr;
};

} // namespace sondrel
