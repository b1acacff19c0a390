// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

namespace sondrel {

class IcuConverter;

/// One code page by its number (1252, 936, 65001, 1200, ...): bytes to text and back. Characters that the
/// page lacks become "?". Single-byte pages map all 256 bytes both ways: a byte without a character of its
/// own stands for the control character of the same value (80 to 9F), else for one of private use.
/// Double-byte pages take every 16-bit unit on its own; bytes that mean nothing become U+FFFD. One thread
/// uses a page.
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
    bool isSingleByte() const;

    QByteArray toBytes(QStringView text) const;
    QString fromBytes(QByteArrayView bytes) const;
    /// True when each byte is a character of its own and no byte above 7F is, case aside, one of ASCII: what
    /// is ASCII can be looked for in the bytes.
    bool hasPlainAscii() const { return m_hasPlainAscii; }

    /// The code of one character as a signed 16-bit integer: 0 to 255 for one byte, lead byte high for two
    /// bytes (so negative), the value of "?" for a character that the page lacks or holds in more bytes.
    qint16 ansiValue(QChar character) const { return static_cast<qint16>(m_values[character.unicode()]); }
    /// The character of an ansiValue.
    QChar fromAnsiValue(qint16 value) const;

private:
    CodePage(int number, std::unique_ptr<IcuConverter> converter);

    void readBytes();
    void readPairs();
    void addFreeBytes();
    QByteArray doubleToBytes(QStringView text) const;
    QString doubleFromBytes(QByteArrayView bytes) const;
    QChar unitOf(char byte) const { return m_units[static_cast<unsigned char>(byte)]; }

    int m_number;
    std::unique_ptr<IcuConverter> m_converter;
    std::vector<quint16> m_values; // by unit
    std::vector<char16_t> m_units; // by value; 256 of single-byte pages, 65536 of double-byte ones
    bool m_leavesAscii = false;    // the first 128 values are the characters of the same number
    bool m_hasPlainAscii = false;
};

} // namespace sondrel
