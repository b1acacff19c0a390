#include "shell/program_icons.h"

#include "shell/commands.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPalette>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

QImage picture(const QIcon &icon, int side, QIcon::Mode mode = QIcon::Normal)
{
    return icon.pixmap(QSize(side, side), mode).toImage();
}

// The lightness of the strokes, or -1 when nothing is drawn.
int lightness(const QImage &image)
{
    int sum = 0;
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            if (colour.alpha() > 200) {
                sum += colour.lightness();
                ++count;
            }
        }
    }
    return count == 0 ? -1 : sum / count;
}

bool holds(const QImage &image, const QColor &wanted)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor found = image.pixelColor(x, y);
            if (found.alpha() > 240 && std::abs(found.hue() - wanted.hue()) < 8 && found.saturation() > 120)
                return true;
        }
    }
    return false;
}

class Colours
{
public:
    explicit Colours(const QColor &text) : m_old(QApplication::palette())
    {
        QPalette palette = m_old;
        palette.setColor(QPalette::ButtonText, text);
        QApplication::setPalette(palette);
    }
    ~Colours() { QApplication::setPalette(m_old); }

private:
    QPalette m_old;
};

} // namespace

TEST(ProgramIcons, areThereForEveryCommand)
{
    for (const CommandText &text : commandTexts()) {
        EXPECT_FALSE(text.icon.isEmpty()) << text.caption.toStdString();
        EXPECT_GE(lightness(picture(programIcon(text.icon), 24)), 0) << text.icon.toStdString();
    }
}

TEST(ProgramIcons, areDrawnAlike)
{
    const QDir drawings(u":/icons"_s);
    const QString head = u"<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 24 24\" fill=\"none\" "
                         "stroke=\"currentColor\" stroke-width=\"2\" "_s;
    int count = 0;
    for (const QString &name : drawings.entryList({u"*.svg"_s})) {
        if (name.startsWith(u"marovia-sondrel"))
            continue;
        QFile file(drawings.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString drawing = QString::fromUtf8(file.readAll());
        EXPECT_TRUE(drawing.startsWith(head)) << name.toStdString();
        EXPECT_EQ(drawing.count(u"stroke-width="), 1) << name.toStdString();
        EXPECT_FALSE(drawing.contains(QRegularExpression(u"#[0-9a-fA-F]{3}"_s))) << name.toStdString();
        ++count;
    }
    EXPECT_GT(count, 30);
}

TEST(ProgramIcons, followLightAndDark)
{
    const QIcon icon = programIcon(u"lookup"_s);
    {
        const Colours dark(Qt::black);
        EXPECT_LT(lightness(picture(icon, 24)), 40);
    }
    const Colours light(Qt::white);
    EXPECT_GT(lightness(picture(icon, 24)), 215);
}

TEST(ProgramIcons, showWhatCannotBeGivenInItsColour)
{
    const Colours black(Qt::black);
    EXPECT_NE(picture(programIcon(u"lookup"_s), 24, QIcon::Disabled), picture(programIcon(u"lookup"_s), 24));
}

TEST(ProgramIcons, areSharpAtEverySize)
{
    for (const int side : {16, 24, 60})
        EXPECT_EQ(programIcon(u"report"_s).pixmap(QSize(side, side)).size(), QSize(side, side));
}

TEST(ProgramIcons, areEmptyForUnknownNames)
{
    EXPECT_TRUE(programIcon(u"no-such-thing"_s).isNull());
    EXPECT_TRUE(programIcon({}).isNull());
}

TEST(ProgramIcons, areThoseOfTheDesktopWhereItHasThem)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkpath(u"small/16x16/actions"_s));
    QFile index(folder.filePath(u"small/index.theme"_s));
    ASSERT_TRUE(index.open(QIODevice::WriteOnly));
    index.write(
        "[Icon Theme]\nName=small\nDirectories=16x16/actions\n[16x16/actions]\nSize=16\nType=Fixed\n");
    index.close();
    QImage red(16, 16, QImage::Format_ARGB32);
    red.fill(Qt::red);
    ASSERT_TRUE(red.save(folder.filePath(u"small/16x16/actions/edit-copy.png"_s)));

    const QStringList paths = QIcon::themeSearchPaths();
    const QString name = QIcon::themeName();
    QIcon::setThemeSearchPaths({folder.path()});
    QIcon::setThemeName(u"small"_s);
    EXPECT_EQ(picture(programIcon(u"copy"_s), 16).pixelColor(8, 8), QColor(Qt::red));
    EXPECT_NE(picture(programIcon(u"paste"_s), 16).pixelColor(8, 8), QColor(Qt::red));
    QIcon::setThemeSearchPaths(paths);
    QIcon::setThemeName(name);
}

TEST(ApplicationIcon, showsThreeBarsInARingAtEverySize)
{
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QImage shown = picture(applicationIcon(), side);
        ASSERT_EQ(shown.size(), QSize(side, side));
        for (const QColor bar : {QColor(0x1f9d68), QColor(0x2b6cb8), QColor(0xe08a1e)})
            EXPECT_TRUE(holds(shown, bar)) << side << bar.name().toStdString();
        EXPECT_EQ(shown.pixelColor(side - 1, 0).alpha(), 0) << side;
    }
}

TEST(ApplicationIcon, offersTheSizesOfWindowsAndPanels)
{
    EXPECT_TRUE(applicationIcon().availableSizes().contains(QSize(16, 16)));
    EXPECT_TRUE(applicationIcon().availableSizes().contains(QSize(64, 64)));
    EXPECT_EQ(picture(applicationIcon(), 128).width(), 128);
}
