#include "demo/screenshots/windows.h"

#include "engines/clsEngine.h"
#include "keywords/frmAddkeywords.h"
#include "optimizer/frmOptimizer.h"
#include "project/clsAccount.h"
#include "shell/frmAbout.h"
#include "shell/frmAccount.h"
#include "shell/frmFileController.h"
#include "shell/frmMain.h"
#include "shell/frmPreference.h"
#include "shell/frmSendReport.h"
#include "shell/frmSondrel.h"
#include "shell/frmSplash.h"
#include "shell/frmURLs.h"

#include <QListWidget>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTableView>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace sondrel::screenshots {

namespace {

// Every page of a dialog's tabs, or the dialog as it is.
void takeTabs(const Take &take, const QString &name, QWidget &dialog)
{
    dialog.show();
    auto *tabs = dialog.findChild<QTabWidget *>();
    if (!tabs) {
        take(name, dialog);
        return;
    }
    for (int page = 0; page < tabs->count(); ++page) {
        tabs->setCurrentIndex(page);
        take(name + u'-' + QString::number(page + 1), dialog);
    }
}

template <typename Window>
void takeOne(ApplicationContext &app, const Take &take, const QString &name)
{
    Window window(app);
    takeTabs(take, name, window);
}

void takeMainWindow(ApplicationContext &app, const Take &take)
{
    frmMain window(app);
    window.resize(1180, 760);
    window.load();
    auto *grid = window.findChild<QTableView *>(u"grdBidsManage"_s);
    if (grid)
        grid->selectRow(15);
    take(u"main-window"_s, window);
}

void takeEmptyWindow(ApplicationContext &app, const Take &take)
{
    frmMain window(app);
    window.resize(900, 560);
    window.show();
    take(u"main-window-empty"_s, window);
}

void takeProjectDialogs(ApplicationContext &app, const Take &take)
{
    clsEngine catalogue(app);
    catalogue.loadEngineData();
    app.EngineCatalogue = &catalogue;
    const auto account = std::make_shared<clsAccount>(app);
    account->Name = u"Demo"_s;
    account->GetSettings();
    {
        frmAccount dialog(app);
        dialog.setAccount(account);
        takeTabs(take, u"project"_s, dialog);
    }
    {
        frmSendReport dialog(app);
        dialog.setAccount(account);
        takeTabs(take, u"send-report"_s, dialog);
    }
    {
        frmURLs dialog(app);
        takeTabs(take, u"urls"_s, dialog);
    }
    {
        frmAddkeywords dialog(app);
        dialog.Account = account;
        dialog.NewKeywords = u"blue shoes\r\nrunning shoes\r\ngarden chairs"_s;
        dialog.Prepare();
        takeTabs(take, u"add-keywords"_s, dialog);
    }
    takeOne<frmOptimizer>(app, take, u"optimizer"_s);
    app.EngineCatalogue = nullptr;
}

void takeProgress(ApplicationContext &app, const Take &take)
{
    frmFileController window(app);
    window.showWhile([&](const frmFileController::Progress &progress) {
        progress(37, 120);
        take(u"progress"_s, window);
    });
}

} // namespace

void showWindows(ApplicationContext &app, const Take &take)
{
    takeOne<frmSplash>(app, take, u"splash"_s);
    takeMainWindow(app, take);
    takeEmptyWindow(app, take);
    takeProjectDialogs(app, take);
    showEngineWindows(take);
    takeOne<frmPreference>(app, take, u"configuration"_s);
    takeOne<frmAbout>(app, take, u"about"_s);
    takeProgress(app, take);
}

} // namespace sondrel::screenshots
