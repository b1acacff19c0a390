#include "core/clsDealerProfile.h"

#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QDir>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class DealerProfile : public testing::Test
{
protected:
    World world;

    clsDealerProfile read(const QByteArray &file)
    {
        world.write(u"../system/orbelsoft.ini"_s, file);
        return read();
    }
    clsDealerProfile read()
    {
        clsDealerProfile profile;
        profile.GetSettings(world.app);
        return profile;
    }

    static clsDealerProfile builtIn()
    {
        return {u"Kestrune Pty Ltd"_s,
                u"sales@kestrune.example"_s,
                u"http://www.kestrune.example/order.html"_s,
                u"http://www.kestrune.example/index.html"_s,
                u"http://www.kestrune.example/upgrade.html"_s,
                u"http://www.kestrune.example/support.html"_s,
                u"http://tutorial.kestrune.example/"_s,
                u"http://tutorial.kestrune.example/"_s,
                u"http://stats.kestrune.example/"_s};
    }
};

const QByteArray FullFile = "[Dealer]\r\n"
                            "Name=Dealer Ltd\r\n"
                            "Email=info@dealer.example\r\n"
                            "WebSite=http://dealer.example/buy\r\n"
                            "Home=http://dealer.example/\r\n"
                            "UpdateURL=http://dealer.example/update\r\n"
                            "SupportURL=http://dealer.example/support\r\n"
                            "TipsPage=http://dealer.example/tips\r\n"
                            "TutorialPage=http://dealer.example/tutorial\r\n"
                            "SiteStatsURL=http://dealer.example/stats\r\n";

} // namespace

TEST_F(DealerProfile, isBuiltInWithoutAFile)
{
    EXPECT_EQ(read(), builtIn());
    EXPECT_EQ(world.takeLog(), u""_s);
}

TEST_F(DealerProfile, isTheDealersWithAFullFile)
{
    const clsDealerProfile wanted{u"Dealer Ltd"_s,
                                  u"info@dealer.example"_s,
                                  u"http://dealer.example/buy"_s,
                                  u"http://dealer.example/"_s,
                                  u"http://dealer.example/update"_s,
                                  u"http://dealer.example/support"_s,
                                  u"http://dealer.example/tips"_s,
                                  u"http://dealer.example/tutorial"_s,
                                  u"http://dealer.example/stats"_s};
    EXPECT_EQ(read(FullFile), wanted);
}

TEST_F(DealerProfile, isBuiltInAltogetherWithoutTheDealersWebSite)
{
    EXPECT_EQ(read(QByteArray(FullFile).replace("WebSite=http://dealer.example/buy", "WebSite=")), builtIn());
    EXPECT_EQ(read("[Dealer]\nName=Dealer Ltd\n"), builtIn());
}

TEST_F(DealerProfile, isBuiltInAltogetherWithoutTheDealersName)
{
    EXPECT_EQ(read(QByteArray(FullFile).replace("Name=Dealer Ltd", "Name=  ")), builtIn());
}

TEST_F(DealerProfile, takesTheOrderPageForAMissingHomePage)
{
    const auto profile = read("[Dealer]\nName=Dealer Ltd\nWebSite=http://dealer.example/buy\n");
    EXPECT_EQ(profile.DealerURL, u"http://www.kestrune.example/order.html"_s);
}

TEST_F(DealerProfile, fillsGapsWithBuiltInAddresses)
{
    const auto profile = read("[Dealer]\nName=Dealer Ltd\nWebSite=http://dealer.example/buy\n"
                              "TutorialPage=http://dealer.example/tutorial\n");
    EXPECT_EQ(profile.UpdateURL, builtIn().UpdateURL);
    EXPECT_EQ(profile.SupportURL, builtIn().SupportURL);
    EXPECT_EQ(profile.TipsURL, builtIn().TipsURL);
    EXPECT_EQ(profile.SiteStatsURL, builtIn().SiteStatsURL);
    EXPECT_EQ(profile.TutorialURL, u"http://dealer.example/tutorial"_s);
    EXPECT_EQ(profile.DealerEmail, u""_s);
}

TEST_F(DealerProfile, losesItsTipsPageWithoutATutorialPage)
{
    const auto profile = read("[Dealer]\nName=Dealer Ltd\nWebSite=http://dealer.example/buy\n"
                              "TipsPage=http://dealer.example/tips\n");
    EXPECT_EQ(profile.TipsURL, u"http://tutorial.kestrune.example/"_s);
    EXPECT_EQ(profile.TutorialURL, u""_s);
}

TEST_F(DealerProfile, followsTheDeployment)
{
    world.app.deployment.VendorHost = u"https://other.example"_s;
    world.app.deployment.SalesMailbox = u"shop@other.example"_s;
    const auto profile = read();
    EXPECT_EQ(profile.DealerURL, u"https://other.example/index.html"_s);
    EXPECT_EQ(profile.DealerEmail, u"shop@other.example"_s);
}

TEST_F(DealerProfile, isReadAnewEachTime)
{
    clsDealerProfile profile;
    profile.DealerEmail = u"old@dealer.example"_s;
    profile.GetSettings(world.app);
    EXPECT_EQ(profile, builtIn());
}

TEST_F(DealerProfile, isBuiltInForAFileThatCannotBeRead)
{
    QDir().mkpath(world.path(u"../system/orbelsoft.ini"_s));
    EXPECT_EQ(read(), builtIn());
}

TEST_F(DealerProfile, isBuiltInForRandomBytes)
{
    EXPECT_EQ(read(QByteArray("\x00\xff[Dealer\n=\rName\x81\n", 19)), builtIn());
}
