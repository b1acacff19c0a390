#include "tests/doors/recording_tray_icon.h"
#include "tests/support/printing.h"

#include <gtest/gtest.h>

#include <vector>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class Clicks : public testing::Test
{
protected:
    Clicks()
    {
        QObject::connect(&tray, &TrayIcon::OnIcon, [this](qint16 code) { codes.push_back(code); });
    }

    RecordingTrayIcon tray;
    std::vector<int> codes;
};

struct Event
{
    int x;
    int code;
};

} // namespace

TEST_F(Clicks, areToldByTheirCodes)
{
    // Mouse messages 0x201 to 0x206, fifteen twips to the pixel; only the low byte counts.
    for (const auto &[x, code] : {Event{0x1E0F, 1},
                                  {0x1E1E, 2},
                                  {0x1E2D, 3},
                                  {0x1E3C, 4},
                                  {0x1E4B, 5},
                                  {0x1E5A, 6},
                                  {15, 1},
                                  {-241, 1}}) {
        codes.clear();
        tray.CallEvent(x, 0);
        EXPECT_EQ(codes, std::vector<int>{code}) << x;
    }
}

TEST_F(Clicks, areRoundedToTheNextCode)
{
    tray.CallEvent(22, 0);
    tray.CallEvent(23, 0);
    EXPECT_EQ(codes, (std::vector{1, 2}));
}

TEST_F(Clicks, areIgnoredWhenTheyAreEventsOfAWindow)
{
    tray.CallEvent(0x1E0F, 1);
    tray.CallEvent(0x1E0F, -1);
    EXPECT_TRUE(codes.empty());
}

TEST(TrayTip, isCutAtSixtyThreeCharacters)
{
    for (const int length : {0, 62, 63, 64, 300}) {
        RecordingTrayIcon tray;
        tray.ToolTipText = QString(length, u'x');
        tray.Add();
        tray.Modify();
        const QString shown(std::min(length, 63), u'x');
        EXPECT_EQ(tray.calls, (QStringList{u"add: "_s + shown, u"modify: "_s + shown})) << length;
    }
}

TEST(TrayTip, staysAsItIsGiven)
{
    RecordingTrayIcon tray;
    tray.ToolTipText = QString(70, u'x');
    tray.Add();
    EXPECT_EQ(tray.ToolTipText.size(), 70);
}
