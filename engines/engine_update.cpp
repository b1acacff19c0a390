#include "engines/engine_update.h"

#include "core/text_fold.h"
#include "engines/kept_copy.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

QString engineDataAddress(const ApplicationContext &app)
{
    return app.deployment.EngineDataHost + u"/enginedata/qlteng4.dat"_s;
}

bool isEngineData(const ApplicationContext &app, QByteArrayView body)
{
    return containsIgnoringCase(app.fromBytes(body), u"[Markets]");
}

void replaceEngineData(ApplicationContext &app, QByteArrayView body)
{
    replaceKeepingCopy(app, app.EngineDataFile, body.toByteArray() + "\r\n");
}

} // namespace sondrel
