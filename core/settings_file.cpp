#include "core/settings_file.h"

#include "core/failure.h"
#include "core/text_fold.h"

#include <QStringDecoder>

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto BytesMark = "@bytes:"_L1;
constexpr auto IntegerMark = "@integer:"_L1;

void appendEscape(QString &text, QChar unit)
{
    text += unit.unicode() < 0x100 ? u"%"_s : u"%u"_s;
    text += QString::number(unit.unicode(), 16).rightJustified(unit.unicode() < 0x100 ? 2 : 4, u'0');
}

// A surrogate of its own, which UTF-8 cannot hold.
bool standsAlone(QStringView text, qsizetype at)
{
    if (text[at].isHighSurrogate())
        return at + 1 == text.size() || !text[at + 1].isLowSurrogate();
    return text[at].isLowSurrogate() && (at == 0 || !text[at - 1].isHighSurrogate());
}

// special: characters that mean something where the text is to stand; first: those that do so in front only.
QString escaped(QStringView text, QStringView special, QStringView first)
{
    QString result;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar unit = text[at];
        const bool atEnd = at == 0 || at + 1 == text.size();
        if (unit < u' ' || unit == QChar(0x7F) || unit == u'%' || special.contains(unit) ||
            (at == 0 && first.contains(unit)) || (atEnd && unit == u' ') || standsAlone(text, at))
            appendEscape(result, unit);
        else
            result += unit;
    }
    return result;
}

std::optional<QString> unescaped(QStringView text)
{
    QString result;
    while (!text.isEmpty()) {
        const QChar unit = text.front();
        text = text.sliced(1);
        if (unit != u'%') {
            result += unit;
            continue;
        }
        const bool wide = text.startsWith(u'u');
        const qsizetype digits = wide ? 4 : 2;
        text = text.sliced(wide ? 1 : 0);
        bool valid = text.size() >= digits;
        const uint code = valid ? text.first(digits).toUInt(&valid, 16) : 0;
        if (!valid)
            return std::nullopt;
        result += QChar(static_cast<char16_t>(code));
        text = text.sliced(digits);
    }
    return result;
}

QString valueText(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QByteArray:
        return BytesMark + QString::fromLatin1(value.toByteArray().toHex());
    case QMetaType::Int:
        return IntegerMark + QString::number(value.toInt());
    default:
        return escaped(value.toString(), u"", u"@");
    }
}

std::optional<QVariant> valueFrom(QStringView text)
{
    if (!text.startsWith(u'@')) {
        const auto string = unescaped(text);
        return string ? std::optional<QVariant>(*string) : std::nullopt;
    }
    if (text.startsWith(IntegerMark)) {
        bool valid = false;
        const int number = text.sliced(IntegerMark.size()).toInt(&valid);
        return valid ? std::optional<QVariant>(number) : std::nullopt;
    }
    if (text.startsWith(BytesMark)) {
        const QByteArray digits = text.sliced(BytesMark.size()).toLatin1();
        const QByteArray bytes = QByteArray::fromHex(digits);
        return bytes.toHex() == digits.toLower() ? std::optional<QVariant>(bytes) : std::nullopt;
    }
    return std::nullopt;
}

// Reads line by line; false when a line has no place in the form.
class Reader
{
public:
    SettingsTree tree;

    bool take(QStringView line)
    {
        line = trimBlanks(line.endsWith(u'\r') ? line.chopped(1) : line);
        if (line.isEmpty() || line.startsWith(u';') || line.startsWith(u'#'))
            return true;
        return line.startsWith(u'[') ? takeKey(line) : takeValue(line);
    }

private:
    bool takeKey(QStringView line)
    {
        if (!line.endsWith(u']'))
            return false;
        m_key = unescaped(line.sliced(1).chopped(1));
        if (m_key)
            tree.createKey(*m_key);
        return m_key.has_value();
    }

    bool takeValue(QStringView line)
    {
        const qsizetype equals = line.indexOf(u'=');
        if (!m_key || equals < 0)
            return false;
        const auto name = unescaped(trimBlanksRight(line.first(equals)));
        const auto value = valueFrom(trimBlanksLeft(line.sliced(equals + 1)));
        if (name && value)
            tree.setValue(*m_key, *name, *value);
        return name && value;
    }

    std::optional<QString> m_key;
};

} // namespace

QByteArray writeSettings(const SettingsTree &tree)
{
    QString text;
    for (const auto &[foldedPath, key] : tree.keys()) {
        text += u'[' + escaped(key.path, u"]", u"") + u"]\n"_s;
        for (const auto &[foldedName, value] : key.values)
            text += escaped(value.name, u"=", u"[;#") + u'=' + valueText(value.value) + u'\n';
        text += u'\n';
    }
    return text.toUtf8();
}

SettingsTree readSettings(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    if (decoder.hasError())
        throw Failure(u"it is not UTF-8 text"_s);
    Reader reader;
    int number = 0;
    for (const QStringView line : QStringView(text).split(u'\n')) {
        ++number;
        if (!reader.take(line))
            throw Failure(u"line %1 is neither a key nor a value"_s.arg(number));
    }
    return reader.tree;
}

} // namespace sondrel
