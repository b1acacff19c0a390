#include "shell/account_urls.h"

#include "shell/plain_tip.h"
#include "shell/program_icons.h"
#include "shell/tree_nodes.h"

#include <QCoreApplication>
#include <QSet>
#include <QTreeWidget>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int CompetitorRole = Qt::UserRole + 1;

QString tr(const char *text)
{
    return QCoreApplication::translate("PopulateAccountURLs", text);
}

} // namespace

void PopulateAccountURLs(ApplicationContext &app, const Collection<clsURL> *urls, QTreeWidget &list)
{
    reportFailure(app, u"PopulateAccountURLs_Error: "_s, [&] {
        list.clear();
        if (!urls)
            return;
        QSet<QString> keys;
        for (const clsURL &url : *urls) {
            if (keys.contains(folded(url.URL)))
                throw Failure(u"The list has this URL already: "_s + url.URL);
            keys.insert(folded(url.URL));
            auto *row = new QTreeWidgetItem(&list, {url.URL});
            setNodeKey(*row, url.URL);
            markCompetitor(*row, url.IsCompetitor);
        }
    });
}

bool isCompetitor(const QTreeWidgetItem &row)
{
    return row.data(0, CompetitorRole).toBool();
}

void markCompetitor(QTreeWidgetItem &row, bool competitor)
{
    row.setData(0, CompetitorRole, competitor);
    row.setIcon(0, programIcon(competitor ? u"url-competitor"_s : u"url-normal"_s));
    const QString whose = competitor ? tr("%1 (competitor)") : tr("%1 (own site)");
    row.setToolTip(0, plainTip(whose.arg(row.text(0))));
    row.setData(0, Qt::AccessibleTextRole, whose.arg(row.text(0)));
}

} // namespace sondrel
