// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "shell/preference_form.h"
#include "shell/program_dialog.h"

class QButtonGroup;
class QCheckBox;
class QLineEdit;
class QTabWidget;

namespace sondrel {

/// The dialog that edits the program's settings. OK stores them all, or stops at the first that cannot be.
class frmPreference final : public ProgramDialog
{
    Q_OBJECT

public:
    explicit frmPreference(ApplicationContext &app, QWidget *parent = nullptr);

protected:
    void load() override;

private:
    QWidget *buildServer();
    QWidget *buildMailServer();
    QWidget *buildProfile();
    QWidget *buildOption();

    void showForm(const PreferenceForm &form);
    PreferenceForm readForm() const;
    void chooseAccess(int index);
    void UpdateUI();
    QWidget &field(PreferenceField field) const;
    void acceptForm();

    clsPreference m_preference;

    QTabWidget *m_tabs = nullptr;
    QButtonGroup *m_access = nullptr;
    QLineEdit *m_proxy = nullptr;
    QLineEdit *m_port = nullptr;
    QLineEdit *m_httpUsername = nullptr;
    QLineEdit *m_httpPassword = nullptr;
    QLineEdit *m_mailServer = nullptr;
    QLineEdit *m_smtpPort = nullptr;
    QCheckBox *m_smtpAuthentication = nullptr;
    QLineEdit *m_smtpUserName = nullptr;
    QLineEdit *m_smtpPassword = nullptr;
    QLineEdit *m_reporterName = nullptr;
    QLineEdit *m_companyName = nullptr;
    QLineEdit *m_reporterEmail = nullptr;
    QLineEdit *m_reporterWeb = nullptr;
    QLineEdit *m_logoURL = nullptr;
    QCheckBox *m_logoTop = nullptr;
    QCheckBox *m_logoBottom = nullptr;
    QCheckBox *m_schedulerEnable = nullptr;
    QCheckBox *m_updateEngineData = nullptr;
    QLineEdit *m_timeOut = nullptr;
    QCheckBox *m_confirmConnection = nullptr;
};

} // namespace sondrel
