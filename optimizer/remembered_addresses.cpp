#include "optimizer/remembered_addresses.h"

#include "core/profile_file.h"
#include "core/text_fold.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString listFile(const ApplicationContext &app)
{
    return app.appFile({u"dmlist.dat"_s});
}

} // namespace

void loadDomains(ApplicationContext &app, QStringList &list, const QString &section, int maximum)
{
    reportFailure(app, u"frmOptimizer_loadDomains error: "_s, [&] {
        const ProfileFile file = ProfileFile::load(app, listFile(app));
        for (int key = 1; key <= maximum; ++key) {
            const QString value = file.read(section, QString::number(key));
            if (value.isEmpty())
                return;
            list.append(value);
        }
    });
}

void saveListToFile(ApplicationContext &app, const QStringList &list, const QString &section)
{
    if (list.isEmpty())
        return;
    reportFailure(app, u"frmOptimizer_saveListToFile error: "_s, [&] {
        ProfileFile file = ProfileFile::load(app, listFile(app));
        const qsizetype count = std::min<qsizetype>(list.size(), MostAddresses);
        for (qsizetype entry = 0; entry < count; ++entry)
            file.write(section, QString::number(entry + 1), list[entry]);
        file.save(app, listFile(app));
    });
}

void addKeywordToList(QStringList &list, const QString &text)
{
    const bool known = std::any_of(list.begin(), list.end(),
                                   [&](const QString &entry) { return equalsIgnoringCase(entry, text); });
    if (known)
        return;
    list.prepend(text);
    if (list.size() > MostAddresses)
        list.removeLast();
}

} // namespace sondrel
