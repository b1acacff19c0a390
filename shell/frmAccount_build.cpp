// The controls of the project dialog and where they stand.
#include "shell/frmAccount.h"

#include "shell/box_delegate.h"
#include "shell/dialog_controls.h"
#include "shell/url_list_view.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTimeEdit>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// Option buttons in a row, or one below the other; their indexes are their numbers in the group.
QButtonGroup *addOptions(QObject *parent, QBoxLayout &layout, const QString &name,
                         const QStringList &captions)
{
    auto *group = new QButtonGroup(parent);
    group->setObjectName(name);
    for (const QString &caption : captions) {
        const int index = static_cast<int>(group->buttons().size());
        auto *option = new QRadioButton(caption);
        option->setObjectName(name + QString::number(index));
        group->addButton(option, index);
        layout.addWidget(option);
    }
    layout.addStretch();
    return group;
}

void addOptionsTo(std::vector<QWidget *> &controls, const QButtonGroup &group)
{
    for (QAbstractButton *option : group.buttons())
        controls.push_back(option);
}

// Four digits of a year, as everywhere in the program.
QString dateForm(const QLocale &locale)
{
    QString form = locale.dateFormat(QLocale::ShortFormat);
    if (!form.contains("yyyy"_L1))
        form.replace("yy"_L1, "yyyy"_L1);
    return form;
}

} // namespace

frmAccount::frmAccount(ApplicationContext &app, QWidget *parent) : ProgramDialog(app, u"frmAccount"_s, parent)
{
    m_tabs = new QTabWidget;
    m_tabs->setObjectName(u"SSTab1"_s);
    m_tabs->addTab(newPage(buildDetails()), tr("Details"));
    m_tabs->addTab(newPage(buildEngines()), tr("Engines"));
    m_tabs->addTab(newPage(buildScheduler()), tr("Scheduler"));
    m_tabs->addTab(newPage(buildReport()), tr("Report"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    layout->addWidget(newButtons([this] { acceptForm(); }));
    connectControls();
}

QWidget *frmAccount::buildDetails()
{
    m_name = newLineEdit(u"txtAccountName"_s, tr("Names the project and its folder"));
    m_urls = new UrlListView;
    m_urls->setToolTip(tr("Double-click a URL to mark it as a competitor's or as your own"));
    m_urls->setHint(tr("No web site yet. \"Add URL\" picks the sites to look for."));
    auto *add = newButton(u"cmdAdd"_s, tr("&Add URL"), tr("Pick URLs from the list of all that are known"));
    auto *remove = newButton(u"cmdDelete"_s, tr("&Delete"), tr("Remove the selected URLs from the project"));
    auto *competitor = newButton(u"cmdCompetitor"_s, tr("Set As Competitor"),
                                 tr("The selected URLs are competitors', all others your own"));
    connect(add, &QPushButton::clicked, this, &frmAccount::EditURLs);
    connect(remove, &QPushButton::clicked, this, &frmAccount::DeleteURL);
    connect(competitor, &QPushButton::clicked, this, &frmAccount::setCompetitors);
    m_links = new QComboBox;
    m_links->setObjectName(u"cboLinks"_s);
    m_links->setToolTip(tr("How many results of a search are looked through"));
    m_links->setEditable(true);
    m_links->setInsertPolicy(QComboBox::NoInsert);
    m_links->setCompleter(nullptr); // "1" is a number of its own, not the beginning of "10"

    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    auto *nameRow = newForm();
    addField(*nameRow, tr("Project name:"), m_name);
    auto *buttons = new QVBoxLayout;
    buttons->addWidget(add);
    buttons->addWidget(remove);
    buttons->addWidget(competitor);
    buttons->addStretch();
    auto *urlRow = new QHBoxLayout;
    urlRow->addWidget(m_urls, 1);
    urlRow->addLayout(buttons);
    auto *linksRow = new QHBoxLayout;
    linksRow->addWidget(newCaption(tr("Number of matches links to scan:"), m_links));
    linksRow->addWidget(m_links);
    linksRow->addStretch();
    layout->addLayout(nameRow);
    layout->addSpacing(layout->spacing());
    layout->addWidget(newCaption(tr("Your domain(s) to be searched:"), m_urls));
    layout->addLayout(urlRow, 1);
    layout->addSpacing(layout->spacing());
    layout->addLayout(linksRow);
    return page;
}

QWidget *frmAccount::buildEngines()
{
    m_engines = new QTreeWidget;
    m_engines->setObjectName(u"tvwEngine"_s);
    m_engines->setToolTip(tr("Check a market to choose all its search engines"));
    m_engines->setHeaderHidden(true);
    m_engines->setItemDelegate(new BoxDelegate(m_engines));
    m_engines->setUniformRowHeights(true);
    m_engines->setAccessibleName(tr("Search engines to look the keywords up on"));
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(m_engines);
    return page;
}

QWidget *frmAccount::buildScheduler()
{
    m_schedulerEnable = newCheckBox(u"chkSchedulerEnable"_s, tr("Enable scheduler"),
                                    tr("Look all keywords up regularly while the program runs"));
    m_startDate = new QDateEdit;
    m_startDate->setObjectName(u"dtStartDate"_s);
    m_startDate->setToolTip(tr("The day of the first lookup"));
    m_startDate->setCalendarPopup(true);
    m_startDate->setLocale(app().locale);
    m_startDate->setDisplayFormat(dateForm(app().locale));
    m_startTime = new QTimeEdit;
    m_startTime->setObjectName(u"dtpScheduleTimer"_s);
    m_startTime->setToolTip(tr("The time of day of every lookup"));
    m_startTime->setLocale(app().locale);
    m_startTime->setDisplayFormat(app().locale.timeFormat(QLocale::ShortFormat));

    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    auto *often = new QGroupBox(tr("How often"));
    auto *options = new QHBoxLayout(often);
    m_frequency = addOptions(this, *options, u"optDate"_s,
                             {tr("Weekly"), tr("Fortnight"), tr("Monthly"), tr("Quarterly")});
    auto *start = newForm();
    start->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    addField(*start, tr("Starting date:"), m_startDate);
    addField(*start, tr("Starting time:"), m_startTime);
    layout->addWidget(m_schedulerEnable);
    layout->addWidget(often);
    layout->addSpacing(layout->spacing());
    layout->addLayout(start);
    layout->addStretch();
    m_scheduleControls = {m_startDate, m_startTime};
    addOptionsTo(m_scheduleControls, *m_frequency);
    return page;
}

QWidget *frmAccount::buildReport()
{
    m_sentReport = newCheckBox(u"chkSentReport"_s, tr("&Send ranking report by email when complete"),
                               tr("Mail the reports when a scheduled lookup is through"));
    m_email = newLineEdit(u"txtEmail"_s);
    m_cc = newLineEdit(u"txtCC"_s);
    m_subject = newLineEdit(u"txtSubject"_s);
    m_engineSummary = newCheckBox(u"chkEngineSummary"_s, tr("Engine->Keyword summary report"));
    m_keywordURL = newCheckBox(u"chkKeywordURL"_s, tr("Keyword->URL summary report"));
    m_keywordSummary = newCheckBox(u"chkKeywordSummary"_s, tr("Keyword summary report"));
    m_rankingDetails = newCheckBox(u"chkRankingDetails"_s, tr("Ranking details report"));
    m_removeUnRanking =
        newCheckBox(u"chkRemoveUnRanking"_s, tr("Do not include non-ranking keywords in the report"));
    m_topPosOnly =
        newCheckBox(u"chkTopPosOnly"_s, tr("Display top position only(don't show duplicate position)"));

    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    auto *mail = newForm();
    addField(*mail, tr("Send  to:"), m_email);
    addField(*mail, tr("CC:"), m_cc);
    addField(*mail, tr("Subject:"), m_subject);
    auto *formats = new QHBoxLayout;
    m_reportFormat = addOptions(this, *formats, u"optReportFormat"_s, {tr("Text"), tr("HTML")});
    mail->addRow(tr("Format:"), formats);
    auto *which = new QGroupBox(tr("Reports to send"));
    auto *reports = new QVBoxLayout(which);
    for (QCheckBox *report : {m_engineSummary, m_keywordURL, m_keywordSummary, m_rankingDetails})
        reports->addWidget(report);
    layout->addWidget(m_sentReport);
    layout->addLayout(mail);
    layout->addWidget(which);
    layout->addWidget(m_removeUnRanking);
    layout->addWidget(m_topPosOnly);
    layout->addStretch();
    m_reportControls = {m_email,         m_cc, m_subject, m_engineSummary, m_keywordURL, m_keywordSummary,
                        m_rankingDetails};
    addOptionsTo(m_reportControls, *m_reportFormat);
    return page;
}

} // namespace sondrel
