#include "shell/account_form.h"

#include "core/modCommon.h"
#include "core/values.h"
#include "project/clsAccount.h"
#include "project/settings_date.h"
#include "shell/project_tree.h"

#include <QSet>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// The button of an index; a stored number that has no button chooses none.
std::optional<qint32> button(qint32 index, int count)
{
    return index >= 0 && index < count ? std::optional(index) : std::nullopt;
}

// Whether a folder and a file of that name can be made, and the list of projects can hold it.
bool canBeStored(const ApplicationContext &app, const QString &name)
{
    return HostPath::isFileName(name) && HostPath::isFileName(name + u".dat"_s) &&
           app.fromBytes(app.toBytes(name)) == name;
}

bool isLinkCount(const QString &text)
{
    try {
        roundToInt16(leadingNumber(text));
    } catch (const Failure &) {
        return false; // a number that no project can hold
    }
    return isNumeric(text);
}

std::optional<AccountFault> detailsFault(const ApplicationContext &app, const AccountForm &form)
{
    using Field = AccountField;
    const QString name = trimBlanks(form.AccountName).toString();
    if (name.isEmpty())
        return AccountFault{u"Please enter a Project Name."_s, AccountTab::Details, Field::Name};
    if (!IsValidProjectName(name) || !canBeStored(app, name))
        return AccountFault{
            u"Invalid project name. The project name can not contain: '\\ / : * ? \" < >|'."_s,
            AccountTab::Details, Field::Name};
    if (form.URLs.empty())
        return AccountFault{u"Please add an URL."_s, AccountTab::Details, Field::URLs};
    if (!isLinkCount(form.Links))
        return AccountFault{u"Please specify the number of links you want to scan."_s, AccountTab::Details,
                            Field::Links};
    return std::nullopt;
}

bool isChosenEngine(const EngineNode &node)
{
    return node.Checked && isEngineKey(node.Key);
}

bool startsTooEarly(ApplicationContext &app, const AccountForm &form)
{
    const QDate today = app.clock.today();
    if (!form.SchedulerEnable || form.StartDate >= today)
        return false;
    app.WriteErrorLog(u"Please select a valid date: SelectedDate="_s + shortDate(app.locale, form.StartDate) +
                      u", TodayDate="_s + shortDate(app.locale, today));
    return true;
}

Collection<QString> chosenEngines(const std::vector<EngineNode> &nodes)
{
    Collection<QString> collection;
    for (const EngineNode &node : nodes) {
        if (isChosenEngine(node))
            collection.Add(node.Text, node.Text);
    }
    return collection;
}

} // namespace

Collection<clsURL> urlCollection(const std::vector<clsURL> &urls)
{
    Collection<clsURL> collection;
    for (const clsURL &url : urls)
        collection.Add(url, url.URL);
    return collection;
}

QStringList linkCounts()
{
    QStringList counts;
    for (int count = 10; count <= 100; count += 10)
        counts.append(QString::number(count));
    return counts;
}

AccountForm accountForm(const ApplicationContext &app, const clsAccount &account)
{
    AccountForm form;
    form.IsNew = account.Name.isEmpty();
    form.Frequency = button(account.Frequency, FrequencyButtons);
    form.ReportFormat = button(account.ReportFormat, ReportFormatButtons);
    form.StartDate = app.clock.today();
    if (form.IsNew)
        return form;
    form.AccountName = account.Name;
    form.Links = QString::number(account.LinksNum);
    form.SchedulerEnable = account.SchedulerEnable;
    form.SentReport = account.SentReport;
    form.Email = account.ReportTo;
    form.Subject = account.Subject;
    form.CC = account.CC;
    form.EngineSummary = account.EngineSummaryReport;
    form.KeywordURL = account.KeywordURL;
    form.KeywordSummary = account.KeywordSummaryReport;
    form.RankingDetails = account.RankingDetailReport;
    form.RemoveUnRanking = account.ExcludeUnRanking;
    form.TopPosOnly = account.TopPosOnly;
    form.StartDate = account.StartDate;
    form.ScheduleTimer = readSettingsTime(account.StartTime).value_or(form.ScheduleTimer);
    return form;
}

std::vector<EngineNode> engineNodes(ApplicationContext &app, const Collection<QString> &names,
                                    const Collection<QString> *chosen)
{
    std::vector<EngineNode> nodes;
    QSet<QString> markets;
    for (const QString &name : names) {
        const qsizetype bar = name.indexOf(u'|');
        if (bar < 0)
            continue;
        const QString market = name.first(bar);
        const QString engine = name.sliced(bar + 1);
        const QString key = marketKey(market);
        // An engine of the user's may come back to a market that is there already.
        if (const QString one = folded(key); !markets.contains(one)) {
            markets.insert(one);
            nodes.push_back({key, market, {}, false});
        }
        nodes.push_back({engineKey(engine), engine, key, IsCollectionItem(app, engine, chosen)});
    }
    return nodes;
}

AccountEnabled accountEnabled(const AccountForm &form)
{
    return {form.SchedulerEnable, form.SentReport};
}

std::optional<AccountFault> accountFault(ApplicationContext &app, const AccountForm &form)
{
    if (auto fault = detailsFault(app, form))
        return fault;
    if (std::none_of(form.Engines.begin(), form.Engines.end(), isChosenEngine))
        return AccountFault{u"Please select the engines you want to rank."_s, AccountTab::Engines,
                            AccountField::Engines};
    if (startsTooEarly(app, form))
        return AccountFault{u"Your start date can not be earlier than today's date. "
                            "Please select a valid date and try again. "_s,
                            AccountTab::Scheduler, AccountField::StartDate};
    if (form.SentReport && !IsValidEmailAddress(form.Email))
        return AccountFault{u"Please enter a valid email address."_s, AccountTab::Report,
                            AccountField::Email};
    return std::nullopt;
}

void AssignAccountProperty(ApplicationContext &app, const AccountForm &form, clsAccount &account)
{
    constexpr qint32 LastFrequency = FrequencyButtons - 1;
    reportFailure(app, u"frmAccount_AssignAccountProperty error: "_s, [&] {
        account.Name = trimBlanks(form.AccountName).toString();
        account.SchedulerEnable = form.SchedulerEnable;
        account.SentReport = form.SentReport;
        account.ReportFormat = form.ReportFormat.value_or(account.ReportFormat);
        account.Frequency = form.Frequency.value_or(LastFrequency);
        account.StartDate = form.StartDate;
        account.StartTime = settingsTime(form.ScheduleTimer);
        account.NextLookup = account.StartDate;
        account.LinksNum = roundToInt16(leadingNumber(form.Links));
        account.ReportTo = form.Email;
        account.URLs = urlCollection(form.URLs);
        account.Engine = chosenEngines(form.Engines);
        account.CC = form.CC;
        account.Subject = form.Subject;
        account.EngineSummaryReport = form.EngineSummary;
        account.KeywordURL = form.KeywordURL;
        account.KeywordSummaryReport = form.KeywordSummary;
        account.RankingDetailReport = form.RankingDetails;
        account.ExcludeUnRanking = form.RemoveUnRanking;
        account.TopPosOnly = form.TopPosOnly;
    });
}

void setCompetitors(std::vector<clsURL> &urls, const std::vector<bool> &selected)
{
    for (std::size_t row = 0; row < urls.size(); ++row)
        urls[row].IsCompetitor = row < selected.size() && selected[row];
}

} // namespace sondrel
