#include "shell/frmPreference.h"

#include "core/entered_text.h"
#include "shell/dialog_controls.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QLineEdit>
#include <QTabWidget>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString MessageTitle = u"Preference"_s;

} // namespace

void frmPreference::load()
{
    m_tabs->setCurrentIndex(0);
    m_preference.GetSettings(app());
    showForm(preferenceForm(app(), m_preference));
    UpdateUI();
}

void frmPreference::showForm(const PreferenceForm &form)
{
    if (QAbstractButton *access = form.Access ? m_access->button(*form.Access) : nullptr)
        access->setChecked(true);
    m_proxy->setText(form.Proxy);
    m_port->setText(form.Port);
    m_httpUsername->setText(form.HTTPUsername);
    m_httpPassword->setText(form.HTTPPassword);
    m_mailServer->setText(form.MailServer);
    m_smtpPort->setText(form.SMTPPort);
    m_smtpAuthentication->setChecked(form.SMTPAuthentication);
    m_smtpUserName->setText(form.SMTPUserName);
    m_smtpPassword->setText(form.SMTPPassword);
    m_reporterName->setText(form.ReporterName);
    m_companyName->setText(form.CompanyName);
    m_reporterEmail->setText(form.ReporterEmail);
    m_reporterWeb->setText(form.ReporterWeb);
    m_logoURL->setText(form.LogoURL);
    m_logoTop->setChecked(form.LogoOnTop);
    m_logoBottom->setChecked(form.LogoAtBottom);
    m_schedulerEnable->setChecked(form.SchedulerEnable);
    m_updateEngineData->setChecked(form.UpdateEngineData);
    m_timeOut->setText(form.TimeOut);
    m_confirmConnection->setChecked(form.ConfirmConnection);
}

PreferenceForm frmPreference::readForm() const
{
    PreferenceForm form;
    if (m_access->checkedId() >= 0)
        form.Access = m_access->checkedId();
    form.Proxy = enteredLine(m_proxy->text());
    form.Port = enteredLine(m_port->text());
    form.HTTPUsername = enteredLine(m_httpUsername->text());
    form.HTTPPassword = enteredExactly(m_httpPassword->text());
    form.MailServer = enteredLine(m_mailServer->text());
    form.SMTPPort = enteredLine(m_smtpPort->text());
    form.SMTPAuthentication = m_smtpAuthentication->isChecked();
    form.SMTPUserName = enteredLine(m_smtpUserName->text());
    form.SMTPPassword = enteredExactly(m_smtpPassword->text());
    form.ReporterName = enteredLine(m_reporterName->text());
    form.CompanyName = enteredLine(m_companyName->text());
    form.ReporterEmail = enteredLine(m_reporterEmail->text());
    form.ReporterWeb = enteredLine(m_reporterWeb->text());
    form.LogoURL = enteredLine(m_logoURL->text());
    form.LogoOnTop = m_logoTop->isChecked();
    form.LogoAtBottom = m_logoBottom->isChecked();
    form.SchedulerEnable = m_schedulerEnable->isChecked();
    form.UpdateEngineData = m_updateEngineData->isChecked();
    form.TimeOut = enteredLine(m_timeOut->text());
    form.ConfirmConnection = m_confirmConnection->isChecked();
    return form;
}

void frmPreference::chooseAccess(int index)
{
    m_preference.AccessType = static_cast<qint16>(index);
    UpdateUI();
}

void frmPreference::UpdateUI()
{
    const PreferenceEnabled enabled = preferenceEnabled(readForm());
    m_proxy->setEnabled(enabled.Proxy);
    m_port->setEnabled(enabled.Proxy);
    m_smtpUserName->setEnabled(enabled.SMTPLogin);
    m_smtpPassword->setEnabled(enabled.SMTPLogin);
}

QWidget &frmPreference::field(PreferenceField field) const
{
    switch (field) {
    case PreferenceField::Proxy:
        return *m_proxy;
    case PreferenceField::Port:
        return *m_port;
    case PreferenceField::SMTPPort:
        return *m_smtpPort;
    case PreferenceField::SMTPUserName:
        return *m_smtpUserName;
    case PreferenceField::SMTPPassword:
        return *m_smtpPassword;
    case PreferenceField::TimeOut:
        break;
    }
    return *m_timeOut;
}

void frmPreference::acceptForm()
{
    reportFailure(app(), u"frmPrefence_cmdOK_Click error:  "_s, [&] {
        if (const auto fault = assignPreference(readForm(), m_preference)) {
            app().desktop.showMessage({MessageTitle, fault->Message});
            bringToFront(*m_tabs, static_cast<int>(fault->Tab), field(fault->Focus));
            return;
        }
        m_preference.SaveSettings(app());
        accept();
    });
}

} // namespace sondrel
