// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <memory>

namespace sondrel {

/// One code page by its number (1252, 936, 65001, 1200, ...): bytes to text and back. Single-byte pages map
/// all 256 bytes both ways (bytes without a character of their own stand for the control character of the
/// same value); characters that the page lacks become "?".
class CodePage
{
public:
    /// The page of that number, or nothing when it is not known. 1200 and 1201 are UTF-16 in little and big
    /// byte order.
    static std::shared_ptr<const CodePage> find(int number);
    /// Windows-1252, the default of the program.
    static std::shared_ptr<const CodePage> western();

    ~CodePage();
    CodePage(const CodePage &) = delete;
    CodePage &operator=(const CodePage &) = delete;

    int number() const { return m_number; }
    bool isSingleByte() const { return m_singleByte; }

    QByteArray toBytes(QStringView text) const;
    QString fromBytes(QByteArrayView bytes) const;

    /// The code of one character as a signed 16-bit integer: 0 to 255 for one byte, lead byte high for two
    /// bytes (so negative), the value of "?" for a character that the page lacks or holds in more bytes.
    qint16 ansiValue(QChar character) const;
    /// The character of an ansiValue.
    QChar fromAnsiValue(qint16 value) const;

private:
    struct Converter;
    CodePage(int number, std::unique_ptr<Converter> converter);

    int m_number;
    bool m_singleByte = false;
    std::array<char16_t, 256> m_fromByte{};
    std::unique_ptr<Converter> m_converter;
    QByteArray m_toByte; // 65536 entries for single-byte pages
};

} // namespace sondrel
