#include "shell/form_place.h"

#include "core/values.h"

namespace sondrel {

QPoint centredPlace(QSize screen, QSize dialog)
{
    constexpr double UpperPart = 0.9;
    return {(screen.width() - dialog.width()) / 2,
            roundToInt32(screen.height() * UpperPart - dialog.height()) / 2};
}

} // namespace sondrel
