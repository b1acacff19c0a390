#include "optimizer/optimizer_run.h"

#include "core/modCommon.h"
#include "optimizer/optimizer_report.h"
#include "optimizer/page_address.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString folderName()
{
    return u"Optimizer"_s;
}

// Whether the interface gets a turn behind this step.
bool yieldsBehind(int step)
{
    return step == 3 || step == 5 || step >= 7;
}

void write(ApplicationContext &app, OptimizerRun &run, OptimizerView &view)
{
    const auto reach = [&](int step) {
        view.showProgress(step);
        if (yieldsBehind(step))
            app.desktop.runPendingEvents();
    };
    reach(1);
    if (!run.identity)
        run.identity = OptimizerIdentity::current(app);
    const ReportOccasion occasion = reportOccasion(app, run.identity->preference, run.identity->dealer);
    reach(2);
    view.showStatus(u"Please wait while optimizing your web page ..."_s);
    const PageAnalysis page = analysePage(app, run.siteURL, run.pageText, reach);
    run.document = OptimizerReport(page, occasion).text(reach);
    const QString folder = app.appFile({folderName()});
    app.files.makeFolder(folder);
    const QString name = reportName(app, run.siteURL);
    run.file = folder + u'\\' + name; // to be told even where it cannot be
    reach(14);
    app.files.writeAll(app.appFile({folderName(), name}), app.toBytes(run.document));
    reach(15);
    app.desktop.beep();
    ShellOpenDocument(app, app.files.find(run.file).value_or(run.file), ShowMode::Maximised);
    reach(16);
    view.showStatus(u"Done"_s);
}

} // namespace

OptimizerIdentity OptimizerIdentity::current(ApplicationContext &app)
{
    OptimizerIdentity identity;
    identity.preference.GetSettings(app);
    identity.dealer.GetSettings(app);
    return identity;
}

QString reportName(ApplicationContext &app, const QString &siteURL)
{
    try {
        return reportFileName(app, siteURL);
    } catch (const std::bad_alloc &) {
        // The report is there, so it gets a name that needs no making.
        return u"opimtizer.html"_s; // spelt so ever since
    }
}

OptimizerOutcome processPage(ApplicationContext &app, OptimizerRun &run, OptimizerView &view)
{
    try {
        if (run.pageText.isEmpty()) {
            app.desktop.showMessage(
                {u"Optimizer"_s,
                 u"No document found from HTML file, please check your HTML file and try again."_s,
                 MessageIcon::Information});
            return OptimizerOutcome::NoDocument;
        }
        write(app, run, view);
        return OptimizerOutcome::Done;
    } catch (const std::exception &error) {
        const QString text = u"Module: Optimizer\r\n"_s + errorText(error) + u"\r\nFile: "_s + run.file;
        reportFailure(app, QString(), [&] {
            app.desktop.showMessage({u"Optimizer Error"_s, text, MessageIcon::Information});
        });
        app.WriteErrorLog(text);
        return OptimizerOutcome::Failed;
    }
}

} // namespace sondrel
