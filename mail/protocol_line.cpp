#include "mail/protocol_line.h"

#include <QList>

namespace sondrel {

namespace {

constexpr auto Mask = "****";
// A shorter secret would mask half the conversation; its login is masked all the same.
constexpr qsizetype ShortestSecret = 3;

QByteArrayList linesOf(QByteArrayView piece)
{
    QByteArrayList lines;
    for (QByteArray line : piece.toByteArray().split('\n')) {
        while (line.endsWith('\r'))
            line.chop(1);
        if (!line.isEmpty())
            lines.append(line);
    }
    return lines;
}

bool beginsWith(const QByteArray &line, QByteArrayView command)
{
    return line.first(std::min(line.size(), command.size())).compare(command, Qt::CaseInsensitive) == 0;
}

} // namespace

ProtocolLines::ProtocolLines(const QByteArrayList &secrets)
{
    for (const QByteArray &secret : secrets) {
        if (secret.size() < ShortestSecret)
            continue;
        m_secrets.append(secret);
        m_secrets.append(secret.toBase64());
    }
}

QByteArray ProtocolLines::masked(QByteArray line) const
{
    for (const QByteArray &secret : m_secrets)
        line.replace(secret, Mask);
    return line;
}

int ProtocolLines::lastCode() const
{
    return m_lastReply.first(std::min<qsizetype>(3, m_lastReply.size())).toInt();
}

QByteArrayList ProtocolLines::received(QByteArrayView piece)
{
    QByteArrayList lines;
    for (const QByteArray &line : linesOf(piece)) {
        lines.append(masked(line));
        if (!m_leaving)
            m_lastReply = lines.last();
    }
    return lines;
}

QByteArrayList ProtocolLines::sent(QByteArrayView piece)
{
    QByteArrayList lines;
    for (const QByteArray &line : linesOf(piece)) {
        m_leaving = m_leaving || line == "QUIT";
        const auto second = line.indexOf(' ', 5);
        if (beginsWith(line, "Proxy-Authorization:"))
            lines.append(QByteArray("Proxy-Authorization: ") + Mask);
        else if (beginsWith(line, "AUTH ") && second > 0)
            lines.append(line.first(second + 1) + Mask);
        else if (lastCode() == 334)
            lines.append(Mask);
        else
            lines.append(masked(line));
    }
    return lines;
}

} // namespace sondrel
