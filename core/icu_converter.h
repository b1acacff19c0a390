// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

struct UConverter;

namespace sondrel {

/// ICU's converter of one code page. Bytes that mean nothing become U+FFFD; what the page lacks becomes "?",
/// one for each code point. It has a state while it converts: one thread uses it.
class IcuConverter
{
public:
    enum class Form {
        SingleByte,
        DoubleByte, ///< lead bytes, each followed by a trail byte
        Stateless,  ///< other forms whose characters do not depend on what went before
        Stateful
    };

    /// The converter of that Windows number, or nothing when it is not known.
    static std::unique_ptr<IcuConverter> open(int number);
    ~IcuConverter();
    IcuConverter(const IcuConverter &) = delete;
    IcuConverter &operator=(const IcuConverter &) = delete;

    Form form() const { return m_form; }
    bool isLeadByte(unsigned char byte) const;
    /// The unit that one or two bytes stand for; U+FFFD when they stand for none, or for more.
    char16_t unitOf(QByteArrayView bytes) const;
    /// The one or two bytes of a unit, the first one high; "?" when there are none, or more.
    quint16 codeOf(char16_t unit) const;

    QByteArray toBytes(QStringView text) const;
    QString fromBytes(QByteArrayView bytes) const;

private:
    explicit IcuConverter(UConverter *handle);

    UConverter *m_handle;
    Form m_form;
};

} // namespace sondrel
