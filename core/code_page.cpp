#include "core/code_page.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unicode/ucnv_err.h>

#include <map>
#include <string>

namespace sondrel {

namespace {

// ICU knows Windows pages under these names; the UTF forms have names of their own.
std::string converterName(int number)
{
    switch (number) {
    case 1200:
        return "UTF-16LE";
    case 1201:
        return "UTF-16BE";
    case 65001:
        return "UTF-8";
    case 20127:
        return "US-ASCII";
    case 28591:
        return "ISO-8859-1";
    default:
        return "windows-" + std::to_string(number);
    }
}

constexpr char16_t Replacement = 0xFFFD;

} // namespace

struct CodePage::Converter
{
    UConverter *handle = nullptr;

    ~Converter()
    {
        if (handle)
            ucnv_close(handle);
    }
};

CodePage::CodePage(int number, std::unique_ptr<Converter> converter)
    : m_number(number), m_converter(std::move(converter))
{
    UConverter *handle = m_converter->handle;
    m_singleByte = ucnv_getMaxCharSize(handle) == 1;
    if (!m_singleByte)
        return;
    m_toByte = QByteArray(0x10000, '?');
    for (int byte = 255; byte >= 0; --byte) {
        const char source = static_cast<char>(byte);
        UChar unit = 0;
        UErrorCode error = U_ZERO_ERROR;
        ucnv_reset(handle);
        const int length = ucnv_toUChars(handle, &unit, 1, &source, 1, &error);
        // A byte without a character stands for the control character of its own value.
        const bool mapped = U_SUCCESS(error) && length == 1 && unit != Replacement;
        m_fromByte[static_cast<std::size_t>(byte)] = mapped ? unit : static_cast<char16_t>(byte);
        m_toByte[static_cast<qsizetype>(m_fromByte[static_cast<std::size_t>(byte)])] = source;
    }
}

CodePage::~CodePage() = default;

std::shared_ptr<const CodePage> CodePage::find(int number)
{
    static std::map<int, std::shared_ptr<const CodePage>> known;
    if (const auto it = known.find(number); it != known.end())
        return it->second;
    auto converter = std::make_unique<Converter>();
    UErrorCode error = U_ZERO_ERROR;
    converter->handle = ucnv_open(converterName(number).c_str(), &error);
    if (U_FAILURE(error)) {
        error = U_ZERO_ERROR;
        converter->handle = ucnv_open(("cp" + std::to_string(number)).c_str(), &error);
    }
    std::shared_ptr<const CodePage> page;
    if (U_SUCCESS(error)) {
        ucnv_setFallback(converter->handle, false);
        ucnv_setSubstChars(converter->handle, "?", 1, &error);
        page.reset(new CodePage(number, std::move(converter)));
    }
    return known.emplace(number, std::move(page)).first->second;
}

std::shared_ptr<const CodePage> CodePage::western()
{
    return find(1252);
}

QByteArray CodePage::toBytes(QStringView text) const
{
    if (m_singleByte) {
        QByteArray bytes(text.size(), Qt::Uninitialized);
        char *out = bytes.data();
        for (const QChar unit : text)
            *out++ = m_toByte.at(unit.unicode());
        return bytes;
    }
    UErrorCode error = U_ZERO_ERROR;
    ucnv_reset(m_converter->handle);
    const auto length = static_cast<int32_t>(text.size());
    const int capacity = UCNV_GET_MAX_BYTES_FOR_STRING(length, ucnv_getMaxCharSize(m_converter->handle));
    QByteArray bytes(capacity, Qt::Uninitialized);
    const int written = ucnv_fromUChars(m_converter->handle, bytes.data(), capacity,
                                        reinterpret_cast<const UChar *>(text.utf16()), length, &error);
    bytes.resize(U_SUCCESS(error) ? written : 0);
    return bytes;
}

QString CodePage::fromBytes(QByteArrayView bytes) const
{
    if (m_singleByte) {
        QString text(bytes.size(), Qt::Uninitialized);
        QChar *out = text.data();
        for (const char byte : bytes)
            *out++ = m_fromByte[static_cast<unsigned char>(byte)];
        return text;
    }
    UErrorCode error = U_ZERO_ERROR;
    ucnv_reset(m_converter->handle);
    const auto capacity = static_cast<int32_t>(bytes.size() * 2 + 2);
    QString text(capacity, Qt::Uninitialized);
    const int written = ucnv_toUChars(m_converter->handle, reinterpret_cast<UChar *>(text.data()), capacity,
                                      bytes.data(), static_cast<int32_t>(bytes.size()), &error);
    text.resize(U_SUCCESS(error) ? written : 0);
    return text;
}

qint16 CodePage::ansiValue(QChar character) const
{
    const QByteArray bytes = toBytes(QStringView(&character, 1));
    if (bytes.size() == 1)
        return static_cast<qint16>(static_cast<unsigned char>(bytes[0]));
    if (bytes.size() == 2)
        return static_cast<qint16>((static_cast<unsigned char>(bytes[0]) << 8)
                                   | static_cast<unsigned char>(bytes[1]));
    return u'?';
}

QChar CodePage::fromAnsiValue(qint16 value) const
{
    QByteArray bytes;
    if (value < 0 || value > 255)
        bytes.append(static_cast<char>((value >> 8) & 0xFF));
    bytes.append(static_cast<char>(value & 0xFF));
    const QString text = fromBytes(bytes);
    return text.isEmpty() ? QChar(u'?') : text[0];
}

} // namespace sondrel
