#include "core/modCommon.h"
#include "core/modUtilit.h"
#include "probe/operations.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

namespace {

void addUrlOperations(Operations &operations)
{
    operations.insert(u"CompareURL"_s, [](const Call &call) {
        return answer(CompareURL(call.app, call.text(0), call.text(1)));
    });
    operations.insert(u"AddHTTPToURL"_s,
                      [](const Call &call) { return answer(AddHTTPToURL(call.app, call.text(0))); });
    operations.insert(u"GetHostFromURL"_s,
                      [](const Call &call) { return answer(GetHostFromURL(call.app, call.text(0))); });
    operations.insert(u"GetPathAfterHost"_s,
                      [](const Call &call) { return answer(GetPathAfterHost(call.text(0))); });
    operations.insert(u"GetHostAndFolder"_s,
                      [](const Call &call) { return answer(GetHostAndFolder(call.text(0))); });
    operations.insert(u"IsValidDomainName"_s,
                      [](const Call &call) { return answer(IsValidDomainName(call.text(0))); });
    operations.insert(u"IsValidEmailAddress"_s,
                      [](const Call &call) { return answer(IsValidEmailAddress(call.text(0))); });
}

QJsonObject stringToCollection(const Call &call)
{
    QJsonArray items;
    for (const QString &item : StringToCollection(call.text(0), call.text(1)))
        items.append(item);
    return answer(items);
}

QJsonObject stripRowSuffix(const Call &call)
{
    QString text = call.text(0);
    const bool stripped = StripRowSuffix(text);
    return {{u"result"_s, stripped}, {u"text"_s, text}};
}

} // namespace

void addTextOperations(Operations &operations)
{
    addUrlOperations(operations);
    operations.insert(u"IsTrueText"_s, [](const Call &call) { return answer(IsTrueText(call.text(0))); });
    operations.insert(u"IsNumberText"_s, [](const Call &call) { return answer(IsNumberText(call.text(0))); });
    operations.insert(u"IsValidProjectName"_s,
                      [](const Call &call) { return answer(IsValidProjectName(call.text(0))); });
    operations.insert(u"CollapseSpaces"_s,
                      [](const Call &call) { return answer(CollapseSpaces(call.text(0))); });
    operations.insert(u"StripHTML"_s,
                      [](const Call &call) { return answer(StripHTML(call.app, call.text(0))); });
    operations.insert(u"TrimNull"_s,
                      [](const Call &call) { return answer(TrimNull(call.app, call.text(0))); });
    operations.insert(u"ParseString"_s, [](const Call &call) {
        return answer(ParseString(call.app, call.text(0), call.text(1), call.number(2)));
    });
    operations.insert(u"StringToCollection"_s, stringToCollection);
    operations.insert(u"StripRowSuffix"_s, stripRowSuffix);
}

} // namespace sondrel::probe
