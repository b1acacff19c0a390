#include "shell/program_icons.h"

#include <QApplication>
#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <functional>

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

QPixmap cached(const QString &key, const std::function<QPixmap()> &make)
{
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = make();
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

// Shows the theme's icon, or the drawing with "currentColor" replaced by the palette's text colour at the
// time of painting. Nothing is looked for before something is to be seen: the themes' folders are large, and
// most icons lie in closed menus.
class DrawingEngine final : public QIconEngine
{
public:
    explicit DrawingEngine(QString name) : m_name(std::move(name)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const double ratio = painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        const QString ofTheme = themeName(m_name);
        if (!ofTheme.isEmpty() && QIcon::hasThemeIcon(ofTheme))
            return QIcon::fromTheme(ofTheme).pixmap(size, mode, state);
        const QString colour = colourOf(mode).name();
        const QString key = u"drawing/%1/%2/%3/%4x%5"_s.arg(m_name, colour, QString::number(mode))
                                .arg(size.width())
                                .arg(size.height());
        return cached(key, [&] {
            QByteArray coloured = readDrawing(m_name);
            coloured.replace("currentColor", colour.toLatin1());
            constexpr double Faded = 0.6;
            return rendered(coloured, size, mode == QIcon::Disabled ? Faded : 1);
        });
    }

    QIconEngine *clone() const override { return new DrawingEngine(m_name); }

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
        const bool small = std::min(size.width(), size.height()) < Small;
        return cached(u"application/%1x%2"_s.arg(size.width()).arg(size.height()), [&] {
            return rendered(readDrawing(small ? u"marovia-sondrel-small"_s : u"marovia-sondrel"_s), size, 1);
        });
    }

    // Every window hands all of these to the desktop; it asks for larger ones when it needs them.
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override
    {
        QList<QSize> sizes;
        for (const int side : {16, 24, 32, 48, 64})
            sizes.append({side, side});
        return sizes;
    }

    QIconEngine *clone() const override { return new ApplicationIconEngine; }
};

} // namespace

QIcon programIcon(const QString &name)
{
    return QFile::exists(u":/icons/"_s + name + u".svg"_s) ? QIcon(new DrawingEngine(name)) : QIcon();
}

QIcon applicationIcon()
{
    return QIcon(new ApplicationIconEngine);
}

} // namespace sondrel
