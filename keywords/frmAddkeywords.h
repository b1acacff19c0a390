// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "keywords/add_keywords_form.h"
#include "lookup/frmHTTP.h"
#include "shell/program_dialog.h"

#include <memory>

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QTabWidget;

namespace sondrel {

/// Gathers keywords in three ways: typed, from a file, or from the meta tag of a page. It only answers;
/// whoever opened it reads ActionType behind its end and acts on it.
class frmAddkeywords final : public ProgramDialog, private HttpClient
{
    Q_OBJECT

public:
    explicit frmAddkeywords(ApplicationContext &app, QWidget *parent = nullptr);
    ~frmAddkeywords() override;

    /// True while an entry is being changed: nothing can be imported then.
    bool UpdateStatus = false;
    AddKeywordsAction ActionType = AddKeywordsAction::None;
    QString ImportFileName;
    QString Separetor() const;
    /// The text to start with, and behind OK the keywords.
    QString NewKeywords;
    std::shared_ptr<clsAccount> Account;

    /// Shows what the caller has set; to be called before the dialog is shown.
    void Prepare();
    void getWebSite();
    AddKeywordsAnswer answer() const { return {ActionType, NewKeywords, ImportFileName, Separetor()}; }

    void done(int result) override;

protected:
    void load() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QString pageURL() const;
    void ProcessData(int status, const QByteArray &body) override;
    void setDisconnected(bool) override {}

    QWidget *buildTyped();
    QWidget *buildFile();
    QWidget *buildPage();
    QString typedText() const;
    QStringList listed() const;
    void updateButtons();
    void acceptKeywords();
    void importFile();
    void getOrCancel();
    void setFetching(bool fetching);
    void removeSelected();

    std::unique_ptr<frmHTTP> m_http; // from load on
    bool m_fetching = false;
    QTabWidget *m_tabs = nullptr;
    QPlainTextEdit *m_keywords = nullptr;
    QComboBox *m_separetor = nullptr;
    QPushButton *m_import = nullptr;
    QComboBox *m_url = nullptr;
    QPushButton *m_get = nullptr;
    QCheckBox *m_append = nullptr;
    QListWidget *m_list = nullptr;
    QLabel *m_status = nullptr;
    QPushButton *m_ok = nullptr;
};

} // namespace sondrel
