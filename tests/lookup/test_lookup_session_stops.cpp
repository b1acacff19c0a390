#include "tests/lookup/session_test.h"

#include <QDir>

#include <algorithm>
#include <functional>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using testing::ElementsAre;

TEST_F(Session, forgetsFurtherHitsOfAKeywordThatIsGone)
{
    world.write(u"Projects/Demo/Finder.dat"_s, "gone(1);;9;1;;;http://site.example/b;\r\n");
    session->open();
    session->LookupALLKeyword();
    answerAll();
    EXPECT_FALSE(session->Keywords->Keywords.HasKey(u"gone(1)"_s));
    EXPECT_FALSE(world.read(u"Projects/Demo/Finder.dat"_s).contains("gone"));
}

TEST_F(Session, savesNothingWhenStopped)
{
    session->LookupALLKeyword();
    world.http.answer(0, LookupWorld::page({"http://site.example/"}));
    events.clear();
    panels.clear();
    session->Disconnect();
    world.clock.advance(800);
    EXPECT_THAT(events, ElementsAre("stopping", "rows", "state", "stopped"));
    EXPECT_THAT(panels, ElementsAre("first: stop"));
    EXPECT_FALSE(world.has(u"Projects/Demo/Finder.dat"_s));
    EXPECT_TRUE(world.has(u"Results/Finder/boots.dat"_s));
    EXPECT_EQ(session->Keywords->Keywords.at(u"boots"_s).CurPos, u"1"_s);
    EXPECT_FALSE(session->Online());
    EXPECT_EQ(world.http.pending(), 0);
}

TEST_F(Session, stopsWhenAllConnectionsAreIdle)
{
    session->LookupALLKeyword();
    for (const auto &request : world.http.requests)
        request.control->state = HttpControl::Closed; // closed, with their events lost
    session->Disconnect();
    world.clock.advance(800);
    EXPECT_EQ(panels.back(), "first: stop");
}

TEST_F(Session, ignoresAStopWhenIdle)
{
    session->Disconnect();
    EXPECT_TRUE(events.empty());
}

TEST_F(Session, runsAgainAfterAStop)
{
    session->LookupALLKeyword();
    session->Disconnect();
    world.clock.advance(800);
    answered = world.http.requests.size();
    session->LookupALLKeyword();
    answerAll();
    EXPECT_EQ(session->Keywords->Keywords.at(u"tea"_s).CurPos, u"1"_s);
    EXPECT_THAT(events, testing::Contains("finished"));
}

TEST_F(Session, mayBeStoppedFromInsideAnyOfItsSignals)
{
    const std::function<void(const std::function<void()> &)> moments[] = {
        [this](auto stop) { QObject::connect(session.get(), &LookupSession::progressChanged, stop); },
        [this](auto stop) { QObject::connect(session.get(), &LookupSession::panelChanged, stop); },
        [this](auto stop) { QObject::connect(session.get(), &LookupSession::stateChanged, stop); },
        [this](auto stop) { QObject::connect(session.get(), &LookupSession::rowsChanged, stop); },
        [this](auto stop) { QObject::connect(session.get(), &LookupSession::Completed, stop); },
    };
    const auto openFiles = [] { return QDir(u"/proc/self/fd"_s).count(); };
    for (const auto &at : moments) {
        // From the first time on, the second, and so on to the last.
        for (int time = 1, stops = time; stops >= time; ++time) {
            make();
            events.clear();
            const auto open = openFiles();
            stops = 0;
            at([&] {
                if (++stops == time)
                    session->Disconnect();
            });
            session->LookupALLKeyword();
            answerAll();
            world.clock.advance(800);
            const auto ends = std::count(events.begin(), events.end(), "stopped") +
                              std::count(events.begin(), events.end(), "finished");
            EXPECT_EQ(ends, 1);
            EXPECT_FALSE(session->Online());
            EXPECT_EQ(world.http.pending(), 0);
            EXPECT_EQ(openFiles(), open);
        }
    }
}

TEST_F(Session, savesTheResultsOfAStoppedRunWithThoseOfTheNext)
{
    session->LookupALLKeyword();
    world.http.answer(0, LookupWorld::page({"http://site.example/"}));
    session->Disconnect();
    world.clock.advance(800);
    answered = world.http.requests.size();
    session->LookUpSelectedKeyword(true, rows({u"tea"_s}));
    answerAll();
    EXPECT_EQ(session->Keywords->Keywords.at(u"boots"_s).CurPos, u"1"_s);
    EXPECT_TRUE(world.read(u"Projects/Demo/Finder.dat"_s).contains("boots;2,340;1;1;"));
}

TEST_F(Session, keepsWhatAnotherSessionHasStoredMeanwhile)
{
    world.write(u"Projects/Demo/Finder.dat"_s, "tea;;9;1;;;http://site.example/b;\r\n");
    session->open();
    session->LookUpSelectedKeyword(true, rows({u"boots"_s}));
    world.write(u"Projects/Demo/Finder.dat"_s, "boots;;8;1;;;http://site.example/;\r\n"
                                               "tea;;4;1;9;+5;http://site.example/c;\r\n"
                                               "tea(1);;6;1;;;http://site.example/d;\r\n");
    answerAll();
    EXPECT_EQ(session->Keywords->Keywords.at(u"boots"_s).CurPos, u"1"_s);
    EXPECT_EQ(session->Keywords->Keywords.at(u"tea"_s).CurPos, u"4"_s);
    EXPECT_EQ(session->Keywords->Keywords.at(u"tea(1)"_s).CurPos, u"6"_s);
    EXPECT_TRUE(world.read(u"Projects/Demo/Finder.dat"_s).contains("tea(1);;6;"));
}

TEST_F(Session, doesNotBringBackARowThatWasTakenAway)
{
    world.write(u"Projects/Demo/Finder.dat"_s, "tea;;9;1;;;http://site.example/b;\r\n");
    session->open();
    session->LookUpSelectedKeyword(true, rows({u"boots"_s}));
    session->Keywords->Remove(u"tea"_s);
    answerAll();
    EXPECT_FALSE(session->Keywords->Keywords.HasKey(u"tea"_s));
}

TEST_F(Session, mayBeDestroyedFromInsideCompleted)
{
    QObject::connect(session.get(), &LookupSession::Completed, [&] { session.reset(); });
    session->LookupALLKeyword();
    answerAll();
    EXPECT_EQ(session, nullptr);
    EXPECT_EQ(world.http.controlsAlive, 0);
}

TEST_F(Session, mayBeUnloadedFromInsideProgress)
{
    QObject::connect(session.get(), &LookupSession::progressChanged, [&](int value) {
        if (value == 2)
            session->unload();
    });
    session->LookupALLKeyword();
    answerAll();
    EXPECT_FALSE(session->Online());
    EXPECT_EQ(world.http.controlsAlive, 0);
}

TEST_F(Session, letsGoOfARunWhenUnloaded)
{
    session->LookupALLKeyword();
    session->unload();
    EXPECT_GE(world.desktop.pendingEventRuns, 1);
    EXPECT_EQ(world.http.controlsAlive, 0);
    EXPECT_FALSE(session->Online());
    EXPECT_FALSE(world.has(u"Projects/Demo/Finder.dat"_s));
}
