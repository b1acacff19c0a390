#include "shell/shut_down.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

bool confirmed(ApplicationContext &app, const QString &question, MessageIcon icon)
{
    return app.desktop.showMessage({u"Exit Sondrel"_s, question, icon, MessageButtons::YesNo}) ==
           MessageAnswer::Yes;
}

} // namespace

bool mayClose(ApplicationContext &app, const std::optional<AutoLookup> &autoLookup)
{
    if (!confirmed(app, u"Are you sure you want to exit?"_s, MessageIcon::Question))
        return false;
    // Asked now and not before: the lookup goes on while the first question waits for its answer.
    if (!autoLookup || !autoLookup->Online())
        return true;
    if (!confirmed(app,
                   u"Auto look up is currently running, do you want to cancel this look up and close "
                   "the program?"_s,
                   MessageIcon::Information))
        return false;
    autoLookup->Disconnect();
    return true;
}

} // namespace sondrel
