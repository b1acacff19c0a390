#include "core/icu_converter.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unicode/ucnv_err.h>

#include <array>
#include <map>
#include <string>

namespace sondrel {

namespace {

constexpr int LastOemNumber = 1199;
constexpr int FirstIsoNumber = 28591;
constexpr int LastIsoNumber = 28605;
constexpr std::size_t ChunkSize = 8192;
constexpr char16_t Replacement = 0xFFFD;

// ICU knows Windows pages as "windows-" and their number; these have names of their own.
const std::map<int, std::string> &ownNames()
{
    static const std::map<int, std::string> names{
        {1200, "UTF-16LE"},     {1201, "UTF-16BE"}, {10000, "macintosh"},   {20127, "US-ASCII"},
        {20866, "KOI8-R"},      {21866, "KOI8-U"},  {50220, "ISO-2022-JP"}, {50221, "ISO-2022-JP"},
        {50222, "ISO-2022-JP"}, {51932, "EUC-JP"},  {50225, "ISO-2022-KR"}, {51936, "GB2312"},
        {51949, "EUC-KR"},      {52936, "HZ"},      {54936, "GB18030"},     {65000, "UTF-7"},
        {65001, "UTF-8"},
    };
    return names;
}

UConverter *openNamed(const std::string &name)
{
    UErrorCode error = U_ZERO_ERROR;
    UConverter *handle = ucnv_open(name.c_str(), &error);
    return U_SUCCESS(error) ? handle : nullptr;
}

UConverter *openNumbered(int number)
{
    if (const auto it = ownNames().find(number); it != ownNames().end())
        return openNamed(it->second);
    if (number >= FirstIsoNumber && number <= LastIsoNumber)
        return openNamed("ISO-8859-" + std::to_string(number - FirstIsoNumber + 1));
    // ICU overlooks signs and punctuation in names, so a negative number would be taken for its opposite.
    if (number <= 0)
        return nullptr;
    UConverter *handle = openNamed("windows-" + std::to_string(number));
    // Above the old OEM pages, "cp" numbers are those of another maker.
    return handle || number > LastOemNumber ? handle : openNamed("cp" + std::to_string(number));
}

// ICU's own substitution passes over characters that are invisible, and each page has another mark.
void writeQuestionMark(const void * /*context*/, UConverterFromUnicodeArgs *args, const UChar * /*units*/,
                       int32_t /*length*/, UChar32 /*point*/, UConverterCallbackReason reason,
                       UErrorCode *error)
{
    if (reason > UCNV_IRREGULAR)
        return;
    static const UChar mark = u'?';
    const UChar *source = &mark;
    *error = U_ZERO_ERROR;
    ucnv_cbFromUWriteUChars(args, &source, source + 1, 0, error);
}

// ICU writes U+001A for some bytes of some pages.
void writeReplacement(const void * /*context*/, UConverterToUnicodeArgs *args, const char * /*bytes*/,
                      int32_t /*length*/, UConverterCallbackReason reason, UErrorCode *error)
{
    if (reason > UCNV_IRREGULAR)
        return;
    static const UChar replacement = Replacement;
    *error = U_ZERO_ERROR;
    ucnv_cbToUWriteUChars(args, &replacement, 1, 0, error);
}

IcuConverter::Form formOf(const UConverter *handle)
{
    switch (ucnv_getType(handle)) {
    case UCNV_SBCS:
    case UCNV_LATIN_1:
    case UCNV_US_ASCII:
        return IcuConverter::Form::SingleByte;
    case UCNV_MBCS:
        return ucnv_getMaxCharSize(handle) == 2 ? IcuConverter::Form::DoubleByte
                                                : IcuConverter::Form::Stateless;
    case UCNV_UTF8:
    case UCNV_UTF16_BigEndian:
    case UCNV_UTF16_LittleEndian:
        return IcuConverter::Form::Stateless;
    default:
        return IcuConverter::Form::Stateful;
    }
}

} // namespace

IcuConverter::IcuConverter(UConverter *handle) : m_handle(handle), m_form(formOf(handle))
{
    UErrorCode error = U_ZERO_ERROR;
    ucnv_setFallback(m_handle, false);
    ucnv_setFromUCallBack(m_handle, writeQuestionMark, nullptr, nullptr, nullptr, &error);
    ucnv_setToUCallBack(m_handle, writeReplacement, nullptr, nullptr, nullptr, &error);
}

IcuConverter::~IcuConverter()
{
    ucnv_close(m_handle);
}

std::unique_ptr<IcuConverter> IcuConverter::open(int number)
{
    UConverter *handle = openNumbered(number);
    return handle ? std::unique_ptr<IcuConverter>(new IcuConverter(handle)) : nullptr;
}

bool IcuConverter::isLeadByte(unsigned char byte) const
{
    std::array<UBool, 256> starters{};
    UErrorCode error = U_ZERO_ERROR;
    ucnv_getStarters(m_handle, starters.data(), &error);
    return U_SUCCESS(error) && starters[byte];
}

char16_t IcuConverter::unitOf(QByteArrayView bytes) const
{
    std::array<UChar, 8> units{};
    UErrorCode error = U_ZERO_ERROR;
    const int length = ucnv_toUChars(m_handle, units.data(), static_cast<int>(units.size()), bytes.data(),
                                     static_cast<int>(bytes.size()), &error);
    return U_SUCCESS(error) && length == 1 ? units[0] : Replacement;
}

quint16 IcuConverter::codeOf(char16_t unit) const
{
    const UChar source = unit;
    std::array<char, 16> bytes{};
    UErrorCode error = U_ZERO_ERROR;
    const int length =
        ucnv_fromUChars(m_handle, bytes.data(), static_cast<int>(bytes.size()), &source, 1, &error);
    if (U_FAILURE(error) || length < 1 || length > 2)
        return u'?';
    const auto first = static_cast<unsigned char>(bytes[0]);
    return length == 1 ? first : static_cast<quint16>(first << 8U | static_cast<unsigned char>(bytes[1]));
}

QByteArray IcuConverter::toBytes(QStringView text) const
{
    QByteArray bytes;
    bytes.reserve(text.size());
    ucnv_resetFromUnicode(m_handle);
    const auto *source = reinterpret_cast<const UChar *>(text.utf16());
    const UChar *const end = source + text.size();
    std::array<char, ChunkSize> chunk;
    UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
    while (error == U_BUFFER_OVERFLOW_ERROR) {
        error = U_ZERO_ERROR;
        char *target = chunk.data();
        ucnv_fromUnicode(m_handle, &target, target + chunk.size(), &source, end, nullptr, true, &error);
        bytes.append(chunk.data(), target - chunk.data());
    }
    return bytes;
}

QString IcuConverter::fromBytes(QByteArrayView bytes) const
{
    QString text;
    text.reserve(bytes.size());
    ucnv_resetToUnicode(m_handle);
    const char *source = bytes.data();
    const char *const end = source + bytes.size();
    std::array<UChar, ChunkSize> chunk;
    UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
    while (error == U_BUFFER_OVERFLOW_ERROR) {
        error = U_ZERO_ERROR;
        UChar *target = chunk.data();
        ucnv_toUnicode(m_handle, &target, target + chunk.size(), &source, end, nullptr, true, &error);
        text.append(QStringView(chunk.data(), target - chunk.data()));
    }
    return text;
}

} // namespace sondrel
