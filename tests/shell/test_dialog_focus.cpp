// Where the keyboard begins in each dialog, and how Tab goes on.
#include "engines/frmEngineBuilder.h"
#include "engines/frmUpdateEngines.h"
#include "keywords/frmAddkeywords.h"
#include "keywords/frmKeywordBuilder.h"
#include "optimizer/frmOptimizer.h"
#include "project/clsAccount.h"
#include "shell/frmAbout.h"
#include "shell/frmAccount.h"
#include "shell/frmPreference.h"
#include "shell/frmSendReport.h"
#include "shell/frmURLs.h"
#include "tests/shell/dialog_test.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

using MakeDialog = std::function<std::unique_ptr<ProgramDialog>(ApplicationContext &)>;

struct FocusCase
{
    const char *name;
    MakeDialog make;
    QString first;
    QString order;
};

class DialogFocus : public testing::TestWithParam<FocusCase>
{
protected:
    DialogFocus() : dialog(GetParam().make(world.app))
    {
        dialog->show();
        dialog->activateWindow();
        QApplication::processEvents();
    }

    QString focused() const
    {
        const QWidget *widget = QApplication::focusWidget();
        while (widget && (widget->objectName().isEmpty() || widget->objectName().startsWith(u"qt_"_s)))
            widget = widget->parentWidget();
        return widget ? widget->objectName() : QString();
    }

    CatalogueWorld world;
    std::unique_ptr<ProgramDialog> dialog;
};

template <typename Dialog>
MakeDialog making()
{
    return [](ApplicationContext &app) { return std::make_unique<Dialog>(app); };
}

std::unique_ptr<ProgramDialog> accountDialog(ApplicationContext &app, const QString &name)
{
    auto dialog = std::make_unique<frmAccount>(app);
    auto account = std::make_shared<clsAccount>(app);
    account->Name = name;
    dialog->setAccount(account);
    return dialog;
}

std::unique_ptr<ProgramDialog> newProject(ApplicationContext &app)
{
    return accountDialog(app, {});
}

std::unique_ptr<ProgramDialog> oldProject(ApplicationContext &app)
{
    return accountDialog(app, u"Shop"_s);
}

std::unique_ptr<ProgramDialog> addKeywords(ApplicationContext &app)
{
    auto dialog = std::make_unique<frmAddkeywords>(app);
    dialog->Prepare();
    return dialog;
}

std::unique_ptr<ProgramDialog> keywordBuilder(ApplicationContext &app)
{
    auto dialog = std::make_unique<frmKeywordBuilder>(app);
    dialog->Prepare();
    return dialog;
}

TEST_P(DialogFocus, beginsWhereOneWorks)
{
    EXPECT_EQ(focused(), GetParam().first);
}

TEST_P(DialogFocus, goesOnByTabAsTheEyeDoes)
{
    QString order = focused();
    const QWidget *begin = QApplication::focusWidget();
    do {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        if (QApplication::focusWidget() != begin)
            order += u' ' + focused();
    } while (QApplication::focusWidget() != begin && order.size() < 1000);
    EXPECT_EQ(order, GetParam().order);
}

INSTANTIATE_TEST_SUITE_P(
    All, DialogFocus,
    testing::Values(
        FocusCase{"about", making<frmAbout>(), u"cmdOK"_s, u"cmdOK lblEmail lblEmail lblWeb lblWeb"_s},
        FocusCase{"newProject", newProject, u"txtAccountName"_s,
                  u"txtAccountName lvwURLs cmdAdd cmdDelete cmdCompetitor cboLinks cmdOK cmdCancel SSTab1"_s},
        FocusCase{"oldProject", oldProject, u"lvwURLs"_s,
                  u"lvwURLs cmdAdd cmdDelete cmdCompetitor cboLinks cmdOK cmdCancel SSTab1 txtAccountName"_s},
        FocusCase{"urls", making<frmURLs>(), u"txtURLs"_s, u"txtURLs lvwURLs cmdOK cmdCancel"_s},
        FocusCase{"configuration", making<frmPreference>(), u"SSTab1"_s,
                  u"SSTab1 optProxy1 txtHTTPUsername txtHTTPPassword cmdOK cmdCancel"_s},
        FocusCase{"addKeywords", addKeywords, u"txtKeywords"_s, u"txtKeywords cmdCancel SSTab1"_s},
        FocusCase{"keywordBuilder", keywordBuilder, u"cboKeyword"_s,
                  u"cboKeyword cmdGet cboEngine lvwKeywords cmdClose"_s},
        FocusCase{"engineBuilder", making<frmEngineBuilder>(), u"lvwEngines"_s,
                  u"lvwEngines txtSearchURL cmdGetSource cmdTry cmdTryFile lvwTry"_s},
        FocusCase{"engineUpdate", making<frmUpdateEngines>(), u"cmdStart"_s, u"cmdStart cmdClose"_s},
        FocusCase{"optimizer", making<frmOptimizer>(), u"cboSiteURL"_s,
                  u"cboSiteURL cmdFileLocation cmdRenovator cmdClose"_s},
        FocusCase{
            "sendReport", making<frmSendReport>(), u"txtFrom"_s,
            u"txtFrom txtEmail txtCC txtSubject txtMessage chkEngineSummary chkKeywordSummary "
            "chkKeywordURLSummary chkRankingDetails chkRemoveUnRanking optReportFormat0 cmdSend cmdCancel"_s}),
    [](const auto &info) { return info.param.name; });

} // namespace
} // namespace sondrel
