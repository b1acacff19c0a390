#include "mail/mail_header.h"

#include "core/failure.h"
#include "mail/mail_address.h"

#include <QLocale>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qsizetype WantedLine = 76;
constexpr qsizetype LongestLine = 998;
constexpr qsizetype LongestWord = 400; // with the blanks in front of it and a name still one line

bool isLineEnd(QChar character)
{
    return character == u'\r' || character == u'\n' || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator || character == QChar(0x85);
}

bool isPlain(QStringView text)
{
    return std::ranges::all_of(text, [](QChar c) { return c.unicode() >= 32 && c.unicode() < 127; });
}

QString withoutLineEnds(QString value)
{
    for (QChar &character : value) {
        if (isLineEnd(character) || character == u'\t' || character.isNull())
            character = u' ';
    }
    return value;
}

// True when no word and no run of blanks is so long that its line could not be folded.
bool canBeFolded(QStringView text)
{
    qsizetype length = 0;
    bool blank = false;
    for (const QChar character : text) {
        length = (character == u' ') == blank ? length + 1 : 1;
        blank = character == u' ';
        if (length > LongestWord)
            return false;
    }
    return true;
}

// How many bytes of text an encoded word holds that begins in this column of a line.
qsizetype bytesOfWord(qsizetype column)
{
    constexpr qsizetype Marks = 12; // "=?utf-8?B?" and "?="
    return (WantedLine - column - Marks) / 4 * 3;
}

// Text in encoded words from that column on, with line ends between them.
QByteArray encodedWords(const QString &text, qsizetype column)
{
    QByteArray words;
    QByteArray piece;
    qsizetype room = bytesOfWord(column);
    const auto flush = [&] {
        if (!words.isEmpty())
            words.append("\r\n ");
        words.append("=?utf-8?B?").append(piece.toBase64()).append("?=");
        piece.clear();
        room = bytesOfWord(1);
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        const QByteArray bytes = QStringView(text).sliced(i, pair ? 2 : 1).toUtf8();
        if (piece.size() + bytes.size() > room)
            flush();
        piece.append(bytes);
        i += pair ? 1 : 0;
    }
    if (!piece.isEmpty())
        flush();
    return words;
}

// Where a run of blanks begins, at or behind a place; -1 when none does.
qsizetype runFrom(const QByteArray &line, qsizetype place)
{
    qsizetype blank = line.indexOf(' ', place);
    while (blank > 0 && line[blank - 1] == ' ')
        blank = line.indexOf(' ', blank + 1);
    return blank;
}

// Breaks a line in front of blanks, so far as it has some.
QByteArray folded(const QByteArray &name, const QByteArray &value)
{
    QByteArray rest = name + ": " + value;
    while (rest.endsWith(' '))
        rest.chop(1);
    QByteArray result;
    qsizetype from = name.size() + 2; // the name stays with the beginning of its value
    while (rest.size() > WantedLine) {
        qsizetype fold = runFrom(rest, from);
        while (fold > 0) {
            const qsizetype next = runFrom(rest, fold + 1);
            if (next < 0 || next > WantedLine)
                break;
            fold = next;
        }
        if (fold < 0)
            break;
        result.append(rest.first(fold)).append("\r\n");
        rest.remove(0, fold);
        from = 1;
    }
    return result.append(rest).append("\r\n");
}

// A mailbox in angle brackets behind the words of its name, in their line where there is room for it.
QByteArray named(const QByteArray &words, qsizetype column, const QByteArray &mailbox)
{
    const qsizetype lineEnd = words.lastIndexOf('\n');
    const qsizetype inLine = words.size() - (lineEnd < 0 ? -column : lineEnd + 1);
    constexpr qsizetype Marks = 4; // blank, angle brackets, a comma
    const bool fits = inLine + Marks + mailbox.size() <= WantedLine;
    return words + (fits ? " <" : "\r\n <") + mailbox + ">";
}

// Addresses of a header, each in a line of its own; the first begins in that column.
QByteArray listed(const std::vector<MailAddress> &addresses, qsizetype column)
{
    QByteArray list;
    for (const MailAddress &address : addresses) {
        if (!list.isEmpty()) {
            list.append(",\r\n ");
            column = 1;
        }
        const QByteArray mailbox =
            isPlain(address.mailbox) ? address.mailbox.toLatin1() : wireMailbox(address.mailbox);
        if (address.name.isEmpty())
            list.append(mailbox);
        else
            list.append(named(encodedWords(address.name, column), column, mailbox));
    }
    return list;
}

// People part addresses by semicolons too, which no reader takes. One inside quotes or a comment parts
// nothing.
bool isPartedBySemicolons(QStringView line)
{
    return line.contains(u';') && !line.contains(u'"') && !line.contains(u'(');
}

void checkLength(QByteArrayView header)
{
    qsizetype length = 0;
    for (const char byte : header) {
        length = byte == '\r' || byte == '\n' ? 0 : length + 1;
        if (length > LongestLine)
            throw Failure(u"An address is too long for a mail"_s);
    }
}

} // namespace

QString firstLine(const QString &value)
{
    const auto end = std::ranges::find_if(value, isLineEnd);
    return withoutLineEnds(value.first(end - value.begin()));
}

QByteArray textHeader(const QByteArray &name, const QString &value)
{
    const QString line = withoutLineEnds(value);
    if (isPlain(line) && !line.contains("=?"_L1) && canBeFolded(line))
        return folded(name, line.toLatin1());
    return name + ": " + encodedWords(line, name.size() + 2) + "\r\n";
}

QByteArray addressHeader(const QByteArray &name, const QString &value)
{
    const QString line = firstLine(value);
    QByteArray header;
    if (isPlain(line) && canBeFolded(line) && !isPartedBySemicolons(line))
        header = folded(name, line.toLatin1());
    else
        header = name + ": " + listed(parseAddresses(line), name.size() + 2) + "\r\n";
    checkLength(header);
    return header;
}

QByteArray plainHeader(const QByteArray &name, const QByteArray &value)
{
    return name + ": " + value + "\r\n";
}

QByteArray mailDate(const QDateTime &when)
{
    const int minutes = when.offsetFromUtc() / 60;
    const QString zone = u"%1%2%3"_s.arg(QChar(minutes < 0 ? u'-' : u'+'))
                             .arg(std::abs(minutes) / 60, 2, 10, QLatin1Char('0'))
                             .arg(std::abs(minutes) % 60, 2, 10, QLatin1Char('0'));
    return (QLocale::c().toString(when, u"ddd, d MMM yyyy HH:mm:ss "_s) + zone).toLatin1();
}

QByteArray parameter(const QByteArray &name, const QString &value)
{
    if (!isPlain(value)) {
        return ";\r\n " + name + "*=utf-8''" + withoutLineEnds(value).toUtf8().toPercentEncoding({}, "'*()!");
    }
    QByteArray quoted = value.toLatin1();
    quoted.replace('\\', "\\\\").replace('"', "\\\"");
    return ";\r\n " + name + "=\"" + quoted + "\"";
}

} // namespace sondrel
