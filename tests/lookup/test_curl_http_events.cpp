#include "core/failure.h"
#include "tests/lookup/transport_test.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <optional>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

using Request = LoopbackServer::Request;
using Peer = LoopbackServer::Peer;

class CurlEvents : public TransportTest
{
protected:
    void start()
    {
        control->Url = server.url(u"/"_s);
        control->Get();
    }
    // Answers nothing; the requests wait.
    void holdRequests()
    {
        server.handler = [this](const Request &, const Peer &peer) { held.push_back(peer); };
    }
    void whenEnded(const std::function<void()> &step)
    {
        QObject::connect(control, &HttpControl::stateChanged, step);
    }

    std::vector<Peer> held;
};

} // namespace

TEST_F(CurlEvents, isBusyFromTheStartToTheEvent)
{
    EXPECT_EQ(control->State(), HttpControl::Closed);
    std::optional<int> stateInEvent;
    whenEnded([&] { stateInEvent = control->State(); });
    start();
    EXPECT_NE(control->State(), HttpControl::Closed);
    EXPECT_TRUE(control->Busy());
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_EQ(stateInEvent, HttpControl::Closed);
    EXPECT_FALSE(control->Busy());
}

QStringList warnings;

void keepWarning(QtMsgType, const QMessageLogContext &, const QString &text)
{
    warnings.append(text);
}

TEST_F(CurlEvents, leavesNoSocketBehindThatTheSearchForAHostHasUsed)
{
    warnings.clear();
    const QtMessageHandler before = qInstallMessageHandler(keepWarning);
    for (int turn = 0; turn < 3; ++turn) {
        // No name server is asked for a name that cannot be one.
        control->Url = u"http://"_s + QString(70, u'a') + u".invalid/"_s;
        control->Get();
        EXPECT_TRUE(waitForEnds(turn + 1));
        QCoreApplication::processEvents();
    }
    qInstallMessageHandler(before);
    EXPECT_EQ(warnings, QStringList());
}

TEST_F(CurlEvents, tellsTheEndOnce)
{
    start();
    ASSERT_TRUE(waitForEnds(1));
    QCoreApplication::processEvents();
    EXPECT_EQ(ended, 1);
}

TEST_F(CurlEvents, refusesASecondTransferWhileOneIsUnderWay)
{
    start();
    EXPECT_THROW(control->Get(), Failure);
    EXPECT_TRUE(waitForEnds(1));
    EXPECT_EQ(control->Body(), "ok");
}

namespace {

class WrongAddress : public TransportTest, public testing::WithParamInterface<QString>
{
};

} // namespace

TEST_P(WrongAddress, isAFailedConnectionToldFromTheEventLoop)
{
    control->Url = GetParam();
    control->Get();
    EXPECT_EQ(ended, 0);
    EXPECT_TRUE(control->Busy());
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_EQ(control->Body(), QByteArray());
    EXPECT_EQ(control->ResponseCode(), 0);
}

INSTANTIATE_TEST_SUITE_P(Addresses, WrongAddress,
                         testing::Values(u""_s, u"  "_s, u"http://"_s, u"http://:80/"_s, u"http://a b/"_s,
                                         u"http://127.0.0.1:99999/"_s, u"http://[::1/"_s, u"http://\r\n/"_s,
                                         u"file:///etc/passwd"_s, u"ftp://127.0.0.1/"_s,
                                         u"mailto:a@b.example"_s, u"javascript:void(0)"_s,
                                         u"http://\u00ad/"_s));

TEST_F(CurlEvents, endsAnAddressBeyondMeasureAsAFailedConnection)
{
    control->Url = server.url(u"/"_s + QString(9'000'000, u'x'));
    control->Get();
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_EQ(control->Body(), QByteArray());
    EXPECT_TRUE(server.requests.empty());
}

TEST_F(CurlEvents, startsTheNextTransferFromInsideTheEvent)
{
    whenEnded([this] {
        if (ended < 3)
            start();
    });
    start();
    ASSERT_TRUE(waitForEnds(3));
    EXPECT_EQ(control->Body(), "ok");
    EXPECT_EQ(server.connections, 1);
}

namespace {

class FailingAtOnce : public TransportTest, public testing::WithParamInterface<QString>
{
};

} // namespace

TEST_P(FailingAtOnce, keepsTheEventLoopTurningWhenItIsStartedAgainAndAgain)
{
    control->Url = GetParam();
    QObject::connect(control, &HttpControl::stateChanged, [this] { control->Get(); });
    control->Get();
    bool ticked = false;
    QTimer::singleShot(5, [&ticked] { ticked = true; });
    EXPECT_TRUE(waitUntil([&] { return ticked && ended > 1; }));
}

INSTANTIATE_TEST_SUITE_P(Addresses, FailingAtOnce, testing::Values(u""_s, u"ftp://127.0.0.1/"_s));

TEST_F(CurlEvents, tellsOfTransfersThatFailTogether)
{
    HttpControl *second = addControl();
    for (HttpControl *each : {control, second}) {
        each->Url = u"ftp://127.0.0.1/"_s;
        each->Get();
    }
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_FALSE(control->Busy());
    EXPECT_FALSE(second->Busy());
}

TEST_F(CurlEvents, tellsOnceOfAFailedTransferThatIsAborted)
{
    HttpControl *second = addControl();
    QObject::connect(control, &HttpControl::stateChanged, [second] { second->Abort(); });
    for (HttpControl *each : {control, second}) {
        each->Url = u"ftp://127.0.0.1/"_s;
        each->Get();
    }
    ASSERT_TRUE(waitForEnds(2));
    QCoreApplication::processEvents();
    EXPECT_EQ(ended, 2);
}

TEST_F(CurlEvents, tellsOnceOfAWrongAddressThatIsAborted)
{
    control->Url.clear();
    control->Get();
    control->Abort();
    ASSERT_TRUE(waitForEnds(1));
    QCoreApplication::processEvents();
    EXPECT_EQ(ended, 1);
}

TEST_F(CurlEvents, sendsFourRequestsBeforeItTellsOfTheNextEnd)
{
    // Five ends that come together, in whatever order: the handlers of four start again, and their requests
    // must not wait for what the fifth one's handler does.
    constexpr std::size_t count = 5;
    std::vector<HttpControl *> controls{control};
    while (controls.size() < count)
        controls.push_back(addControl());
    holdRequests();
    std::ptrdiff_t sent = 0;
    for (HttpControl *each : controls) {
        QObject::connect(each, &HttpControl::stateChanged, [&, each] {
            if (ended == count)
                sent = std::count_if(held.begin(), held.end(), std::mem_fn(&Peer::hasUnreadBytes));
            else
                each->Get();
        });
    }
    for (HttpControl *each : controls) {
        each->Url = server.url(u"/"_s);
        each->Get();
    }
    ASSERT_TRUE(waitUntil([this] { return held.size() == count; }));
    for (const Peer &peer : held)
        peer.send(LoopbackServer::response("ok"));
    ASSERT_TRUE(waitForEnds(count));
    EXPECT_EQ(sent, 4);
}

TEST_F(CurlEvents, abortsWithWhatHasArrived)
{
    server.handler = [](const Request &, const Peer &peer) {
        peer.send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nhalf");
    };
    start();
    ASSERT_TRUE(waitUntil([this] { return control->Body() == "half"; }));
    control->Abort();
    EXPECT_EQ(control->State(), HttpControl::Closing);
    EXPECT_EQ(ended, 0);
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_EQ(control->State(), HttpControl::Closed);
    EXPECT_EQ(control->Body(), "half");
    EXPECT_EQ(control->ResponseCode(), 200);
    EXPECT_TRUE(waitUntil([this] { return server.open == 0; }));
}

TEST_F(CurlEvents, tellsOfAnAbortWhilePendingEventsRun)
{
    start();
    control->Abort();
    QCoreApplication::processEvents();
    EXPECT_EQ(ended, 1);
}

TEST_F(CurlEvents, tellsOnceOfATransferThatIsAbortedTwice)
{
    start();
    control->Abort();
    control->Abort();
    ASSERT_TRUE(waitForEnds(1));
    QCoreApplication::processEvents();
    EXPECT_EQ(ended, 1);
}

TEST_F(CurlEvents, abortsNothingWhenIdle)
{
    control->Abort();
    QCoreApplication::processEvents();
    EXPECT_EQ(ended, 0);
    EXPECT_EQ(control->State(), HttpControl::Closed);
}

TEST_F(CurlEvents, doesNotTakeAnAnswerThatComesAfterTheCancel)
{
    holdRequests();
    start();
    ASSERT_TRUE(waitUntil([this] { return held.size() == 1; }));
    control->Abort();
    ASSERT_TRUE(waitForEnds(1));
    held[0].send(LoopbackServer::response("late"));
    server.handler = nullptr;
    EXPECT_EQ(get(u"/next"_s), "ok");
    EXPECT_EQ(ended, 2);
}

TEST_F(CurlEvents, abortsAnotherTransferFromInsideTheEvent)
{
    HttpControl *other = addControl();
    holdRequests();
    other->Url = server.url(u"/other"_s);
    other->Get();
    ASSERT_TRUE(waitUntil([this] { return held.size() == 1; }));
    server.handler = nullptr;
    whenEnded([other] { other->Abort(); });
    start();
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(other->State(), HttpControl::Closed);
    EXPECT_EQ(other->Body(), QByteArray());
}

TEST_F(CurlEvents, survivesTheControlsDestructionFromInsideTheEvent)
{
    whenEnded([this] { controls.clear(); });
    start();
    ASSERT_TRUE(waitForEnds(1));
    QCoreApplication::processEvents();
    EXPECT_TRUE(controls.empty());
}

TEST_F(CurlEvents, survivesThePoolsDestructionFromInsideTheEvent)
{
    holdRequests();
    while (controls.size() < 10)
        addControl();
    for (const auto &each : controls) {
        QObject::connect(each.get(), &HttpControl::stateChanged, [this] {
            controls.clear();
            pool.reset();
        });
        each->Url = server.url(u"/"_s);
        each->Get();
    }
    ASSERT_TRUE(waitUntil([this] { return held.size() == 10; }));
    for (const Peer &peer : held)
        peer.send(LoopbackServer::response("ok"));
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_TRUE(waitUntil([this] { return server.open == 0; }));
    EXPECT_EQ(ended, 1);
}

TEST_F(CurlEvents, survivesThePoolsDestructionWhenAnAbortIsTold)
{
    whenEnded([this] {
        controls.clear();
        pool.reset();
    });
    start();
    control->Abort();
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_TRUE(waitUntil([this] { return server.open == 0; }));
}

TEST_F(CurlEvents, survivesTheDestructionOfAFinishedNeighbour)
{
    HttpControl *second = addControl();
    holdRequests();
    const auto destroyOther = [this](std::size_t other) { controls[other].reset(); };
    QObject::connect(control, &HttpControl::stateChanged, [&] { destroyOther(1); });
    QObject::connect(second, &HttpControl::stateChanged, [&] { destroyOther(0); });
    start();
    second->Url = server.url(u"/"_s);
    second->Get();
    ASSERT_TRUE(waitUntil([this] { return held.size() == 2; }));
    for (const Peer &peer : held)
        peer.send(LoopbackServer::response("ok"));
    ASSERT_TRUE(waitForEnds(1));
    QCoreApplication::processEvents();
    EXPECT_EQ(ended, 1);
}

TEST_F(CurlEvents, tellsOthersWhileAHandlerLetsEventsRun)
{
    HttpControl *other = addControl();
    bool otherEnded = false;
    QObject::connect(other, &HttpControl::stateChanged, [&otherEnded] { otherEnded = true; });
    whenEnded([&] {
        other->Url = server.url(u"/other"_s);
        other->Get();
        EXPECT_TRUE(waitUntil([&otherEnded] { return otherEnded; }));
    });
    start();
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(other->Body(), "ok");
}

TEST_F(CurlEvents, closesTheConnectionOfABusyControlThatGoes)
{
    holdRequests();
    start();
    ASSERT_TRUE(waitUntil([this] { return held.size() == 1; }));
    controls.clear();
    EXPECT_TRUE(waitUntil([this] { return server.open == 0; }));
    EXPECT_EQ(ended, 0);
}

TEST_F(CurlEvents, tellsNothingOfAnAbortedControlThatGoes)
{
    start();
    control->Abort();
    controls.clear();
    QCoreApplication::processEvents();
    EXPECT_EQ(ended, 0);
}

TEST_F(CurlEvents, closesKeptConnectionsWithThePool)
{
    get(u"/"_s);
    EXPECT_EQ(server.open, 1);
    controls.clear();
    pool.reset();
    EXPECT_TRUE(waitUntil([this] { return server.open == 0; }));
}

TEST_F(CurlEvents, hasTenControlsAPoolAtMost)
{
    while (controls.size() < 10)
        addControl();
    EXPECT_THROW(pool->createControl(), Failure);
    controls.pop_back();
    addControl();
    EXPECT_EQ(transport.createPool()->createControl()->State(), HttpControl::Closed);
}
