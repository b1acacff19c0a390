// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/collection.h"
#include "project/clsURL.h"

#include <QDate>
#include <QString>
#include <QTime>

#include <optional>
#include <vector>

// What the project dialog shows, what it accepts and what it makes of it.

namespace sondrel {

class clsAccount;

/// A node of the tree of markets and their engines, in the catalogue's order.
struct EngineNode
{
    QString Key;
    QString Text;
    QString MarketKey; // of an engine; a market's own node has none
    bool Checked = false;

    bool operator==(const EngineNode &) const = default;
};

/// The texts and states of the project dialog's controls.
struct AccountForm
{
    QString AccountName;
    bool IsNew = true; // an existing project keeps its name
    std::vector<clsURL> URLs;
    QString Links = QStringLiteral("10");
    std::vector<EngineNode> Engines;
    bool SchedulerEnable = false;
    std::optional<qint32> Frequency; // which of the four buttons is chosen
    QDate StartDate;
    QTime ScheduleTimer{12, 0};
    bool SentReport = false;
    std::optional<qint32> ReportFormat; // which of the two buttons is chosen
    QString Email;
    QString CC;
    QString Subject;
    bool EngineSummary = false;
    bool KeywordURL = false;
    bool KeywordSummary = false;
    bool RankingDetails = false;
    bool RemoveUnRanking = false;
    bool TopPosOnly = false;

    bool operator==(const AccountForm &) const = default;
};

inline constexpr int FrequencyButtons = 4;
inline constexpr int ReportFormatButtons = 2;

/// "10" to "100" in steps of 10.
QStringList linkCounts();

enum class AccountTab : int { Details, Engines, Scheduler, Report };
enum class AccountField { Name, URLs, Links, Engines, StartDate, Email };

/// Why a project cannot be taken as the dialog shows it, and where.
struct AccountFault
{
    QString Message;
    AccountTab Tab = AccountTab::Details;
    AccountField Focus = AccountField::Name;

    bool operator==(const AccountFault &) const = default;
};

/// What the dialog shows of a project, but for its URLs and engines, which have lists of their own. A project
/// without a name is new.
AccountForm accountForm(const ApplicationContext &app, const clsAccount &account);

/// The tree of engines: a market's node wherever a "Market|Engine" name has another market than the one
/// before and there is no node of that market yet. Those of the project, null for none, are checked.
std::vector<EngineNode> engineNodes(ApplicationContext &app, const Collection<QString> &names,
                                    const Collection<QString> *chosen);

/// Which controls can be used.
struct AccountEnabled
{
    bool Schedule = false; // buttons, date and time of the schedule
    bool Report = false;   // format, addresses and the choice of reports

    bool operator==(const AccountEnabled &) const = default;
};
AccountEnabled accountEnabled(const AccountForm &form);

/// The first thing that is wrong; nothing when the project can be saved. A start date that has gone by is
/// logged.
std::optional<AccountFault> accountFault(ApplicationContext &app, const AccountForm &form);

/// The URLs of a list as a project keeps them, by their text.
Collection<clsURL> urlCollection(const std::vector<clsURL> &urls);

/// Takes over what the dialog shows; the next lookup is the start date again. What throws is logged, and what
/// would have been taken over behind it stays as it was.
void AssignAccountProperty(ApplicationContext &app, const AccountForm &form, clsAccount &account);

/// Marks exactly the selected rows as competitors' and takes the mark from all others.
void setCompetitors(std::vector<clsURL> &urls, const std::vector<bool> &selected);

} // namespace sondrel
