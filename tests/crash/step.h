// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <functional>
#include <vector>

namespace sondrel {

/// One store, and how a state of it is written, 0 or 1.
struct Step
{
    QString name;
    std::function<void(int state)> write;
};

/// What is written on the side: the optimizer's advice and its addresses, a text report, a project's next
/// date, and a list where the user wants it, which is in that file.
std::vector<Step> smallSteps(ApplicationContext &app, const QString &listFile);

} // namespace sondrel
