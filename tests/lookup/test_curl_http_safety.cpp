#include "tests/lookup/transport_test.h"

#include <QProcess>
#include <QSslKey>
#include <QSslServer>
#include <QTemporaryDir>

#include <ostream>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

using Request = LoopbackServer::Request;
using Peer = LoopbackServer::Peer;

class CurlSafety : public TransportTest
{
};

// Sets variables of the environment and puts the old ones back.
class Environment
{
public:
    ~Environment()
    {
        for (const auto &[name, value] : m_before) {
            if (value.isNull())
                qunsetenv(name.constData());
            else
                qputenv(name.constData(), value);
        }
    }
    void set(const QByteArray &name, const QByteArray &value)
    {
        m_before.emplace_back(name, qEnvironmentVariableIsSet(name.constData()) ? qgetenv(name.constData())
                                                                                : QByteArray());
        qputenv(name.constData(), value);
    }

private:
    std::vector<std::pair<QByteArray, QByteArray>> m_before;
};

bool hasLine(const Request &request, const QByteArray &start)
{
    return request.head.toLower().contains("\r\n" + start.toLower());
}

} // namespace

TEST_F(CurlSafety, asksTheEnvironmentForNoProxy)
{
    LoopbackServer proxy;
    Environment environment;
    for (const char *name :
         {"http_proxy", "HTTP_PROXY", "https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"})
        environment.set(name, "http://" + proxy.address().toLatin1());
    EXPECT_EQ(get(u"/direct"_s), "ok");
    EXPECT_EQ(server.requests.at(0).target, "/direct");
    EXPECT_TRUE(proxy.requests.empty());
}

TEST_F(CurlSafety, goesThroughItsProxyWhateverTheEnvironmentExcepts)
{
    LoopbackServer proxy;
    Environment environment;
    environment.set("no_proxy", "*");
    environment.set("NO_PROXY", "*");
    control->ProxyServer = proxy.address();
    EXPECT_EQ(get(u"/x"_s), "ok");
    EXPECT_EQ(proxy.requests.at(0).target, server.url(u"/x"_s).toLatin1());
    EXPECT_TRUE(server.requests.empty());
}

TEST_F(CurlSafety, givesItsProxyTheCredentials)
{
    LoopbackServer proxy;
    control->ProxyServer = proxy.address();
    control->ProxyUsername = u"me:too"_s;
    control->ProxyPassword = u"p@ss"_s;
    get(u"/x"_s);
    EXPECT_EQ(proxy.requests.at(0).header("proxy-authorization"),
              "Basic " + QByteArray("me:too:p@ss").toBase64());
    EXPECT_FALSE(hasLine(proxy.requests.at(0), "Authorization:"));
}

TEST_F(CurlSafety, forgetsTheProxyWhenItIsTakenAway)
{
    LoopbackServer proxy;
    control->ProxyServer = proxy.address();
    control->ProxyUsername = u"me"_s;
    control->ProxyPassword = u"secret"_s;
    get(u"/x"_s);
    control->ProxyServer.clear();
    get(u"/y"_s);
    EXPECT_EQ(proxy.requests.size(), 1u);
    ASSERT_EQ(server.requests.size(), 1u);
    EXPECT_FALSE(hasLine(server.requests[0], "Proxy-"));
}

TEST_F(CurlSafety, opensATunnelThroughItsProxyForHttps)
{
    LoopbackServer proxy;
    proxy.handler = [](const Request &, const Peer &peer) {
        peer.send(LoopbackServer::response({}, {}, "403 Forbidden"));
    };
    control->ProxyServer = proxy.address();
    control->ProxyUsername = u"me"_s;
    control->ProxyPassword = u"secret"_s;
    EXPECT_EQ(getAddress(u"https://secure.example/x"_s), QByteArray());
    EXPECT_EQ(proxy.requests.at(0).method, "CONNECT");
    EXPECT_EQ(proxy.requests.at(0).target, "secure.example:443");
    EXPECT_TRUE(hasLine(proxy.requests.at(0), "Proxy-Authorization: Basic"));
}

TEST_F(CurlSafety, endsWithoutAPageWhenTheProxyIsNotThere)
{
    control->ProxyServer = u"127.0.0.1:1"_s;
    EXPECT_EQ(get(u"/"_s), QByteArray());
    EXPECT_TRUE(server.requests.empty());
}

TEST_F(CurlSafety, sharesCookiesWithinAPool)
{
    answer(LoopbackServer::response("ok", "Set-Cookie: session=17; Path=/\r\n"));
    get(u"/a"_s);
    HttpControl *other = addControl();
    other->Url = server.url(u"/b"_s);
    other->Get();
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(server.requests.at(0).header("cookie"), QByteArray());
    EXPECT_EQ(server.requests.at(1).header("cookie"), "session=17");
}

TEST_F(CurlSafety, sendsACookieToTheRedirectThatCameWithIt)
{
    server.handler = [](const Request &request, const Peer &peer) {
        if (request.target == "/a")
            peer.send(LoopbackServer::redirect("/b", "Set-Cookie: session=17\r\n"));
        else
            peer.send(LoopbackServer::response("final"));
    };
    get(u"/a"_s);
    EXPECT_EQ(server.requests.at(1).header("cookie"), "session=17");
}

TEST_F(CurlSafety, keepsCookiesFromOtherPools)
{
    answer(LoopbackServer::response("ok", "Set-Cookie: session=17; Path=/; Max-Age=1000\r\n"));
    get(u"/a"_s);
    controls.clear();
    pool = transport.createPool();
    control = addControl();
    get(u"/b"_s);
    EXPECT_EQ(server.requests.at(1).header("cookie"), QByteArray());
}

namespace {

struct AddressRow
{
    const char *name;
    QString path;
    QByteArray target;
};

void PrintTo(const AddressRow &row, std::ostream *out)
{
    *out << row.name;
}

class SentAddress : public TransportTest, public testing::WithParamInterface<AddressRow>
{
};

} // namespace

TEST_P(SentAddress, isOneRequestLineOfPrintableAscii)
{
    get(GetParam().path);
    ASSERT_EQ(server.requests.size(), 1u);
    const Request &request = server.requests[0];
    EXPECT_EQ(request.head.first(request.head.indexOf("\r\n")), "GET " + GetParam().target + " HTTP/1.1");
    EXPECT_EQ(request.head.count("\r\n"), 5);
}

INSTANTIATE_TEST_SUITE_P(Escapes, SentAddress,
                         testing::Values(AddressRow{"blanks at the end", u"/a  "_s, "/a"},
                                         AddressRow{"line end behind", u"/a\r\n"_s, "/a"},
                                         AddressRow{"inner blanks", u"/a b?q=c d"_s, "/a%20b?q=c%20d"},
                                         AddressRow{"accents", u"/caf\u00e9?q=\u00fc"_s, "/caf%E9?q=%FC"},
                                         AddressRow{"escapes", u"/a%20b?q=%E9+x&y=%"_s, "/a%20b?q=%E9+x&y=%"},
                                         AddressRow{"fragment", u"/a?b#c d"_s, "/a?b"},
                                         AddressRow{"header", u"/a HTTP/1.1\r\nX-Injected: 1\r\nY:"_s,
                                                    "/a%20HTTP/1.1%0D%0AX-Injected:%201%0D%0AY:"},
                                         AddressRow{"request", u"/a\r\n\r\nGET /b HTTP/1.1\r\n\r\n"_s,
                                                    "/a%0D%0A%0D%0AGET%20/b%20HTTP/1.1"},
                                         AddressRow{"bare line feed", u"/a\nX-Injected: 1"_s,
                                                    "/a%0AX-Injected:%201"},
                                         AddressRow{"zero", u"/a\0b"_s, "/a%00b"},
                                         AddressRow{"tab and delete", u"/a\tb\u007fc"_s, "/a%09b%7Fc"}));

TEST_F(CurlSafety, sendsNoHeaderThatAUserAgentSmugglesIn)
{
    control->UserAgent = u"Own\r\nX-Injected: 1\r\n\r\nGET /b HTTP/1.1"_s;
    get(u"/"_s);
    ASSERT_EQ(server.requests.size(), 1u);
    EXPECT_FALSE(hasLine(server.requests[0], "X-Injected"));
    EXPECT_EQ(server.requests[0].header("user-agent"), "OwnX-Injected: 1GET /b HTTP/1.1");
}

TEST_F(CurlSafety, sendsNoHeaderThatARedirectSmugglesIn)
{
    server.handler = [](const Request &request, const Peer &peer) {
        if (request.target == "/a")
            peer.send(LoopbackServer::redirect("/b\nX-Injected: 1"));
        else
            peer.send(LoopbackServer::response("final"));
    };
    get(u"/a"_s);
    ASSERT_EQ(server.requests.size(), 2u);
    EXPECT_FALSE(hasLine(server.requests[1], "X-Injected"));
}

TEST_F(CurlSafety, sendsNoHeaderThatAHostSmugglesIn)
{
    control->Url = u"http://127.0.0.1\r\nX-Injected: 1:%1/"_s.arg(server.port());
    control->Get();
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_TRUE(server.requests.empty());
}

TEST_F(CurlSafety, sendsNoUserPartOfAnAddress)
{
    EXPECT_EQ(getAddress(u"http://me:secret@"_s + server.address() + u"/x"_s), "ok");
    EXPECT_FALSE(hasLine(server.requests.at(0), "Authorization:"));
    EXPECT_EQ(server.requests.at(0).target, "/x");
}

TEST_F(CurlSafety, sendsNoUserPartOfARedirect)
{
    server.handler = [this](const Request &request, const Peer &peer) {
        if (request.target == "/a")
            peer.send(LoopbackServer::redirect("http://me:secret@" + server.address().toLatin1() + "/b"));
        else
            peer.send(LoopbackServer::response("final"));
    };
    EXPECT_EQ(get(u"/a"_s), "final");
    EXPECT_FALSE(hasLine(server.requests.at(1), "Authorization:"));
}

TEST_F(CurlSafety, answersNoRequestForCredentials)
{
    answer(LoopbackServer::response("who?", "WWW-Authenticate: Basic realm=\"x\"\r\n", "401 Unauthorized"));
    EXPECT_EQ(getAddress(u"http://me:secret@"_s + server.address() + u"/x"_s), "who?");
    EXPECT_EQ(server.requests.size(), 1u);
}

TEST_F(CurlSafety, readsNoPasswordFile)
{
    const QTemporaryDir home;
    QFile file(home.filePath(u".netrc"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("machine 127.0.0.1 login me password secret\n");
    file.close();
    Environment environment;
    environment.set("HOME", home.path().toLocal8Bit());
    get(u"/"_s);
    EXPECT_FALSE(hasLine(server.requests.at(0), "Authorization:"));
}

namespace {

// A key and the certificate that it has signed for itself.
QSslConfiguration selfSigned()
{
    const QTemporaryDir folder;
    const QString keyFile = folder.filePath(u"key.pem"_s);
    const QString certificateFile = folder.filePath(u"certificate.pem"_s);
    QProcess openssl;
    openssl.setStandardErrorFile(QProcess::nullDevice());
    openssl.start(u"openssl"_s, {u"req"_s, u"-x509"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s,
                                 u"ec_paramgen_curve:prime256v1"_s, u"-nodes"_s, u"-keyout"_s, keyFile,
                                 u"-out"_s, certificateFile, u"-subj"_s, u"/CN=127.0.0.1"_s, u"-addext"_s,
                                 u"subjectAltName=IP:127.0.0.1"_s});
    openssl.waitForFinished();
    QFile key(keyFile);
    QSslConfiguration configuration;
    if (key.open(QIODevice::ReadOnly))
        configuration.setPrivateKey(QSslKey(&key, QSsl::Ec));
    configuration.setLocalCertificate(QSslCertificate::fromPath(certificateFile).value(0));
    return configuration;
}

} // namespace

TEST_F(CurlSafety, refusesACertificateThatNobodyVouchesFor)
{
    auto listening = std::make_unique<QSslServer>();
    listening->setSslConfiguration(selfSigned());
    QStringList refusals;
    QObject::connect(listening.get(), &QSslServer::errorOccurred,
                     [&refusals](QSslSocket *socket) { refusals.append(socket->errorString()); });
    const LoopbackServer secure(std::move(listening));

    EXPECT_EQ(getAddress(u"https://"_s + secure.address() + u"/"_s), QByteArray());
    EXPECT_TRUE(waitUntil([&refusals] { return !refusals.isEmpty(); }));
    EXPECT_TRUE(refusals.value(0).contains("unknown ca"_L1)) << refusals.value(0).toStdString();
    EXPECT_TRUE(secure.requests.empty());
}
