#include "shell/single_instance.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

struct Attempt
{
    bool claimed = false;
    bool heard = false;

    bool operator==(const Attempt &) const = default;
};

// Another start of the program, while this one goes on.
Attempt startAgain(const QString &folder)
{
    Attempt attempt;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        SingleInstance again(folder);
        attempt.claimed = again.claim();
        attempt.heard = again.wasHeard();
    }));
    thread->start();
    while (!thread->wait(1))
        QCoreApplication::processEvents();
    return attempt;
}

class Instance : public testing::Test
{
protected:
    QTemporaryDir folder;
};

} // namespace

TEST_F(Instance, isRaisedByASecondOne)
{
    SingleInstance first(folder.path());
    QSignalSpy raised(&first, &SingleInstance::raiseWanted);
    EXPECT_TRUE(first.claim());
    EXPECT_EQ(startAgain(folder.path()), (Attempt{false, true}));
    EXPECT_EQ(startAgain(folder.path()), (Attempt{false, true}));
    EXPECT_EQ(raised.size(), 2);
}

TEST_F(Instance, isOnePerFolder)
{
    const QTemporaryDir other;
    SingleInstance first(folder.path());
    SingleInstance second(other.path());
    EXPECT_TRUE(first.claim());
    EXPECT_TRUE(second.claim());
}

TEST_F(Instance, isTheSameByAnyPathToTheFolder)
{
    const QTemporaryDir links;
    ASSERT_TRUE(QFile::link(folder.path(), links.filePath(u"link"_s)));
    SingleInstance first(folder.path());
    EXPECT_TRUE(first.claim());
    EXPECT_EQ(startAgain(links.filePath(u"link"_s)), (Attempt{false, true}));
}

TEST_F(Instance, isTheSameInAFolderThatTheFirstOneMakes)
{
    const QString path = folder.filePath(u"not/yet/there"_s);
    SingleInstance first(path);
    EXPECT_TRUE(first.claim());
    EXPECT_EQ(startAgain(path), (Attempt{false, true}));
}

TEST_F(Instance, makesPlaceAtItsEnd)
{
    auto first = std::make_unique<SingleInstance>(folder.path());
    EXPECT_TRUE(first->claim());
    first.reset();
    SingleInstance second(folder.path());
    EXPECT_TRUE(second.claim());
}
