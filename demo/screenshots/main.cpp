// sondrel-screenshots APP SYSTEM light|dark FOLDER: pictures of every window on a project, in the toolkit's
// own style. QT_SCALE_FACTOR gives their scale. Every window here is the program's own; only its doors to the
// outside are not.
#include "demo/screenshots/windows.h"
#include "lookup/curl_http_control.h"
#include "tests/doors/manual_clock.h"
#include "tests/doors/memory_settings.h"
#include "tests/doors/recording_desktop.h"

#include <QApplication>
#include <QDir>
#include <QHash>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <vector>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

QPalette darkPalette()
{
    QPalette palette(QColor(45, 46, 50), QColor(38, 39, 43));
    palette.setColor(QPalette::Base, QColor(28, 29, 32));
    palette.setColor(QPalette::AlternateBase, QColor(34, 35, 39));
    palette.setColor(QPalette::ToolTipBase, QColor(45, 46, 50));
    palette.setColor(QPalette::Highlight, QColor(42, 110, 180));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(110, 170, 240));
    for (const auto role :
         {QPalette::Text, QPalette::WindowText, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, QColor(228, 228, 230));
        palette.setColor(QPalette::Disabled, role, QColor(125, 126, 130));
    }
    palette.setColor(QPalette::PlaceholderText, QColor(150, 151, 156));
    return palette;
}

// The shades that occur most, apart from ones that no eye tells from those: a table for all pictures would
// miss the greys of a theme, and with them its fields.
QList<QRgb> shadesOf(const QImage &image)
{
    constexpr QRgb Coarse = 0xFFF8F8F8;
    constexpr qsizetype Most = 256;
    QHash<QRgb, QHash<QRgb, int>> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            ++counts[pixel & Coarse][pixel];
        }
    }
    std::vector<std::pair<int, QRgb>> shades;
    for (const auto &alike : std::as_const(counts)) {
        const auto most = std::max_element(alike.begin(), alike.end());
        shades.emplace_back(std::accumulate(alike.begin(), alike.end(), 0), most.key());
    }
    std::sort(shades.rbegin(), shades.rend()); // by colour where the counts are equal
    QList<QRgb> table;
    for (const auto &[count, shade] : shades) {
        if (table.size() < Most)
            table.append(shade);
    }
    return table;
}

bool saveSmall(const QPixmap &picture, const QString &file)
{
    constexpr int Width = 440;
    QImage image = picture.toImage().convertToFormat(QImage::Format_RGB32);
    image.setDevicePixelRatio(1);
    if (image.width() > Width)
        image = image.scaledToWidth(Width, Qt::SmoothTransformation);
    return image.convertToFormat(QImage::Format_Indexed8, shadesOf(image), Qt::ThresholdDither)
        .save(file, "PNG");
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 5) {
        std::fputs("usage: sondrel-screenshots APP SYSTEM light|dark FOLDER\n", stderr);
        return 2;
    }
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QApplication::setPalette(arguments[3] == u"dark" ? darkPalette()
                                                     : QApplication::style()->standardPalette());
    const QString &folder = arguments[4];
    const QString ending =
        u"-%1-%2.png"_s.arg(arguments[3]).arg(qRound(application.devicePixelRatio() * 100));

    ManualClock clock(QDateTime(QDate(2026, 11, 15), QTime(10, 0)));
    RecordingDesktop desktop;
    MemorySettings settings;
    CurlTransport http([](QStringView text) { return text.toUtf8(); });
    ApplicationContext app(arguments[1], arguments[2], Doors{clock, desktop, settings, http},
                           QLocale(QLocale::English, QLocale::UnitedStates));
    settings.createKey(app.RegPreference);
    settings.setValue(app.RegPreference, u"Version"_s, u"4.0.0"_s);
    settings.setValue(app.RegPreference, u"URLBoxStatus"_s, u"True"_s);
    bool good = QDir().mkpath(folder) && QDir().mkpath(folder + u"/small"_s);
    screenshots::showWindows(app, [&](const QString &name, QWidget &window) {
        QApplication::processEvents();
        const QPixmap picture = window.grab();
        good = good && picture.save(folder + u'/' + name + ending) &&
               saveSmall(picture, folder + u"/small/"_s + name + ending);
    });
    if (!good)
        std::fprintf(stderr, "sondrel-screenshots: cannot write to %s\n", qPrintable(folder));
    return good ? 0 : 1;
}
