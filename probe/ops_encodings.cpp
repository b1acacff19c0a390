#include "core/clsCodePage.h"
#include "core/modBase64Encode.h"
#include "core/uucode.h"
#include "probe/operations.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

namespace {

using Encoder = QString (*)(ApplicationContext &, const QString &);

void addEncoder(Operations &operations, const QString &name, Encoder encoder)
{
    operations.insert(name, [encoder](const Call &call) { return answer(encoder(call.app, call.text(0))); });
}

} // namespace

void addEncodingOperations(Operations &operations)
{
    addEncoder(operations, u"EncodedString"_s, EncodedString);
    addEncoder(operations, u"EncodedStringX"_s, EncodedStringX);
    addEncoder(operations, u"StrToUTF8Encode"_s, StrToUTF8Encode);
    addEncoder(operations, u"QuotedPrintableEncode"_s, QuotedPrintableEncode);
    addEncoder(operations, u"QuotedPrintableChar"_s, QuotedPrintableChar);
    addEncoder(operations, u"CharSet"_s, CharSet);
    addEncoder(operations, u"Base64Encode"_s, Base64Encode);
    operations.insert(u"ConvertUnicodeToUTF8"_s, [](const Call &call) {
        return answer(clsCodePage(call.app).ConvertUnicodeToUTF8(call.text(0)));
    });
    operations.insert(u"CovertToWideChar"_s, [](const Call &call) {
        return answer(clsCodePage(call.app).CovertToWideChar(call.text(0), call.number(1)));
    });
    operations.insert(u"WideCharToUTF8"_s, [](const Call &call) {
        return answer(toHex(clsCodePage(call.app).WideCharToUTF8(call.text(0))));
    });
    operations.insert(u"LShift"_s, [](const Call &call) {
        return answer(clsCodePage::LShift(call.number(0), call.number(1)));
    });
    operations.insert(u"RShift"_s, [](const Call &call) {
        return answer(clsCodePage::RShift(call.number(0), call.number(1)));
    });
}

} // namespace sondrel::probe
