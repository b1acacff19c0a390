#include "lookup/clsConnect.h"
#include "probe/operations.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

void addExtractionOperations(Operations &operations)
{
    operations.insert(u"FindSection"_s, [](const Call &call) {
        QString text = call.text(0);
        QJsonObject result = answer(clsConnect(call.app).FindSection(text, call.text(1), call.text(2)));
        result.insert(u"text"_s, text);
        return result;
    });
    operations.insert(u"GetRankingElement"_s, [](const Call &call) {
        return answer(clsConnect(call.app).GetRankingElement(call.text(0), call.text(1), call.text(2)));
    });
    operations.insert(u"GetMatchesCounts"_s, [](const Call &call) {
        return answer(clsConnect(call.app).GetMatchesCounts(call.text(0), call.text(1), call.text(2)));
    });
    operations.insert(u"FindActionURL"_s, [](const Call &call) {
        QString text = call.text(0);
        QJsonObject result = answer(clsConnect(call.app).FindActionURL(text));
        result.insert(u"text"_s, text);
        return result;
    });
    operations.insert(u"FindhrefURL"_s, [](const Call &call) {
        return answer(clsConnect(call.app).FindhrefURL(call.text(0)));
    });
    operations.insert(u"GetErrorMessage"_s, [](const Call &call) {
        return answer(clsConnect(call.app).GetErrorMessage(call.number(0), call.text(1)));
    });
}

} // namespace sondrel::probe
