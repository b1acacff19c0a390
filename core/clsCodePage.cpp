#include "core/clsCodePage.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int Utf16 = 1200;
constexpr int Utf16Swapped = 1201;
constexpr int WordBits = 32;

QString pack(QByteArrayView bytes)
{
    QString packed((bytes.size() + 1) / 2, QChar(0));
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        QChar &unit = packed[i / 2];
        unit = QChar(static_cast<char16_t>(i % 2 == 0 ? byte : unit.unicode() | byte << 8U));
    }
    return packed;
}

// The bytes in front of the first zero byte.
QByteArray unpack(const QString &packed)
{
    QByteArray bytes(packed.size() * 2, Qt::Uninitialized);
    for (qsizetype i = 0; i < packed.size(); ++i) {
        bytes[2 * i] = static_cast<char>(packed[i].unicode() & 0xFFU);
        bytes[2 * i + 1] = static_cast<char>(packed[i].unicode() >> 8U);
    }
    const qsizetype zero = bytes.indexOf('\0');
    return zero < 0 ? bytes : bytes.first(zero);
}

QString addressText(const void *address)
{
    return QString::number(reinterpret_cast<quintptr>(address));
}

bool isLetterOrDigit(char byte)
{
    return (byte >= '0' && byte <= '9') || (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

} // namespace

QString clsCodePage::WToA(const QString &text, int codePage, qint32 /*flags*/) const
{
    const auto page = CodePage::find(codePage);
    if (!page)
        return {};
    const qsizetype null = text.indexOf(QChar(0));
    const QByteArray bytes = page->toBytes(null < 0 ? QStringView(text) : QStringView(text).first(null));
    QString packed = pack(bytes);
    return packed.append(QString(bytes.size() - packed.size(), QChar(0)));
}

QString clsCodePage::AToW(const QString &packed, int codePage, qint32 /*flags*/) const
{
    QByteArray bytes;
    QString text;
    try {
        const auto page = CodePage::find(codePage);
        bytes = unpack(packed);
        text = page ? page->fromBytes(bytes) : m_app.fromBytes(bytes);
    } catch (const std::exception &error) {
        m_app.WriteErrorLog(u"AToW_Error: "_s + errorText(error) + u"-sBuffer="_s +
                            QString::number((packed.size() + 1) * 2) + u", lConvertStringPoint="_s +
                            addressText(packed.constData()) + u", lBufferPoint="_s +
                            addressText(bytes.constData()) + u", cwch="_s + QString::number(text.size()) +
                            u",GetACP()="_s + QString::number(m_app.codePage().number()));
        return {};
    }
    return text;
}

QString clsCodePage::CovertToWideChar(const QString &text, int codePage) const
{
    QString packed;
    try {
        packed = pack(m_app.toBytes(text));
        if (codePage != Utf16 && codePage != Utf16Swapped)
            return AToW(packed, codePage, 0);
    } catch (const std::exception &error) {
        m_app.WriteErrorLog(u"CovertToWideChar_Error:"_s + errorText(error) + u", Text="_s + text +
                            u", sByteArrayString="_s + packed);
        return {};
    }
    return packed;
}

QString clsCodePage::ConvertUnicodeToUTF8(const QString &text) const
{
    QString result;
    reportFailure(m_app, u"clsCodePage_ConvertUnicodeToUTF8: "_s, [&] {
        const QByteArray bytes = WideCharToUTF8(text);
        if (bytes.isEmpty())
            throw Failure(u"Subscript out of range"_s);
        result = fURLEncode(bytes);
    });
    return result;
}

QByteArray clsCodePage::WideCharToUTF8(const QString &text) const
{
    QByteArray result;
    reportFailure(m_app, u"clsCodePage_WideCharToUTF8: "_s, [&] {
        QByteArray bytes;
        bytes.reserve(text.size() * 3);
        for (const QChar character : text) {
            const qint32 unit = character.unicode();
            if (unit < 0x80) {
                bytes += static_cast<char>(unit);
                continue;
            }
            if (unit < 0x800) {
                bytes += static_cast<char>(0xC0 | RShift(unit, 6));
            } else {
                bytes += static_cast<char>(0xE0 | RShift(unit, 12));
                bytes += static_cast<char>(0x80 | (RShift(unit, 6) & 0x3F));
            }
            bytes += static_cast<char>(0x80 | (unit & 0x3F));
        }
        result = bytes;
    });
    return result;
}

QString clsCodePage::fURLEncode(const QByteArray &bytes) const
{
    QString result;
    reportFailure(m_app, u"clsCodePage_fURLEncode: "_s, [&] {
        QString out;
        out.reserve(bytes.size() * 3);
        for (const char byte : bytes) {
            if (byte == ' ')
                out += u'+';
            else if (isLetterOrDigit(byte))
                out += QLatin1Char(byte);
            else
                out +=
                    u'%' +
                    QString::number(static_cast<unsigned char>(byte), 16).toUpper().rightJustified(2, u'0');
        }
        result = out;
    });
    return result;
}

qint32 clsCodePage::LShift(qint32 value, int count)
{
    if (count >= WordBits)
        return 0;
    return static_cast<qint32>(static_cast<quint32>(value) * static_cast<quint32>(Pow2(count)));
}

qint32 clsCodePage::RShift(qint32 value, int count)
{
    if (count >= WordBits)
        return 0;
    return static_cast<qint32>(static_cast<quint32>(value) / static_cast<quint32>(Pow2(count)));
}

qint32 clsCodePage::Pow2(int index)
{
    if (index < 0 || index >= WordBits)
        throw Failure(u"Invalid procedure call or argument"_s);
    return static_cast<qint32>(1U << static_cast<unsigned>(index));
}

} // namespace sondrel
