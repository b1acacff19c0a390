#include "lookup/frmHTTP.h"

#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

struct Page
{
    int status = 0;
    QByteArray body;

    bool operator==(const Page &) const = default;
};

class RecordingClient final : public HttpClient
{
public:
    void ProcessData(int status, const QByteArray &body) override
    {
        pages.push_back({status, body});
        if (onPage)
            onPage();
    }
    void setDisconnected(bool disconnected) override { Disconnected = disconnected; }

    std::vector<Page> pages;
    bool Disconnected = false;
    std::function<void()> onPage;
};

class Http : public testing::Test
{
protected:
    Http() : http(std::make_unique<frmHTTP>(world.app))
    {
        http->Object = &client;
        QObject::connect(http.get(), &frmHTTP::Unloaded, [this] {
            ++unloaded;
            EXPECT_EQ(http->Object, nullptr);
            http.reset();
        });
    }

    void connectToPage() { http->Connect1(u"http://a.example/page"_s); }
    ScriptedHttp::Control &control() { return *world.http.requests.front().control; }
    // Ends the transfer under way, the last that was asked for.
    void answerLast(const QByteArray &body, int status = 200)
    {
        world.http.answer(world.http.requests.size() - 1, body, status);
    }

    World world;
    RecordingClient client;
    std::unique_ptr<frmHTTP> http;
    int unloaded = 0;
};

using Pages = std::vector<Page>;

} // namespace

TEST_F(Http, handsThePageToItsClient)
{
    connectToPage();
    answerLast("page", 404);
    EXPECT_EQ(client.pages, (Pages{{404, "page"}}));
    EXPECT_EQ(world.desktop.resets, 1);
    EXPECT_FALSE(client.Disconnected);
}

TEST_F(Http, sendsTheUsualUserAgent)
{
    connectToPage();
    EXPECT_EQ(world.http.requests.at(0).userAgent, u"Mozilla/4.0 (compatible; MSIE 6.0; Windows NT 5.1)"_s);
}

TEST_F(Http, sendsTheUserAgentOfTheSettings)
{
    world.setPreference(u"UserAgent"_s, u"Own/1.0"_s);
    frmHTTP other(world.app);
    other.Connect1(u"http://a.example/"_s);
    EXPECT_EQ(world.http.requests.at(0).userAgent, u"Own/1.0"_s);
}

TEST_F(Http, postsWhenTheMethodIsPostInAnyCase)
{
    http->SubmitMethod = u"post"_s;
    http->PostData = u"q=caf\u00e9"_s;
    connectToPage();
    EXPECT_TRUE(world.http.requests.at(0).post);
    EXPECT_EQ(world.http.requests.at(0).postData, "q=caf\xe9");
}

TEST_F(Http, getsWithoutAMethod)
{
    connectToPage();
    EXPECT_FALSE(world.http.requests.at(0).post);
}

TEST_F(Http, readsTheSettingsAnewForEveryTransfer)
{
    connectToPage();
    answerLast("a");
    world.setPreference(u"AccessType"_s, u"2"_s);
    world.setPreference(u"Proxy"_s, u"proxy"_s);
    connectToPage();
    answerLast("b");
    world.setPreference(u"AccessType"_s, u"1"_s);
    connectToPage();
    EXPECT_EQ(world.http.requests.at(0).proxyServer, QString());
    EXPECT_EQ(world.http.requests.at(1).proxyServer, u"proxy:8080"_s);
    EXPECT_EQ(world.http.requests.at(2).proxyServer, QString());
}

TEST_F(Http, logsASettingThatIsNoNumberAndGoesOn)
{
    world.setPreference(u"AccessType"_s, u"direct"_s);
    connectToPage();
    EXPECT_EQ(world.takeLog(), u"frmHTTP_GetsocketSetting error :  Type mismatch"_s);
    EXPECT_EQ(world.http.pending(), 1);
}

TEST_F(Http, logsATransferThatCannotStart)
{
    world.http.failStart = u"No socket"_s;
    connectToPage();
    EXPECT_EQ(world.takeLog(), u"frmHTTP_Connect1_Error: No socket"_s);
    EXPECT_TRUE(client.pages.empty());
}

TEST_F(Http, dropsARequestWhileOneIsUnderWay)
{
    connectToPage();
    connectToPage();
    EXPECT_EQ(world.http.requests.size(), 1u);
}

TEST_F(Http, actsOnTheClosedStateOnly)
{
    connectToPage();
    Q_EMIT control().stateChanged();
    EXPECT_TRUE(client.pages.empty());
}

TEST_F(Http, asksForAnEmptyPageFourTimesATenthOfASecondApart)
{
    connectToPage();
    for (std::size_t tries = 1; tries <= 3; ++tries) {
        answerLast({}, 200);
        world.clock.advance(99);
        EXPECT_EQ(world.http.requests.size(), tries);
        world.clock.advance(1);
        EXPECT_EQ(world.http.requests.size(), tries + 1);
    }
    EXPECT_TRUE(client.pages.empty());
    answerLast({}, 503);
    EXPECT_EQ(client.pages, (Pages{{503, {}}}));
    world.clock.advance(1000);
    EXPECT_EQ(world.http.requests.size(), 4u);
    EXPECT_EQ(world.http.requests.back().url, u"http://a.example/page"_s);
}

TEST_F(Http, endsItsRetriesWithTheFirstPageThatIsNotEmpty)
{
    connectToPage();
    answerLast({});
    world.clock.advance(100);
    answerLast("page");
    EXPECT_EQ(client.pages, (Pages{{200, "page"}}));
}

TEST_F(Http, countsTheRetriesOfEveryPageByThemselves)
{
    connectToPage();
    answerLast({});
    world.clock.advance(100);
    answerLast("page");
    connectToPage();
    for (int tries = 0; tries < 3; ++tries) {
        answerLast({});
        world.clock.advance(100);
    }
    EXPECT_EQ(client.pages.size(), 1u);
    answerLast({});
    EXPECT_EQ(client.pages.size(), 2u);
}

TEST_F(Http, takesWhatHadArrivedAtTheTimeOutForThePage)
{
    connectToPage();
    control().body = "half a pa";
    world.clock.advance(30000);
    EXPECT_EQ(client.pages, (Pages{{0, "half a pa"}}));
}

TEST_F(Http, retriesAfterATimeOutWithoutData)
{
    world.setPreference(u"TimeOut"_s, u"2"_s);
    connectToPage();
    world.clock.advance(4 * 2000 + 3 * 100);
    EXPECT_EQ(world.http.requests.size(), 4u);
    EXPECT_EQ(client.pages, (Pages{{0, {}}}));
}

TEST_F(Http, hasNoTimeOutWithAnIntervalOfZero)
{
    world.setPreference(u"TimeOut"_s, u"0"_s);
    connectToPage();
    world.clock.advance(24 * 60 * 60 * 1000);
    EXPECT_EQ(world.http.pending(), 1);
}

TEST_F(Http, abortsNothingWhenItsTransferIsOver)
{
    connectToPage();
    answerLast("page");
    world.clock.advance(60000);
    EXPECT_EQ(client.pages.size(), 1u);
}

TEST_F(Http, tellsItsClientOfTheEndOfACancel)
{
    connectToPage();
    control().hangsOnAbort = true;
    http->Disconnect();
    EXPECT_FALSE(client.Disconnected);
    control().finish("half", 200);
    EXPECT_TRUE(client.Disconnected);
    EXPECT_TRUE(client.pages.empty());
}

TEST_F(Http, cancelsBetweenTwoTries)
{
    connectToPage();
    answerLast({});
    http->Disconnect();
    EXPECT_TRUE(client.Disconnected);
    world.clock.advance(1000);
    EXPECT_EQ(world.http.requests.size(), 1u);
    EXPECT_TRUE(client.pages.empty());
}

TEST_F(Http, cancelsNothingWhenIdle)
{
    http->Disconnect();
    EXPECT_FALSE(client.Disconnected);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(Http, fetchesAgainAfterACancel)
{
    connectToPage();
    http->Disconnect();
    connectToPage();
    answerLast("page");
    EXPECT_EQ(client.pages, (Pages{{200, "page"}}));
}

TEST_F(Http, startsTheNextTransferFromInsideItsEvent)
{
    client.onPage = [this] {
        if (client.pages.size() == 1)
            connectToPage();
    };
    connectToPage();
    answerLast("a");
    answerLast("b");
    EXPECT_EQ(client.pages, (Pages{{200, "a"}, {200, "b"}}));
}

TEST_F(Http, survivesItsDestructionFromInsideItsEvent)
{
    client.onPage = [this] { http.reset(); };
    connectToPage();
    answerLast("page");
    EXPECT_EQ(client.pages, (Pages{{200, "page"}}));
    EXPECT_EQ(world.http.controlsAlive, 0);
}

TEST_F(Http, fetchesWithoutAClient)
{
    http->Object = nullptr;
    connectToPage();
    answerLast("page");
    connectToPage();
    http->Disconnect();
    EXPECT_EQ(world.http.pending(), 0);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(Http, letsGoOfItsClientWhenItCloses)
{
    EXPECT_TRUE(http->close());
    EXPECT_EQ(http->Object, nullptr);
}

TEST_F(Http, refusesToCloseWhileATransferRuns)
{
    connectToPage();
    control().hangsOnAbort = true;
    EXPECT_FALSE(http->close());
    EXPECT_EQ(unloaded, 0);
    control().finish("half", 200);
    EXPECT_EQ(unloaded, 1);
    EXPECT_TRUE(client.pages.empty());
}

TEST_F(Http, closesBetweenTwoTriesWithoutAnother)
{
    connectToPage();
    answerLast({});
    EXPECT_TRUE(http->close());
    world.clock.advance(1000);
    EXPECT_EQ(world.http.requests.size(), 1u);
}

TEST_F(Http, switchesTimerClose1OffAtItsTick)
{
    http->TimerClose1().setEnabled(true);
    world.clock.advance(39999);
    EXPECT_TRUE(http->TimerClose1().isEnabled());
    world.clock.advance(1);
    EXPECT_FALSE(http->TimerClose1().isEnabled());
}
