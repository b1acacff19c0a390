// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "engines/clsEngine.h"
#include "probe/probe.h"

namespace sondrel::probe {

/// The catalogue of two texts, a missing one being a missing file; it is the program's own while it lives.
class CatalogueFixture
{
public:
    CatalogueFixture(ApplicationContext &app, const std::optional<QString> &shared,
                     const std::optional<QString> &user = {});
    ~CatalogueFixture();
    CatalogueFixture(const CatalogueFixture &) = delete;
    CatalogueFixture &operator=(const CatalogueFixture &) = delete;

    clsEngine engines;
    bool loaded = false; // what loadEngineData gave

private:
    ApplicationContext &m_app;
    clsEngine *m_before;
};

} // namespace sondrel::probe
