#include "core/registry.h"
#include "probe/operations.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

void addSettingsOperations(Operations &operations)
{
    operations.insert(u"CreateRegistryKey"_s,
                      [](const Call &call) { return answer(CreateRegistryKey(call.app, call.text(0))); });
    operations.insert(u"GetRegistryValue"_s, [](const Call &call) {
        return answer(GetRegistryText(call.app, call.text(0), call.text(1), call.text(2)));
    });
    operations.insert(u"SetRegistryValue"_s, [](const Call &call) {
        CreateRegistryKey(call.app, call.text(0));
        SetRegistryValue(call.app, call.text(0), call.text(1), RegistryString, call.text(2));
        return answer(QJsonValue());
    });
}

} // namespace sondrel::probe
