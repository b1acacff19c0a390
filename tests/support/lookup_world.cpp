#include "tests/support/lookup_world.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const char *const EngineData =
    "[Markets]\r\n1=Global\r\n2=Asia\r\n"
    "[Global]\r\n1=Finder\r\n2=Poster\r\n3=Espotting\r\n4=Anzwers\r\n5=WebCrawler\r\n6=No Paging\r\n"
    "[Asia]\r\n1=Sousuo(CN)\r\n2=Zhao (cn)\r\n"
    "[Finder]\r\nEngineKey=finder\r\nEngineURL=http://finder.example/find\r\nQueryKeyword1=?q=\r\n"
    "QueryKeyword2=&n=10\r\nSubmitMethod=GET\r\nResultStartString=<ol>\r\nResultEndString=</ol>\r\n"
    "Sectionstart=<li>\r\nSectionEnd=</li>\r\nbeginTitle=<b>\r\nendTitle=</b>\r\nbeginURL=href=\"\r\n"
    "endURL=\"\r\nbeginMatches=Results\r\nendMatches=</p>\r\nNextPage1=Next page\r\n"
    "[Poster]\r\nEngineKey=poster\r\nEngineURL=http://poster.example/go\r\nPostString=q=<KEYWORD>&b=a b\r\n"
    "SubmitMethod=post\r\nResultStartString=<ol>\r\nResultEndString=</ol>\r\nSectionstart=<li>\r\n"
    "SectionEnd=</li>\r\nbeginTitle=<b>\r\nendTitle=</b>\r\nbeginURL=href=\"\r\nendURL=\"\r\n"
    "NextPage1=Next page\r\n"
    "[Espotting]\r\nEngineKey=espotting\r\nEngineURL=http://espotting.example/s\r\nQueryKeyword1=?k=\r\n"
    "SubmitMethod=POST\r\nResultStartString=<ol>\r\nResultEndString=</ol>\r\nSectionstart=<li>\r\n"
    "SectionEnd=</li>\r\nbeginTitle=<b>\r\nendTitle=</b>\r\nbeginURL=href=\"\r\nendURL=\"\r\n"
    "NextPage1=&page=[PageNo]\r\n"
    "[Anzwers]\r\nEngineKey=anzwers\r\nEngineURL=http://anzwers.example/s\r\nQueryKeyword1=?q=\r\n"
    "ResultStartString=<ol>\r\nResultEndString=</ol>\r\nSectionstart=<li>\r\nSectionEnd=</li>\r\n"
    "beginTitle=<b>\r\nendTitle=</b>\r\nbeginURL=href=\"\r\nendURL=\"\r\nNextPage1=Next page\r\n"
    "[WebCrawler]\r\nEngineURL=http://wc.example/search\r\nQueryKeyword1=?t=\r\n"
    "[No Paging]\r\nEngineKey=nopaging\r\nEngineURL=http://nopaging.example/s\r\nQueryKeyword1=?q=\r\n"
    "ResultStartString=<ol>\r\nResultEndString=</ol>\r\nSectionstart=<li>\r\nSectionEnd=</li>\r\n"
    "beginTitle=<b>\r\nendTitle=</b>\r\nbeginURL=href=\"\r\nendURL=\"\r\n"
    "[Sousuo(CN)]\r\nEngineURL=http://sousuo.example/"
    "s\r\nQueryKeyword1=?ie=UTF-8&w=\r\nQueryKeyword2=&p=1\r\n"
    "[Zhao (cn)]\r\nEngineURL=http://zhao.example/s\r\nQueryKeyword1=?ie=gb2312&w=\r\n";

} // namespace

LookupWorld::LookupWorld() : engines(app), account(std::make_shared<clsAccount>(app))
{
    writeEngineData(EngineData);
    engines.loadEngineData();
    app.EngineCatalogue = &engines;
    takeLog(); // loading tells of the empty table once
    account->Name = u"Demo"_s;
    account->LinksNum = 1;
    account->URLs.emplace();
    account->URLs->Add({u"site.example"_s, false}, u"site.example"_s);
    account->URLs->Add({u"rival.example"_s, true}, u"rival.example"_s);
}

void LookupWorld::writeKeywords(const QStringList &keywords) const
{
    QByteArray text;
    for (const QString &keyword : keywords)
        text += app.toBytes(keyword) + ";-1\r\n";
    write(u"Projects/Demo/Keywords.dat"_s, text);
}

QByteArray LookupWorld::listing(const QByteArray &url, const QByteArray &title)
{
    return "<li><b>" + title + "</b> <a href=\"" + url + "\">go</a></li>";
}

QByteArray LookupWorld::page(const QByteArrayList &urls, const QByteArray &next, const QByteArray &count)
{
    QByteArray text = "<html><p>Results 1 - 10 of " + count + "</p><ol>";
    for (const QByteArray &url : urls)
        text += listing(url);
    text += "</ol>";
    if (!next.isEmpty())
        text += "<a href=\"" + next + "\">Next page</a>";
    return text + "</html>";
}

QByteArrayList LookupWorld::fillers(int count)
{
    QByteArrayList urls;
    for (int i = 1; i <= count; ++i)
        urls.append("http://filler" + QByteArray::number(i) + ".example/x");
    return urls;
}

} // namespace sondrel
