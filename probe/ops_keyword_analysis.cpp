#include "lookup/address_match.h"
#include "lookup/clsSearchKeyword.h"
#include "lookup/decode_html.h"
#include "probe/keyword_rows.h"
#include "probe/operations.h"

#include <QDir>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

namespace {

// The members of a request's engine that go by the same name in the class.
void fillEngine(clsSearchKeyword &search, const QJsonObject &engine)
{
    const std::pair<QString, QString clsSearchKeyword::*> fields[] = {
        {u"EngineKey"_s, &clsSearchKeyword::EngineKey},
        {u"NextPage1"_s, &clsSearchKeyword::NextPage1},
        {u"NextPage2"_s, &clsSearchKeyword::NextPage2},
        {u"NextPage3"_s, &clsSearchKeyword::NextPage3},
        {u"NextPage4"_s, &clsSearchKeyword::NextPage4},
        {u"ResultEndString"_s, &clsSearchKeyword::ResultEndString},
        {u"ResultStartString"_s, &clsSearchKeyword::ResultStartString},
        {u"SectionEnd"_s, &clsSearchKeyword::SectionEnd},
        {u"SectionStart"_s, &clsSearchKeyword::SectionStart},
        {u"URL"_s, &clsSearchKeyword::URL},
        {u"beginMatches"_s, &clsSearchKeyword::beginMatches},
        {u"beginTitle"_s, &clsSearchKeyword::beginTitle},
        {u"beginURL"_s, &clsSearchKeyword::beginURL},
        {u"endMatches"_s, &clsSearchKeyword::endMatches},
        {u"endTitle"_s, &clsSearchKeyword::endTitle},
        {u"endURL"_s, &clsSearchKeyword::endURL},
    };
    for (const auto &[name, member] : fields)
        search.*member = engine.value(name).toString();
}

QJsonObject getNextURL(const Call &call)
{
    clsSearchKeyword search(call.app);
    fillEngine(search, call.args.at(0).toObject());
    return answer(search.getNextURL(PageText(call.text(1))));
}

void removeResultFolders(const ApplicationContext &app)
{
    for (const QString &name : {u"Results"_s, u"Reports"_s, u"reports"_s})
        QDir(app.AppPath + u'/' + name).removeRecursively();
}

QJsonObject resultFiles(const ApplicationContext &app)
{
    QJsonObject files = filesBelow(app);
    for (const QString &path : files.keys()) {
        if (!path.startsWith("Results/"_L1) && !path.startsWith("Reports/"_L1))
            files.remove(path);
    }
    return files;
}

QJsonObject getResult(const Call &call)
{
    const QJsonObject engine = call.args.at(0).toObject();
    const QJsonObject project = call.args.at(1).toObject();
    clsAccount account(call.app);
    account.Name = project.value(u"Name"_s).toString();
    account.TopPosOnly = project.value(u"TopPosOnly"_s).toBool();
    account.URLs.emplace();
    for (const QJsonValue value : project.value(u"URLs"_s).toArray()) {
        const QJsonObject url = value.toObject();
        account.URLs->Add({url.value(u"URL"_s).toString(), url.value(u"IsCompetitor"_s).toBool()});
    }
    clsKeywords keywords(call.app);
    keywords.Engine = engine.value(u"EngineName"_s).toString();
    keywords.AccountName = account.Name;
    keywords.Keywords = rowsFromJson(call.args.at(4).toArray());
    clsSearchKeyword search(call.app);
    fillEngine(search, engine);
    search.setKeywordsObject(&keywords);
    search.Account = &account;
    search.RankingURL = &*account.URLs;
    search.Keyword = call.text(2);

    removeResultFolders(call.app);
    for (const QJsonValue page : call.args.at(3).toArray()) {
        const QString text = page.toString();
        search.GetResult({call.app.toBytes(text), PageText(text)});
    }
    QJsonObject result = answer(QJsonValue());
    result.insert(u"rows"_s, rowsAsJson(keywords.Keywords));
    result.insert(u"LinksCount"_s, search.LinksCount());
    result.insert(u"files"_s, resultFiles(call.app));
    removeResultFolders(call.app);
    return result;
}

} // namespace

void addAnalysisOperations(Operations &operations)
{
    operations.insert(u"DecodeHTMLString"_s,
                      [](const Call &call) { return answer(DecodeHTMLString(call.text(0))); });
    operations.insert(u"SearchKeywordCompareURL"_s, [](const Call &call) {
        return answer(SearchKeywordCompareURL(call.app, call.text(0), call.text(1)));
    });
    operations.insert(u"getNextURL"_s, getNextURL);
    operations.insert(u"GetResult"_s, getResult);
}

} // namespace sondrel::probe
