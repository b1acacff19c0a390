#include "shell/shut_down.h"

#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const MessageBox ExitQuestion{u"Exit Sondrel"_s, u"Are you sure you want to exit?"_s, MessageIcon::Question,
                              MessageButtons::YesNo};
const MessageBox LookupQuestion{
    u"Exit Sondrel"_s,
    u"Auto look up is currently running, do you want to cancel this look up and close the program?"_s,
    MessageIcon::Information, MessageButtons::YesNo};

class CloseRequest : public testing::Test
{
protected:
    World world;
    bool online = true;
    int disconnects = 0;
    AutoLookup lookup{[this] { return online; }, [this] { ++disconnects; }};

    std::vector<MessageBox> &boxes = world.desktop.boxes;
};

} // namespace

TEST_F(CloseRequest, isGrantedOnYes)
{
    EXPECT_TRUE(mayClose(world.app, std::nullopt));
    EXPECT_EQ(boxes, std::vector<MessageBox>{ExitQuestion});
}

TEST_F(CloseRequest, isRefusedOnNo)
{
    world.desktop.answers = {MessageAnswer::No};
    EXPECT_FALSE(mayClose(world.app, lookup));
    EXPECT_EQ(boxes, std::vector<MessageBox>{ExitQuestion});
    EXPECT_EQ(disconnects, 0);
}

TEST_F(CloseRequest, asksNothingAboutALookupThatIsOver)
{
    online = false;
    EXPECT_TRUE(mayClose(world.app, lookup));
    EXPECT_EQ(boxes, std::vector<MessageBox>{ExitQuestion});
    EXPECT_EQ(disconnects, 0);
}

TEST_F(CloseRequest, cancelsTheLookupOnASecondYes)
{
    EXPECT_TRUE(mayClose(world.app, lookup));
    EXPECT_EQ(boxes, (std::vector<MessageBox>{ExitQuestion, LookupQuestion}));
    EXPECT_EQ(disconnects, 1);
}

TEST_F(CloseRequest, keepsTheLookupRunningOnASecondNo)
{
    world.desktop.answers = {MessageAnswer::Yes, MessageAnswer::No};
    EXPECT_FALSE(mayClose(world.app, lookup));
    EXPECT_EQ(boxes, (std::vector<MessageBox>{ExitQuestion, LookupQuestion}));
    EXPECT_EQ(disconnects, 0);
}

TEST_F(CloseRequest, looksForTheLookupAfterTheFirstAnswer)
{
    online = false;
    AutoLookup starting = lookup;
    starting.Online = [this] { return boxes.size() == 1; };
    EXPECT_TRUE(mayClose(world.app, starting));
    EXPECT_EQ(disconnects, 1);
}
