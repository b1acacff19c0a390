#include "optimizer/optimizer_report.h"

#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

class Report : public testing::Test
{
protected:
    Report()
    {
        dealer.GetSettings(world.app);
        preference.LogoPosition = u"Top"_s;
    }

    QString report(const QString &html, const QString &site = u"http://site.example/x/"_s)
    {
        const PageAnalysis page = analysePage(world.app, site, html);
        return OptimizerReport(page, reportOccasion(world.app, preference, dealer)).text();
    }
    static QString between(const QString &text, const QString &begin, const QString &end)
    {
        const qsizetype from = text.indexOf(begin) + begin.size();
        return text.sliced(from, text.indexOf(end, from) - from);
    }

    World world;
    clsPreference preference;
    clsDealerProfile dealer;
};

TEST_F(Report, showsAPageWithoutAnything)
{
    const QString text = report(u"<body>only text<br>"_s);
    EXPECT_EQ(text.count(u"<b>NO TITLE</b></a><br>\r\nonly text<br>"_s), 2);
    EXPECT_TRUE(text.contains(u"No <META> keywords tag was found"_s));
    EXPECT_TRUE(text.contains(u"No <META> description tag was found"_s));
    EXPECT_TRUE(text.contains(u"No title tag was found"_s));
    EXPECT_TRUE(text.contains(u"COLOR=#0000ff></font><font FACE=Arial SIZE=2 COLOR=#ff0000>&quot;&gt;"_s));
}

TEST_F(Report, showsTheLogoOnlyForAWholeAddress)
{
    preference.LogoURL = u"http://x.y/logo.gif"_s;
    const QString logo = u"<br><img src=http://x.y/logo.gif><br>"_s;
    EXPECT_TRUE(report(u"<p>"_s).contains(u"<tr><td>"_s + logo + u"<table"_s));
    preference.LogoPosition = QString();
    EXPECT_FALSE(report(u"<p>"_s).contains(logo));
    preference.LogoPosition = u"Bottom"_s;
    EXPECT_TRUE(report(u"<p>"_s).contains(logo));
    preference.LogoURL = u"a.gif"_s;
    EXPECT_FALSE(report(u"<p>"_s).contains(u"<img"_s));
    preference.LogoURL = u"abcdefgh.gif"_s; // the dot is the ninth character
    EXPECT_TRUE(report(u"<p>"_s).contains(u"<img"_s));
    preference.LogoURL = u"abcdefg.gif"_s;
    EXPECT_FALSE(report(u"<p>"_s).contains(u"<img"_s));
}

TEST_F(Report, namesTheVendorWithoutAWebSite)
{
    preference.CompanyName = u"Acme"_s;
    preference.ReporterName = u"Ann"_s;
    preference.LogoURL = u"http://x.y/logo.gif"_s;
    const QString text = report(u"<p>"_s);
    EXPECT_TRUE(text.contains(
        u"<a href=http://www.kestrune.example/index.html>Marovia Relay</a> of Kestrune Pty Ltd\r\n"
        "<br>\r\nEmail: <a href=mailto:sales@kestrune.example>Marovia Software</a> \r\n"
        "Web: <a href=http://www.kestrune.example/index.html>www.kestrune.example/index.html</a>"_s));
    EXPECT_FALSE(text.contains(u"Ann"_s));
    EXPECT_EQ(text.count(u"<img"_s), 1);
}

TEST_F(Report, namesTheReporterWithAWebSite)
{
    preference = {};
    preference.CompanyName = u"Acme"_s;
    preference.ReporterName = u"Ann"_s;
    preference.Email = u"ann@acme.example"_s;
    preference.WebSite = u"http://www.acme.example"_s;
    preference.LogoURL = u"http://x.y/logo.gif"_s;
    preference.LogoPosition = u"Top"_s;
    const QString text = report(u"<p>"_s);
    EXPECT_TRUE(text.contains(u"<a href=http://www.acme.example>Acme</a>\r\n<br>\r\n"
                              "Email: <a href=mailto:ann@acme.example>Ann</a> \r\n"
                              "Web: <a href=http://www.acme.example>www.acme.example</a>"_s));
    EXPECT_EQ(text.count(u"<img"_s), 2);
    // It is the dealer's address that decides over the cut.
    dealer.DealerURL = u"www.dealer.example"_s;
    EXPECT_TRUE(report(u"<p>"_s).contains(u"<a href=http://http://www.acme.example>Acme</a>"_s));
    dealer.DealerURL = u"HTTPS://www.dealer.example"_s;
    preference.WebSite = u"www.acme.example"_s;
    EXPECT_TRUE(report(u"<p>"_s).contains(u"<a href=http://e.example>Acme</a>"_s));
}

TEST_F(Report, hasTheFramesBetweenContentsAndKeywords)
{
    const QString text = report(u"<frameset>\n<frame src=a.html></frameset>"_s);
    const qsizetype contents = text.indexOf(u"Web Site Contents"_s);
    const qsizetype frames = text.indexOf(u"<blink>Frame style web site</blink>"_s);
    const qsizetype keywords = text.indexOf(u"Keyword Utilization on Meta Tag Description"_s);
    EXPECT_TRUE(contents < frames && frames < keywords);
    EXPECT_TRUE(text.contains(u"<li>http://site.example/x/a.html</li></lo></font>\r\n</font><br></td>"_s));
    EXPECT_TRUE(text.contains(u"Your web site is a Frame style.</font></b> \r\nMost major"_s));
}

TEST_F(Report, hasNoReasonsForAGoodPage)
{
    const QString html = u"<body><a href=\"http://a.example\">"_s + u"word "_s.repeated(400) + u"<p>"_s;
    EXPECT_FALSE(report(html).contains(u"Possible reasons"_s));
    EXPECT_TRUE(report(u"<body>x<p>"_s).contains(u"Possible reasons"_s));
}

TEST_F(Report, tellsTheSizeInThousands)
{
    const auto size = [&](qsizetype length) {
        return between(report(u"<p>"_s + QString(length - 3, u'x')), u", Size "_s, u","_s);
    };
    EXPECT_EQ(size(12345), u"12.3K"_s);
    EXPECT_EQ(size(12350), u"12.4K"_s);
    EXPECT_EQ(size(49), u"0.0K"_s);
    EXPECT_EQ(size(50), u"0.1K"_s);
    EXPECT_EQ(size(1000), u"1.0K"_s);
}

TEST_F(Report, cutsTheSamples)
{
    const QString html = u"<title>"_s + QString(201, u't') + u"</title><meta name=description content="_s +
                         QString(201, u'd') + u"><body>"_s + QString(251, u'b') + u"<p>"_s;
    const QString text = report(html);
    EXPECT_TRUE(text.contains(u"<b>"_s + QString(200, u't') + u"</b></a><br>\r\n"_s + QString(200, u'd') +
                              u"<br>"_s));
    EXPECT_TRUE(text.contains(u">"_s + QString(250, u'b') + u" ...</font>"_s));
}

TEST_F(Report, datesTheDayOfTheRun)
{
    const QString text = report(u"<p>"_s);
    EXPECT_TRUE(text.contains(u"<b>Report Date: </b>Sunday, November 15, 2026<br>"_s));
    EXPECT_TRUE(text.contains(u"98% Date: 15 Nov 2026, Size"_s));
    EXPECT_TRUE(text.contains(u"Last Modified 15-Nov-2026 -page"_s));
}

TEST_F(Report, tellsItsSteps)
{
    const PageAnalysis page = analysePage(world.app, {}, u"<p>"_s);
    QList<int> steps;
    OptimizerReport(page, reportOccasion(world.app, preference, dealer)).text([&](int step) {
        steps.append(step);
    });
    EXPECT_EQ(steps, QList<int>({11, 12, 13}));
}

TEST(ReportDates, areEnglishWhereTheCodePageLacksTheMonth)
{
    World world;
    const ApplicationContext russian(world.app.AppPath, {},
                                     Doors{world.clock, world.desktop, world.settings, world.http},
                                     QLocale(QLocale::Russian, QLocale::Russia));
    EXPECT_EQ(reportOccasion(russian, {}, {}).dateWithBlanks, u"15 Nov 2026"_s);
    const ApplicationContext german(world.app.AppPath, {},
                                    Doors{world.clock, world.desktop, world.settings, world.http},
                                    QLocale(QLocale::German, QLocale::Germany));
    EXPECT_TRUE(reportOccasion(german, {}, {}).dateWithHyphens.startsWith(u"15-Nov"_s));
}

} // namespace
} // namespace sondrel
