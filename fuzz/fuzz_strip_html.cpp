// Page text of any kind through the clean-up and the escapes.
#include "core/clsCodePage.h"
#include "core/modBase64Encode.h"
#include "core/modCommon.h"
#include "core/modUtilit.h"
#include "core/uucode.h"
#include "fuzz/target.h"
#include "tests/doors/offline_program.h"

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using namespace sondrel::fuzz;

namespace {

void cleanUp(ApplicationContext &app, const QString &text, int number)
{
    CollapseSpaces(StripHTML(app, text));
    ParseString(app, text, text.left(number % 4), number);
    StringToCollection(text, text.right(number % 3));
    QString row = text;
    StripRowSuffix(row);
    IsNumberText(text);
    const QString middle = text.mid(text.size() / 3, text.size() / 3);
    CompareURL(app, text, middle);
    GetHostAndFolder(text);
    IsValidEmailAddress(text);
}

void encode(ApplicationContext &app, const QString &text, int codePage)
{
    EncodedString(app, text);
    EncodedStringX(app, text);
    StrToUTF8Encode(app, text);
    QuotedPrintableEncode(app, text);
    QuotedPrintableChar(app, text);
    CharSet(app, text);
    Base64Encode(app, text);
    const clsCodePage converter(app);
    converter.ConvertUnicodeToUTF8(text);
    converter.CovertToWideChar(text, codePage);
    converter.AToW(converter.WToA(text, codePage, 0), codePage, 0);
}

} // namespace

// The first byte chooses a code page and a field number, the others are the page.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static TemporaryProgram program;
    static const int codePages[] = {1252, 936, 932, 65001, 1200, 1201, 54936, 50220, 99999};
    if (size == 0)
        return 0;
    const int codePage = codePages[data[0] % std::size(codePages)];
    const QByteArrayView bytes(data + 1, static_cast<qsizetype>(size - 1));
    const QString western = CodePage::western()->fromBytes(bytes);
    cleanUp(program.app, western, data[0]);
    encode(program.app, western, codePage);
    if (const auto page = CodePage::find(codePage)) {
        const QString text = page->fromBytes(bytes);
        page->toBytes(text);
        encode(program.app, text, codePage);
    }
    program.desktop.boxes.clear();
    return 0;
}
