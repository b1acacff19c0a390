#include "optimizer/frame_urls.h"
#include "optimizer/modHTMLParse.h"
#include "optimizer/optimizer_run.h"
#include "probe/operations.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

namespace {

class NoView final : public OptimizerView
{
public:
    void showProgress(int) override {}
    void showStatus(const QString &) override {}
};

OptimizerIdentity identityFrom(const QJsonValue &preferences, const QJsonValue &dealer)
{
    OptimizerIdentity identity;
    identity.preference.LogoURL = preferences[u"LogoURL"_s].toString();
    identity.preference.LogoPosition = preferences[u"LogoPosition"_s].toString();
    identity.preference.WebSite = preferences[u"WebSite"_s].toString();
    identity.preference.CompanyName = preferences[u"CompanyName"_s].toString();
    identity.preference.Email = preferences[u"Email"_s].toString();
    identity.preference.ReporterName = preferences[u"ReporterName"_s].toString();
    identity.dealer.Dealername = dealer[u"Dealername"_s].toString();
    identity.dealer.DealerEmail = dealer[u"DealerEmail"_s].toString();
    identity.dealer.OrderWebSite = dealer[u"OrderWebSite"_s].toString();
    identity.dealer.DealerURL = dealer[u"DealerURL"_s].toString();
    return identity;
}

QJsonObject optimizerReport(const Call &call)
{
    NoView view;
    OptimizerRun run{call.text(0), call.text(1), identityFrom(call.args.at(2), call.args.at(3)), {}, {}};
    if (processPage(call.app, run, view) != OptimizerOutcome::Done)
        return answer(QJsonValue());
    QJsonObject result = answer(run.document);
    result.insert(u"file"_s, run.file.sliced(call.app.AppPath.size() + 1).replace(u'\\', u'/'));
    return result;
}

} // namespace

void addOptimizerOperations(Operations &operations)
{
    operations.insert(u"retrieveMetaTag"_s, [](const Call &call) {
        const MetaTags tags = retrieveMetaTag(call.app, call.text(0));
        return answer(QJsonObject{{u"keywords"_s, tags.keywords},
                                  {u"description"_s, tags.description},
                                  {u"title"_s, tags.title},
                                  {u"body"_s, tags.body}});
    });
    operations.insert(u"OptimizerFindSection"_s, [](const Call &call) {
        QString text = call.text(0);
        QJsonObject result = answer(FindSection(call.app, text, call.text(1), call.text(2)));
        result.insert(u"text"_s, text);
        return result;
    });
    operations.insert(u"FindValue"_s, [](const Call &call) {
        return answer(FindValue(call.app, call.text(0), call.text(1)));
    });
    operations.insert(u"FormatURL"_s, [](const Call &call) {
        return answer(FormatURL(call.app, call.text(0), call.text(1)));
    });
    operations.insert(u"OptimizerReport"_s, optimizerReport);
    operations.insert(u"GetFramesetURL"_s, [](const Call &call) {
        return answer(QJsonArray::fromStringList(GetFramesetURL(call.app, call.text(0), call.text(1))));
    });
}

} // namespace sondrel::probe
