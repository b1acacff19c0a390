#include "lookup/curl_http_control.h"
#include "lookup/frmRanking.h"
#include "tests/support/loopback_server.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <memory>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

using Request = LoopbackServer::Request;
using Peer = LoopbackServer::Peer;

// A pool on real sockets; only the clock is the test's.
class RankingSockets : public testing::Test
{
protected:
    RankingSockets()
        : transport([this](QStringView text) { return app.toBytes(text); }),
          app(world.app.AppPath, world.app.SystemDirectory,
              Doors{world.clock, world.desktop, world.settings, transport}, world.app.locale),
          pool(std::make_unique<frmRanking>(app))
    {
        world.desktop.onPendingEvents = [] { QCoreApplication::processEvents(); };
        QObject::connect(pool.get(), &frmRanking::Completed,
                         [this](int index, int errorCode, const QByteArray &data) {
                             EXPECT_EQ(errorCode, 0);
                             pages.push_back(data);
                             if (onCompleted)
                                 onCompleted(index);
                         });
        QObject::connect(pool.get(), &frmRanking::Cancelled, [this] { ++cancelled; });
        pool->Connections = 10;
        pool->load();
    }

    void connectAll()
    {
        for (int index = 1; index <= 10; ++index)
            get(index);
    }
    void get(int index) { pool->Connect(index, server.url(u"/%1"_s.arg(index)), u"GET"_s); }
    bool waitForPages(std::size_t count)
    {
        return waitUntil([this, count] { return pages.size() >= count; });
    }
    // Answers nothing; the requests wait.
    void holdRequests()
    {
        server.handler = [this](const Request &, const Peer &peer) { held.push_back(peer); };
    }

    World world;
    LoopbackServer server;
    CurlTransport transport;
    ApplicationContext app;
    std::unique_ptr<frmRanking> pool;
    std::vector<QByteArray> pages;
    std::vector<Peer> held;
    std::function<void(int)> onCompleted;
    int cancelled = 0;
};

} // namespace

TEST_F(RankingSockets, fetchesPageAfterPageOnTenConnections)
{
    onCompleted = [this](int index) {
        if (pages.size() <= 50)
            get(index);
    };
    connectAll();
    ASSERT_TRUE(waitForPages(60));
    EXPECT_EQ(server.connections, 10);
    EXPECT_EQ(server.requests.size(), 60u);
}

TEST_F(RankingSockets, endsAServerThatNeverAnswersAtTheTimeOut)
{
    holdRequests();
    get(1);
    ASSERT_TRUE(waitUntil([this] { return held.size() == 1; }));
    world.clock.advance(29999);
    QCoreApplication::processEvents();
    EXPECT_TRUE(pages.empty());
    world.clock.advance(1);
    ASSERT_TRUE(waitForPages(1));
    EXPECT_EQ(pages[0], QByteArray());
    EXPECT_TRUE(waitUntil([this] { return server.open == 0; }));
}

TEST_F(RankingSockets, completesWithHalfAPageAtTheTimeOut)
{
    server.handler = [](const Request &, const Peer &peer) {
        peer.send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nhalf a page");
    };
    get(1);
    ASSERT_TRUE(waitUntil([this] { return !server.requests.empty(); }));
    for (int turns = 0; turns < 10; ++turns)
        QCoreApplication::processEvents();
    world.clock.advance(30000);
    ASSERT_TRUE(waitForPages(1));
    EXPECT_EQ(pages[0], "half a page");
}

TEST_F(RankingSockets, takesASlotAgainAfterItsTimeOut)
{
    holdRequests();
    get(1);
    ASSERT_TRUE(waitUntil([this] { return held.size() == 1; }));
    onCompleted = [this](int index) {
        if (pages.size() == 1)
            get(index);
    };
    server.handler = nullptr;
    world.clock.advance(30000);
    ASSERT_TRUE(waitForPages(2));
    EXPECT_EQ(pages[1], "ok");
}

TEST_F(RankingSockets, cancelsFromInsideACompletedPage)
{
    holdRequests();
    connectAll();
    ASSERT_TRUE(waitUntil([this] { return held.size() == 10; }));
    onCompleted = [this](int) { pool->Disconnect(); };
    for (const Peer &peer : held)
        peer.send(LoopbackServer::response("page"));
    ASSERT_TRUE(waitForPages(1));
    QCoreApplication::processEvents();
    const std::size_t told = pages.size();
    world.clock.advance(800);
    EXPECT_EQ(cancelled, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(pages.size(), told);
}

TEST_F(RankingSockets, hearsNothingOfAnswersThatComeAfterACancel)
{
    holdRequests();
    connectAll();
    ASSERT_TRUE(waitUntil([this] { return held.size() == 10; }));
    pool->Disconnect();
    for (const Peer &peer : held)
        peer.send(LoopbackServer::response("late"));
    EXPECT_TRUE(waitUntil([this] { return server.open == 0; }));
    world.clock.advance(800);
    EXPECT_EQ(cancelled, 1);
    EXPECT_TRUE(pages.empty());
}

TEST_F(RankingSockets, leavesNothingOpenWhenItGoesFromInsideACompletedPage)
{
    onCompleted = [this](int) { pool.reset(); };
    connectAll();
    ASSERT_TRUE(waitForPages(1));
    EXPECT_TRUE(waitUntil([this] { return server.open == 0; }));
    EXPECT_EQ(pages.size(), 1u);
}

TEST_F(RankingSockets, closesWhenItsTransfersHaveEnded)
{
    holdRequests();
    connectAll();
    ASSERT_TRUE(waitUntil([this] { return held.size() == 10; }));
    bool unloaded = false;
    QObject::connect(pool.get(), &frmRanking::Unloaded, [&] {
        unloaded = true;
        pool.reset();
    });
    EXPECT_FALSE(pool->close());
    EXPECT_TRUE(waitUntil([&unloaded] { return unloaded; }));
    EXPECT_TRUE(pages.empty());
}
