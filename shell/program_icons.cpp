#include "shell/program_icons.h"

#include <QApplication>
#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QByteArray readDrawing(const QString &name)
{
    QFile file(u":/icons/"_s + name + u".svg"_s);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QPixmap rendered(const QByteArray &drawing, const QSize &size, double opacity)
{
    QSvgRenderer renderer(drawing);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setOpacity(opacity);
    renderer.render(&painter, QRectF({}, size));
    painter.end();
    return QPixmap::fromImage(image);
}

// Shows a drawing with "currentColor" replaced by the palette's text colour at the time of painting.
class DrawingEngine final : public QIconEngine
{
public:
    DrawingEngine(QString name, QByteArray drawing) : m_name(std::move(name)), m_drawing(std::move(drawing))
    {
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const double ratio = painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override
    {
        const QString colour = colourOf(mode).name();
        const QString key = u"drawing/%1/%2/%3/%4x%5"_s.arg(m_name, colour, QString::number(mode))
                                .arg(size.width())
                                .arg(size.height());
        QPixmap pixmap;
        if (!QPixmapCache::find(key, &pixmap)) {
            QByteArray coloured = m_drawing;
            coloured.replace("currentColor", colour.toLatin1());
            constexpr double Faded = 0.6;
            pixmap = rendered(coloured, size, mode == QIcon::Disabled ? Faded : 1);
            QPixmapCache::insert(key, pixmap);
        }
        return pixmap;
    }

    QIconEngine *clone() const override { return new DrawingEngine(m_name, m_drawing); }

private:
    static QColor colourOf(QIcon::Mode mode)
    {
        const QPalette palette = QApplication::palette();
        switch (mode) {
        case QIcon::Disabled:
            return palette.color(QPalette::Disabled, QPalette::ButtonText);
        case QIcon::Selected:
            return palette.color(QPalette::HighlightedText);
        default:
            return palette.color(QPalette::ButtonText);
        }
    }

    QString m_name;
    QByteArray m_drawing;
};

// The application icon: a drawing of its own where pixels are few.
class ApplicationIconEngine final : public QIconEngine
{
public:
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const double ratio = painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode, QIcon::State) override
    {
        constexpr int Small = 32;
        return rendered(readDrawing(std::min(size.width(), size.height()) < Small ? u"marovia-sondrel-small"_s
                                                                                  : u"marovia-sondrel"_s),
                        size, 1);
    }

    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override
    {
        QList<QSize> sizes;
        for (const int side : {16, 22, 24, 32, 48, 64, 128})
            sizes.append({side, side});
        return sizes;
    }

    QIconEngine *clone() const override { return new ApplicationIconEngine; }
};

// What icon themes have for the same thing, by the names that themes agree on.
QString themeName(const QString &name)
{
    static const QHash<QString, QString> names{
        {u"about"_s, u"help-about"_s},           {u"copy"_s, u"edit-copy"_s},
        {u"exit"_s, u"application-exit"_s},      {u"help"_s, u"help-contents"_s},
        {u"keyword-delete"_s, u"edit-delete"_s}, {u"mail"_s, u"mail-send"_s},
        {u"paste"_s, u"edit-paste"_s},           {u"save"_s, u"document-save"_s},
        {u"stop"_s, u"process-stop"_s},
    };
    return names.value(name);
}

} // namespace

QIcon programIcon(const QString &name)
{
    if (const QString ofTheme = themeName(name); !ofTheme.isEmpty() && QIcon::hasThemeIcon(ofTheme))
        return QIcon::fromTheme(ofTheme);
    const QByteArray drawing = readDrawing(name);
    return drawing.isEmpty() ? QIcon() : QIcon(new DrawingEngine(name, drawing));
}

QIcon applicationIcon()
{
    return QIcon(new ApplicationIconEngine);
}

} // namespace sondrel
