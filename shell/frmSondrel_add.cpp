// How keywords come into the grid from the dialog for new ones.
#include "shell/frmSondrel.h"

#include "keywords/frmAddkeywords.h"
#include "shell/frmFileController.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

void frmSondrel::AddKeywords()
{
    reportFailure(m_app, u"frmSondrel_AddKeywords:  "_s, [&] {
        frmAddkeywords dialog(m_app, this);
        dialog.Account = Account();
        dialog.Prepare();
        dialog.exec();
        addAnswered(dialog.answer());
    });
}

void frmSondrel::addAnswered(const AddKeywordsAnswer &answer)
{
    if (answer.action != AddKeywordsAction::Import) {
        AddKeywordColToGrid(enteredKeywords(m_app, answer));
        return;
    }
    QStringList keywords;
    frmFileController(m_app, this).showWhile([&](const frmFileController::Progress &progress) {
        keywords = enteredKeywords(m_app, answer, progress);
    });
    AddKeywordColToGrid(keywords);
}

} // namespace sondrel
