#include "shell/about_text.h"

#include "tests/support/printing.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

TEST(AboutText, namesTitleAndVersionWithTwoDigitsOfRevision)
{
    World world;
    world.app.deployment.Title = u"Some Program"_s;
    const AboutText text = aboutText(world.app);
    EXPECT_EQ(text.Title, u"About Some Program"_s);
    EXPECT_EQ(text.Version, u"Version: 4.0.00"_s);
}

TEST(AboutText, namesTheVendor)
{
    World world;
    world.app.deployment.SalesMailbox = u"sales@vendor.example"_s;
    world.app.deployment.VendorHost = u"http://www.vendor.example"_s;
    const AboutText text = aboutText(world.app);
    EXPECT_EQ(text.Dealer, u"Kestrune Pty Ltd"_s);
    EXPECT_EQ(text.Email, u"Email: sales@vendor.example"_s);
    EXPECT_EQ(text.Web, u"Web: http://www.vendor.example/index.html"_s);
}

TEST(AboutText, namesADealer)
{
    World world;
    world.write(u"../system/orbelsoft.ini"_s, "[Dealer]\r\nName=Dealer & Sons\r\nEmail=a@dealer.example\r\n"
                                              "WebSite=order.dealer.example\r\nHome=www.dealer.example\r\n");
    const AboutText text = aboutText(world.app);
    EXPECT_EQ(text.Dealer, u"Dealer & Sons"_s);
    EXPECT_EQ(text.Email, u"Email: a@dealer.example"_s);
    EXPECT_EQ(text.Web, u"Web: www.dealer.example"_s);
}

} // namespace
} // namespace sondrel
