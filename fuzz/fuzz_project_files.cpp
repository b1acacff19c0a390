// Bytes of any kind as a project's settings, as the project list and as the engine data.
#include "engines/clsEngine.h"
#include "project/clsAccount.h"
#include "project/clsMain.h"
#include "tests/doors/offline_program.h"

#include <QDir>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const auto Account = u"P"_s;

struct Files
{
    // In memory where there is such a place: every run writes them anew.
    QTemporaryDir folder{QDir(u"/dev/shm"_s).exists() ? u"/dev/shm/sondrel-XXXXXX"_s : QString()};
    OfflineProgram program{folder.path()};
    ApplicationContext &app = program.app;
    QString settings = app.appFile({u"Projects"_s, Account, Account + u".dat"_s});

    Files() { app.files.makeFolder(app.appFile({u"Projects"_s, Account})); }
};

void useCatalogue(clsEngine &engines)
{
    engines.loadEngineData();
    engines.GetEngineNameMarketCol();
    for (qint16 index = 1; index <= engines.GetEngineCount(); ++index) {
        const QString name = engines.GetEnginName(index);
        engines.GetURL(name, name);
        engines.EngineURL(name);
        engines.GetPostString(index, name);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static Files files;
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    ApplicationContext &app = files.app;
    for (const QString &path : {files.settings, app.EngineDataFile, app.appFile({u"Engines.dat"_s}),
                                app.appFile({u"project.dat"_s})})
        app.files.writeUnflushed(path, bytes);

    clsEngine engines(app);
    app.EngineCatalogue = &engines;
    useCatalogue(engines);

    clsAccount project(app);
    project.Name = Account;
    project.GetSettings();
    project.LoadURLs();
    project.LoadEngines();
    project.DeleteInvalidEngine();

    QStringList projects;
    clsMain(app).loadAccount(projects);
    app.EngineCatalogue = nullptr;
    return 0;
}
