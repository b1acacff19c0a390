#include "tests/lookup/transport_test.h"

#include <QTimer>

#include <optional>
#include <ostream>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

using Request = LoopbackServer::Request;
using Peer = LoopbackServer::Peer;

constexpr qsizetype LongestBody = qsizetype{32} * 1024 * 1024;

class CurlControl : public TransportTest
{
};

} // namespace

TEST_F(CurlControl, getsAPage)
{
    EXPECT_EQ(get(u"/a?b=c"_s), "ok");
    EXPECT_EQ(control->ResponseCode(), 200);
    EXPECT_EQ(server.requests.at(0).method, "GET");
    EXPECT_EQ(server.requests.at(0).target, "/a?b=c");
}

TEST_F(CurlControl, getsAnErrorPageLikeAnyOther)
{
    answer(LoopbackServer::response("sorry", {}, "503 Busy"));
    EXPECT_EQ(get(u"/"_s), "sorry");
    EXPECT_EQ(control->ResponseCode(), 503);
}

TEST_F(CurlControl, sendsTheUserAgentAndNothingOfACaller)
{
    get(u"/"_s);
    const Request &request = server.requests.at(0);
    EXPECT_EQ(request.header("user-agent"), "Test/1.0");
    EXPECT_EQ(request.header("accept-encoding"), "deflate, gzip, br, zstd");
    EXPECT_EQ(request.head.count("\r\n"), 5); // request line, Host, User-Agent, Accept, Accept-Encoding
}

TEST_F(CurlControl, posts)
{
    control->Url = server.url(u"/go"_s);
    control->Post("q=a&b=%20");
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_EQ(control->Body(), "ok");
    EXPECT_EQ(server.requests.at(0).method, "POST");
    EXPECT_EQ(server.requests.at(0).body, "q=a&b=%20");
    EXPECT_EQ(server.requests.at(0).header("content-type"), "application/x-www-form-urlencoded");
}

TEST_F(CurlControl, postsAnEmptyBody)
{
    control->Url = server.url(u"/go"_s);
    control->Post({});
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_EQ(server.requests.at(0).method, "POST");
    EXPECT_EQ(server.requests.at(0).header("content-length"), "0");
}

TEST_F(CurlControl, postsALongBodyWithoutAskingFirst)
{
    control->Url = server.url(u"/go"_s);
    control->Post(QByteArray(3 * 1024 * 1024, 'x'));
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_EQ(server.requests.at(0).body.size(), 3 * 1024 * 1024);
    EXPECT_EQ(server.requests.at(0).header("expect"), QByteArray());
}

TEST_F(CurlControl, getsAfterAPost)
{
    control->Url = server.url(u"/go"_s);
    control->Post("q=a");
    ASSERT_TRUE(waitForEnds(1));
    get(u"/b"_s);
    EXPECT_EQ(server.requests.at(1).method, "GET");
    EXPECT_EQ(server.requests.at(1).body, QByteArray());
}

TEST_F(CurlControl, followsRedirectsToTheFinalPage)
{
    server.handler = [](const Request &request, const Peer &peer) {
        if (request.target == "/a")
            peer.send(LoopbackServer::redirect("/b/c"));
        else
            peer.send(LoopbackServer::response("final"));
    };
    EXPECT_EQ(get(u"/a"_s), "final");
    EXPECT_EQ(control->ResponseCode(), 200);
    EXPECT_EQ(server.requests.at(1).target, "/b/c");
}

TEST_F(CurlControl, getsThePageThatAPostIsRedirectedTo)
{
    server.handler = [](const Request &request, const Peer &peer) {
        if (request.method == "POST")
            peer.send(LoopbackServer::redirect("/results"));
        else
            peer.send(LoopbackServer::response("results"));
    };
    control->Url = server.url(u"/go"_s);
    control->Post("q=a");
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_EQ(control->Body(), "results");
}

TEST_F(CurlControl, staysAtARedirectWhenItIsNotToFollow)
{
    answer(LoopbackServer::redirect("/b"));
    control->FollowOption = false;
    EXPECT_EQ(get(u"/a"_s), "moved");
    EXPECT_EQ(control->ResponseCode(), 302);
}

TEST_F(CurlControl, followsTwentyRedirects)
{
    server.handler = [](const Request &request, const Peer &peer) {
        const int left = request.target.sliced(1).toInt();
        peer.send(left == 0 ? LoopbackServer::response("final")
                            : LoopbackServer::redirect("/" + QByteArray::number(left - 1)));
    };
    EXPECT_EQ(get(u"/20"_s), "final");
    EXPECT_EQ(get(u"/21"_s), QByteArray());
}

TEST_F(CurlControl, leavesALoopOfRedirects)
{
    answer(LoopbackServer::redirect("/again"));
    EXPECT_EQ(get(u"/again"_s), QByteArray());
    EXPECT_EQ(server.requests.size(), 21u);
}

namespace {

struct Row
{
    const char *name;
    QByteArray bytes;
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

class RefusedRedirect : public TransportTest, public testing::WithParamInterface<Row>
{
};

class EncodedBody : public TransportTest, public testing::WithParamInterface<Row>
{
};

class BrokenAnswer : public TransportTest, public testing::WithParamInterface<Row>
{
};

} // namespace

TEST_P(RefusedRedirect, endsWithoutAPage)
{
    answer(LoopbackServer::redirect(GetParam().bytes));
    EXPECT_EQ(get(u"/"_s), QByteArray());
    EXPECT_EQ(server.requests.size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Schemes, RefusedRedirect,
                         testing::Values(Row{"file", "file:///etc/passwd"}, Row{"ftp", "ftp://127.0.0.1:1/x"},
                                         Row{"gopher", "gopher://127.0.0.1:1/x"},
                                         Row{"dict", "dict://127.0.0.1:1/x"}));

TEST_P(EncodedBody, isDecoded)
{
    answer(LoopbackServer::response(GetParam().bytes,
                                    "Content-Encoding: " + QByteArray(GetParam().name) + "\r\n"));
    EXPECT_EQ(get(u"/"_s), "a page, a page, a page");
}

INSTANTIATE_TEST_SUITE_P(
    Encodings, EncodedBody,
    testing::Values(
        Row{"identity", "a page, a page, a page"},
        Row{"gzip", QByteArray::fromHex("1f8b08000000000002034b5428484c4fd5514844a1013b0df2c416000000")},
        Row{"deflate", QByteArray::fromHex("789c4b5428484c4fd5514844a1014eba06f3")},
        Row{"br", QByteArray::fromHex("1b1500f88d946edeb406092b83532c67a14f3800d901")},
        Row{"zstd", QByteArray::fromHex("28b52ffd2416750000406120706167652c200100930b17268fba50")}));

TEST_P(BrokenAnswer, isAFailedConnection)
{
    answerAndClose(GetParam().bytes);
    EXPECT_EQ(get(u"/"_s), QByteArray());
    EXPECT_EQ(ended, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Servers, BrokenAnswer,
    testing::Values(Row{"nothing", ""}, Row{"garbage", QByteArray("\x01\x02\xff\x00garbage\r\n\r\n", 15)},
                    Row{"page without headers", "<html>old</html>"}, Row{"half a status line", "HTTP/1."},
                    Row{"headers without end", "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n"},
                    Row{"negative length", "HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\n"},
                    Row{"wrong chunk", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\nbody\r\n"},
                    Row{"unknown encoding", "HTTP/1.1 200 OK\r\nContent-Encoding: secret\r\n\r\nbody"},
                    Row{"headers beyond measure",
                        "HTTP/1.1 200 OK\r\nX-Long: " + QByteArray(1024 * 1024, 'x') + "\r\n\r\nbody"}));

TEST_F(CurlControl, takesABodyWithoutLengthUpToTheEndOfTheConnection)
{
    answerAndClose("HTTP/1.1 200 OK\r\n\r\nno length");
    EXPECT_EQ(get(u"/"_s), "no length");
}

TEST_F(CurlControl, keepsWhatArrivedBeforeAnEarlyEnd)
{
    answerAndClose("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\ntoo short");
    EXPECT_EQ(get(u"/"_s), "too short");
    EXPECT_EQ(control->ResponseCode(), 200);
}

TEST_F(CurlControl, believesALyingLengthNoFurtherThanTheBodyGoes)
{
    answerAndClose("HTTP/1.1 200 OK\r\nContent-Length: 900000000000000\r\n\r\nshort");
    EXPECT_EQ(get(u"/"_s), "short");
}

TEST_F(CurlControl, keepsWhatArrivedBeforeAReset)
{
    Peer peer(nullptr);
    server.handler = [&peer](const Request &, const Peer &asking) {
        peer = asking;
        peer.send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nbefore");
    };
    control->Url = server.url(u"/"_s);
    control->Get();
    ASSERT_TRUE(waitUntil([this] { return control->Body() == "before"; }));
    peer.reset();
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_EQ(control->Body(), "before");
}

TEST_F(CurlControl, endsWithoutAPageWhenTheServerResets)
{
    server.handler = [](const Request &, const Peer &peer) { peer.reset(); };
    EXPECT_EQ(get(u"/"_s), QByteArray());
    EXPECT_EQ(control->ResponseCode(), 0);
}

TEST_F(CurlControl, putsSlowChunksTogether)
{
    QTimer ticks;
    Peer peer(nullptr);
    int sent = 0;
    server.handler = [&](const Request &, const Peer &asking) {
        peer = asking;
        peer.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
        ticks.start(5);
    };
    QObject::connect(&ticks, &QTimer::timeout, [&] {
        if (++sent < 5)
            return peer.send("2\r\na\n\r\n");
        peer.send("0\r\n\r\n");
        ticks.stop();
    });
    EXPECT_EQ(get(u"/"_s), "a\na\na\na\n");
}

TEST_F(CurlControl, cutsAnEndlessBodyOff)
{
    server.handler = [](const Request &, const Peer &peer) {
        peer.send("HTTP/1.1 200 OK\r\n\r\n");
        peer.sendForEver(QByteArray(256 * 1024, 'x'));
    };
    EXPECT_EQ(get(u"/"_s).size(), LongestBody);
    EXPECT_EQ(control->ResponseCode(), 200);
    EXPECT_TRUE(waitUntil([this] { return server.open == 0; }));
}

TEST_F(CurlControl, cutsABodyOffThatGrowsWhenItIsDecoded)
{
    // The compressed form behind its four bytes of length.
    const QByteArray packed = qCompress(QByteArray(LongestBody + 1, 'x')).sliced(4);
    answer(LoopbackServer::response(packed, "Content-Encoding: deflate\r\n"));
    EXPECT_EQ(get(u"/"_s).size(), LongestBody);
}

TEST_F(CurlControl, takesABodyOfTheGreatestLengthWhole)
{
    const QByteArray body = QByteArray(LongestBody - 3, 'x') + "end";
    answer(LoopbackServer::response(body));
    EXPECT_EQ(get(u"/"_s), body);
}

TEST_F(CurlControl, endsAtItsOwnTimeLimit)
{
    server.handler = [](const Request &, const Peer &) {};
    control->Timeout = 50;
    EXPECT_EQ(get(u"/"_s), QByteArray());
    EXPECT_EQ(server.requests.size(), 1u);
}

TEST_F(CurlControl, endsWithoutAPageWhenNobodyListens)
{
    QString address;
    {
        const LoopbackServer gone;
        address = gone.url(u"/"_s);
    }
    EXPECT_EQ(getAddress(address), QByteArray());
    EXPECT_EQ(control->ResponseCode(), 0);
}

TEST_F(CurlControl, forgetsTheLastPageWhenTheNextFails)
{
    get(u"/"_s);
    EXPECT_EQ(getAddress(QString()), QByteArray());
    EXPECT_EQ(control->ResponseCode(), 0);
}

TEST_F(CurlControl, runsTenTransfersToOneHostAtOnce)
{
    std::vector<Peer> waiting;
    server.handler = [&waiting](const Request &, const Peer &peer) {
        waiting.push_back(peer);
        if (waiting.size() == 10) {
            for (const Peer &each : waiting)
                each.send(LoopbackServer::response("ten"));
        }
    };
    while (controls.size() < 10)
        addControl();
    for (const auto &each : controls) {
        each->Url = server.url(u"/"_s);
        each->Get();
    }
    ASSERT_TRUE(waitForEnds(10));
    for (const auto &each : controls)
        EXPECT_EQ(each->Body(), "ten");
}

TEST_F(CurlControl, keepsItsConnectionForTheNextPage)
{
    for (int page = 0; page < 5; ++page)
        get(u"/"_s);
    EXPECT_EQ(server.requests.size(), 5u);
    EXPECT_EQ(server.connections, 1);
}

TEST_F(CurlControl, keepsTenConnectionsForTheNextPages)
{
    while (controls.size() < 10)
        addControl();
    for (int round = 1; round <= 3; ++round) {
        for (const auto &each : controls) {
            each->Url = server.url(u"/"_s);
            each->Get();
        }
        ASSERT_TRUE(waitForEnds(10 * round));
    }
    EXPECT_EQ(server.requests.size(), 30u);
    EXPECT_EQ(server.connections, 10);
}

TEST_F(CurlControl, connectsAnewWhenTheServerHasClosedAKeptConnection)
{
    answerAndClose(LoopbackServer::response("ok"));
    EXPECT_EQ(get(u"/a"_s), "ok");
    ASSERT_TRUE(waitUntil([this] { return server.open == 0; }));
    EXPECT_EQ(get(u"/b"_s), "ok");
    EXPECT_EQ(server.connections, 2);
}

TEST_F(CurlControl, asksAgainOnANewConnectionWhenAKeptOneBreaksAtTheRequest)
{
    server.handler = [this](const Request &, const Peer &peer) {
        if (server.requests.size() == 2)
            peer.reset();
        else
            peer.send(LoopbackServer::response("ok"));
    };
    get(u"/a"_s);
    EXPECT_EQ(get(u"/b"_s), "ok");
    EXPECT_EQ(server.connections, 2);
}

namespace {

class BytesBehindAPage : public TransportTest, public testing::WithParamInterface<Row>
{
protected:
    /// The first connection sends the bytes behind its first page, once that has arrived.
    void getPageWithBytesBehind()
    {
        std::optional<Peer> first;
        server.handler = [&](const Request &, const Peer &peer) {
            first = peer;
            peer.send(LoopbackServer::response("first"));
        };
        EXPECT_EQ(get(u"/first"_s), "first");
        first.value().send(GetParam().bytes);
        answer(LoopbackServer::response("next"));
    }
};

} // namespace

TEST_P(BytesBehindAPage, areNotTakenForTheNextAnswer)
{
    getPageWithBytesBehind();
    EXPECT_EQ(get(u"/next"_s), "next");
    EXPECT_EQ(control->ResponseCode(), 200);
    EXPECT_EQ(server.connections, 2);
    EXPECT_EQ(get(u"/last"_s), "next");
    EXPECT_EQ(server.connections, 2);
}

TEST_P(BytesBehindAPage, areNotTakenForTheAnswerToAPost)
{
    getPageWithBytesBehind();
    control->Url = server.url(u"/next"_s);
    control->Post("q=a");
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(control->Body(), "next");
    EXPECT_EQ(server.requests.back().body, "q=a");
}

INSTANTIATE_TEST_SUITE_P(Servers, BytesBehindAPage,
                         testing::Values(Row{"line end", "\r\n"}, Row{"end of the page", "</html>"},
                                         Row{"much", QByteArray(100'000, 'x')}));

TEST_F(CurlControl, asksAgainOnceWhenAKeptConnectionAnswersWithGarbage)
{
    get(u"/"_s);
    answer("garbage\r\n\r\n");
    EXPECT_EQ(get(u"/"_s), QByteArray());
    EXPECT_EQ(server.requests.size(), 3u);
}

TEST_F(CurlControl, asksOnceWhenANewConnectionAnswersWithGarbage)
{
    answer("garbage\r\n\r\n");
    EXPECT_EQ(get(u"/"_s), QByteArray());
    EXPECT_EQ(server.requests.size(), 1u);
}
