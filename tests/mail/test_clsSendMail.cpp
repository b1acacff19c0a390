#include "mail/clsSendMail.h"

#include "tests/support/bad_files.h"

#include <QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

struct Event
{
    QString name;
    qint32 number;
    QString text;

    bool operator==(const Event &) const = default;
};

void PrintTo(const Event &event, std::ostream *out)
{
    *out << event.name.toStdString() << ' ' << event.number << ' ' << event.text.toStdString();
}

class SendMail : public testing::Test
{
protected:
    // A mail that can go as it is.
    clsSendMail &mail()
    {
        if (!m_mail) {
            m_mail = std::make_unique<clsSendMail>(world.app);
            m_mail->setToRecipient(u"client@site.example"_s);
            m_mail->From = u"reports@sender.example"_s;
            m_mail->Subject = u"Ranking report"_s;
            m_mail->BodyTEXT = u"Hello.\r\n"_s;
            m_mail->Host = u"mail.example"_s;
            m_mail->Port = u"25"_s;
            QObject::connect(m_mail.get(), &clsSendMail::Completed,
                             [this](qint32 number, const QString &text) {
                                 events.push_back({u"Completed"_s, number, text});
                             });
            QObject::connect(m_mail.get(), &clsSendMail::SendMailError,
                             [this](qint32 number, const QString &text) {
                                 events.push_back({u"SendMailError"_s, number, text});
                             });
        }
        return *m_mail;
    }
    void send()
    {
        mail().SendMail();
        run();
    }
    // Until nothing is left to happen.
    static void run()
    {
        for (int i = 0; i < 20; ++i)
            QCoreApplication::processEvents();
    }
    const RecordingSmtp::Conversation &conversation() const { return world.smtp.conversations.at(0); }
    QByteArray sent() const { return conversation().message; }

    World world;
    std::vector<Event> events;

private:
    std::unique_ptr<clsSendMail> m_mail;
};

TEST_F(SendMail, connectsSendsLeavesAndCompletes)
{
    send();
    EXPECT_THAT(events, ElementsAre(Event{u"Completed"_s, 0, {}}));
    EXPECT_EQ(conversation().server, u"mail.example"_s);
    EXPECT_EQ(conversation().port, 25);
    EXPECT_EQ(conversation().authenticationMode, 0);
    EXPECT_EQ(conversation().sender, "reports@sender.example");
    EXPECT_THAT(conversation().recipients, ElementsAre("client@site.example"));
    EXPECT_TRUE(conversation().left);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(SendMail, refusesAnAtSignInSecondPlace)
{
    mail().setToRecipient(u"a@b"_s);
    send();
    EXPECT_THAT(events, ElementsAre(Event{u"Completed"_s, 30003, u"Invalid email address: a@b"_s}));
    EXPECT_TRUE(world.smtp.conversations.empty());
}

TEST_F(SendMail, takesAnAtSignInThirdPlace)
{
    mail().setToRecipient(u"ab@c"_s);
    send();
    EXPECT_THAT(events, ElementsAre(Event{u"Completed"_s, 0, {}}));
}

TEST_F(SendMail, failsForAListFileWithoutAnEarlierAddress)
{
    clsSendMail other(world.app);
    other.setToRecipient(u"C:\\lists\\all.txt"_s);
    qint32 number = 0;
    QObject::connect(&other, &clsSendMail::Completed, [&](qint32 error) { number = error; });
    other.SendMail();
    EXPECT_EQ(number, 30003);
    EXPECT_EQ(other.TotalBytes, 0);
}

TEST_F(SendMail, keepsAnEarlierAddressBesideAListFile)
{
    for (const QString &list : {u"\\\\server\\all.txt"_s, u"D:\\a@b.txt"_s})
        mail().setToRecipient(list);
    EXPECT_EQ(mail().ToRecipient(), u"client@site.example"_s);
    EXPECT_EQ(mail().TotalBytes, 1);
}

TEST_F(SendMail, takesWhatIsNoWholePathForAnAddress)
{
    for (const QString &address :
         {u"dom\\ann@site.example"_s, u"\\\\dom\\ann@site.example"_s, u"lists\\all.txt"_s}) {
        mail().setToRecipient(address);
        EXPECT_EQ(mail().ToRecipient(), address);
    }
}

TEST_F(SendMail, storesThePriorityAsItsHeader)
{
    EXPECT_EQ(mail().Priority(), 0);
    for (const auto &[given, stored] : {std::pair{1, 1}, {2, 3}, {3, 5}, {0, 3}, {-4, 3}}) {
        mail().setPriority(static_cast<qint16>(given));
        EXPECT_EQ(mail().Priority(), stored);
    }
}

TEST_F(SendMail, namesThePriority)
{
    mail().setPriority(2);
    send();
    EXPECT_THAT(sent().toStdString(), HasSubstr("\r\nX-Priority: 3\r\nX-MSMail-Priority: Normal\r\n"));
}

TEST_F(SendMail, sendsTheHeadersInOrder)
{
    mail().RequestRead = true;
    mail().ReplyTo = u"answers@sender.example"_s;
    mail().CC = u"boss@site.example"_s;
    mail().MsgFormat = u"html"_s;
    mail().setPriority(1);
    send();
    EXPECT_THAT(sent().toStdString(),
                testing::StartsWith("Disposition-Notification-To: reports@sender.example\r\n"
                                    "From: reports@sender.example\r\n"
                                    "Reply-To: answers@sender.example\r\n"
                                    "To: client@site.example\r\n"
                                    "Cc: boss@site.example\r\n"
                                    "Subject: Ranking report\r\n"
                                    "MIME-Version: 1.0\r\n"
                                    "X-Mailer: Marovia Sondrel V44.0.0\r\n"
                                    "X-Priority: 1\r\n"
                                    "X-MSMail-Priority: High\r\n"
                                    "Date: "));
    EXPECT_THAT(conversation().recipients, ElementsAre("client@site.example", "boss@site.example"));
}

TEST_F(SendMail, saysNothingOfAPlainBody)
{
    send();
    EXPECT_FALSE(sent().contains("Content-"));
    EXPECT_FALSE(sent().contains("MIME-Version"));
    EXPECT_FALSE(sent().contains("X-MSMail-Priority"));
    EXPECT_TRUE(sent().endsWith("\r\n\r\nHello.\r\n"));
}

TEST_F(SendMail, losesTheUnfinishedLineOfAnAccentedBody)
{
    mail().BodyTEXT = u"Caf\u00E9\r\nlost"_s;
    send();
    EXPECT_THAT(sent().toStdString(), HasSubstr("MIME-Version: 1.0\r\n"));
    EXPECT_TRUE(sent().endsWith("Content-Type: text/plain; charset=\"iso-8859-1\"\r\n"
                                "Content-Transfer-Encoding: Quoted-Printable\r\n\r\nCaf=E9\r\n"))
        << sent().constData();
}

TEST_F(SendMail, encodesTwiceWhenSentTwice)
{
    mail().BodyTEXT = u"Caf\u00E9\r\n"_s;
    send();
    EXPECT_EQ(mail().BodyTEXT, u"Caf=E9\r\n"_s);
}

TEST_F(SendMail, wrapsALongLineAndLeavesAnEndlessOne)
{
    mail().BodyTEXT = u"word "_s.repeated(18) + u"\r\ntail"_s;
    send();
    EXPECT_TRUE(sent().endsWith("\r\n\r\n" + QByteArray("word ").repeated(14) + "\r\n" +
                                QByteArray("word ").repeated(4) + "\r\ntail"));
    clsSendMail other(world.app);
    EXPECT_EQ(other.WrapWord(QString(100, u'x')), QString(100, u'x'));
}

TEST_F(SendMail, passesOverAMissingAttachment)
{
    mail().Attachment = QStringList{world.app.appFile({u"none.txt"_s}), u""_s, u" "_s};
    send();
    EXPECT_THAT(events, ElementsAre(Event{u"Completed"_s, 0, {}}));
    EXPECT_TRUE(sent().contains("Content-Type: multipart/mixed;\r\n"
                                " boundary=\"----=_NextPart_2026_1115_100000.MIX394928\"\r\n\r\n"))
        << sent().constData();
    EXPECT_EQ(sent().count("\r\n------=_NextPart_2026_1115_100000.MIX394928"), 2);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(SendMail, keepsTheMixedFormForNoAttachments)
{
    mail().Attachment = QStringList();
    send();
    EXPECT_TRUE(sent().contains("multipart/mixed"));
    EXPECT_TRUE(
        sent().contains("\r\nContent-Type: text/plain\r\nContent-Transfer-Encoding: 7bit\r\n\r\nHello."));
}

TEST_F(SendMail, attachesFilesUnderTheirNames)
{
    world.write(u"reports/P/menu.html"_s, "<p>menu</p>");
    mail().Attachment = QStringList{u" "_s + world.app.appFile({u"reports"_s, u"P"_s, u"MENU.html"_s})};
    send();
    EXPECT_THAT(sent().toStdString(), HasSubstr("filename=\"MENU.html\"\r\n\r\nPHA+bWVudTwvcD4=\r\n"));
}

TEST_F(SendMail, nestsTheAlternativesInTheMixedForm)
{
    world.write(u"a.txt"_s, "file");
    mail().MsgFormat = u"html"_s;
    mail().BodyHTML = u"<p>\u00E9</p>\r\n"_s;
    mail().Attachment = QStringList{world.app.appFile({u"a.txt"_s})};
    send();
    EXPECT_THAT(sent().toStdString(),
                HasSubstr("Content-Type: multipart/mixed;\r\n"
                          " boundary=\"----=_NextPart_2026_1115_100000.MIX394928\"\r\n\r\n"
                          "\r\n------=_NextPart_2026_1115_100000.MIX394928\r\n"
                          "Content-Type: multipart/alternative;\r\n"
                          " boundary=\"----=_NextPart_2026_1115_100000.3849423\"\r\n\r\n"
                          "\r\n------=_NextPart_2026_1115_100000.3849423\r\n"
                          "Content-Type: text/plain; charset=\"iso-8859-1\"\r\n"
                          "Content-Transfer-Encoding: 7bit\r\n\r\nHello.\r\n"
                          "\r\n------=_NextPart_2026_1115_100000.3849423\r\n"
                          "Content-Type: text/html; charset=\"iso-8859-1\"\r\n"
                          "Content-Transfer-Encoding: quoted-printable\r\n\r\n<p>=E9</p>\r\n"
                          "\r\n------=_NextPart_2026_1115_100000.3849423--\r\n"));
}

TEST_F(SendMail, letsNoLineEndIntoTheWire)
{
    const QString evil = u"\r\nBcc: evil@site.example\r\n\r\nbody"_s;
    mail().setToRecipient(mail().ToRecipient() + evil);
    mail().From += evil;
    mail().CC = u"boss@site.example"_s + evil;
    mail().Subject += evil;
    mail().ReplyTo = u"answers@sender.example"_s + evil;
    mail().RequestRead = true;
    send();
    const QByteArray head = sent().first(sent().indexOf("\r\n\r\n"));
    EXPECT_FALSE(head.contains("\r\nBcc")) << head.constData();
    EXPECT_EQ(head.count("\r\n") + 1, 10);
    EXPECT_EQ(conversation().sender, "reports@sender.example");
    EXPECT_THAT(conversation().recipients, ElementsAre("client@site.example", "boss@site.example"));
}

TEST_F(SendMail, quotesASenderWhoseNameNeedsIt)
{
    mail().From = u"Smith, Ann<ann@sender.example>"_s;
    send();
    EXPECT_THAT(sent().toStdString(), testing::StartsWith("From: \"Smith, Ann\" <ann@sender.example>\r\n"));
    EXPECT_EQ(conversation().sender, "ann@sender.example");
}

TEST_F(SendMail, logsInWhenToldTo)
{
    mail().Authentication = true;
    mail().SMTPUsername = u"ann"_s;
    mail().SMTPPassword = u"secret"_s;
    send();
    EXPECT_EQ(conversation().authenticationMode, 1);
    EXPECT_EQ(conversation().authenticationKind, 1);
    EXPECT_EQ(conversation().user, u"ann"_s);
    EXPECT_EQ(conversation().password, u"secret"_s);
}

TEST_F(SendMail, goesThroughAProxy)
{
    mail().Proxy = u"wall.example"_s;
    mail().ProxyPort = u"3128"_s;
    mail().Username = u"ann"_s;
    mail().Password = u"secret"_s;
    send();
    EXPECT_EQ(conversation().proxyServer, u"wall.example"_s);
    EXPECT_EQ(conversation().proxyPort, 3128);
    EXPECT_EQ(conversation().proxyUser, u"ann"_s);
    EXPECT_EQ(conversation().proxyPassword, u"secret"_s);
}

TEST_F(SendMail, endsAtOnceWhenItCannotConnect)
{
    world.smtp.connecting = {7, u"Connection refused"_s};
    send();
    EXPECT_THAT(events, ElementsAre(Event{u"Completed"_s, 7,
                                          u"Error on Connect: Connection refused server: mail.example"_s}));
    EXPECT_FALSE(conversation().left);
    EXPECT_EQ(conversation().sends, 0);
}

TEST_F(SendMail, leavesAfterARefusal)
{
    world.smtp.sending = {550, u"550 no such user"_s};
    send();
    EXPECT_THAT(events,
                ElementsAre(Event{u"SendMailError"_s, 550,
                                  u"Error on SendMail <client@site.example>: 550 no such user server: "
                                  "mail.example"_s},
                            Event{u"Completed"_s, 0, {}}));
    EXPECT_TRUE(conversation().left);
}

TEST_F(SendMail, takesTheOtherNumberOfASendingToo)
{
    world.smtp.sending = {550, u"550 no"_s};
    world.smtp.sendTask = 5;
    send();
    EXPECT_EQ(events.size(), 2U);
}

TEST_F(SendMail, doesNothingAboutAFailureOfAnotherTask)
{
    world.smtp.sending = {550, u"550 no"_s};
    world.smtp.sendTask = 9;
    send();
    EXPECT_TRUE(events.empty());
    EXPECT_FALSE(conversation().left);
}

TEST_F(SendMail, isStoppedAtOnce)
{
    world.smtp.silentTask = SmtpSession::SendTask;
    send();
    mail().Disconnect();
    EXPECT_THAT(events, ElementsAre(Event{u"Completed"_s, 30006, u"Stop, cancel by user."_s}));
    EXPECT_TRUE(conversation().aborted);
}

TEST_F(SendMail, isNotStoppedWhenIdle)
{
    mail().Disconnect();
    EXPECT_TRUE(events.empty());
}

TEST_F(SendMail, mayGoFromInsideItsOwnEvents)
{
    world.smtp.sending = {550, u"550 no"_s};
    auto *other = new clsSendMail(world.app);
    other->setToRecipient(u"client@site.example"_s);
    QObject::connect(other, &clsSendMail::SendMailError, [other] { delete other; });
    other->SendMail();
    run();
    EXPECT_EQ(world.smtp.sessionsAlive, 0);
}

TEST_F(SendMail, logsWhatFailsInsideWithoutThePasswords)
{
    mail().CC = u"not plain@site.example"_s;
    mail().Authentication = true;
    mail().SMTPPassword = u"secret"_s;
    send();
    EXPECT_THAT(events, ElementsAre(Event{u"Completed"_s, 30004,
                                          u"SendMail_Error: Invalid email address: not plain@site.example "
                                          "SMTP Server: mail.example Port: 25"_s}));
    EXPECT_EQ(world.takeLog(), u"SendMail_Error: Invalid email address: not plain@site.example, SMTP Server: "
                               "mail.example Port: 25\r\nSendMail FormatMessage... "_s);
}

TEST_F(SendMail, masksThePasswordInItsProgress)
{
    mail().Port = u"99999999999"_s;
    mail().Authentication = true;
    mail().SMTPUsername = u"ann"_s;
    mail().SMTPPassword = u"secret"_s;
    mail().Proxy = u"wall.example"_s;
    mail().Password = u"hidden"_s;
    send();
    const QString log = world.takeLog();
    EXPECT_FALSE(log.contains("secret"_L1) || log.contains("hidden"_L1)) << log.toStdString();
    EXPECT_TRUE(log.endsWith("\r\nSendMail connect to the mail server: mail.example, 99999999999"_L1))
        << log.toStdString();
}

TEST_F(SendMail, logsAFailureInAnEvent)
{
    world.smtp.failSend = u"broken"_s;
    send();
    EXPECT_EQ(world.takeLog(),
              u"m_oSmtp_Done_Error: 0 - broken Host: mail.example To: client@site.example"_s);
}

TEST_F(SendMail, logsAFailureToStop)
{
    world.smtp.silentTask = SmtpSession::ConnectTask;
    world.smtp.failAbort = u"broken"_s;
    send();
    mail().Disconnect();
    EXPECT_EQ(world.takeLog(), u"Disconnect_Error: broken"_s);
    EXPECT_TRUE(events.empty());
    world.smtp.failAbort.clear();
}

TEST_F(SendMail, cannotSendWithoutASession)
{
    world.smtp.failCreate = u"none left"_s;
    send();
    EXPECT_THAT(world.takeLog().toStdString(), testing::StartsWith("Class_Initialize_Error: none left"));
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].number, 30004);
}

TEST_F(SendMail, readsARange)
{
    qint32 count = 0;
    qint32 first = 0;
    qint32 last = 0;
    mail().getNumberToSend(count, first, last, u"12"_s);
    EXPECT_THAT((std::vector{count, first, last}), ElementsAre(12, 0, 0));
    mail().getNumberToSend(count, first, last, u"3-8"_s);
    EXPECT_THAT((std::vector{count, first, last}), ElementsAre(5, 3, 8));
    mail().getNumberToSend(count, first, last, u"x"_s);
    EXPECT_EQ(world.takeLog(), u"getNumberToSend_Error: Type mismatch"_s);
}

TEST_F(SendMail, replacesCustomFields)
{
    EXPECT_EQ(mail().ReplaceCustomField(u"Dear [Name]"_s), u"Dear [Name]"_s);
    mail().setCustomFields(QStringList{u"[name]"_s, u"[city]"_s}, QStringList{u"Ann"_s});
    EXPECT_EQ(mail().ReplaceCustomField(u"[NAME] of [city]: [Name]"_s), u"Ann of [city]: Ann"_s);
}

TEST_F(SendMail, encodesCustomFieldsOfAnEncodedBody)
{
    mail().BodyTEXT = u"\u00E9\r\n"_s;
    mail().prepareTexts();
    mail().setCustomFields(QStringList{u"[name]"_s}, QStringList{u"Ren\u00E9"_s});
    EXPECT_EQ(mail().ReplaceCustomField(u"[name]"_s), u"Ren=E9"_s);
    // What is stored has been encoded, and is encoded again.
    EXPECT_EQ(mail().ReplaceCustomField(u"[name]"_s), u"Ren=3DE9"_s);
}

TEST_F(SendMail, writesTheConversationIntoItsLog)
{
    world.smtp.lines = {u"220 hello"_s, u"EHLO me"_s};
    send();
    EXPECT_EQ(world.read(u"sendmail.log"_s), "\r\n220 hello\r\nEHLO me");
}

TEST_F(SendMail, keepsALogOf32000Bytes)
{
    world.write(u"sendmail.log"_s, QByteArray(32000, 'x'));
    mail().WriteSendMailLog(u"next"_s);
    EXPECT_EQ(world.read(u"sendmail.log"_s), QByteArray(32000, 'x') + "\r\nnext");
}

TEST_F(SendMail, deletesALongerLog)
{
    world.write(u"sendmail.log"_s, QByteArray(32001, 'x'));
    mail().WriteSendMailLog(u"next"_s);
    EXPECT_EQ(world.read(u"sendmail.log"_s), "\r\nnext");
}

} // namespace
