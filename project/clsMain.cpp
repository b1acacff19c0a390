#include "project/clsMain.h"

#include "core/profile_file.h"
#include "core/text_fold.h"
#include "core/values.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto Accounts = "Accounts"_L1;
constexpr auto Last = "Last"_L1;

} // namespace

clsMain::clsMain(ApplicationContext &app) : m_app(app), m_file(app.appFile({u"project.dat"_s})) {}

bool clsMain::loadAccount(QStringList &projects)
{
    m_loaded = reportFailure(m_app, u"clsMain_loadAccount_Error: "_s, [&] {
        const ProfileFile file = ProfileFile::load(m_app, m_file);
        for (const qint64 number : file.numberedKeys(Accounts, leadingNumber(file.read(Accounts, Last)))) {
            const QString name = trimBlanks(file.read(Accounts, QString::number(number))).toString();
            if (!name.isEmpty())
                projects.append(name);
        }
    });
    return m_loaded;
}

void clsMain::SaveAccount(const QStringList &projects)
{
    reportFailure(m_app, u"SaveAccount_Error: "_s, [&] {
        if (!m_loaded)
            throw Failure(u"The project list was not read and is kept as it is on disk"_s);
        ProfileFile file = ProfileFile::load(m_app, m_file);
        qsizetype number = 0;
        for (const QString &name : projects)
            file.write(Accounts, QString::number(++number), name);
        file.write(Accounts, Last, QString::number(number));
        file.save(m_app, m_file);
    });
}

} // namespace sondrel
