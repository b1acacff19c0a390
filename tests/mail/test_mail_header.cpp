#include "mail/mail_header.h"

#include "core/failure.h"
#include "tests/support/printing.h"

#include <QTimeZone>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

qsizetype longestLine(const QByteArray &text)
{
    qsizetype longest = 0;
    for (const QByteArray &line : text.split('\n'))
        longest = std::max(longest, line.size() - 1);
    return longest;
}

// Of those that hold an encoded word, which may be 76 characters long at most.
qsizetype longestLineWithWords(const QByteArray &text)
{
    qsizetype longest = 0;
    for (const QByteArray &line : text.split('\n'))
        longest = line.contains("=?") ? std::max(longest, line.size() - 1) : longest;
    return longest;
}

TEST(TextHeader, leavesPlainTextAsItIs)
{
    EXPECT_EQ(textHeader("Subject", u"Ranking report"_s), "Subject: Ranking report\r\n");
    EXPECT_EQ(textHeader("Subject", u""_s), "Subject:\r\n");
}

TEST(TextHeader, cannotBeBrokenByALineEnd)
{
    EXPECT_EQ(textHeader("Subject", u"a\r\nBcc: x@y.example\rb\u2028c"_s),
              "Subject: a  Bcc: x@y.example b c\r\n");
}

TEST(TextHeader, encodesWhatIsNotAscii)
{
    EXPECT_EQ(textHeader("Subject", u"Caf\u00E9"_s), "Subject: =?utf-8?B?Q2Fmw6k=?=\r\n");
}

TEST(TextHeader, doesNotCutACharacterInTwo)
{
    const QByteArray header = textHeader("Subject", u"\U0001F600"_s.repeated(30));
    EXPECT_LE(longestLine(header), 76);
    QByteArray text;
    for (const QByteArray &word : header.sliced(9).split(' ')) {
        const QByteArray piece = QByteArray::fromBase64(word.trimmed().sliced(10).chopped(2));
        EXPECT_EQ(piece.size() % 4, 0);
        text.append(piece);
    }
    EXPECT_EQ(QString::fromUtf8(text), u"\U0001F600"_s.repeated(30));
}

TEST(TextHeader, doesNotPassForAnEncodedWord)
{
    EXPECT_EQ(textHeader("Subject", u"=?x"_s), "Subject: =?utf-8?B?PT94?=\r\n");
}

TEST(TextHeader, foldsLongLinesAtBlanks)
{
    const QString text = u"word "_s.repeated(100) + u"end"_s;
    QByteArray header = textHeader("Subject", text);
    EXPECT_LE(longestLine(header), 78);
    EXPECT_EQ(header.replace("\r\n ", " "), "Subject: " + text.toLatin1() + "\r\n");
}

TEST(TextHeader, keepsEveryLineShort)
{
    EXPECT_LE(longestLine(textHeader("Subject", QString(5000, u'x'))), 998);
    EXPECT_LE(longestLine(textHeader("Subject", u"a"_s + QString(5000, u' ') + u"b"_s)), 998);
    EXPECT_LE(longestLine(textHeader("Subject", u"a  "_s.repeated(2000))), 998);
}

TEST(AddressHeader, keepsWhatTheCallerWrote)
{
    EXPECT_EQ(addressHeader("From", u"\"Ann B\" <a@b.example>"_s), "From: \"Ann B\" <a@b.example>\r\n");
}

TEST(AddressHeader, partsAddressesByCommas)
{
    EXPECT_EQ(addressHeader("To", u"a@b.example;c@d.example"_s), "To: a@b.example,\r\n c@d.example\r\n");
    EXPECT_EQ(addressHeader("To", u"\"A; B\" <a@b.example>"_s), "To: \"A; B\" <a@b.example>\r\n");
}

TEST(AddressHeader, endsAtALineEnd)
{
    EXPECT_EQ(addressHeader("To", u"a@b.example\r\nBcc: x@y.example"_s), "To: a@b.example\r\n");
}

TEST(AddressHeader, encodesNamesAndHosts)
{
    EXPECT_EQ(addressHeader("From", u"\"J\u00F6rg\" <a@b\u00FCro.example>"_s),
              "From: =?utf-8?B?SsO2cmc=?= <a@xn--bro-hoa.example>\r\n");
}

TEST(AddressHeader, keepsLinesWithEncodedWordsShort)
{
    const QString name = u"J\u00F6rg "_s;
    for (const qsizetype words : {1, 4, 5, 6, 7, 8, 30}) {
        for (const qsizetype letters : {1, 20, 40, 60}) {
            const QString mailbox = QString(letters, u'x') + u"@site.example"_s;
            const QString value = name.repeated(words) + u'<' + mailbox + u'>';
            for (const char *header : {"Cc", "From", "Disposition-Notification-To"}) {
                const QByteArray folded = addressHeader(header, value + u',' + value);
                EXPECT_LE(longestLineWithWords(folded), 76) << folded.constData();
                EXPECT_TRUE(folded.endsWith(" <" + mailbox.toLatin1() + ">\r\n")) << folded.constData();
                EXPECT_EQ(folded.count('<'), 2);
            }
        }
    }
}

TEST(AddressHeader, foldsALongListWithoutBlanks)
{
    const QString list = u"ann@site.example,"_s.repeated(200) + u"bob@site.example"_s;
    EXPECT_LE(longestLine(addressHeader("To", list)), 998);
}

TEST(AddressHeader, refusesAnAddressThatNoLineHolds)
{
    EXPECT_THROW(addressHeader("To", QString(2000, u'a') + u"@b.example"_s), Failure);
}

TEST(MailDate, tellsTheZone)
{
    const QDateTime moment(QDate(2026, 2, 3), QTime(4, 5, 6), QTimeZone(-12600));
    EXPECT_EQ(mailDate(moment), "Tue, 3 Feb 2026 04:05:06 -0330");
}

TEST(Parameter, isQuotedOrExtended)
{
    EXPECT_EQ(parameter("filename", u"a \"b\"\\.txt"_s), ";\r\n filename=\"a \\\"b\\\"\\\\.txt\"");
    EXPECT_EQ(parameter("filename", u"caf\u00E9.txt"_s), ";\r\n filename*=utf-8''caf%C3%A9.txt");
}

} // namespace
