#include "core/code_page.h"

#include "core/icu_converter.h"
#include "core/text_fold.h"

#include <algorithm>
#include <array>
#include <map>
#include <numeric>

namespace sondrel {

namespace {

constexpr std::size_t UnitCount = 0x10000;
constexpr unsigned ByteCount = 256;
constexpr unsigned FirstTrailByte = 0x40; // of any double-byte page, but for the four-byte forms of GB18030
constexpr unsigned LastAscii = 0x7F;
constexpr unsigned LastControl = 0x9F;
constexpr char16_t PrivateUse = 0xF700;
constexpr char16_t Replacement = 0xFFFD;

// Pages are ASCII for the most part. The loops over a block of it have no way out but their end, so that the
// compiler makes them work on many bytes at a time.
constexpr qsizetype Block = 64;

bool isAscii(const char *bytes)
{
    unsigned char any = 0;
    for (qsizetype i = 0; i < Block; ++i)
        any = static_cast<unsigned char>(any | static_cast<unsigned char>(bytes[i]));
    return any <= LastAscii;
}

bool isAscii(const char16_t *units)
{
    char16_t any = 0;
    for (qsizetype i = 0; i < Block; ++i)
        any = static_cast<char16_t>(any | units[i]);
    return any <= LastAscii;
}

void narrow(const char16_t *units, char *out)
{
    for (qsizetype i = 0; i < Block; ++i)
        out[i] = static_cast<char>(units[i]);
}

void widen(const char *bytes, QChar *out)
{
    for (qsizetype i = 0; i < Block; ++i)
        out[i] = QChar(char16_t{static_cast<unsigned char>(bytes[i])});
}

} // namespace

CodePage::CodePage(int number, std::unique_ptr<IcuConverter> converter)
    : m_number(number), m_converter(std::move(converter)), m_values(UnitCount, u'?')
{
    switch (m_converter->form()) {
    case IcuConverter::Form::SingleByte:
        m_units.assign(ByteCount, Replacement);
        readBytes();
        break;
    case IcuConverter::Form::DoubleByte:
        m_units.assign(UnitCount, Replacement);
        readBytes();
        readPairs();
        break;
    case IcuConverter::Form::Stateless:
        for (std::size_t unit = 0; unit < UnitCount; ++unit)
            m_values[unit] = m_converter->codeOf(static_cast<char16_t>(unit));
        break;
    case IcuConverter::Form::Stateful:
        std::iota(m_values.begin(), m_values.begin() + LastAscii + 1, 0);
        break;
    }
    addFreeBytes();
    m_leavesAscii = m_units.size() > LastAscii;
    for (unsigned byte = 0; m_leavesAscii && byte <= LastAscii; ++byte)
        m_leavesAscii = m_units[byte] == byte && m_values[byte] == byte;
    m_hasPlainAscii = m_leavesAscii && isSingleByte() &&
                      std::all_of(m_units.begin() + LastAscii + 1, m_units.end(),
                                  [](char16_t unit) { return foldSeldom(unit) > LastAscii; });
}

CodePage::~CodePage() = default;

std::shared_ptr<const CodePage> CodePage::find(int number)
{
    static std::map<int, std::shared_ptr<const CodePage>> known;
    if (const auto it = known.find(number); it != known.end())
        return it->second;
    std::shared_ptr<const CodePage> page;
    if (auto converter = IcuConverter::open(number))
        page.reset(new CodePage(number, std::move(converter)));
    return known.emplace(number, std::move(page)).first->second;
}

std::shared_ptr<const CodePage> CodePage::western()
{
    return find(1252);
}

bool CodePage::isSingleByte() const
{
    return m_converter->form() == IcuConverter::Form::SingleByte;
}

// The characters of single bytes.
void CodePage::readBytes()
{
    for (unsigned byte = 0; byte < ByteCount; ++byte) {
        const char source = static_cast<char>(byte);
        m_units[byte] = m_converter->unitOf(QByteArrayView(&source, 1));
    }
    // ICU's tables of some pages exchange control characters among themselves.
    for (unsigned byte = 0; m_units['A'] == u'A' && byte <= LastAscii; ++byte) {
        if (byte < ' ' || byte == LastAscii)
            m_units[byte] = static_cast<char16_t>(byte);
    }
    for (unsigned byte = ByteCount; byte-- > 0;) {
        if (m_units[byte] != Replacement)
            m_values[m_units[byte]] = static_cast<quint16>(byte);
    }
}

// The characters of two bytes, and their codes; of several codes of a character the converter knows the usual
// one.
void CodePage::readPairs()
{
    for (unsigned lead = 0; lead < ByteCount; ++lead) {
        if (!m_converter->isLeadByte(static_cast<unsigned char>(lead)))
            continue;
        for (unsigned trail = FirstTrailByte; trail < ByteCount; ++trail) {
            const std::array pair{static_cast<char>(lead), static_cast<char>(trail)};
            const char16_t unit = m_converter->unitOf(QByteArrayView(pair.data(), 2));
            m_units[lead << 8U | trail] = unit;
            if (unit != Replacement)
                m_values[unit] = m_converter->codeOf(unit);
        }
    }
}

// Bytes that the page leaves free come through unharmed, so that a fetched page can be written as it was
// read.
void CodePage::addFreeBytes()
{
    for (unsigned byte = 0; !m_units.empty() && byte < ByteCount; ++byte) {
        if (m_units[byte] != Replacement || m_converter->isLeadByte(static_cast<unsigned char>(byte)))
            continue;
        m_units[byte] = static_cast<char16_t>(byte <= LastControl ? byte : PrivateUse | byte);
        m_values[m_units[byte]] = static_cast<quint16>(byte);
    }
}

QByteArray CodePage::toBytes(QStringView text) const
{
    if (m_units.empty())
        return m_converter->toBytes(text);
    if (!isSingleByte())
        return doubleToBytes(text);
    QByteArray bytes(text.size(), Qt::Uninitialized);
    char *out = bytes.data();
    const char16_t *in = text.utf16();
    const char16_t *const end = in + text.size();
    while (in != end) {
        const auto size = std::min<qsizetype>(Block, end - in);
        if (size == Block && m_leavesAscii && isAscii(in))
            narrow(in, out);
        else
            std::transform(in, in + size, out,
                           [this](char16_t unit) { return static_cast<char>(m_values[unit]); });
        in += size;
        out += size;
    }
    return bytes;
}

QString CodePage::fromBytes(QByteArrayView bytes) const
{
    if (m_units.empty())
        return m_converter->fromBytes(bytes);
    if (!isSingleByte())
        return doubleFromBytes(bytes);
    QString text(bytes.size(), Qt::Uninitialized);
    QChar *out = text.data();
    const char *in = bytes.begin();
    while (in != bytes.end()) {
        const auto size = std::min<qsizetype>(Block, bytes.end() - in);
        if (size == Block && m_leavesAscii && isAscii(in))
            widen(in, out);
        else
            std::transform(in, in + size, out, [this](char byte) { return unitOf(byte); });
        in += size;
        out += size;
    }
    return text;
}

QByteArray CodePage::doubleToBytes(QStringView text) const
{
    QByteArray bytes(text.size() * 2, Qt::Uninitialized);
    char *out = bytes.data();
    for (const QChar unit : text) {
        const quint16 value = m_values[unit.unicode()];
        if (value >= ByteCount)
            *out++ = static_cast<char>(value >> 8U);
        *out++ = static_cast<char>(value & 0xFFU);
    }
    bytes.truncate(out - bytes.constData());
    return bytes;
}

QString CodePage::doubleFromBytes(QByteArrayView bytes) const
{
    QString text(bytes.size(), Qt::Uninitialized);
    QChar *out = text.data();
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        const auto lead = static_cast<unsigned char>(bytes[at]);
        char16_t unit = m_units[lead];
        if (unit == Replacement && at + 1 < bytes.size()) {
            const auto trail = static_cast<unsigned char>(bytes[at + 1]);
            unit = m_units[static_cast<std::size_t>(lead << 8U | trail)];
            // A broken pair must not swallow the mark or line end that follows it.
            if (unit != Replacement || trail > LastAscii)
                ++at;
        }
        *out++ = unit;
    }
    text.truncate(out - text.constData());
    return text;
}

QChar CodePage::fromAnsiValue(qint16 value) const
{
    const auto code = static_cast<quint16>(value);
    QByteArray bytes;
    if (code >= ByteCount)
        bytes.append(static_cast<char>(code >> 8U));
    bytes.append(static_cast<char>(code & 0xFFU));
    const QString text = fromBytes(bytes);
    return text.isEmpty() ? QChar(u'?') : text[0];
}

} // namespace sondrel
