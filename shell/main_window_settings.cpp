#include "shell/main_window_settings.h"

#include "core/modCommon.h"
#include "core/registry.h"
#include "core/values.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString MainFormPos = u"MainFormPos"_s;
const QString URLBoxStatus = u"URLBoxStatus"_s;

std::optional<WindowPlace> placeFrom(const QString &text)
{
    WindowPlace place;
    const std::array parts{&place.left, &place.top, &place.width, &place.height};
    const QStringList numbers = text.split(u',');
    if (numbers.size() != static_cast<qsizetype>(parts.size()))
        return std::nullopt;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        bool isNumber = false;
        *parts[i] = numbers[static_cast<qsizetype>(i)].toInt(&isNumber);
        if (!isNumber)
            return std::nullopt;
    }
    return place;
}

} // namespace

MainWindowSettings loadMainWindowSettings(ApplicationContext &app)
{
    return {placeFrom(GetRegistryText(app, app.RegPreference, MainFormPos, QString())),
            IsTrueText(GetRegistryText(app, app.RegPreference, URLBoxStatus, u"False"_s))};
}

void saveMainWindowSettings(ApplicationContext &app, const WindowPlace &place, bool urlBoxOpen,
                            bool minimised)
{
    if (minimised)
        return;
    const QStringList numbers{QString::number(place.left), QString::number(place.top),
                              QString::number(place.width), QString::number(place.height)};
    CreateRegistryKey(app, app.RegPreference);
    SetRegistryValue(app, app.RegPreference, MainFormPos, RegistryString, numbers.join(u','));
    SetRegistryValue(app, app.RegPreference, URLBoxStatus, RegistryString, booleanText(urlBoxOpen));
}

} // namespace sondrel
