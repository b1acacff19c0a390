// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "shell/account_form.h"
#include "shell/program_dialog.h"

#include <memory>
#include <vector>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QDateEdit;
class QLineEdit;
class QTabWidget;
class QTimeEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace sondrel {

class UrlListView;

/// The dialog that edits one project: its name, URLs, engines, schedule and reports. OK saves the project;
/// until then it stays as it was.
class frmAccount final : public ProgramDialog
{
    Q_OBJECT

public:
    explicit frmAccount(ApplicationContext &app, QWidget *parent = nullptr);

    /// The project to edit, before the dialog is shown; one without a name is new.
    void setAccount(std::shared_ptr<clsAccount> account) { m_account = std::move(account); }
    const std::shared_ptr<clsAccount> &Account() const { return m_account; }

protected:
    void load() override;

private:
    QWidget *buildDetails();
    QWidget *buildEngines();
    QWidget *buildScheduler();
    QWidget *buildReport();
    void connectControls();

    void showForm(const AccountForm &form);
    AccountForm readForm() const;
    clsAccount &account() const;

    void PopulateEngine();
    bool ValidForm();
    bool mayTakeName();
    void EditURLs();
    void DeleteURL();
    void UpdateUI();
    void setCompetitors();
    void toggleCompetitors(const QList<QTreeWidgetItem *> &rows);
    void copyCheckToEngines(QTreeWidgetItem &market);
    QWidget &field(AccountField field) const;
    void acceptForm();

    std::shared_ptr<clsAccount> m_account;
    std::vector<EngineNode> m_engineNodes;
    std::vector<QTreeWidgetItem *> m_engineItems; // one for each node

    QTabWidget *m_tabs = nullptr;
    QLineEdit *m_name = nullptr;
    UrlListView *m_urls = nullptr;
    QComboBox *m_links = nullptr;
    QTreeWidget *m_engines = nullptr;
    QCheckBox *m_schedulerEnable = nullptr;
    QButtonGroup *m_frequency = nullptr;
    QDateEdit *m_startDate = nullptr;
    QTimeEdit *m_startTime = nullptr;
    QCheckBox *m_sentReport = nullptr;
    QLineEdit *m_email = nullptr;
    QLineEdit *m_cc = nullptr;
    QLineEdit *m_subject = nullptr;
    QButtonGroup *m_reportFormat = nullptr;
    QCheckBox *m_engineSummary = nullptr;
    QCheckBox *m_keywordURL = nullptr;
    QCheckBox *m_keywordSummary = nullptr;
    QCheckBox *m_rankingDetails = nullptr;
    QCheckBox *m_removeUnRanking = nullptr;
    QCheckBox *m_topPosOnly = nullptr;
    std::vector<QWidget *> m_scheduleControls;
    std::vector<QWidget *> m_reportControls;
};

} // namespace sondrel
