#include "probe/catalogue_fixture.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

CatalogueFixture::CatalogueFixture(ApplicationContext &app, const std::optional<QString> &shared,
                                   const std::optional<QString> &user)
    : engines(app), m_app(app), m_before(std::exchange(app.EngineCatalogue, &engines))
{
    const QString userFile = app.appFile({u"Engines.dat"_s});
    for (const auto &[path, text] : {std::pair{app.EngineDataFile, shared}, std::pair{userFile, user}}) {
        if (text)
            writeFixture(app, path, app.toBytes(*text));
        else
            removeFixture(app, path);
    }
    loaded = engines.loadEngineData();
    removeFixture(app, app.EngineDataFile);
    removeFixture(app, userFile);
}

CatalogueFixture::~CatalogueFixture()
{
    m_app.EngineCatalogue = m_before;
}

} // namespace sondrel::probe
