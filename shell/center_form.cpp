#include "shell/center_form.h"

#include "shell/form_place.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace sondrel {

void CenterForm(QWidget &dialog)
{
    const QWidget *shownOn = dialog.parentWidget() ? dialog.parentWidget()->window() : &dialog;
    const QScreen *screen = shownOn->screen();
    if (!screen)
        return;
    const QRect whole = screen->geometry();
    QPoint place = whole.topLeft() + centredPlace(whole.size(), dialog.size());
    place.setX(std::max(place.x(), whole.left()));
    place.setY(std::max(place.y(), whole.top()));
    dialog.move(place);
}

} // namespace sondrel
