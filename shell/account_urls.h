// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/collection.h"
#include "project/clsURL.h"

class QTreeWidget;
class QTreeWidgetItem;

namespace sondrel {

/// Clears the list and adds a row for every URL of a project, null for none, with the mark "Competitor" or
/// "Normal".
void PopulateAccountURLs(ApplicationContext &app, const Collection<clsURL> *urls, QTreeWidget &list);

/// Whose a row's URL is, by its mark; and the change of the mark.
bool isCompetitor(const QTreeWidgetItem &row);
void markCompetitor(QTreeWidgetItem &row, bool competitor);

} // namespace sondrel
