// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

class QListWidget;

namespace sondrel {

enum class ListBoxes { None, CheckBoxes };

/// Fills a list with the engines that the engine data file names; with check boxes, those that the settings
/// leave switched on are checked. A missing file leaves the list and is told in a message.
void PopulateAllEngine(ApplicationContext &app, QListWidget &list, ListBoxes boxes);

} // namespace sondrel
