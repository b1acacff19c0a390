#include "reports/clsReporter.h"

#include "reports/report_set.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

class Reporter : public testing::Test, public World
{
protected:
    Reporter() { app.deployment.Title = u"The Program"_s; }
    void writeDealer()
    {
        write(u"../system/orbelsoft.ini"_s, "[Dealer]\r\nName=Dealer Ltd\r\nEmail=mail@dealer.example\r\n"
                                            "WebSite=order.dealer.example\r\nHome=www.dealer.example\r\n"
                                            "TutorialPage=learn.dealer.example\r\n");
    }
};

} // namespace

TEST_F(Reporter, isTheOneOfTheSettings)
{
    writeDealer();
    setPreference(u"CompanyName"_s, u"Example Ltd"_s);
    setPreference(u"ReporterName"_s, u"Ann"_s);
    setPreference(u"Email"_s, u"ann@site.example"_s);
    setPreference(u"WebSite"_s, u" www.site.example"_s);
    setPreference(u"LogoURL"_s, u"logo.gif"_s);
    setPreference(u"LogoPosition"_s, u"Top&Bottom"_s);
    EXPECT_EQ(SetReporter(app),
              (clsReporter{u"Ann"_s, u"ann@site.example"_s, u"http://www.site.example"_s, u"Example Ltd"_s,
                           u"logo.gif"_s, u"Top&Bottom"_s, u"http://learn.dealer.example"_s}));
}

TEST_F(Reporter, isTheVendorWhereTheSettingsAreEmpty)
{
    writeDealer();
    EXPECT_EQ(SetReporter(app),
              (clsReporter{u"The Program"_s, u"mail@dealer.example"_s, u"http://www.dealer.example"_s,
                           u"Dealer Ltd"_s, QString(), u"Top"_s, u"http://learn.dealer.example"_s}));
}

TEST_F(Reporter, isTakenAnewFromTheSettings)
{
    ReportSet set(app);
    EXPECT_EQ(set.Reporter, clsReporter());
    setPreference(u"ReporterName"_s, u"Ann"_s);
    set.ResetReporter();
    EXPECT_EQ(set.Reporter.Name, u"Ann"_s);
    setPreference(u"ReporterName"_s, u"Bo"_s);
    set.ResetReporter();
    EXPECT_EQ(set.Reporter.Name, u"Bo"_s);
}

TEST(ReporterLogo, standsWhereItsPositionSays)
{
    const struct
    {
        const char16_t *url;
        const char16_t *position;
        bool top;
        bool bottom;
    } cases[] = {
        {u"x.gif", u"Top", true, false},       {u"x.gif", u"BOTTOM", false, true},
        {u"x.gif", u"top&bottom", true, true}, {u"x.gif", u"Desktop", true, false},
        {u"x.gif", u"", false, false},         {u"", u"Top&Bottom", false, false},
    };
    for (const auto &[url, position, top, bottom] : cases) {
        clsReporter reporter;
        reporter.LogoURL = QString::fromUtf16(url);
        reporter.LogoPosition = QString::fromUtf16(position);
        EXPECT_EQ(reporter.hasLogoAtTop(), top);
        EXPECT_EQ(reporter.hasLogoAtBottom(), bottom);
    }
}

} // namespace sondrel
