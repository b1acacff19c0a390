#include "tests/doors/recording_desktop.h"

#include "core/failure.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

TEST(RecordingDesktop, answersFromItsQueueAndThenAsSet)
{
    RecordingDesktop desktop;
    const MessageBox question{u"Title"_s, u"Text"_s, MessageIcon::Question, MessageButtons::YesNo};
    desktop.answers = {MessageAnswer::No};
    EXPECT_EQ(desktop.showMessage(question), MessageAnswer::No);
    EXPECT_EQ(desktop.showMessage(question), MessageAnswer::Yes);
    EXPECT_EQ(desktop.boxes, (std::vector<MessageBox>{question, question}));
}

TEST(RecordingDesktop, keepsItsAnswersForQuestions)
{
    RecordingDesktop desktop;
    desktop.answers = {MessageAnswer::No};
    EXPECT_EQ(desktop.showMessage({u"Title"_s, u"Text"_s}), MessageAnswer::Ok);
    EXPECT_EQ(desktop.answers.size(), 1U);
}

TEST(RecordingDesktop, nestsWaitCursors)
{
    RecordingDesktop desktop;
    {
        const WaitCursor outer(desktop);
        const WaitCursor inner(desktop);
        EXPECT_EQ(desktop.waiting, 2);
    }
    EXPECT_EQ(desktop.waiting, 0);
    EXPECT_EQ(desktop.waits, 2);
}

TEST(RecordingDesktop, hasANormalPointerAfterAReset)
{
    RecordingDesktop desktop;
    {
        const WaitCursor wait(desktop);
        desktop.resetPointer();
        EXPECT_EQ(desktop.waiting, 0);
    }
    EXPECT_EQ(desktop.waiting, 0);
}

TEST(RecordingDesktop, failsWhenToldTo)
{
    RecordingDesktop desktop;
    desktop.failing = true;
    EXPECT_THROW(desktop.showMessage({u"Title"_s, u"Text"_s}), Failure);
    EXPECT_TRUE(desktop.boxes.empty());
}
