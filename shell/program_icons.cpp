#include "shell/program_icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// Renders a drawing with "currentColor" replaced by the palette's text colour at the time of painting.
class DrawingEngine final : public QIconEngine
{
public:
    explicit DrawingEngine(QByteArray drawing) : m_drawing(std::move(drawing)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const QPalette palette = QApplication::palette();
        const QColor colour = mode == QIcon::Disabled ? palette.color(QPalette::Disabled, QPalette::ButtonText)
            : mode == QIcon::Selected                 ? palette.color(QPalette::HighlightedText)
                                                      : palette.color(QPalette::ButtonText);
        QByteArray coloured = m_drawing;
        coloured.replace("currentColor", colour.name().toLatin1());
        QSvgRenderer renderer(coloured);
        painter->save();
        if (mode == QIcon::Disabled)
            painter->setOpacity(0.6);
        renderer.render(painter, QRectF(rect));
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        paint(&painter, QRect({}, size), mode, state);
        painter.end();
        return QPixmap::fromImage(image);
    }

    QIconEngine *clone() const override { return new DrawingEngine(m_drawing); }

private:
    QByteArray m_drawing;
};

} // namespace

QIcon programIcon(const QString &name)
{
    QFile file(u":/icons/"_s + name + u".svg"_s);
    return file.open(QIODevice::ReadOnly) ? QIcon(new DrawingEngine(file.readAll())) : QIcon();
}

QIcon applicationIcon()
{
    return QIcon(u":/icons/marovia-sondrel.svg"_s);
}

} // namespace sondrel
