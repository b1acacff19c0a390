#include "optimizer/optimizer_form.h"

#include "optimizer/page_address.h"

namespace sondrel {

OptimizerPress optimizerPress(const ApplicationContext &app, const OptimizerForm &form, const QString &text)
{
    if (form.fetching)
        return OptimizerPress::Cancel;
    if (text.isEmpty())
        return OptimizerPress::AskForAddress;
    const auto file = localPage(text);
    if (!file)
        return OptimizerPress::Fetch;
    return app.files.fileExists(*file) ? OptimizerPress::ReadFile : OptimizerPress::RefuseFile;
}

OptimizerForm afterPress(OptimizerForm form, OptimizerPress press)
{
    switch (press) {
    case OptimizerPress::Cancel:
        form.fetching = false; // closing stays as it is, until a run has ended
        break;
    case OptimizerPress::Fetch:
        form.fetching = true;
        form.closeEnabled = false;
        break;
    case OptimizerPress::ReadFile:
        form.renovatorEnabled = false;
        form.closeEnabled = false;
        break;
    case OptimizerPress::AskForAddress:
    case OptimizerPress::RefuseFile:
        break;
    }
    return form;
}

} // namespace sondrel
