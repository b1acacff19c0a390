// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "shell/program_dialog.h"
#include "shell/send_report_form.h"

#include <memory>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace sondrel {

/// Mails a project's reports: to whom, which, and with what words.
class frmSendReport final : public ProgramDialog
{
    Q_OBJECT

public:
    explicit frmSendReport(ApplicationContext &app, QWidget *parent = nullptr);
    ~frmSendReport() override;

    /// The project, before the dialog is shown.
    void setAccount(std::shared_ptr<clsAccount> account) { m_account = std::move(account); }

    void done(int result) override;
    void reject() override;

protected:
    void load() override;
    void closeEvent(QCloseEvent *event) override;

private:
    QWidget *newReportBox();
    QWidget *newFormatRow();
    SendReportForm form() const;
    bool ValidForm();
    void SentReport();
    void send();
    void onCompleted(qint32 number, const QString &text);
    void DisplayMessage();
    void setSending(bool sending);

    std::shared_ptr<clsAccount> m_account;
    clsPreference m_preference;
    std::unique_ptr<clsSendMail> m_oSendMail;
    std::unique_ptr<ClockTimer> m_trmEnd;
    QString m_errorText;
    bool m_sending = false;

    QLineEdit *m_from = nullptr;
    QLineEdit *m_email = nullptr;
    QLineEdit *m_cc = nullptr;
    QLineEdit *m_subject = nullptr;
    QPlainTextEdit *m_message = nullptr;
    QCheckBox *m_engineSummary = nullptr;
    QCheckBox *m_keywordSummary = nullptr;
    QCheckBox *m_keywordUrl = nullptr;
    QCheckBox *m_rankingDetails = nullptr;
    QCheckBox *m_removeUnranked = nullptr;
    QLabel *m_status = nullptr;
    QPushButton *m_send = nullptr;
    QPushButton *m_cancel = nullptr;
};

} // namespace sondrel
