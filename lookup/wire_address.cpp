#include "lookup/wire_address.h"

#include <QUrl>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

bool isBlankOrControl(QChar character)
{
    return character.unicode() <= 0x20 || character.unicode() == 0x7f;
}

QStringView withoutBlankEnds(QStringView text)
{
    while (!text.isEmpty() && isBlankOrControl(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlankOrControl(text.back()))
        text.chop(1);
    return text;
}

bool isAscii(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar character) { return character.unicode() < 0x80; });
}

QByteArray encoded(QStringView text, const TextEncoder &encode)
{
    return isAscii(text) ? text.toLatin1() : encode(text);
}

void appendEscaped(QByteArray &wire, const QByteArray &bytes)
{
    for (const char byte : bytes) {
        if (byte > 0x20 && byte < 0x7f) // also leaves out what is above 127, where char is signed
            wire += byte;
        else
            wire += '%' + QByteArray(1, byte).toHex().toUpper();
    }
}

// Where the host begins and ends, behind "//" and a user part; an empty stretch when there is no "//".
std::pair<qsizetype, qsizetype> hostPlace(QStringView address)
{
    qsizetype begin = address.indexOf("://"_L1);
    if (begin < 0)
        return {0, 0};
    begin += 3;
    qsizetype end = begin;
    while (end < address.size() && !"/?#\\"_L1.contains(address[end]))
        ++end;
    const qsizetype user = address.sliced(begin, end - begin).lastIndexOf(u'@');
    if (user >= 0)
        begin += user + 1;
    const qsizetype port = address.sliced(begin, end - begin).lastIndexOf(u':');
    if (port >= 0)
        end = begin + port;
    return {begin, end};
}

} // namespace

QByteArray wireAddress(const QString &address, const TextEncoder &encode)
{
    const QStringView text = withoutBlankEnds(address);
    const auto [hostBegin, hostEnd] = hostPlace(text);
    const QStringView host = text.sliced(hostBegin, hostEnd - hostBegin);
    QByteArray wire;
    if (isAscii(host)) {
        appendEscaped(wire, encoded(text, encode));
        return wire;
    }
    appendEscaped(wire, encoded(text.first(hostBegin), encode));
    appendEscaped(wire, QUrl::toAce(host.toString()));
    appendEscaped(wire, encoded(text.sliced(hostEnd), encode));
    return wire;
}

QByteArray wireHeaderValue(const QString &value, const TextEncoder &encode)
{
    QByteArray wire = encoded(value, encode);
    wire.removeIf([](char byte) { return (byte >= 0 && byte < 0x20) || byte == 0x7f; });
    return wire;
}

} // namespace sondrel
