#include "shell/help_contents.h"

#include "core/modCommon.h"
#include "shell/start_up.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

void tellMissing(ApplicationContext &app, const QString &file)
{
    app.desktop.showMessage({u"Help Contents"_s,
                             u"Cannot find the '"_s + file +
                                 u"' Help file. Please check to see that the file exists on your disk. If it "
                                 "doesn't, you need to reinstall it."_s,
                             MessageIcon::Information, MessageButtons::Ok});
}

} // namespace

void showHelpContents(ApplicationContext &app)
{
    const QString file = helpFile(app);
    const auto native = app.files.find(file);
    if (!native || !app.files.fileExists(file)) {
        tellMissing(app, file);
        return;
    }
    const bool readable = app.desktop.canOpen(*native);
    const bool hasPages = !app.Manual.isEmpty() && QFileInfo::exists(app.Manual);
    ShellOpenDocument(app, readable || !hasPages ? *native : app.Manual, ShowMode::Normal);
}

} // namespace sondrel
