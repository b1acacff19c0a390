// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "lookup/clsSearchKeyword.h"
#include "tests/support/world.h"

#include <QMap>

namespace sondrel {

/// A project "Demo" that looks "travel" up on the engine "Finder".
class SearchWorld
{
public:
    World world;
    clsAccount account{world.app};
    clsKeywords keywords{world.app};
    Collection<clsURL> urls;
    clsSearchKeyword search{world.app};

    SearchWorld()
    {
        using namespace Qt::Literals::StringLiterals;
        account.Name = u"Demo"_s;
        keywords.Engine = u"Finder"_s;
        keywords.AccountName = account.Name;
        keywords.Add(u"travel"_s, u"travel"_s, -1);
        search.setKeywordsObject(&keywords);
        search.Account = &account;
        search.RankingURL = &urls;
        search.Keyword = u"travel"_s;
        search.URL = u"http://finder.example/find?q=travel"_s;
        search.EngineKey = u"finder"_s;
        search.ResultStartString = u"<ol>"_s;
        search.ResultEndString = u"</ol>"_s;
        search.SectionStart = u"<li>"_s;
        search.SectionEnd = u"</li>"_s;
        search.beginTitle = u"<b>"_s;
        search.endTitle = u"</b>"_s;
        search.beginURL = u"href=\""_s;
        search.endURL = u"\""_s;
        search.beginMatches = u"Results"_s;
        search.endMatches = u"</p>"_s;
    }

    void useEngine(const QString &name)
    {
        keywords.Engine = name;
        search.setKeywordsObject(&keywords);
    }
    void track(const QStringList &addresses)
    {
        for (const QString &address : addresses)
            urls.Add({address, false});
    }
    void analyse(const QString &page) { search.GetResult({world.app.toBytes(page), PageText(page)}); }
    void restart()
    {
        search.Pages = 0;
        search.setLinksCount(0);
    }
    clsKeyword *row(const QString &keyword) { return keywords.Keywords.find(keyword); }

    /// A page with that many listings, those given at their places, others of hosts of their own.
    static QString resultPage(int count, const QMap<int, QString> &given)
    {
        using namespace Qt::Literals::StringLiterals;
        QString page = u"<html><p>Results 1 - 10 of 2,340</p><ol>"_s;
        for (int i = 1; i <= count; ++i)
            page += u"<li><b>Title</b> <a href=\""_s + given.value(i, u"http://filler%1.example/x"_s.arg(i)) +
                    u"\">go</a></li>"_s;
        return page + u"</ol></html>"_s;
    }
};

} // namespace sondrel
