// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "mail/message_stream.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <utility>
#include <vector>

namespace sondrel {

/// One part of a message: a body of its own, a file, or further parts. A part without content fields is plain
/// text of ASCII.
struct MimePart
{
    QByteArray ContentType;
    QByteArray ContentSubtype;
    QByteArray ContentParameters; // "charset=..."
    QByteArray ContentTransferEncoding;
    QByteArray Boundary;
    QByteArray Body;
    QString File;     // path in the system's spelling; of an attachment
    QString FileName; // that its receiver sees
    std::vector<MimePart> Parts;

    /// Puts the file behind the other parts.
    void attachFile(const QString &path, const QString &name);
};

/// A message with its headers.
struct MimeMessage : MimePart
{
    QString From;
    QString To;
    QString Cc;
    QString Subject;
    QByteArray MIMEVersion;
    QString ReplyTo;
    QString DispositionNotificationTo;
    std::vector<std::pair<QByteArray, QString>> ExtraHeaders;
    QDateTime Date;
    QByteArray MessageID;
};

/// The message as it goes out. Throws Failure when a file cannot be opened or an address is too long.
MessageStream streamOf(const MimeMessage &message);

} // namespace sondrel
