#include "shell/all_engines.h"

#include "core/modCommon.h"
#include "core/profile_file.h"

#include <QListWidget>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const MessageBox &missingFile()
{
    static const MessageBox box{
        u"Error"_s,
        u"Engine data file is corrupted or missing, you need to download the new engine data file from our "
        "web site by click on the 'File/Update Engine Data' menu item from the main menu bar and following "
        "the instruction on the screen."_s,
        MessageIcon::Information, MessageButtons::Ok};
    return box;
}

} // namespace

void PopulateAllEngine(ApplicationContext &app, QListWidget &list, ListBoxes boxes)
{
    if (!app.files.fileExists(app.EngineDataFile)) {
        app.desktop.showMessage(missingFile());
        return;
    }
    list.clear();
    const ProfileFile file = ProfileFile::load(app, app.EngineDataFile);
    for (int number = 1;; ++number) {
        const QString name = file.read(u"Engines"_s, QString::number(number));
        if (name.isEmpty())
            return;
        auto *item = new QListWidgetItem(name, &list);
        item->setData(Qt::UserRole, u"Key"_s + name);
        if (boxes == ListBoxes::CheckBoxes)
            item->setCheckState(GetEngineFlag(app, name) ? Qt::Checked : Qt::Unchecked);
    }
}

} // namespace sondrel
