#include "mail/mail_address.h"

#include "core/failure.h"

#include <QUrl>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// Of a command line, with room for the rest of it.
constexpr qsizetype LongestMailbox = 480;

// Takes one address apart, character by character.
class AddressReader
{
public:
    void add(QChar character)
    {
        if (m_escaped || (character == u'\\' && (m_quoted || m_comments > 0))) {
            if (m_escaped)
                place().append(character);
            m_escaped = !m_escaped;
        } else if (m_quoted) {
            if (character == u'"')
                m_quoted = false;
            else
                place().append(character);
        } else if (character == u'(') {
            if (m_comments++ > 0)
                m_comment.append(character);
        } else if (character == u')' && m_comments > 0) {
            if (--m_comments > 0)
                m_comment.append(character);
        } else if (m_comments > 0) {
            m_comment.append(character);
        } else {
            addOutside(character);
        }
    }

    /// True when a separator here ends the address.
    bool isOutside() const { return !m_quoted && m_comments == 0 && !m_inAngle; }
    bool isEmpty() const { return m_text.trimmed().isEmpty() && !m_hasAngle && m_comment.isEmpty(); }

    MailAddress address() const
    {
        const QString comment = m_comment.trimmed();
        if (m_hasAngle)
            return {m_text.isEmpty() ? comment : m_text.simplified(), m_angle.trimmed()};
        return {comment, m_text.trimmed()};
    }

private:
    QString &place() { return m_comments > 0 ? m_comment : m_inAngle ? m_angle : m_text; }
    void addOutside(QChar character)
    {
        if (character == u'"') {
            m_quoted = true;
        } else if (character == u'<' && !m_inAngle) {
            m_inAngle = m_hasAngle = true;
        } else if (character == u'>' && m_inAngle) {
            m_inAngle = false;
        } else {
            place().append(character);
        }
    }

    QString m_text;
    QString m_angle;
    QString m_comment;
    int m_comments = 0; // depth
    bool m_quoted = false;
    bool m_escaped = false;
    bool m_inAngle = false;
    bool m_hasAngle = false;
};

// Whether a name can stand in front of its mailbox: its quotes and comments close, and no character outside
// them has a meaning of its own.
bool isPhrase(QStringView name)
{
    constexpr QStringView Special = u",;:<>[]\\@)";
    bool quoted = false;
    int comments = 0;
    for (qsizetype i = 0; i < name.size(); ++i) {
        const QChar character = name[i];
        if (character == u'\\' && (quoted || comments > 0))
            ++i;
        else if (character == u'"' && comments == 0)
            quoted = !quoted;
        else if (quoted)
            continue;
        else if (character == u'(')
            ++comments;
        else if (character == u')' && comments > 0)
            --comments;
        else if (comments == 0 && Special.contains(character))
            return false;
    }
    return !quoted && comments == 0;
}

QString quoted(QStringView name)
{
    if (name.size() > 1 && name.startsWith(u'"') && name.endsWith(u'"'))
        name = name.sliced(1, name.size() - 2);
    QString text = name.toString();
    text.replace(u'\\', "\\\\"_L1).replace(u'"', "\\\""_L1);
    return u'"' + text + u'"';
}

QString withAsciiHost(const QString &mailbox)
{
    const qsizetype at = mailbox.lastIndexOf(u'@');
    const QByteArray host = at < 0 ? QByteArray() : QUrl::toAce(mailbox.sliced(at + 1));
    return host.isEmpty() ? mailbox : mailbox.first(at + 1) + QString::fromLatin1(host);
}

} // namespace

std::vector<MailAddress> parseAddresses(const QString &value)
{
    std::vector<MailAddress> addresses;
    AddressReader reader;
    for (const QChar character : value) {
        if (reader.isOutside() && (character == u',' || character == u';')) {
            if (!reader.isEmpty())
                addresses.push_back(reader.address());
            reader = AddressReader();
        } else {
            reader.add(character);
        }
    }
    if (!reader.isEmpty())
        addresses.push_back(reader.address());
    return addresses;
}

QString readableSender(const QString &value)
{
    const QString sender = value.trimmed();
    const qsizetype angle = sender.lastIndexOf(u'<');
    if (angle < 0 || !sender.endsWith(u'>'))
        return value;
    const QStringView name = QStringView(sender).first(angle).trimmed();
    if (isPhrase(name) || name.contains(u'@')) // with another address it is a list
        return value;
    return quoted(name) + u' ' + sender.sliced(angle);
}

QByteArray wireMailbox(const QString &mailbox)
{
    const bool ascii = std::ranges::all_of(mailbox, [](QChar c) { return c.unicode() < 128; });
    const QString wire = ascii ? mailbox : withAsciiHost(mailbox);
    const bool fits = wire.size() <= LongestMailbox && std::ranges::all_of(wire, [](QChar c) {
                          return c.unicode() > 32 && c.unicode() < 127 && c != u'<' && c != u'>';
                      });
    if (!fits)
        throw Failure(u"Invalid email address: "_s + mailbox);
    return wire.toLatin1();
}

} // namespace sondrel
