#include "lookup/frmRanking.h"

#include "core/modBase64Encode.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

struct Done
{
    int index = 0;
    int errorCode = 0;
    QByteArray data;

    bool operator==(const Done &) const = default;
};

// A pool on the scripted transport: every request waits for the test's answer.
class Ranking : public testing::Test
{
protected:
    void load(qint16 connections)
    {
        pool = std::make_unique<frmRanking>(world.app);
        QObject::connect(pool.get(), &frmRanking::Completed,
                         [this](int index, int errorCode, const QByteArray &data) {
                             done.push_back({index, errorCode, data});
                             if (onCompleted)
                                 onCompleted(index);
                         });
        QObject::connect(pool.get(), &frmRanking::Cancelled, [this] { ++cancelled; });
        QObject::connect(pool.get(), &frmRanking::Unloaded, [this] {
            ++unloaded;
            pool.reset();
        });
        pool->Connections = connections;
        pool->load();
    }

    void get(int index) { pool->Connect(index, u"http://a.example/%1"_s.arg(index), u"GET"_s); }
    ScriptedHttp::Control &control(std::size_t request) { return *world.http.requests.at(request).control; }

    World world;
    std::unique_ptr<frmRanking> pool;
    std::vector<Done> done;
    std::function<void(int)> onCompleted;
    int cancelled = 0;
    int unloaded = 0;
};

using Dones = std::vector<Done>;

} // namespace

TEST_F(Ranking, makesAControlForEveryConnectionOfOnePool)
{
    load(10);
    EXPECT_EQ(world.http.pools, 1);
    EXPECT_EQ(world.http.controlsAlive, 10);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(Ranking, refusesToLoadWithoutConnections)
{
    load(0);
    EXPECT_EQ(done, (Dones{{0, 10300, "Invalid Connection Value"}}));
    EXPECT_EQ(world.http.controlsAlive, 0);
}

TEST_F(Ranking, refusesToLoadANegativeNumberOfConnections)
{
    load(-1);
    EXPECT_EQ(done, (Dones{{0, 10300, "Invalid Connection Value"}}));
}

TEST_F(Ranking, logsWhatKeepsItFromLoading)
{
    world.http.failControl = u"No more handles"_s;
    load(2);
    EXPECT_EQ(world.takeLog(), u"frmRanking_Load_Error: No more handles"_s);
    EXPECT_TRUE(done.empty());
}

TEST_F(Ranking, logsASettingThatIsNoNumberAndKeepsItsTimeOut)
{
    world.setPreference(u"TimeOut"_s, u"soon"_s);
    load(1);
    EXPECT_EQ(world.takeLog(), u"frmRanking_GetsocketSetting error :  Type mismatch"_s);
    get(1);
    world.clock.advance(30000);
    EXPECT_EQ(done.size(), 1u);
}

TEST_F(Ranking, sendsTheUsualUserAgent)
{
    load(1);
    get(1);
    EXPECT_EQ(world.http.requests.at(0).userAgent, u"Mozilla/4.0 (compatible; MSIE 6.0; Windows NT 5.1)"_s);
}

TEST_F(Ranking, sendsTheUserAgentOfTheSettings)
{
    world.setPreference(u"UserAgent"_s, u"Own/1.0"_s);
    load(1);
    get(1);
    EXPECT_EQ(world.http.requests.at(0).userAgent, u"Own/1.0"_s);
}

TEST_F(Ranking, handsOnWhatHasArrived)
{
    load(2);
    get(1);
    get(2);
    world.http.answer(1, "two");
    EXPECT_EQ(done, (Dones{{2, 0, "two"}}));
    EXPECT_EQ(world.desktop.resets, 1);
}

TEST_F(Ranking, completesAFailedConnectionWithoutData)
{
    load(1);
    get(1);
    world.http.answer(0, {}, 0);
    EXPECT_EQ(done, (Dones{{1, 0, {}}}));
}

TEST_F(Ranking, actsOnTheClosedStateOnly)
{
    load(1);
    get(1);
    Q_EMIT control(0).stateChanged();
    EXPECT_TRUE(done.empty());
    EXPECT_EQ(world.desktop.resets, 0);
}

TEST_F(Ranking, postsWhenTheMethodIsPostInAnyCase)
{
    load(1);
    pool->Connect(1, u"http://a.example/"_s, u"Post"_s, u"q=caf\u00e9"_s);
    EXPECT_TRUE(world.http.requests.at(0).post);
    EXPECT_EQ(world.http.requests.at(0).postData, "q=caf\xe9");
}

TEST_F(Ranking, getsWithEveryOtherMethod)
{
    load(1);
    pool->Connect(1, u"http://a.example/"_s, u"PUT"_s, u"q=1"_s);
    EXPECT_FALSE(world.http.requests.at(0).post);
}

TEST_F(Ranking, followsRedirectsWithoutATimeLimitOfTheControl)
{
    load(1);
    get(1);
    EXPECT_TRUE(control(0).FollowOption);
    EXPECT_FALSE(control(0).Blocking);
    EXPECT_EQ(control(0).Timeout, 0);
}

TEST_F(Ranking, dropsARequestForABusySlot)
{
    load(1);
    get(1);
    pool->Connect(1, u"http://b.example/"_s, u"GET"_s);
    EXPECT_EQ(world.http.requests.size(), 1u);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(Ranking, logsARequestForASlotThatIsNotThere)
{
    load(1);
    get(2);
    EXPECT_EQ(world.takeLog(), u"frmRanking_Connect_Error: There is no connection 2"_s);
}

TEST_F(Ranking, staysSilentWhenATransferCannotStart)
{
    load(1);
    world.http.failStart = u"No socket"_s;
    get(1);
    EXPECT_EQ(world.takeLog(), u"frmRanking_Connect_Error: No socket"_s);
    world.clock.advance(120000);
    EXPECT_TRUE(done.empty());
}

TEST_F(Ranking, startsTheNextTransferFromInsideItsEvent)
{
    load(1);
    onCompleted = [this](int index) {
        if (done.size() < 3)
            get(index);
    };
    get(1);
    world.http.answer(0, "a");
    world.http.answer(1, "b");
    world.http.answer(2, "c");
    EXPECT_EQ(done, (Dones{{1, 0, "a"}, {1, 0, "b"}, {1, 0, "c"}}));
}

TEST_F(Ranking, survivesItsDestructionFromInsideItsEvent)
{
    load(2);
    get(1);
    get(2);
    onCompleted = [this](int) { pool.reset(); };
    world.http.answer(0, "a");
    EXPECT_EQ(done, (Dones{{1, 0, "a"}}));
    EXPECT_EQ(world.http.controlsAlive, 0);
}

namespace {

struct TimeOutRow
{
    const char *name;
    QString setting;
    int milliseconds; // 0: none
};

void PrintTo(const TimeOutRow &row, std::ostream *out)
{
    *out << row.name;
}

class RankingTimeOut : public Ranking, public testing::WithParamInterface<TimeOutRow>
{
};

} // namespace

TEST_P(RankingTimeOut, endsTheTransferAtItsMoment)
{
    world.setPreference(u"TimeOut"_s, GetParam().setting);
    load(1);
    get(1);
    world.clock.advance(GetParam().milliseconds - 1);
    EXPECT_TRUE(done.empty());
    world.clock.advance(1);
    EXPECT_EQ(done, (Dones{{1, 0, {}}}));
}

INSTANTIATE_TEST_SUITE_P(Rule, RankingTimeOut,
                         testing::Values(TimeOutRow{"default", u""_s, 30000}, TimeOutRow{"one", u"1"_s, 1000},
                                         TimeOutRow{"longest", u"62"_s, 62000},
                                         TimeOutRow{"capped", u"63"_s, 60000},
                                         TimeOutRow{"capped far", u"32767"_s, 60000}));

class RankingWithoutTimeOut : public Ranking, public testing::WithParamInterface<TimeOutRow>
{
};

TEST_P(RankingWithoutTimeOut, waitsForEver)
{
    world.setPreference(u"TimeOut"_s, GetParam().setting);
    load(1);
    get(1);
    world.clock.advance(24 * 60 * 60 * 1000);
    EXPECT_TRUE(done.empty());
    EXPECT_TRUE(control(0).Busy());
}

INSTANTIATE_TEST_SUITE_P(Rule, RankingWithoutTimeOut,
                         testing::Values(TimeOutRow{"none", u"0"_s, 0}, TimeOutRow{"negative", u"-5"_s, 0}));

TEST_F(Ranking, countsTheTimeOutAnewForEveryTransfer)
{
    load(1);
    onCompleted = [this](int index) {
        if (done.size() == 1)
            get(index);
    };
    get(1);
    world.clock.advance(29000);
    world.http.answer(0, "a");
    world.clock.advance(29999);
    EXPECT_EQ(done.size(), 1u);
    world.clock.advance(1);
    EXPECT_EQ(done.size(), 2u);
}

TEST_F(Ranking, completesWithWhatHadArrivedAtTheTimeOut)
{
    load(1);
    get(1);
    control(0).body = "half a pa";
    world.clock.advance(30000);
    EXPECT_EQ(done, (Dones{{1, 0, "half a pa"}}));
}

TEST_F(Ranking, tellsOfATimeOutWhenTheEventGotLost)
{
    load(1);
    get(1);
    control(0).state = HttpControl::Closed;
    world.clock.advance(30000);
    EXPECT_EQ(done, (Dones{{1, 10200, "Time out"}}));
    world.clock.advance(30000);
    EXPECT_EQ(done.size(), 1u);
}

TEST_F(Ranking, survivesItsDestructionAtTheTimeOut)
{
    load(1);
    get(1);
    onCompleted = [this](int) { pool.reset(); };
    world.clock.advance(30000);
    EXPECT_EQ(done, (Dones{{1, 0, {}}}));
}

namespace {

struct ProxyRow
{
    const char *name;
    QString accessType;
    QString proxy;
    QString port;
    QString user;
    QString password;
    QString wantServer;
    QString wantUser;
};

void PrintTo(const ProxyRow &row, std::ostream *out)
{
    *out << row.name;
}

class RankingProxy : public Ranking, public testing::WithParamInterface<ProxyRow>
{
};

} // namespace

TEST_P(RankingProxy, goesTheWayOfTheSettings)
{
    world.setPreference(u"AccessType"_s, GetParam().accessType);
    world.setPreference(u"Proxy"_s, GetParam().proxy);
    world.setPreference(u"Port"_s, GetParam().port);
    world.setPreference(u"Auth_Username"_s, GetParam().user);
    world.setPreference(u"Auth_Password"_s, GetParam().password);
    load(1);
    get(1);
    const ScriptedHttp::Request &request = world.http.requests.at(0);
    EXPECT_EQ(request.proxyServer, GetParam().wantServer);
    EXPECT_EQ(request.proxyUsername, GetParam().wantUser);
    EXPECT_EQ(request.proxyPassword, GetParam().wantUser.isEmpty() ? QString() : GetParam().password);
}

INSTANTIATE_TEST_SUITE_P(
    Rule, RankingProxy,
    testing::Values(
        ProxyRow{"nothing set", u""_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s},
        ProxyRow{"direct", u"1"_s, u"proxy"_s, u"3128"_s, u""_s, u""_s, u""_s, u""_s},
        ProxyRow{"unknown access", u"3"_s, u"proxy"_s, u"3128"_s, u""_s, u""_s, u""_s, u""_s},
        ProxyRow{"no proxy", u"2"_s, u""_s, u"3128"_s, u""_s, u""_s, u""_s, u""_s},
        ProxyRow{"proxy", u"2"_s, u"proxy"_s, u"3128"_s, u""_s, u""_s, u"proxy:3128"_s, u""_s},
        ProxyRow{"default port", u"2"_s, u"proxy"_s, u""_s, u""_s, u""_s, u"proxy:8080"_s, u""_s},
        ProxyRow{"blanks", u"2"_s, u" proxy "_s, u" 81 "_s, u""_s, u""_s, u"proxy:81"_s, u""_s},
        ProxyRow{"credentials", u"2"_s, u"proxy"_s, u"81"_s, u"me"_s, u"secret"_s, u"proxy:81"_s, u"me"_s},
        ProxyRow{"user only", u"2"_s, u"proxy"_s, u"81"_s, u"me"_s, u""_s, u"proxy:81"_s, u""_s},
        ProxyRow{"password only", u"2"_s, u"proxy"_s, u"81"_s, u""_s, u"secret"_s, u"proxy:81"_s, u""_s}));

TEST(SocketSettingValues, keepATokenOfBothCredentials)
{
    World world;
    world.setPreference(u"Auth_Username"_s, u"me"_s);
    world.setPreference(u"Auth_Password"_s, u"secret"_s);
    SocketSetting setting;
    setting.read(world.app);
    EXPECT_EQ(setting.AuthToken, Base64Encode(world.app, u"me:secret"_s));
}

TEST(SocketSettingValues, keepNoTokenWithoutAPassword)
{
    World world;
    world.setPreference(u"Auth_Username"_s, u"me"_s);
    SocketSetting setting;
    setting.AuthToken = u"old"_s;
    setting.read(world.app);
    EXPECT_EQ(setting.AuthToken, QString());
}

TEST(SocketSettingValues, takeANegativeTimeOutForNone)
{
    SocketSetting setting;
    setting.TimeOut = -5;
    EXPECT_EQ(setting.timeOutInterval(), 0);
}

TEST_F(Ranking, cancelsAllSlotsInSilence)
{
    load(3);
    get(1);
    get(3);
    pool->Disconnect();
    EXPECT_EQ(world.http.pending(), 0);
    EXPECT_EQ(world.desktop.pendingEventRuns, 2);
    world.clock.advance(800);
    EXPECT_EQ(cancelled, 1);
    EXPECT_TRUE(done.empty());
    world.clock.advance(8000);
    EXPECT_EQ(cancelled, 1);
}

TEST_F(Ranking, tellsOfACancelOfIdleSlotsAtTheFirstTick)
{
    load(2);
    pool->Disconnect();
    world.clock.advance(799);
    EXPECT_EQ(cancelled, 0);
    world.clock.advance(1);
    EXPECT_EQ(cancelled, 1);
}

TEST_F(Ranking, takesASlotThatIsClosingForFinished)
{
    load(1);
    get(1);
    control(0).hangsOnAbort = true;
    pool->Disconnect();
    EXPECT_EQ(control(0).State(), HttpControl::Closing);
    world.clock.advance(800);
    EXPECT_EQ(cancelled, 1);
}

TEST_F(Ranking, waitsForASlotThatDoesNotClose)
{
    load(2);
    get(2);
    control(0).hangsOnAbort = true;
    pool->Disconnect();
    control(0).state = HttpControl::Connecting;
    world.clock.advance(1600);
    EXPECT_EQ(cancelled, 0);
    control(0).finish({}, 0);
    world.clock.advance(800);
    EXPECT_EQ(cancelled, 1);
    EXPECT_TRUE(done.empty());
}

TEST_F(Ranking, toleratesACompletedSlotInTheMiddleOfACancel)
{
    load(3);
    for (int index = 1; index <= 3; ++index)
        get(index);
    onCompleted = [this](int index) { get(index); };
    world.desktop.onPendingEvents = [this] {
        if (world.desktop.pendingEventRuns == 1)
            world.http.answer(1, "late page");
    };
    pool->Disconnect();
    EXPECT_EQ(done, (Dones{{2, 0, "late page"}}));
    EXPECT_EQ(world.http.pending(), 0);
    world.clock.advance(800);
    EXPECT_EQ(cancelled, 1);
}

TEST_F(Ranking, survivesItsDestructionInTheMiddleOfACancel)
{
    load(2);
    get(1);
    get(2);
    world.desktop.onPendingEvents = [this] { pool.reset(); };
    pool->Disconnect();
    EXPECT_EQ(world.http.controlsAlive, 0);
    world.clock.advance(800);
    EXPECT_EQ(cancelled, 0);
}

TEST_F(Ranking, cancelsFromInsideItsEvent)
{
    load(2);
    get(1);
    get(2);
    onCompleted = [this](int) { pool->Disconnect(); };
    world.http.answer(0, "a");
    EXPECT_EQ(done.size(), 1u);
    EXPECT_EQ(world.http.pending(), 0);
    world.clock.advance(800);
    EXPECT_EQ(cancelled, 1);
}

TEST_F(Ranking, logsACancelThatFails)
{
    load(1);
    get(1);
    world.http.failAbort = u"Cannot abort"_s;
    pool->Disconnect();
    EXPECT_EQ(world.takeLog(), u"frmRanking_Disconnect_error: Cannot abort"_s);
}

TEST_F(Ranking, transfersAgainAfterACancel)
{
    load(1);
    get(1);
    pool->Disconnect();
    get(1);
    world.http.answer(1, "again");
    EXPECT_EQ(done, (Dones{{1, 0, "again"}}));
}

TEST_F(Ranking, switchesTheTimeOutOffWithACancel)
{
    load(1);
    get(1);
    pool->Disconnect();
    world.clock.advance(60000);
    EXPECT_TRUE(done.empty());
}

TEST_F(Ranking, closesAtOnceWhenIdle)
{
    load(2);
    EXPECT_TRUE(pool->close());
}

TEST_F(Ranking, refusesToCloseWhileATransferRuns)
{
    load(2);
    get(2);
    control(0).hangsOnAbort = true;
    EXPECT_FALSE(pool->close());
    EXPECT_EQ(unloaded, 0);
    control(0).finish("rest", 200);
    EXPECT_EQ(unloaded, 1);
    EXPECT_TRUE(done.empty());
}

TEST_F(Ranking, closesOneTransferAfterTheOther)
{
    load(2);
    get(1);
    get(2);
    control(0).hangsOnAbort = true;
    control(1).hangsOnAbort = true;
    pool->close();
    EXPECT_EQ(control(1).State(), HttpControl::Connecting);
    control(0).finish({}, 0);
    EXPECT_EQ(control(1).State(), HttpControl::Closing);
    EXPECT_EQ(unloaded, 0);
    control(1).finish({}, 0);
    EXPECT_EQ(unloaded, 1);
    EXPECT_TRUE(done.empty());
}

TEST_F(Ranking, repeatsASlotsLastTransferWithTmrConnect)
{
    load(1);
    pool->Connect(1, u"http://a.example/x"_s, u"POST"_s, u"q=1"_s);
    world.http.answer(0, {}, 0);
    pool->TmrConnect(1).setEnabled(true);
    world.clock.advance(100);
    ASSERT_EQ(world.http.requests.size(), 2u);
    EXPECT_EQ(world.http.requests[1].url, u"http://a.example/x"_s);
    EXPECT_EQ(world.http.requests[1].postData, "q=1");
    EXPECT_FALSE(pool->TmrConnect(1).isEnabled());
}
