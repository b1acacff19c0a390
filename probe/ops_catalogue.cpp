#include "probe/catalogue_fixture.h"
#include "probe/operations.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

namespace {

QJsonObject loadEngineData(const Call &call)
{
    const CatalogueFixture catalogue(call.app, call.optionalText(0), call.optionalText(1));
    QJsonArray rows;
    for (int index = 1; index <= catalogue.engines.GetEngineCount(); ++index) {
        const EngineRow &row = catalogue.engines.row(static_cast<qint16>(index));
        rows.append(QJsonArray{row.Market, row.EngineName});
    }
    return {{u"result"_s, catalogue.loaded},
            {u"rows"_s, rows},
            {u"DefaultEngineNum"_s, catalogue.engines.DefaultEngineNum()}};
}

QJsonObject engineNameMarketCol(const Call &call)
{
    const CatalogueFixture catalogue(call.app, call.optionalText(0));
    const auto names = catalogue.engines.GetEngineNameMarketCol();
    if (!names)
        return answer(QJsonValue());
    QJsonArray result;
    for (const QString &name : *names)
        result.append(name);
    return answer(result);
}

} // namespace

void addCatalogueOperations(Operations &operations)
{
    operations.insert(u"loadEngineData"_s, loadEngineData);
    operations.insert(u"GetEngineNameMarketCol"_s, engineNameMarketCol);
    operations.insert(u"GetURL"_s, [](const Call &call) {
        const CatalogueFixture catalogue(call.app, call.optionalText(0));
        return answer(catalogue.engines.GetURL(call.text(1), call.text(2)));
    });
    operations.insert(u"EngineURL"_s, [](const Call &call) {
        const CatalogueFixture catalogue(call.app, call.optionalText(0));
        return answer(catalogue.engines.EngineURL(call.text(1)));
    });
    operations.insert(u"GetPostString"_s, [](const Call &call) {
        const CatalogueFixture catalogue(call.app, call.optionalText(0));
        return answer(catalogue.engines.GetPostString(static_cast<qint16>(call.number(1)), call.text(2)));
    });
}

} // namespace sondrel::probe
