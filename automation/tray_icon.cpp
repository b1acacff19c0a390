#include "automation/tray_icon.h"

namespace sondrel {

void TrayIcon::CallEvent(int x, int y)
{
    if (y != 0)
        return;
    constexpr int LowByte = 0xFF;
    const int twips = x & LowByte;
    // A pixel has an odd number of twips, so that no event lies halfway between two codes.
    Q_EMIT OnIcon(static_cast<qint16>((2 * twips + TwipsPerPixel) / (2 * TwipsPerPixel)));
}

QString TrayIcon::shownTip() const
{
    constexpr qsizetype LongestTip = 63;
    return ToolTipText.first(std::min(ToolTipText.size(), LongestTip));
}

} // namespace sondrel
