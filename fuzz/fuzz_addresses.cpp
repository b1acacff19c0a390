// Addresses of any kind on their ways: to a server, out of a listing, against a tracked one, from a page's
// frames, into a mail.
#include "core/failure.h"
#include "fuzz/target.h"
#include "lookup/address_match.h"
#include "lookup/decode_html.h"
#include "lookup/frmHTTP.h"
#include "lookup/wire_address.h"
#include "mail/mail_address.h"
#include "mail/protocol_line.h"
#include "optimizer/frame_urls.h"
#include "optimizer/page_address.h"
#include "tests/doors/offline_program.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using namespace sondrel::fuzz;

namespace {

bool isOneWord(const QByteArray &bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte > 0x20 && byte < 0x7f; });
}

void sendOut(const ApplicationContext &app, const QString &address)
{
    const TextEncoder encode = [&](QStringView text) { return app.toBytes(text); };
    check(isOneWord(wireAddress(address, encode)));
    const QByteArray header = wireHeaderValue(address, encode);
    check(!header.contains('\n') && !header.contains('\r') && !header.contains('\0'));
    try {
        check(isOneWord(wireMailbox(address)));
    } catch (const Failure &) {
        // none that can go there
    }
}

void compare(ApplicationContext &app, const QString &listing, const QString &tracked)
{
    Collection<clsURL> urls;
    urls.Add({tracked, false});
    const TrackedAddresses addresses(app, &urls);
    if (!tracked.isEmpty())
        check(addresses.countOf(listing) == (SearchKeywordCompareURL(app, listing, tracked) ? 1 : 0));
}

} // namespace

// The first line is an address, the second another one; both and the rest are also what lies around
// addresses.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static TemporaryProgram program;
    ApplicationContext &app = program.app;
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    const QString text = QString::fromUtf8(bytes);
    const QString first = text.section(u'\n', 0, 0);
    const QString second = text.section(u'\n', 1, 1);
    const QString rest = text.section(u'\n', 2);

    sendOut(app, first);
    sendOut(app, app.fromBytes(bytes));
    check(!DecodeHTMLString(text).contains(u'%'));
    compare(app, first, second);
    compare(app, second, first);

    FormatURL(app, first, second);
    GetFramesetURL(app, rest, first);
    localPage(first);
    pageAddress(first);
    reportFileName(app, first);

    for (const MailAddress &address : parseAddresses(text))
        sendOut(app, address.mailbox);
    parseAddresses(readableSender(second));
    ProtocolLines conversation({second.toUtf8()});
    conversation.received(bytes);
    conversation.sent(rest.toUtf8());
    program.desktop.boxes.clear();
    return 0;
}
