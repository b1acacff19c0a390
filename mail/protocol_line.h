// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace sondrel {

/// Makes the lines of a mail conversation fit to be shown: a login and its answers are masked, and so are the
/// given secrets wherever they stand.
class ProtocolLines
{
public:
    explicit ProtocolLines(const QByteArrayList &secrets);

    /// The lines of a piece that came from the server, or went to it.
    QByteArrayList received(QByteArrayView piece);
    QByteArrayList sent(QByteArrayView piece);

    /// The last line that came, masked, and the reply code that it begins with; 0 when it has none. What
    /// comes behind QUIT is no news: a refusal makes libcurl leave by itself.
    QByteArray lastReply() const { return m_lastReply; }
    int lastCode() const;
    /// A new task begins: what came before is no answer to it.
    void forgetReply()
    {
        m_lastReply.clear();
        m_leaving = false;
    }

    QByteArray masked(QByteArray line) const;

private:
    QByteArrayList m_secrets;
    QByteArray m_lastReply;
    bool m_leaving = false;
};

} // namespace sondrel
