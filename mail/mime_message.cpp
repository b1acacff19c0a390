#include "mail/mime_message.h"

#include "mail/mail_header.h"
#include "mail/mail_text.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

struct FileType
{
    QLatin1StringView suffix;
    const char *type;
    const char *subtype;
};

constexpr FileType FileTypes[] = {
    {".gif"_L1, "image", "gif"},   {".htm"_L1, "text", "html"},  {".html"_L1, "text", "html"},
    {".jpeg"_L1, "image", "jpeg"}, {".jpg"_L1, "image", "jpeg"}, {".pdf"_L1, "application", "pdf"},
    {".png"_L1, "image", "png"},   {".txt"_L1, "text", "plain"},
};

const FileType &typeOf(const QString &name)
{
    static constexpr FileType Unknown{""_L1, "application", "octet-stream"};
    const auto *found = std::ranges::find_if(
        FileTypes, [&](const FileType &type) { return name.endsWith(type.suffix, Qt::CaseInsensitive); });
    return found == std::end(FileTypes) ? Unknown : *found;
}

bool hasContentFields(const MimePart &part)
{
    return !part.ContentType.isEmpty() || !part.ContentSubtype.isEmpty() ||
           !part.ContentTransferEncoding.isEmpty() || !part.Parts.empty();
}

QByteArray contentFields(const MimePart &part)
{
    if (!hasContentFields(part))
        return {};
    QByteArray fields("Content-Type: ");
    fields.append(part.ContentType.isEmpty() ? "text" : part.ContentType).append('/');
    fields.append(part.ContentSubtype.isEmpty() ? "plain" : part.ContentSubtype);
    if (!part.Boundary.isEmpty())
        fields.append(";\r\n boundary=\"").append(part.Boundary).append('"');
    else if (!part.ContentParameters.isEmpty())
        fields.append("; ").append(part.ContentParameters);
    if (!part.File.isEmpty())
        fields.append(parameter("name", part.FileName));
    fields.append("\r\n");
    if (!part.ContentTransferEncoding.isEmpty())
        fields.append("Content-Transfer-Encoding: ").append(part.ContentTransferEncoding).append("\r\n");
    if (!part.File.isEmpty())
        fields.append("Content-Disposition: attachment")
            .append(parameter("filename", part.FileName))
            .append("\r\n");
    return fields;
}

// The fields, the empty line and the body.
void write(MessageStream &stream, const MimePart &part)
{
    stream.add(contentFields(part) + "\r\n");
    if (!part.File.isEmpty()) {
        stream.addFile(part.File);
    } else if (part.Parts.empty()) {
        stream.add(part.Body);
    } else {
        for (const MimePart &inner : part.Parts) {
            stream.add("\r\n--" + part.Boundary + "\r\n");
            write(stream, inner);
        }
        stream.add("\r\n--" + part.Boundary + "--\r\n");
    }
}

// Sees to it that every line can travel, whatever the body came as.
void prepare(MimePart &part)
{
    for (MimePart &inner : part.Parts)
        prepare(inner);
    part.Body = withMailLineEnds(part.Body);
    if (!needsEncoding(part.Body))
        return;
    if (part.ContentType.isEmpty())
        part.ContentType = "text";
    part.ContentTransferEncoding = "quoted-printable";
    part.Body = quotedPrintableLines(part.Body);
}

QByteArray headers(const MimeMessage &message)
{
    QByteArray lines;
    const auto addAddress = [&](const char *name, const QString &value) {
        if (!value.isEmpty())
            lines.append(addressHeader(name, value));
    };
    addAddress("Disposition-Notification-To", message.DispositionNotificationTo);
    addAddress("From", message.From);
    addAddress("Reply-To", message.ReplyTo);
    addAddress("To", message.To);
    addAddress("Cc", message.Cc);
    lines.append(textHeader("Subject", message.Subject));
    // A reader takes content fields for what they are only behind the version.
    if (!message.MIMEVersion.isEmpty() || hasContentFields(message))
        lines.append(plainHeader("MIME-Version", "1.0"));
    for (const auto &[name, value] : message.ExtraHeaders)
        lines.append(textHeader(name, value));
    lines.append(plainHeader("Date", mailDate(message.Date)));
    lines.append(plainHeader("Message-ID", message.MessageID));
    return lines;
}

} // namespace

void MimePart::attachFile(const QString &path, const QString &name)
{
    const FileType &type = typeOf(name);
    MimePart part;
    part.ContentType = type.type;
    part.ContentSubtype = type.subtype;
    part.ContentTransferEncoding = "base64";
    part.File = path;
    part.FileName = name;
    Parts.push_back(std::move(part));
}

MessageStream streamOf(const MimeMessage &message)
{
    MimeMessage prepared = message;
    prepare(prepared);
    MessageStream stream;
    stream.add(headers(prepared));
    write(stream, prepared);
    return stream;
}

} // namespace sondrel
