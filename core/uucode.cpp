#include "core/uucode.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int BlankColumn = 74; // a blank here would end the line, where mail hosts strip it
constexpr int SoftBreakColumn = 75;

QString upperHex(uint value)
{
    return QString::number(value, 16).toUpper();
}

void appendByteEscape(QString &out, QChar mark, uint byte)
{
    constexpr auto digits = "0123456789ABCDEF"_L1;
    out += mark;
    out += digits[byte >> 4];
    out += digits[byte & 15];
}

// The characters that queries and file names cannot hold as they are. The quotation mark shares the code of
// the apostrophe: stored results are named by it.
bool isSpecial(QChar unit)
{
    return "~!#$%^&()+`=?/{}|[]\\:'\";<>,"_L1.contains(unit);
}

void appendEncoded(QString &out, QChar unit)
{
    if (unit == u' ')
        out += u'+';
    else if (unit == u'"')
        out += "%27"_L1;
    else if (isSpecial(unit))
        appendByteEscape(out, u'%', unit.unicode());
    else
        out += unit;
}

void showFailure(ApplicationContext &app, const QString &prefix, const std::exception &error)
{
    app.desktop.showMessage({u"Error"_s, prefix + errorText(error), MessageIcon::Information});
}

bool isQuotedPrintableLiteral(qint16 value)
{
    return (value >= 8 && value <= 10) || value == 13 || (value >= 32 && value <= 126 && value != 61);
}

// Both bytes of a two-byte character.
void appendQuoted(QString &out, qint16 value)
{
    const auto code = static_cast<quint16>(value);
    if (code > 0xFF)
        appendByteEscape(out, u'=', code >> 8U);
    appendByteEscape(out, u'=', code & 0xFFU);
}

class QuotedPrintable
{
public:
    void add(QChar character, qint16 value)
    {
        if (!isQuotedPrintableLiteral(value)) {
            softBreak();
            appendQuoted(m_line, value);
        } else if (value == ' ' && m_line.size() == BlankColumn) {
            flush(u"=20\r\n"_s);
        } else if (value == '\n') {
            flush(u"\n"_s);
        } else {
            softBreak();
            m_line += character;
        }
    }

    QString result() const { return m_output.isEmpty() ? m_line : m_output; }

private:
    void softBreak()
    {
        if (m_line.size() >= SoftBreakColumn && m_line.size() % SoftBreakColumn != 0)
            flush(u"=\r\n"_s);
    }

    void flush(const QString &ending)
    {
        m_output += m_line;
        m_output += ending;
        m_line.clear();
    }

    QString m_output;
    QString m_line;
};

} // namespace

QString EncodedStringX(ApplicationContext &app, const QString &text)
{
    QString result;
    reportFailure(app, u"EncodedStringX_Error: "_s, [&] {
        const CodePage &page = app.codePage();
        QString out;
        for (const QChar unit : text) {
            QString digits = upperHex(static_cast<quint16>(page.ansiValue(unit)));
            if (digits.size() > 2)
                digits.insert(2, u'%');
            out += u'%';
            out += digits;
        }
        result = out;
    });
    return result;
}

QString EncodedString(ApplicationContext &app, const QString &text)
{
    try {
        QString out;
        for (const QChar unit : text)
            appendEncoded(out, unit);
        return out;
    } catch (const std::exception &error) {
        showFailure(app, QString(), error);
        return {};
    }
}

QString StrToUTF8Encode(ApplicationContext &app, const QString &text)
{
    try {
        QString out;
        for (const QChar unit : text) {
            if (unit >= QChar(0xC0) && unit <= QChar(0xFF)) {
                out += "%C3"_L1;
                appendByteEscape(out, u'%', unit.unicode() - 0x40U);
            } else {
                appendEncoded(out, unit);
            }
        }
        return out;
    } catch (const std::exception &error) {
        showFailure(app, u"StrToUTF8Encode_Error"_s, error);
        return {};
    }
}

QString QuotedPrintableEncode(ApplicationContext &app, const QString &text)
{
    QString result;
    reportFailure(app, u"QuotedPrintableEncode_Error: "_s, [&] {
        const CodePage &page = app.codePage();
        QuotedPrintable encoder;
        for (const QChar unit : text)
            encoder.add(unit, page.ansiValue(unit));
        result = encoder.result();
    });
    return result;
}

QString QuotedPrintableChar(ApplicationContext &app, const QString &character)
{
    QString result;
    if (!character.isEmpty())
        appendQuoted(result, app.codePage().ansiValue(character[0]));
    return result;
}

QString CharSet(ApplicationContext &app, const QString &text)
{
    QString result;
    reportFailure(app, u"CharSet_Error: "_s, [&] {
        const CodePage &page = app.codePage();
        const bool eightBit =
            std::any_of(text.begin(), text.end(), [&](QChar unit) { return page.ansiValue(unit) > 127; });
        result = eightBit ? u"8bit"_s : u"7bit"_s;
    });
    return result;
}

} // namespace sondrel
