// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

// What the dialog of the optimizer decides.

namespace sondrel {

/// What its controls show.
struct OptimizerForm
{
    bool fetching = false; // the button says "&Cancel"
    bool renovatorEnabled = true;
    bool closeEnabled = true;

    bool operator==(const OptimizerForm &) const = default;
};

/// What a press of the button does.
enum class OptimizerPress {
    Cancel,
    AskForAddress, // the box is empty
    Fetch,
    RefuseFile, // there is no such file
    ReadFile,
};

OptimizerPress optimizerPress(const ApplicationContext &app, const OptimizerForm &form, const QString &text);
/// The controls behind a press.
OptimizerForm afterPress(OptimizerForm form, OptimizerPress press);
/// The controls at the end of a run.
inline OptimizerForm afterRun()
{
    return {};
}

} // namespace sondrel
