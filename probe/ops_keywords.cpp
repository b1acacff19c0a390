#include "keywords/clsKeywordBuilder.h"
#include "keywords/suggestion_list.h"
#include "probe/keyword_rows.h"
#include "probe/operations.h"
#include "project/clsKeywords.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

namespace {

const auto Account = u"probe"_s;

QString projectFile(const Call &call, const QString &name)
{
    return call.app.appFile({u"Projects"_s, Account, name});
}

QJsonObject updateObject(const Call &call)
{
    clsKeywords keywords(call.app);
    keywords.Keywords = rowsFromJson(call.args.at(0).toArray());
    QJsonArray results;
    for (const QJsonValue step : call.args.at(1).toArray()) {
        const QJsonArray arguments = step.toArray();
        results.append(keywords.UpdateObject(arguments.at(0).toString(), arguments.at(1).toString(),
                                             arguments.at(2).toString()));
    }
    return {{u"result"_s, results}, {u"rows"_s, rowsAsJson(keywords.Keywords)}};
}

QJsonObject loadKeywords(const Call &call)
{
    const QString engine = call.text(2);
    const QString termsFile = projectFile(call, u"Keywords.dat"_s);
    const QString resultsFile = projectFile(call, clsKeywords::resultFileName(engine));
    writeFixture(call.app, termsFile, call.app.toBytes(call.text(0)));
    if (const auto results = call.optionalText(1))
        writeFixture(call.app, resultsFile, call.app.toBytes(*results));
    clsKeywords keywords(call.app);
    keywords.AccountName = Account;
    keywords.LoadKeywords();
    keywords.Engine = engine;
    keywords.FillKeywordsLookupValue();
    removeFixture(call.app, termsFile);
    removeFixture(call.app, resultsFile);
    return {{u"result"_s, QJsonValue()}, {u"rows"_s, rowsAsJson(keywords.Keywords)}};
}

// The text of a file that the operation wrote, which goes with it.
QString taken(const Call &call, const QString &path)
{
    QString text = call.app.fromBytes(call.app.files.readAll(path));
    removeFixture(call.app, path);
    return text;
}

QJsonObject saveKeywords(const Call &call)
{
    clsKeywords keywords(call.app);
    keywords.AccountName = Account;
    keywords.Keywords = rowsFromJson(call.args.at(0).toArray());
    keywords.SaveKeywords();
    return answer(taken(call, projectFile(call, u"Keywords.dat"_s)));
}

QJsonObject saveKeywordResults(const Call &call)
{
    clsKeywords keywords(call.app);
    keywords.AccountName = Account;
    keywords.Engine = call.text(1);
    keywords.Keywords = rowsFromJson(call.args.at(0).toArray());
    keywords.SaveKeywordResults();
    const QString file = clsKeywords::resultFileName(keywords.Engine);
    return {{u"result"_s, taken(call, projectFile(call, file))}, {u"file"_s, file}};
}

QJsonObject builderGetResult(const Call &call)
{
    class Rows final : public KeywordBuilderForm
    {
    public:
        void showProgress(int) override {}
        void showStatus(const QString &) override {}
        void addSuggestion(const QString &keyword, const QString &count) override
        {
            list.add(keyword, count);
        }
        void DownLoadCompleted() override {}
        SuggestionList list;
    } form;
    clsKeywordBuilder builder(call.app);
    builder.FormKeywordBuilder = &form;
    builder.EngineName = call.text(1);
    writeFixture(call.app, call.app.EngineDataFile, call.app.toBytes(call.text(0)));
    builder.GetResult(call.text(2));
    removeFixture(call.app, call.app.EngineDataFile);
    QJsonArray rows;
    for (const Suggestion &row : form.list.rows())
        rows.append(QJsonArray{row.Keyword, row.Count});
    return answer(rows);
}

} // namespace

void addKeywordOperations(Operations &operations)
{
    operations.insert(u"UpdateObject"_s, updateObject);
    operations.insert(u"LoadKeywords"_s, loadKeywords);
    operations.insert(u"BuilderGetResult"_s, builderGetResult);
    operations.insert(u"SaveKeywords"_s, saveKeywords);
    operations.insert(u"SaveKeywordResults"_s, saveKeywordResults);
}

} // namespace sondrel::probe
