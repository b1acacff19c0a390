#include "mail/mail_text.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qsizetype WrapColumn = 75;
constexpr qsizetype LongestMailLine = 998;
constexpr qsizetype LongestQuotedLine = 76;

// Where a mark next occurs. Searches go forward only, so a text is read once however often it is asked.
class ForwardSearch
{
public:
    ForwardSearch(const QString &text, QLatin1StringView mark) : m_text(text), m_mark(mark) {}

    qsizetype length() const { return m_mark.size(); }
    qsizetype from(qsizetype position)
    {
        if (m_found >= 0 && m_found < position)
            m_found = m_text.indexOf(m_mark, position);
        return m_found;
    }

private:
    const QString &m_text;
    QLatin1StringView m_mark;
    qsizetype m_found = m_text.indexOf(m_mark);
};

// How much of a long line stands in front of the break.
qsizetype brokenLength(QStringView line)
{
    const qsizetype blank = line.first(WrapColumn - 1).lastIndexOf(u' ');
    return blank < 0 ? WrapColumn - 1 : blank + 1;
}

} // namespace

QString wrapWords(const QString &text)
{
    // The first kind of line end that is left counts, even where another kind comes before it.
    ForwardSearch ends[] = {{text, "\r\n"_L1}, {text, "\r"_L1}, {text, "\n"_L1}};
    QString wrapped;
    qsizetype at = 0;
    while (text.size() - at >= WrapColumn) {
        qsizetype end = -1;
        qsizetype length = 0;
        for (ForwardSearch &search : ends) {
            end = search.from(at);
            length = search.length();
            if (end >= 0)
                break;
        }
        if (end < 0)
            break;
        const QStringView rest = QStringView(text).sliced(at);
        const qsizetype position = end - at + 1;
        if (position < WrapColumn) {
            const qsizetype count = std::min(position + length, rest.size());
            wrapped.append(rest.first(count));
            at += count;
        } else {
            const qsizetype count = brokenLength(rest);
            wrapped.append(rest.first(count)).append("\r\n"_L1);
            at += count;
        }
    }
    return wrapped.append(QStringView(text).sliced(at));
}

QByteArray withMailLineEnds(QByteArrayView bytes)
{
    QByteArray lines;
    lines.reserve(bytes.size() + bytes.size() / 32);
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const char byte = bytes[i];
        if (byte != '\r' && byte != '\n') {
            lines.append(byte);
            continue;
        }
        lines.append("\r\n");
        if (byte == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n')
            ++i;
    }
    return lines;
}

bool needsEncoding(QByteArrayView lines)
{
    qsizetype length = 0;
    for (const char byte : lines) {
        if (byte == '\0' || static_cast<unsigned char>(byte) > 127)
            return true;
        length = byte == '\r' || byte == '\n' ? 0 : length + 1;
        if (length > LongestMailLine)
            return true;
    }
    return false;
}

QByteArray quotedPrintableLines(QByteArrayView lines)
{
    static constexpr char Digits[] = "0123456789ABCDEF";
    QByteArray quoted;
    qsizetype column = 0;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const auto byte = static_cast<unsigned char>(lines[i]);
        if (byte == '\r' || byte == '\n') {
            quoted.append(lines[i]);
            column = 0;
            continue;
        }
        const bool lineEnds = i + 1 == lines.size() || lines[i + 1] == '\r';
        const bool blank = byte == ' ' || byte == '\t';
        const bool plain = blank ? !lineEnds : byte > 32 && byte < 127 && byte != '=';
        if (column + (plain ? 1 : 3) >= LongestQuotedLine) {
            quoted.append("=\r\n");
            column = 0;
        }
        if (plain) {
            quoted.append(lines[i]);
            column += 1;
        } else {
            quoted.append('=').append(Digits[byte >> 4]).append(Digits[byte & 15]);
            column += 3;
        }
    }
    return quoted;
}

} // namespace sondrel
