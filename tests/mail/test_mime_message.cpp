#include "mail/mime_message.h"

#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

MimeMessage smallMessage()
{
    MimeMessage message;
    message.From = u"a@b.example"_s;
    message.To = u"c@d.example"_s;
    message.Subject = u"Hello"_s;
    message.Date = QDateTime(QDate(2026, 11, 15), QTime(10, 0), Qt::UTC);
    message.MessageID = "<1@b.example>";
    message.Body = "text\r\n";
    return message;
}

constexpr auto SmallHead = "From: a@b.example\r\nTo: c@d.example\r\nSubject: Hello\r\n";
constexpr auto SmallTail = "Date: Sun, 15 Nov 2026 10:00:00 +0000\r\nMessage-ID: <1@b.example>\r\n";

TEST(MimeMessage, isPlainWithoutContentFields)
{
    EXPECT_EQ(streamOf(smallMessage()).readAll(), QByteArray(SmallHead) + SmallTail + "\r\ntext\r\n");
}

TEST(MimeMessage, encodesALineThatIsTooLong)
{
    MimeMessage message = smallMessage();
    message.Body = QByteArray(1000, 'x') + "\r\nlast line";
    const QByteArray text = streamOf(message).readAll();
    EXPECT_TRUE(text.startsWith(QByteArray(SmallHead) + "MIME-Version: 1.0\r\n" + SmallTail +
                                "Content-Type: text/plain\r\n"
                                "Content-Transfer-Encoding: quoted-printable\r\n\r\n"))
        << text.constData();
    EXPECT_TRUE(text.endsWith("\r\nlast line"));
}

TEST(MimeMessage, holdsFilesBehindTheirParts)
{
    const World world;
    world.write(u"a.html"_s, "<p>");
    MimeMessage message = smallMessage();
    MimePart body;
    body.Body = "text";
    message.Parts = {body};
    message.attachFile(world.path(u"a.html"_s), u"a.html"_s);
    message.ContentType = "multipart";
    message.ContentSubtype = "mixed";
    message.Boundary = "B";
    EXPECT_EQ(streamOf(message).readAll(),
              QByteArray(SmallHead) + "MIME-Version: 1.0\r\n" + SmallTail +
                  "Content-Type: multipart/mixed;\r\n boundary=\"B\"\r\n\r\n"
                  "\r\n--B\r\n\r\ntext"
                  "\r\n--B\r\nContent-Type: text/html;\r\n name=\"a.html\"\r\n"
                  "Content-Transfer-Encoding: base64\r\n"
                  "Content-Disposition: attachment;\r\n filename=\"a.html\"\r\n\r\nPHA+\r\n"
                  "\r\n--B--\r\n");
}

} // namespace
