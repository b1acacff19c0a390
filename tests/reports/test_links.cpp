#include "core/uucode.h"
#include "lookup/clsSearchKeyword.h"
#include "reports/html_report.h"
#include "reports/report_set.h"
#include "tests/reports/report_world.h"
#include "tests/support/source_tree.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QUrl>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// The set of a project on disk with the pages that a lookup stores, read as a browser reads it that minds the
// case of file names.
class ReportLinks : public testing::Test, public ReportWorld
{
protected:
    ReportLinks()
    {
        const auto published = sourceFile(u"data/menutemplate.html"_s);
        if (!QFile::copy(published, path(u"menutemplate.html"_s)))
            throw Failure(u"The template cannot be copied"_s);
    }

    // Looks the keywords up on the engine, each with two result pages, and writes the set.
    void lookUp(const QStringList &terms)
    {
        clsKeywords keywords(app);
        keywords.AccountName = account.Name;
        keywords.Engine = u"Finder"_s;
        for (const QString &term : terms) {
            keywords.Add(term, term, -1);
            lookUpOne(keywords, term);
        }
        CreateHTMLReport(app, account, u"Finder"_s, keywords.Keywords, {});
        ReportSet set(app);
        set.Reporter.URL = u"http://site.example"_s;
        set.writePages(account, keywords.Keywords);
        set.CreateHTMLReportIndex(account.Name);
        ASSERT_EQ(takeLog(), QString());
    }
    void lookUpOne(clsKeywords &keywords, const QString &term)
    {
        clsSearchKeyword search(app);
        search.Account = &account;
        search.RankingURL = &*account.URLs;
        search.setKeywordsObject(&keywords);
        search.Keyword = term;
        search.EngineKey = u"finder"_s;
        search.URL = u"http://finder.example/find"_s;
        search.SectionStart = u"<li>"_s;
        search.SectionEnd = u"</li>"_s;
        search.beginTitle = u"<b>"_s;
        search.endTitle = u"</b>"_s;
        search.beginURL = u"href=\""_s;
        search.endURL = u"\""_s;
        const QString page =
            u"<ol><li><b>A shop</b> <a href=\"http://www.site.example/a\">go</a></li></ol>"_s;
        for (int i = 0; i < 2; ++i)
            search.GetResult({app.toBytes(page), PageText(page)});
    }

    // The local files that a page links to, as a browser on Linux names them.
    QStringList linksOf(const QString &file) const
    {
        static const QRegularExpression link(u"href\\s*=\\s*(?:\"([^\"]*)\"|([^\\s>]+))"_s,
                                             QRegularExpression::CaseInsensitiveOption);
        QFile page(file);
        if (!page.open(QIODevice::ReadOnly))
            return {};
        QStringList targets;
        const QString text = app.fromBytes(page.readAll());
        for (auto it = link.globalMatch(text); it.hasNext();) {
            const auto match = it.next();
            QString target = match.captured(1) + match.captured(2);
            if (target.startsWith(u"http:"_s) || target.startsWith(u"mailto:"_s))
                continue;
            target = QUrl::fromPercentEncoding(target.replace(u'\\', u'/').toUtf8());
            targets.append(QDir(QFileInfo(file).path()).absoluteFilePath(target));
        }
        return targets;
    }
    // Everything that links lead to from the index on.
    QSet<QString> reached() const
    {
        QStringList waiting{path(u"reports/Demo/menu.html"_s)};
        QSet<QString> seen;
        while (!waiting.isEmpty()) {
            const QString file = waiting.takeLast();
            const QString canonical = QFileInfo(file).canonicalFilePath();
            if (canonical.isEmpty())
                ADD_FAILURE() << "dead link: " << qPrintable(file);
            if (canonical.isEmpty() || seen.contains(canonical))
                continue;
            seen.insert(canonical);
            waiting += linksOf(file);
        }
        return seen;
    }
    bool reaches(const QSet<QString> &files, const QString &name) const
    {
        return files.contains(QFileInfo(path(u"reports/Demo/"_s + name)).canonicalFilePath());
    }
};

} // namespace

TEST_F(ReportLinks, leadToEveryPageOfTheSet)
{
    setEngines({u"Finder"_s, u"Perla"_s, u"Seeker(UK)"_s});
    lookUp({u"tea"_s});
    const QSet<QString> files = reached();
    for (const QString &name : {u"EngineSummary.html"_s, u"keywordurl.html"_s, u"keywordsummary.html"_s,
                                u"rankingdetail.html"_s, u"FinderDetails.html"_s, u"PerlaDetails.html"_s,
                                u"Seeker(UK)Details.html"_s, u"Finder_tea.html"_s, u"Finder_tea_p1.html"_s})
        EXPECT_TRUE(reaches(files, name)) << qPrintable(name);
}

TEST_F(ReportLinks, leadToThePagesOfUnusualKeywords)
{
    const QStringList keywords{
        u"two words"_s,     u"it's"_s,       u"say \"hi\""_s, u"caf\u00E9 cr\u00E8me"_s,
        u"report (2005)"_s, u"[brackets]"_s, u"{curly}"_s,    u"50% off"_s,
        u"a&b"_s,           u"what?"_s,      u"c++"_s,        u"#tag"_s,
        u"<script>"_s,      u"x=y;z"_s,      u"a:b"_s,        u"pipe|d"_s};
    lookUp(keywords);
    const QSet<QString> files = reached();
    for (const QString &keyword : keywords) {
        const QString page = u"Finder_"_s + EncodedString(app, QString(keyword).replace(u' ', u'_'));
        EXPECT_TRUE(reaches(files, page + u".html"_s)) << qPrintable(keyword);
        EXPECT_TRUE(reaches(files, page + u"_p1.html"_s)) << qPrintable(keyword);
        EXPECT_TRUE(reaches(files, page + u"_p2.html"_s)) << qPrintable(keyword);
    }
}

TEST_F(ReportLinks, leadToTheDetailsOfAnEngineWithBlanks)
{
    setEngines({u"Alta Vista (US)"_s, u"Finder"_s});
    lookUp({u"tea"_s});
    EXPECT_TRUE(reaches(reached(), u"Alta Vista (US)Details.html"_s));
}

TEST_F(ReportLinks, leadToNoDetailsRatherThanToThoseOfAnotherEngine)
{
    setEngines({u"Alta Vista"_s, u"Alta Pista"_s});
    ReportSet(app).writePages(account, {});
    EXPECT_FALSE(hasReport(u"Alta"_s));
}

TEST_F(ReportLinks, inTheIndexAreRelative)
{
    lookUp({u"tea"_s});
    const QString index = report(u"menu.html"_s);
    for (const QString &name :
         {u"enginesummary.html"_s, u"keywordurl.html"_s, u"keywordsummary.html"_s, u"rankingdetail.html"_s})
        EXPECT_TRUE(index.contains(u"href=\""_s + name + u'"')) << qPrintable(name);
    EXPECT_FALSE(index.contains(u"file:"_s));
    EXPECT_FALSE(index.contains(app.AppPath));
    EXPECT_FALSE(index.contains(u'['));
}

} // namespace sondrel
