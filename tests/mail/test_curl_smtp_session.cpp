#include "mail/curl_smtp_session.h"

#include "tests/support/bad_files.h"
#include "tests/support/loopback_server.h"
#include "tests/support/smtp_server.h"

#include <QElapsedTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

struct End
{
    qint32 task = 0;
    int error = 0;
    QString text;
};

SmtpOptions impatient()
{
    SmtpOptions options;
    options.connectSeconds = 1;
    return options;
}

class Session : public testing::Test
{
protected:
    Session() { useOptions({}); }

    void useOptions(const SmtpOptions &options)
    {
        session.reset();
        transport = std::make_unique<CurlSmtpTransport>(options);
        session = transport->createSession();
        session->Server = u"127.0.0.1"_s;
        session->Port = server.port();
        QObject::connect(session.get(), &SmtpSession::Done,
                         [this](qint32 task, qint16 error, const QString &text) {
                             ends.push_back({task, error, text});
                         });
        QObject::connect(session.get(), &SmtpSession::Debug,
                         [this](const QString &line) { lines.append(line); });
    }
    End next()
    {
        const std::size_t before = ends.size();
        EXPECT_TRUE(waitUntil([&] { return ends.size() > before; }));
        return ends.empty() ? End() : ends.back();
    }
    End connect()
    {
        session->Connect();
        return next();
    }
    End send(const QByteArray &text, const QByteArrayList &recipients = {"client@site.example"})
    {
        session->Send(message(text, recipients));
        return next();
    }
    End leave()
    {
        session->Disconnect();
        return next();
    }
    void answer(const QByteArray &to, const QByteArray &with)
    {
        server.answer = [=](const QByteArray &command) -> std::optional<QByteArray> {
            return command.startsWith(to) ? std::optional(with) : std::nullopt;
        };
    }
    static std::shared_ptr<OutgoingMessage> message(const QByteArray &text, const QByteArrayList &recipients)
    {
        auto outgoing = std::make_shared<OutgoingMessage>();
        outgoing->sender = "reports@sender.example";
        outgoing->recipients = recipients;
        outgoing->content.add(text);
        return outgoing;
    }

    SmtpServer server;
    std::unique_ptr<CurlSmtpTransport> transport;
    std::unique_ptr<SmtpSession> session;
    std::vector<End> ends;
    QStringList lines;
};

TEST_F(Session, connectsSendsAndLeavesOnOneConnection)
{
    EXPECT_EQ(session->State(), SmtpSession::Idle);
    EXPECT_EQ(connect().task, SmtpSession::ConnectTask);
    EXPECT_EQ(session->State(), SmtpSession::Connected);
    const End sent = send("Subject: x\r\n\r\ntext\r\n", {"a@site.example", "b@site.example"});
    EXPECT_EQ(sent.task, SmtpSession::SendTask);
    EXPECT_EQ(sent.error, 0) << sent.text.toStdString();
    EXPECT_EQ(leave().task, SmtpSession::DisconnectTask);
    EXPECT_EQ(session->State(), SmtpSession::Idle);
    EXPECT_TRUE(waitUntil([&] { return server.open == 0; }));
    EXPECT_EQ(server.connections, 1);
    ASSERT_EQ(server.commands.size(), 8);
    EXPECT_THAT(server.commands.sliced(1),
                ElementsAre("NOOP", "MAIL FROM:<reports@sender.example> SIZE=20", "RCPT TO:<a@site.example>",
                            "RCPT TO:<b@site.example>", "DATA", ".", "QUIT"));
    EXPECT_EQ(server.data, "Subject: x\r\n\r\ntext\r\n");
}

TEST_F(Session, tellsTheLinesOfTheConversation)
{
    connect();
    send("text\r\n");
    leave();
    EXPECT_EQ(lines.first(), u"220 test ESMTP"_s);
    EXPECT_TRUE(lines.contains(u"354 go on"_s));
    EXPECT_TRUE(lines.contains(u"QUIT"_s));
    EXPECT_EQ(lines.last(), u"221 bye"_s);
    EXPECT_FALSE(lines.contains(u"text"_s));
}

TEST_F(Session, stuffsDots)
{
    connect();
    send(".\r\n..\r\na.\r\n.b\r\n");
    EXPECT_EQ(server.data, "..\r\n...\r\na.\r\n..b\r\n");
}

TEST_F(Session, endsAMessageThatHasNoLineEnd)
{
    connect();
    EXPECT_EQ(send("text").error, 0);
    EXPECT_EQ(server.data, "text\r\n");
}

TEST_F(Session, sendsTwoMessagesOnOneConnection)
{
    connect();
    send("one\r\n");
    EXPECT_EQ(send("two\r\n").error, 0);
    EXPECT_EQ(server.data, "two\r\n");
    EXPECT_EQ(server.connections, 1);
}

TEST_F(Session, tellsOfARefusedConnection)
{
    session->Port = 1; // nobody listens there
    const End end = connect();
    EXPECT_EQ(end.task, SmtpSession::ConnectTask);
    EXPECT_EQ(end.error, 7);
    EXPECT_FALSE(end.text.isEmpty());
    EXPECT_EQ(session->State(), SmtpSession::Idle);
}

TEST_F(Session, tellsOfAServerThatTurnsItAway)
{
    server.greeting = "554 no service here\r\n";
    const End end = connect();
    EXPECT_EQ(end.error, 554);
    EXPECT_EQ(end.text, u"554 no service here"_s);
}

TEST_F(Session, doesNotWaitForEverForAGreeting)
{
    useOptions(impatient());
    server.greeting.clear();
    const End end = connect();
    EXPECT_EQ(end.task, SmtpSession::ConnectTask);
    EXPECT_EQ(end.error, 28);
}

TEST_F(Session, doesNotWaitForEverForAnAnswer)
{
    SmtpOptions options;
    options.answerSeconds = 1;
    useOptions(options);
    answer("MAIL", "");
    connect();
    const End end = send("text\r\n");
    EXPECT_EQ(end.task, SmtpSession::SendTask);
    EXPECT_EQ(end.error, 28);
}

TEST_F(Session, doesNotWaitForEverForAGoodbye)
{
    SmtpOptions options;
    options.leaveSeconds = 1;
    useOptions(options);
    answer("QUIT", "");
    connect();
    send("text\r\n");
    const End end = leave();
    EXPECT_EQ(end.task, SmtpSession::DisconnectTask);
    EXPECT_EQ(end.error, 0);
}

struct Refusal
{
    const char *name;
    QByteArray command;
    QByteArray said;
    int error;
    QString text;
};

class Refused : public Session, public testing::WithParamInterface<Refusal>
{
};

TEST_P(Refused, isToldWithNumberAndText)
{
    answer(GetParam().command, GetParam().said);
    connect();
    const End end = send("text\r\n", {"a@site.example", "b@site.example"});
    EXPECT_EQ(end.task, SmtpSession::SendTask);
    EXPECT_EQ(end.error, GetParam().error);
    EXPECT_EQ(end.text, GetParam().text);
    EXPECT_EQ(leave().error, 0);
    EXPECT_EQ(server.connections, 1);
}

INSTANTIATE_TEST_SUITE_P(Steps, Refused,
                         testing::Values(Refusal{"Sender", "MAIL", "553 5.1.8 who are you\r\n", 553,
                                                 u"553 5.1.8 who are you"_s},
                                         Refusal{"OneRecipient", "RCPT TO:<b",
                                                 "550-no such\r\n550 user here\r\n", 550, u"550 user here"_s},
                                         Refusal{"Data", "DATA", "451 not now\r\n", 451, u"451 not now"_s},
                                         Refusal{"Message", ".", "552 too much\r\n", 552, u"552 too much"_s}),
                         [](const auto &row) { return row.param.name; });

TEST_F(Session, tellsOfARefusedLogin)
{
    server.answer = [](const QByteArray &command) -> std::optional<QByteArray> {
        if (command.startsWith("EHLO"))
            return "250-test\r\n250 AUTH PLAIN\r\n";
        if (command.startsWith("AUTH"))
            return "334 \r\n";
        return command == "NOOP" ? std::nullopt
                                 : std::optional<QByteArray>("535 5.7.8 no, secret is not it\r\n");
    };
    session->AuthenticationMode = 1;
    session->User = u"ann"_s;
    session->Password = u"secret"_s;
    const End end = connect();
    EXPECT_EQ(end.task, SmtpSession::ConnectTask);
    EXPECT_EQ(end.error, 535);
    EXPECT_EQ(end.text, u"535 5.7.8 no, **** is not it"_s);
    EXPECT_TRUE(lines.contains(u"****"_s)) << lines.join(u'\n').toStdString();
    EXPECT_FALSE(lines.join(u'\n').contains(u"secret"_s));
}

TEST_F(Session, masksALoginInSteps)
{
    int step = 0;
    server.answer = [&](const QByteArray &command) -> std::optional<QByteArray> {
        if (command.startsWith("EHLO"))
            return "250-test\r\n250 AUTH LOGIN\r\n";
        if (command.startsWith("AUTH") || step == 1)
            return ++step == 1 ? "334 VXNlcm5hbWU6\r\n" : "334 UGFzc3dvcmQ6\r\n";
        return step++ == 2 ? std::optional<QByteArray>("235 welcome\r\n") : std::nullopt;
    };
    session->AuthenticationMode = 1;
    session->User = u"ann"_s;
    session->Password = u"secret"_s;
    EXPECT_EQ(connect().error, 0);
    EXPECT_FALSE(lines.join(u'\n').contains(QString::fromLatin1(QByteArray("secret").toBase64())));
    EXPECT_FALSE(lines.join(u'\n').contains(QString::fromLatin1(QByteArray("ann").toBase64())));
}

TEST_F(Session, keepsALoginFromAnOpenLineToAnotherMachine)
{
    session->Server = u"0.0.0.0"_s; // leads here, but is no name of this machine
    session->AuthenticationMode = 1;
    session->User = u"ann"_s;
    session->Password = u"secret"_s;
    const End end = connect();
    EXPECT_EQ(end.error, 64);
    EXPECT_FALSE(end.text.isEmpty());
    EXPECT_FALSE(server.commands.join('\n').contains("AUTH"));
}

TEST_F(Session, tellsOfADropInTheMiddle)
{
    server.dropsAfter = 100'000;
    connect();
    const End end = send(QByteArray("line of text\r\n").repeated(200'000));
    EXPECT_EQ(end.task, SmtpSession::SendTask);
    EXPECT_THAT((std::vector{55, 56}), testing::Contains(end.error)) << end.text.toStdString();
    EXPECT_FALSE(end.text.isEmpty());
    EXPECT_EQ(leave().error, 0);
    EXPECT_EQ(server.connections, 1);
}

TEST_F(Session, tellsOfADropBetweenTwoSteps)
{
    connect();
    server.drop();
    EXPECT_TRUE(waitUntil([&] { return server.open == 0; }));
    const End end = send("text\r\n");
    EXPECT_EQ(end.task, SmtpSession::SendTask);
    EXPECT_NE(end.error, 0);
    EXPECT_FALSE(end.text.isEmpty());
    EXPECT_EQ(leave().error, 0);
    EXPECT_EQ(server.connections, 1);
}

TEST_F(Session, tellsOfAFileThatCannotBeRead)
{
    const World world;
    world.write(u"file"_s, QByteArray(1'000'000, 'x'));
    auto outgoing = message("", {"client@site.example"});
    outgoing->content.addFile(world.path(u"file"_s));
    world.write(u"file"_s, "");
    connect();
    session->Send(outgoing);
    const End end = next();
    EXPECT_EQ(end.error, 42);
    EXPECT_THAT(end.text.toStdString(), HasSubstr("has become shorter"));
}

TEST_F(Session, tellsOfAServerNameThatIsNone)
{
    for (const QString &name : {u""_s, u"a b"_s, u"site.example/x"_s, u"user@site.example"_s}) {
        session->Server = name;
        EXPECT_EQ(connect().error, 3) << name.toStdString();
    }
    session->Server = u"127.0.0.1"_s;
    session->Port = 70000;
    EXPECT_EQ(connect().error, 3);
}

TEST_F(Session, takesNoProxyFromTheEnvironment)
{
    qputenv("ALL_PROXY", "http://127.0.0.1:1");
    EXPECT_EQ(connect().error, 0);
    qunsetenv("ALL_PROXY");
}

TEST_F(Session, goesThroughAProxy)
{
    server.isProxy = true;
    session->Server = u"mail.example"_s;
    session->Port = 25;
    session->ProxyServer = u"127.0.0.1"_s;
    session->ProxyPort = server.port();
    session->ProxyUser = u"ann"_s;
    session->ProxyPassword = u"secret"_s;
    EXPECT_EQ(connect().error, 0);
    EXPECT_EQ(server.commands.first(), "CONNECT mail.example:25 HTTP/1.1");
    EXPECT_TRUE(
        server.commands.contains("Proxy-Authorization: Basic " + QByteArray("ann:secret").toBase64()));
    EXPECT_FALSE(lines.join(u'\n').contains(QString::fromLatin1(QByteArray("ann:secret").toBase64())));
}

// However the server behaves, the thread that asks for an end does not wait for it.
class Silent : public Session, public testing::WithParamInterface<QByteArray>
{
};

TEST_P(Silent, canBeStoppedAtOnce)
{
    answer(GetParam(), "");
    connect();
    session->Send(message("text\r\n", {"client@site.example"}));
    if (GetParam() == "QUIT") {
        next();
        session->Disconnect();
    }
    EXPECT_TRUE(waitUntil([&] { return server.commands.contains(GetParam()); }));
    const std::size_t before = ends.size();
    QElapsedTimer elapsed;
    elapsed.start();
    session->Abort();
    session.reset();
    transport.reset(); // waits for the worker
    EXPECT_LT(elapsed.elapsed(), 20'000);
    EXPECT_TRUE(waitUntil([&] { return server.open == 0; }));
    EXPECT_EQ(ends.size(), before);
}

INSTANTIATE_TEST_SUITE_P(Steps, Silent, testing::Values("DATA", ".", "QUIT"), [](const auto &row) {
    return row.param == "." ? "Message" : row.param.toStdString();
});

TEST_F(Session, canBeStoppedWhileItWaitsForAGreeting)
{
    server.greeting.clear();
    session->Connect();
    EXPECT_TRUE(waitUntil([&] { return server.connections == 1; }));
    session->Abort();
    EXPECT_EQ(session->State(), SmtpSession::Idle);
    EXPECT_TRUE(waitUntil([&] { return server.open == 0; }));
    EXPECT_TRUE(ends.empty());
}

TEST_F(Session, connectsAnewAfterAStop)
{
    connect();
    session->Abort();
    EXPECT_EQ(connect().error, 0);
    EXPECT_EQ(send("text\r\n").error, 0);
}

TEST_F(Session, mayGoFromInsideItsOwnEvents)
{
    session->Connect();
    bool told = false;
    QObject::connect(session.get(), &SmtpSession::Done, [&] {
        told = true;
        session.reset();
    });
    EXPECT_TRUE(waitUntil([&] { return told; }));
    EXPECT_TRUE(waitUntil([&] { return server.open == 0; }));
}

} // namespace
