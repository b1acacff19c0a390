#include "optimizer/frame_urls.h"
#include "optimizer/modHTMLParse.h"
#include "probe/operations.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

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
    operations.insert(u"GetFramesetURL"_s, [](const Call &call) {
        return answer(QJsonArray::fromStringList(GetFramesetURL(call.app, call.text(0), call.text(1))));
    });
}

} // namespace sondrel::probe
