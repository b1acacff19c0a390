#include "shell/frmSplash.h"

#include "core/clsDealerProfile.h"
#include "shell/about_text.h"
#include "shell/center_form.h"
#include "shell/program_icons.h"
#include "shell/start_up.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int ShownFor = 2500; // ms

QLabel *newLine(const QString &name, const QString &text, double size, bool bold)
{
    auto *line = new QLabel;
    line->setObjectName(name);
    line->setTextFormat(Qt::PlainText);
    line->setText(text);
    QFont font = line->font();
    font.setBold(bold);
    if (size != 1 && font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * size);
    line->setFont(font);
    return line;
}

} // namespace

frmSplash::frmSplash(ApplicationContext &app)
    : QFrame(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                          Qt::WindowDoesNotAcceptFocus)
{
    setObjectName(u"frmSplash"_s);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setWindowTitle(app.deployment.Title);
    setWindowIcon(applicationIcon());
    setFrameStyle(QFrame::Box | QFrame::Plain);
    const AboutText text = aboutText(app);

    auto *picture = new QLabel;
    const int line = fontMetrics().height();
    picture->setPixmap(applicationIcon().pixmap(QSize(line * 6, line * 6), devicePixelRatioF()));
    auto *lines = new QVBoxLayout;
    lines->addStretch();
    lines->addWidget(newLine(u"lblTitle"_s, app.deployment.Title, 1.8, true));
    lines->addWidget(newLine(u"lblVersion"_s, text.Version, 1, false));
    lines->addSpacing(line);
    lines->addWidget(newLine(u"lblDealer"_s, text.Dealer, 1, false));
    lines->addStretch();
    auto *top = new QHBoxLayout;
    top->setSpacing(line * 2);
    top->addWidget(picture);
    top->addLayout(lines, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(line * 2, line * 2, line * 2, line);
    layout->addLayout(top, 1);
    layout->addSpacing(line);
    layout->addWidget(newLogo(), 0, Qt::AlignRight);

    auto *patch = findChild<QLabel *>(u"lblHideLogo"_s);
    clsDealerProfile dealer;
    dealer.GetSettings(app);
    patch->setVisible(hidesMakersLogo(dealer));

    adjustSize();
    CenterForm(*this);
    Timer1 = app.clock.createTimer(ShownFor, [this, &app] {
        Timer1->setEnabled(false);
        app.desktop.resetPointer();
        Q_EMIT finished();
    });
    Timer1->setEnabled(true);
}

// The patch has the colour of the window and lies in the cell of the logo.
QWidget *frmSplash::newLogo()
{
    auto *place = new QWidget;
    auto *cell = new QGridLayout(place);
    cell->setContentsMargins({});
    // Spaced by blanks: one more font would take a twentieth of the program's start.
    auto *logo = newLine(u"lblLogo"_s, u"K E S T R U N E"_s, 1, false);
    logo->setAccessibleName(u"Kestrune"_s);
    auto *patch = new QLabel;
    patch->setObjectName(u"lblHideLogo"_s);
    patch->setAutoFillBackground(true);
    cell->addWidget(logo, 0, 0);
    cell->addWidget(patch, 0, 0);
    return place;
}

} // namespace sondrel
