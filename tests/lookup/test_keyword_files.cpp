#include "core/report_folder.h"
#include "tests/lookup/search_world.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class KeywordFilesTest : public SearchWorld, public testing::Test
{
protected:
    QStringList names(const QString &relative) const
    {
        return QDir(world.path(relative))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    QString log() { return world.takeLog(); }
    const QString tag = u"clsRanking_GetResult: Engine Name = FinderError= "_s;
};

} // namespace

TEST_F(KeywordFilesTest, holdListingPagesAndReport)
{
    track({u"site.example"_s});
    analyse(u"<p>Results 7</p><ol><li><b>One &amp; all</b> href=\"http://site.example/a?b=1\"</li></ol>"_s);
    search.URL = u"http://finder.example/find?q=travel&p=2"_s;
    analyse(u"<ol><li><b>Two</b> href=\"b.example\"</li><li><b>Three</b> href=\"%.\"</li></ol>"_s);
    EXPECT_EQ(world.read(u"Results/Finder/travel.dat"_s), "http://site.example/a?b=1;#One &amp; all;#1\r\n"
                                                          "http://b.example;#Two;#2\r\n"
                                                          "http://;#Three;#2\r\n");
    EXPECT_EQ(
        world.read(u"Reports/Demo/Finder_travel.html"_s),
        "<table  border =0 width = 100% cellspacing=0 cellpadding=0><tr bgcolor=#c12457>"
        "<td><b><font color=#FFFFFF  face=arial size=2><a name=Finder>Finder</a> ->: "
        "travel</font></b></td></tr>"
        "<tr><td><font face=arial size=2>"
        "<br><b>Page 1: </b><a href=Finder_travel_p1.html>View full search results for this page on local "
        "PC</a>"
        " or <a href=http://finder.example/find?q=travel>View full search results for this page online</a>"
        "<br><br>\r\n<ol>\r\n"
        "<br><font color=#c12457><b>Position: 1 Page: 1<br>Matched URL: http://site.example/a?b=1</b></font>"
        "<br><br>\r\n"
        "<li><a href=http://site.example/a?b=1>One &amp; all</b></a> "
        "<font color=#999999>(http://site.example/a?b=1)</font><br>\r\n"
        "</ol><br>\r\n"
        "<br><b>Page 2: </b><a href=Finder_travel_p2.html>View full search results for this page on local "
        "PC</a>"
        " or <a href=http://finder.example/find?q=travel&p=2>View full search results for this page "
        "online</a>"
        "<br><br>\r\n<ol>\r\n"
        "<li><a href=http://b.example>Two</b></a> <font color=#999999>(http://b.example)</font><br>\r\n"
        "<li><a href=http://>Three</b></a> <font color=#999999>(http://)</font><br>\r\n"
        "</ol><br>\r\n");
    EXPECT_EQ(names(u"Reports/Demo"_s),
              (QStringList{u"Finder_travel.html"_s, u"Finder_travel_p1.html"_s, u"Finder_travel_p2.html"_s}));
    EXPECT_EQ(log(), QString());
}

TEST_F(KeywordFilesTest, holdThePageByteForByte)
{
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    search.GetResult({bytes, PageText(bytes, world.app.codePage())});
    EXPECT_EQ(world.read(u"Reports/Demo/Finder_travel_p1.html"_s), bytes + "\r\n");
}

TEST_F(KeywordFilesTest, areWrittenInTheSystemCodePage)
{
    analyse(u"<ol><li><b>Caf\u00e9 \u20ac \u4e2d</b> href=\"b.example/\u00fc\"</li></ol>"_s);
    EXPECT_EQ(world.read(u"Results/Finder/travel.dat"_s), "http://b.example/\xfc;#Caf\xe9 \x80 ?;#1\r\n");
}

TEST_F(KeywordFilesTest, startAnewWithEveryRun)
{
    analyse(resultPage(2, {}));
    analyse(resultPage(2, {}));
    const QByteArray listing = world.read(u"Results/Finder/travel.dat"_s);
    const QByteArray report = world.read(u"Reports/Demo/Finder_travel.html"_s);
    restart();
    analyse(resultPage(2, {}));
    analyse(resultPage(2, {}));
    EXPECT_EQ(world.read(u"Results/Finder/travel.dat"_s), listing);
    EXPECT_EQ(world.read(u"Reports/Demo/Finder_travel.html"_s), report);
}

TEST_F(KeywordFilesTest, getASectionForAPageWithoutListings)
{
    analyse(u"nothing"_s);
    EXPECT_EQ(world.read(u"Results/Finder/travel.dat"_s), "");
    EXPECT_TRUE(world.has(u"Results/Finder/travel.dat"_s));
    EXPECT_TRUE(
        world.read(u"Reports/Demo/Finder_travel.html"_s).endsWith("<br><br>\r\n<ol>\r\n</ol><br>\r\n"));
}

TEST_F(KeywordFilesTest, haveNamesThatStayInTheirFolders)
{
    struct Row
    {
        QString keyword, listing, page;
    };
    const Row rows[] = {
        {u"cheap flights"_s, u"cheap+flights.dat"_s, u"Finder_cheap_flights_p1.html"_s},
        {u"tcp/ip"_s, u"tcp%2Fip.dat"_s, u"Finder_tcp%2Fip_p1.html"_s},
        {u"a\\b"_s, u"a%5Cb.dat"_s, u"Finder_a%5Cb_p1.html"_s},
        {u".."_s, u"...dat"_s, u"Finder_.._p1.html"_s},
        {u"50%"_s, u"50%25.dat"_s, u"Finder_50%25_p1.html"_s},
        {u"it's \"so\""_s, u"it%27s+%27so%27.dat"_s, u"Finder_it%27s_%27so%27_p1.html"_s},
        {u"caf\u00e9 \u4e2d"_s, u"caf\u00e9+\u4e2d.dat"_s, u"Finder_caf\u00e9_\u4e2d_p1.html"_s},
        {u"con"_s, u"con.dat"_s, u"Finder_con_p1.html"_s},
        {u"a:b|c*d?"_s, u"a%3Ab%7Cc*d%3F.dat"_s, u"Finder_a%3Ab%7Cc*d%3F_p1.html"_s},
        {u".hidden"_s, u".hidden.dat"_s, u"Finder_.hidden_p1.html"_s},
        {u"-rf ~"_s, u"-rf+%7E.dat"_s, u"Finder_-rf_%7E_p1.html"_s},
    };
    for (const Row &row : rows) {
        search.Keyword = row.keyword;
        restart();
        analyse(resultPage(1, {}));
        EXPECT_EQ(log(), QString()) << row.keyword.toStdString();
        EXPECT_TRUE(world.has(u"Results/Finder/"_s + row.listing)) << row.keyword.toStdString();
        EXPECT_TRUE(world.has(u"Reports/Demo/"_s + row.page)) << row.keyword.toStdString();
        EXPECT_TRUE(world.read(u"Reports/Demo/"_s + QString(row.page).remove(u"_p1"_s))
                        .contains("href=" + world.app.toBytes(row.page) + ">"))
            << row.keyword.toStdString();
    }
    EXPECT_EQ(names(u"."_s), (QStringList{u"Reports"_s, u"Results"_s, u"reports"_s}));
    EXPECT_EQ(names(u"Results"_s), QStringList{u"Finder"_s});
    EXPECT_EQ(names(u"Reports"_s), QStringList{u"Demo"_s});
}

TEST_F(KeywordFilesTest, failWithANameThatIsTooLong)
{
    search.Keyword = QString(300, u'k');
    analyse(resultPage(1, {}));
    EXPECT_EQ(log(), tag + u"\""_s + search.Keyword + u".dat\" cannot be the name of a file"_s);
    EXPECT_EQ(search.Pages, 0);
    EXPECT_FALSE(world.has(u"Results/Finder"_s));
}

TEST_F(KeywordFilesTest, failWithAnImpossibleName)
{
    struct Row
    {
        QString engine, project, keyword, why;
    };
    const Row rows[] = {
        {u".."_s, u"Demo"_s, u"travel"_s, u"\"..\" cannot be the name of a file"_s},
        {u"a/b"_s, u"Demo"_s, u"travel"_s, u"\"a/b\" cannot be the name of a file"_s},
        {u"a\\b"_s, u"Demo"_s, u"travel"_s, u"\"a\\b\" cannot be the name of a file"_s},
        {u"Finder"_s, u".."_s, u"travel"_s, u"\"..\" cannot be the name of a file"_s},
        {u"Finder"_s, u""_s, u"travel"_s, u"\"\" cannot be the name of a file"_s},
        {u"Finder"_s, u"Demo"_s, u"a\tb"_s, u"\"a\tb.dat\" cannot be the name of a file"_s},
    };
    for (const Row &row : rows) {
        useEngine(row.engine);
        account.Name = row.project;
        search.Keyword = row.keyword;
        analyse(resultPage(1, {}));
        EXPECT_EQ(log(), u"clsRanking_GetResult: Engine Name = "_s + row.engine + u"Error= "_s + row.why);
    }
    EXPECT_EQ(names(u"."_s), QStringList{u"Error.log"_s});
}

TEST_F(KeywordFilesTest, failWhenAFolderStandsInThePlaceOfOne)
{
    struct Row
    {
        QString path, why;
    };
    const Row rows[] = {
        {u"Reports/Demo/Finder_travel_p1.html"_s, u"Cannot write \"%1\": it is a folder"_s},
        {u"Results/Finder/travel.dat"_s, u"Cannot remove \"%1\": it is a folder"_s},
        {u"Reports/Demo/Finder_travel.html"_s, u"Cannot remove \"%1\": it is a folder"_s},
    };
    for (const Row &row_ : rows) {
        QDir().mkpath(world.path(row_.path));
        analyse(resultPage(1, {}));
        EXPECT_EQ(log(), tag + row_.why.arg(world.path(row_.path)));
        EXPECT_EQ(search.Pages, 0);
        EXPECT_EQ(search.LinksCount(), 0);
        EXPECT_EQ(row(u"travel"_s)->Count, QString());
        QDir(world.path(row_.path)).removeRecursively();
    }
}

TEST_F(KeywordFilesTest, failWhenAFileStandsInThePlaceOfAFolder)
{
    world.write(u"Reports"_s, "mine");
    analyse(resultPage(1, {}));
    EXPECT_EQ(log(),
              tag + u"Cannot make the folder \"%1\": a file is in its place"_s.arg(world.path(u"Reports"_s)));
    EXPECT_EQ(world.read(u"Reports"_s), "mine");
}

TEST_F(KeywordFilesTest, saveThePageBeforeTheRestIsTried)
{
    QDir().mkpath(world.path(u"Results/Finder/travel.dat"_s));
    analyse(u"a page"_s);
    EXPECT_EQ(world.read(u"Reports/Demo/Finder_travel_p1.html"_s), "a page\r\n");
}

TEST_F(KeywordFilesTest, lieInFoldersOfAnySpelling)
{
    world.write(u"RESULTS/finder/TRAVEL.dat"_s, "old");
    world.write(u"REPORTS/demo/x"_s, "x");
    analyse(resultPage(1, {}));
    EXPECT_EQ(world.read(u"RESULTS/finder/travel.dat"_s), "http://filler1.example/x;#Title;#1\r\n");
    EXPECT_EQ(names(u"REPORTS/demo"_s),
              (QStringList{u"Finder_travel.html"_s, u"Finder_travel_p1.html"_s, u"x"_s}));
    EXPECT_EQ(names(u"RESULTS"_s), QStringList{u"finder"_s});
    EXPECT_EQ(names(u"RESULTS/finder"_s), QStringList{u"travel.dat"_s});
    EXPECT_EQ(log(), QString());
}

TEST_F(KeywordFilesTest, areMadeAgainWhenTheFoldersGoBetweenPages)
{
    analyse(resultPage(1, {}));
    QDir(world.path(u"Reports"_s)).removeRecursively();
    QDir(world.path(u"Results"_s)).removeRecursively();
    analyse(resultPage(1, {}));
    EXPECT_EQ(log(), QString());
    EXPECT_EQ(world.read(u"Results/Finder/travel.dat"_s), "http://filler1.example/x;#Title;#2\r\n");
}

TEST_F(KeywordFilesTest, areFoundByABrowserThatDecodesTheirNames)
{
    search.Keyword = u"it's 50% (off)"_s;
    analyse(resultPage(1, {}));
    EXPECT_EQ(QFile::symLinkTarget(world.path(u"Reports/Demo/Finder_it's_50%_(off)_p1.html"_s)),
              world.path(u"Reports/Demo/Finder_it%27s_50%25_%28off%29_p1.html"_s));
    EXPECT_EQ(QFile::symLinkTarget(world.path(u"Reports/Demo/Finder_it's_50%_(off).html"_s)),
              world.path(u"Reports/Demo/Finder_it%27s_50%25_%28off%29.html"_s));
    EXPECT_EQ(names(u"Results/Finder"_s), QStringList{u"it%27s+50%25+%28off%29.dat"_s});
    EXPECT_EQ(log(), QString());
}

TEST_F(KeywordFilesTest, getNoLinkUnderAnImpossibleName)
{
    search.Keyword = u"tcp/ip"_s;
    analyse(resultPage(1, {}));
    EXPECT_EQ(names(u"Reports/Demo"_s),
              (QStringList{u"Finder_tcp%2Fip.html"_s, u"Finder_tcp%2Fip_p1.html"_s}));
    EXPECT_EQ(log(), QString());
}

TEST_F(KeywordFilesTest, areNotMixedUpWithALinkOfAnotherEngine)
{
    useEngine(u"x%41"_s);
    analyse(resultPage(1, {}));
    const QByteArray theirs = world.read(u"Reports/Demo/x%41_travel.html"_s);
    useEngine(u"xA"_s);
    restart();
    analyse(resultPage(2, {}));
    EXPECT_EQ(world.read(u"Reports/Demo/x%41_travel.html"_s), theirs);
    EXPECT_FALSE(QFileInfo(world.path(u"Reports/Demo/xA_travel.html"_s)).isSymLink());
    EXPECT_EQ(log(), QString());
}
