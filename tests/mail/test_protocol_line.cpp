#include "mail/protocol_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace sondrel;
using testing::ElementsAre;

namespace {

TEST(ProtocolLines, comeWithoutLineEnds)
{
    ProtocolLines lines({});
    EXPECT_THAT(lines.sent("EHLO me\r\n"), ElementsAre("EHLO me"));
    EXPECT_THAT(lines.received("250-site.example\r\n250 SIZE\r\n"),
                ElementsAre("250-site.example", "250 SIZE"));
}

TEST(ProtocolLines, knowTheLastReply)
{
    ProtocolLines lines({});
    lines.received("550-5.1.1 first\r\n550 5.1.1 second\r\n");
    EXPECT_EQ(lines.lastReply(), "550 5.1.1 second");
    EXPECT_EQ(lines.lastCode(), 550);
    lines.forgetReply();
    EXPECT_EQ(lines.lastCode(), 0);
}

TEST(ProtocolLines, keepARefusalBehindAGoodbye)
{
    ProtocolLines lines({});
    lines.received("550 no\r\n");
    lines.sent("QUIT\r\n");
    lines.received("221 bye\r\n");
    EXPECT_EQ(lines.lastCode(), 550);
}

TEST(ProtocolLines, maskAnInitialResponse)
{
    ProtocolLines lines({});
    EXPECT_THAT(lines.sent("AUTH PLAIN AGFubgBzZWNyZXQ=\r\n"), ElementsAre("AUTH PLAIN ****"));
    EXPECT_THAT(lines.sent("AUTH LOGIN\r\n"), ElementsAre("AUTH LOGIN"));
}

TEST(ProtocolLines, maskAnswersToAChallenge)
{
    ProtocolLines lines({});
    lines.received("334 VXNlcm5hbWU6\r\n");
    EXPECT_THAT(lines.sent("YW5u\r\n"), ElementsAre("****"));
    lines.received("235 OK\r\n");
    EXPECT_THAT(lines.sent("NOOP\r\n"), ElementsAre("NOOP"));
}

TEST(ProtocolLines, maskAProxyLogin)
{
    ProtocolLines lines({});
    EXPECT_THAT(lines.sent("CONNECT a:25 HTTP/1.1\r\nProxy-Authorization: Basic YTpi\r\n\r\n"),
                ElementsAre("CONNECT a:25 HTTP/1.1", "Proxy-Authorization: ****"));
}

TEST(ProtocolLines, maskASecretThatTheServerRepeats)
{
    ProtocolLines lines({"secret", "ab"});
    EXPECT_THAT(lines.received("535 secret or c2VjcmV0 is wrong, about\r\n"),
                ElementsAre("535 **** or **** is wrong, about"));
}

} // namespace
