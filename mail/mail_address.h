// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace sondrel {

/// One address of a header: the name shown, without quotes and escapes, and the mailbox.
struct MailAddress
{
    QString name;
    QString mailbox;

    bool operator==(const MailAddress &) const = default;
};

/// The addresses of a value such as "Ann" <ann@site.example>, bob@site.example (Bob).
std::vector<MailAddress> parseAddresses(const QString &value);

/// A sender such as Ann<ann@site.example>, its name in quotes where it cannot stand without them: people put
/// commas and quotes into their names. Everything else stays as it is.
QString readableSender(const QString &value);

/// The mailbox as it goes on the wire, its host in ASCII. Throws Failure when it cannot go there.
QByteArray wireMailbox(const QString &mailbox);

} // namespace sondrel
