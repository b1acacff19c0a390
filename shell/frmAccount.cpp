#include "shell/frmAccount.h"

#include "core/entered_text.h"
#include "engines/clsEngine.h"
#include "project/clsAccount.h"
#include "shell/account_urls.h"
#include "shell/dialog_controls.h"
#include "shell/frmURLs.h"
#include "shell/tree_nodes.h"
#include "shell/url_list_view.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QTimeEdit>
#include <QTreeWidget>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString MessageTitle = u"Project"_s;

std::optional<qint32> chosenButton(const QButtonGroup &group)
{
    const int index = group.checkedId();
    return index < 0 ? std::nullopt : std::optional(index);
}

void chooseButton(const QButtonGroup &group, std::optional<qint32> index)
{
    if (QAbstractButton *button = index ? group.button(*index) : nullptr)
        button->setChecked(true);
}

std::vector<clsURL> rowsOf(const UrlListView &list)
{
    std::vector<clsURL> urls;
    for (int row = 0; row < list.topLevelItemCount(); ++row) {
        const QTreeWidgetItem &item = *list.topLevelItem(row);
        urls.push_back({item.text(0), isCompetitor(item)});
    }
    return urls;
}

} // namespace

void frmAccount::connectControls()
{
    connect(m_urls, &UrlListView::deletePressed, this, &frmAccount::DeleteURL);
    connect(m_urls, &UrlListView::spacePressed, this, [this] { toggleCompetitors(m_urls->selectedItems()); });
    connect(m_urls, &QTreeWidget::itemDoubleClicked, this,
            [this](QTreeWidgetItem *row) { toggleCompetitors({row}); });
    connect(m_engines, &QTreeWidget::itemChanged, this,
            [this](QTreeWidgetItem *node) { copyCheckToEngines(*node); });
    connect(m_schedulerEnable, &QCheckBox::clicked, this, &frmAccount::UpdateUI);
    connect(m_sentReport, &QCheckBox::clicked, this, &frmAccount::UpdateUI);
}

clsAccount &frmAccount::account() const
{
    if (!m_account)
        throw Failure(u"The dialog was given no project"_s);
    return *m_account;
}

void frmAccount::load()
{
    setWindowTitle(tr("Project"));
    m_tabs->setCurrentIndex(0);
    m_links->addItems(linkCounts());
    m_startDate->setDate(app().clock.today());
    reportFailure(app(), u"frmAccount_Load_Error: "_s, [&] {
        const AccountForm form = accountForm(app(), account());
        PopulateEngine();
        showForm(form);
        PopulateAccountURLs(app(), account().URLs ? &*account().URLs : nullptr, *m_urls);
        if (!form.IsNew)
            setWindowTitle(tr("Project") + u" - "_s + form.AccountName);
    });
    UpdateUI();
    // Where there is something to enter, and not on the tabs.
    (m_name->isReadOnly() ? static_cast<QWidget *>(m_urls) : m_name)->setFocus();
}

void frmAccount::PopulateEngine()
{
    reportFailure(app(), u"frmAccount_PopulateEngine error: "_s, [&] {
        const QSignalBlocker quiet(m_engines); // nobody has checked anything
        m_engines->clear();
        m_engineNodes.clear();
        m_engineItems.clear();
        const auto names = app().EngineCatalogue ? app().EngineCatalogue->GetEngineNameMarketCol()
                                                 : std::optional<Collection<QString>>();
        if (!names)
            throw Failure(u"The catalogue has no list of its engines"_s);
        m_engineNodes = engineNodes(app(), *names, account().Engine ? &*account().Engine : nullptr);
        QTreeWidgetItem *market = nullptr;
        for (const EngineNode &node : m_engineNodes) {
            QTreeWidgetItem *item = nullptr;
            if (node.MarketKey.isEmpty()) {
                item = market = AddRootNode(node.Text, *m_engines);
                market->setExpanded(true);
            } else {
                if (nodeKey(market) != node.MarketKey)
                    market = findNode(*m_engines, node.MarketKey);
                item = new QTreeWidgetItem(market, {node.Text});
                setNodeKey(*item, node.Key);
            }
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setCheckState(0, node.Checked ? Qt::Checked : Qt::Unchecked);
            m_engineItems.push_back(item);
        }
        for (int row = 0; row < m_engines->topLevelItemCount(); ++row)
            m_engines->topLevelItem(row)->sortChildren(0, Qt::AscendingOrder);
        m_engines->setCurrentItem(m_engines->topLevelItem(0));
    });
}

void frmAccount::showForm(const AccountForm &form)
{
    m_name->setText(form.AccountName);
    m_name->setReadOnly(!form.IsNew);
    m_links->setCurrentText(form.Links);
    m_schedulerEnable->setChecked(form.SchedulerEnable);
    m_sentReport->setChecked(form.SentReport);
    chooseButton(*m_reportFormat, form.ReportFormat);
    chooseButton(*m_frequency, form.Frequency);
    m_email->setText(form.Email);
    m_subject->setText(form.Subject);
    m_cc->setText(form.CC);
    m_engineSummary->setChecked(form.EngineSummary);
    m_keywordURL->setChecked(form.KeywordURL);
    m_keywordSummary->setChecked(form.KeywordSummary);
    m_rankingDetails->setChecked(form.RankingDetails);
    m_removeUnRanking->setChecked(form.RemoveUnRanking);
    m_topPosOnly->setChecked(form.TopPosOnly);
    m_startDate->setDate(form.StartDate);
    m_startTime->setTime(form.ScheduleTimer);
}

AccountForm frmAccount::readForm() const
{
    AccountForm form;
    form.AccountName = enteredLine(m_name->text());
    form.IsNew = !m_name->isReadOnly();
    form.URLs = rowsOf(*m_urls);
    form.Links = enteredLine(m_links->currentText());
    form.Engines = m_engineNodes;
    for (std::size_t i = 0; i < m_engineItems.size(); ++i)
        form.Engines[i].Checked = m_engineItems[i]->checkState(0) == Qt::Checked;
    form.SchedulerEnable = m_schedulerEnable->isChecked();
    form.Frequency = chosenButton(*m_frequency);
    form.StartDate = m_startDate->date();
    form.ScheduleTimer = m_startTime->time();
    form.SentReport = m_sentReport->isChecked();
    form.ReportFormat = chosenButton(*m_reportFormat);
    form.Email = enteredAddresses(m_email->text());
    form.CC = enteredAddresses(m_cc->text());
    form.Subject = enteredLine(m_subject->text());
    form.EngineSummary = m_engineSummary->isChecked();
    form.KeywordURL = m_keywordURL->isChecked();
    form.KeywordSummary = m_keywordSummary->isChecked();
    form.RankingDetails = m_rankingDetails->isChecked();
    form.RemoveUnRanking = m_removeUnRanking->isChecked();
    form.TopPosOnly = m_topPosOnly->isChecked();
    return form;
}

void frmAccount::UpdateUI()
{
    const AccountEnabled enabled = accountEnabled(readForm());
    for (QWidget *control : m_scheduleControls)
        control->setEnabled(enabled.Schedule);
    for (QWidget *control : m_reportControls)
        control->setEnabled(enabled.Report);
}

// A market's engines follow it; an engine stands for itself.
void frmAccount::copyCheckToEngines(QTreeWidgetItem &market)
{
    if (market.parent())
        return;
    const QSignalBlocker quiet(m_engines);
    for (int row = 0; row < market.childCount(); ++row)
        market.child(row)->setCheckState(0, market.checkState(0));
    m_engines->viewport()->update();
}

void frmAccount::EditURLs()
{
    reportFailure(app(), u"frmMain_EditURLs: "_s, [&] {
        account();
        frmURLs dialog(app(), this);
        dialog.setURLCollection(urlCollection(rowsOf(*m_urls)));
        dialog.exec();
        if (!dialog.Cancelled())
            PopulateAccountURLs(app(), &dialog.URLCollection(), *m_urls);
    });
}

void frmAccount::DeleteURL()
{
    reportFailure(app(), u"frmURLs_DeleteURL error:  "_s, [&] {
        if (m_urls->topLevelItemCount() == 0 || !askToRemoveURLs(app()))
            return;
        m_urls->removeSelectedRows();
        UpdateUI();
    });
}

void frmAccount::setCompetitors()
{
    std::vector<clsURL> urls = rowsOf(*m_urls);
    sondrel::setCompetitors(urls, m_urls->selectedRows());
    for (std::size_t row = 0; row < urls.size(); ++row)
        markCompetitor(*m_urls->topLevelItem(static_cast<int>(row)), urls[row].IsCompetitor);
}

void frmAccount::toggleCompetitors(const QList<QTreeWidgetItem *> &rows)
{
    for (QTreeWidgetItem *row : rows)
        markCompetitor(*row, !isCompetitor(*row));
}

QWidget &frmAccount::field(AccountField field) const
{
    switch (field) {
    case AccountField::Name:
        return *m_name;
    case AccountField::URLs:
        return *m_urls;
    case AccountField::Links:
        return *m_links;
    case AccountField::Engines:
        return *m_engines;
    case AccountField::StartDate:
        return *m_startDate;
    case AccountField::Email:
        break;
    }
    return *m_email;
}

bool frmAccount::ValidForm()
{
    bool valid = false;
    reportFailure(app(), u"frmAccount_ValidForm error: "_s, [&] {
        const auto fault = accountFault(app(), readForm());
        if (!fault) {
            valid = true;
            return;
        }
        app().desktop.showMessage({MessageTitle, fault->Message});
        bringToFront(*m_tabs, static_cast<int>(fault->Tab), field(fault->Focus));
    });
    return valid;
}

// A project may be there without being in the list, so its name can be used; but nothing of it is to be lost
// without a word.
bool frmAccount::mayTakeName()
{
    const AccountForm form = readForm();
    const QString name = trimBlanks(form.AccountName).toString();
    if (!form.IsNew || !app().files.fileExists(app().appFile({u"Projects"_s, name, name + u".dat"_s})))
        return true;
    const MessageAnswer answer = app().desktop.showMessage(
        {MessageTitle,
         u"There is a project of that name already. Do you want to replace its settings? Its keywords stay."_s,
         MessageIcon::Question, MessageButtons::YesNo});
    if (answer != MessageAnswer::Yes)
        bringToFront(*m_tabs, static_cast<int>(AccountTab::Details), *m_name);
    return answer == MessageAnswer::Yes;
}

void frmAccount::acceptForm()
{
    reportFailure(app(), u"frmAccount_cmdOK_Click error: "_s, [&] {
        if (!ValidForm() || !mayTakeName())
            return;
        AssignAccountProperty(app(), readForm(), account());
        account().SaveSettings();
        accept();
    });
}

} // namespace sondrel
