// render_icon DRAWING SIZE PICTURE: draws an SVG file as a square PNG of that many pixels. Runs during the
// build.
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char **argv)
{
    // No application: neither drawing holds text, which alone would need one.
    if (argc != 4) {
        std::fputs("usage: render_icon DRAWING SIZE PICTURE\n", stderr);
        return 2;
    }
    const QString picture = QFile::decodeName(argv[3]);
    const int side = QByteArray(argv[2]).toInt();
    QSvgRenderer drawing(QFile::decodeName(argv[1]));
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    if (drawing.isValid() && QDir().mkpath(QFileInfo(picture).path()) && image.save(picture, "PNG"))
        return 0;
    std::fprintf(stderr, "render_icon: cannot draw %s as %s\n", argv[1], argv[3]);
    return 1;
}
