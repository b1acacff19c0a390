// How keywords come into the grid from an engine's suggestions.
#include "shell/frmSondrel.h"

#include "keywords/frmKeywordBuilder.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

void frmSondrel::BuildKeyword()
{
    reportFailure(m_app, u"frmSondrel_BuildKeyword:  "_s, [&] {
        frmKeywordBuilder dialog(m_app, this);
        dialog.keywordsObject = &Keywords();
        dialog.Prepare();
        dialog.exec();
        if (dialog.AddToList)
            PopulateKeywords();
    });
    Q_EMIT factsChanged();
}

} // namespace sondrel
