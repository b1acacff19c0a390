// The controls of the configuration dialog and where they stand.
#include "shell/frmPreference.h"

#include "shell/dialog_controls.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QLineEdit *newPassword(const QString &name)
{
    QLineEdit *password = newLineEdit(name);
    password->setEchoMode(QLineEdit::Password);
    return password;
}

// As wide as a number of any use.
QLineEdit *newNumber(const QString &name, const QString &tip = {})
{
    constexpr int Digits = 8;
    QLineEdit *number = newLineEdit(name, tip);
    number->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    number->setMinimumWidth(number->fontMetrics().horizontalAdvance(QString(Digits, u'0')) +
                            number->fontMetrics().height());
    return number;
}

} // namespace

frmPreference::frmPreference(ApplicationContext &app, QWidget *parent)
    : ProgramDialog(app, u"frmPreference"_s, parent)
{
    setWindowTitle(tr("Configuration"));
    m_tabs = new QTabWidget;
    m_tabs->setObjectName(u"SSTab1"_s);
    m_tabs->addTab(newPage(buildServer()), tr("Server"));
    m_tabs->addTab(newPage(buildMailServer()), tr("Mail Server"));
    m_tabs->addTab(newPage(buildProfile()), tr("Profile"));
    m_tabs->addTab(newPage(buildOption()), tr("Option"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    layout->addWidget(newButtons([this] { acceptForm(); }));
}

QWidget *frmPreference::buildServer()
{
    m_access = new QButtonGroup(this);
    m_access->setObjectName(u"optProxy"_s);
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    auto *way = new QGroupBox(tr("Connection"));
    auto *options = new QVBoxLayout(way);
    for (const auto &[index, caption] : {std::pair(0, tr("Default")),
                                         {DirectAccess, tr("Direct to internet")},
                                         {ProxyAccess, tr("Proxy Server")}}) {
        auto *option = new QRadioButton(caption);
        option->setObjectName(u"optProxy"_s + QString::number(index));
        option->setVisible(index != 0); // once the system's own way, which nothing asks for any more
        m_access->addButton(option, index);
        options->addWidget(option);
    }
    m_proxy = newLineEdit(u"txtProxy"_s, tr("Name or number of the proxy's host"));
    m_port = newNumber(u"txtPort"_s);
    auto *server = newForm();
    addField(*server, tr("Address:"), m_proxy);
    addField(*server, tr("Port:"), m_port);
    server->setContentsMargins(fontMetrics().height() * 2, 0, 0, 0);
    options->addLayout(server);

    auto *login = new QGroupBox(tr("Login at the proxy"));
    auto *fields = newForm();
    m_httpUsername = newLineEdit(u"txtHTTPUsername"_s);
    m_httpPassword = newPassword(u"txtHTTPPassword"_s);
    addField(*fields, tr("User name:"), m_httpUsername);
    addField(*fields, tr("Password:"), m_httpPassword);
    login->setLayout(fields);
    layout->addWidget(way);
    layout->addWidget(login);
    layout->addStretch();
    connect(m_access, &QButtonGroup::idClicked, this, &frmPreference::chooseAccess);
    return page;
}

QWidget *frmPreference::buildMailServer()
{
    m_mailServer = newLineEdit(u"txtMailServer"_s, tr("The host that takes the reports to be mailed"));
    m_smtpPort = newNumber(u"txtSMTPPort"_s, tr("25 when it is empty"));
    m_smtpAuthentication =
        newCheckBox(u"chkSMTPAuthentication"_s, tr("My send mail server requires authentication"));
    m_smtpUserName = newLineEdit(u"txtSMTPUserName"_s);
    m_smtpPassword = newPassword(u"txtSMTPPassword"_s);
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    auto *server = newForm();
    addField(*server, tr("Outgoing Mail (SMTP) Server"), m_mailServer);
    addField(*server, tr("Port:"), m_smtpPort);
    auto *login = newForm();
    login->setContentsMargins(fontMetrics().height() * 2, 0, 0, 0);
    addField(*login, tr("Account Name"), m_smtpUserName);
    addField(*login, tr("Password"), m_smtpPassword);
    layout->addLayout(server);
    layout->addSpacing(layout->spacing());
    layout->addWidget(m_smtpAuthentication);
    layout->addLayout(login);
    layout->addStretch();
    connect(m_smtpAuthentication, &QCheckBox::clicked, this, &frmPreference::UpdateUI);
    return page;
}

QWidget *frmPreference::buildProfile()
{
    m_reporterName = newLineEdit(u"txtReporterName"_s, tr("Who makes the reports"));
    m_companyName = newLineEdit(u"txtCompanyName"_s);
    m_reporterEmail = newLineEdit(u"txtReporterEmail"_s, tr("The reports are mailed from this address"));
    m_reporterWeb = newLineEdit(u"txtReporterWeb"_s);
    m_logoURL = newLineEdit(u"txtLogoURL"_s, tr("The address of a picture for the reports"));
    m_logoTop = newCheckBox(u"chkLogoPosition0"_s, tr("Top"), tr("The logo stands above the report"));
    m_logoBottom = newCheckBox(u"chkLogoPosition1"_s, tr("Bottom"), tr("The logo stands below the report"));
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    auto *fields = newForm();
    addField(*fields, tr("Name:"), m_reporterName);
    addField(*fields, tr("Company name:"), m_companyName);
    addField(*fields, tr("Email:"), m_reporterEmail);
    addField(*fields, tr("Web site:"), m_reporterWeb);
    addField(*fields, tr("Logo URL:"), m_logoURL);
    auto *places = new QHBoxLayout;
    places->addWidget(m_logoTop);
    places->addWidget(m_logoBottom);
    places->addStretch();
    fields->addRow(tr("Logo position:"), places);
    layout->addLayout(fields);
    layout->addStretch();
    return page;
}

QWidget *frmPreference::buildOption()
{
    m_schedulerEnable = newCheckBox(u"chkSchedulerEnable"_s, tr("Enable scheduler"),
                                    tr("Look up the projects that are due while the program runs"));
    m_updateEngineData = newCheckBox(
        u"chkUpdateEngineData"_s, tr("Check for new Engine Data update every time you re-start the program"));
    m_timeOut = newNumber(u"txtTimeOut"_s);
    m_confirmConnection = newCheckBox(u"chkConfirmConnection"_s, tr("Confirm connection before searching"));
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    auto *wait = new QHBoxLayout;
    wait->addWidget(newCaption(tr("Waiting time for a server to respond: "), m_timeOut));
    wait->addWidget(m_timeOut);
    wait->addWidget(new QLabel(tr("Seconds")));
    wait->addStretch();
    layout->addWidget(m_schedulerEnable);
    layout->addWidget(m_updateEngineData);
    layout->addWidget(m_confirmConnection);
    layout->addSpacing(layout->spacing());
    layout->addLayout(wait);
    layout->addStretch();
    return page;
}

} // namespace sondrel
