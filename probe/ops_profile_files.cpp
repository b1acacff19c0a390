#include "core/modCommon.h"
#include "probe/operations.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

namespace {

QString profile(const Call &call)
{
    return call.app.appFile({u"probe.ini"_s});
}

} // namespace

void addProfileOperations(Operations &operations)
{
    operations.insert(u"ReadProfileString"_s, [](const Call &call) {
        const QString path = profile(call);
        writeFixture(call.app, path, fromHex(call.text(0)));
        const QString value = ReadProfileString(call.app, path, call.text(1), call.text(2));
        removeFixture(call.app, path);
        return answer(value);
    });
    operations.insert(u"WriteProfileString"_s, [](const Call &call) {
        const QString path = profile(call);
        if (const auto before = call.optionalText(0))
            writeFixture(call.app, path, fromHex(*before));
        const QString written = WriteProfileString(call.app, path, call.text(1), call.text(2), call.text(3));
        const QByteArray after = call.app.files.readAll(path);
        removeFixture(call.app, path);
        return QJsonObject{{u"result"_s, written}, {u"hex"_s, toHex(after)}};
    });
}

} // namespace sondrel::probe
