#include "shell/frmAbout.h"

#include "tests/shell/dialog_test.h"

#include <QLabel>
#include <QTextDocumentFragment>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

QString shown(const frmAbout &dialog, const QString &name)
{
    const auto &label = control<QLabel>(dialog, name);
    return label.textFormat() == Qt::PlainText ? label.text()
                                               : QTextDocumentFragment::fromHtml(label.text()).toPlainText();
}

void writeDealer(World &world, const QByteArray &name)
{
    world.write(u"../system/orbelsoft.ini"_s, "[Dealer]\r\nName=" + name +
                                                  "\r\nEmail=a@dealer.example\r\nWebSite=order.example\r\n"
                                                  "Home=www.dealer.example\r\n");
}

TEST(About, showsVersionAndDealer)
{
    World world;
    world.app.deployment.Title = u"Some Program"_s;
    writeDealer(world, "Dealer & <b>Sons</b>");
    const frmAbout dialog(world.app);
    EXPECT_EQ(dialog.windowTitle(), u"About Some Program"_s);
    EXPECT_EQ(shown(dialog, u"lblVersion"_s), u"Version: 4.0.00"_s);
    EXPECT_EQ(shown(dialog, u"lblDealer"_s), u"Dealer & <b>Sons</b>"_s);
    EXPECT_EQ(shown(dialog, u"lblEmail"_s), u"Email: a@dealer.example"_s);
    EXPECT_EQ(shown(dialog, u"lblWeb"_s), u"Web: www.dealer.example"_s);
}

TEST(About, opensTheHomePage)
{
    World world;
    writeDealer(world, "Dealer");
    const frmAbout dialog(world.app);
    Q_EMIT control<QLabel>(dialog, u"lblWeb"_s).linkActivated(u"http://www.dealer.example"_s);
    ASSERT_EQ(world.desktop.opened.size(), 1U);
    EXPECT_EQ(world.desktop.opened[0].first, u"http://www.dealer.example"_s);
    EXPECT_TRUE(
        control<QLabel>(dialog, u"lblWeb"_s).text().contains(u"href=\"http://www.dealer.example\""_s));
}

TEST(About, closesByOKReturnAndEscape)
{
    World world;
    frmAbout dialog(world.app);
    dialog.show();
    click(dialog, u"cmdOK"_s);
    EXPECT_FALSE(dialog.isVisible());
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
        dialog.show();
        QTest::keyClick(&dialog, key);
        EXPECT_FALSE(dialog.isVisible());
    }
}

} // namespace
} // namespace sondrel
