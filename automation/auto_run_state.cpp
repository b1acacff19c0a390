#include "automation/auto_run_state.h"

#include "core/text_fold.h"
#include "project/settings_date.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

bool isDue(const clsAccount &account, const QDateTime &now)
{
    if (!account.SchedulerEnable || !account.NextLookup.isValid() || now.date() < account.NextLookup)
        return false;
    if (trimBlanks(account.StartTime).isEmpty())
        return true;
    const std::optional<QTime> start = readSettingsTime(account.StartTime);
    if (!start)
        throw Failure(u"'%1' is no time of day"_s.arg(account.StartTime));
    // Both are what a clock on the wall shows, so a day on which it is moved has its start too.
    return now.time() >= *start;
}

std::optional<QString> autoRunText(ApplicationContext &app, const clsAccount &account, bool isLookedUp)
{
    if (!account.SchedulerEnable)
        return u"Auto LookUp is off"_s;
    if (isLookedUp)
        return u"LookUp is running..."_s;
    // The file may have changed since; the project on show may be in use and stays as it is.
    clsAccount stored = account;
    stored.GetSettings();
    if (!stored.NextLookup.isValid())
        return std::nullopt;
    if (app.clock.today() >= stored.NextLookup)
        return u"Auto LookUp is in queue"_s;
    return u"Next LookUp: "_s + stored.NextLookup.toString(u"MM/dd/yyyy"_s);
}

} // namespace sondrel
