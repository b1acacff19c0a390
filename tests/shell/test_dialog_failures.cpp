// What the dialogs say when memory runs out.
#include "shell/frmURLs.h"
#include "shell/text_ex.h"
#include "tests/shell/dialog_test.h"
#include "tests/support/failing_allocation.h"

#include <QLabel>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

// Lets one allocation after the other fail until the log tells what is wanted.
bool logsWhenMemoryRunsOut(const QString &tag)
{
    constexpr int MostAllocations = 500;
    for (int successes = 0; successes < MostAllocations; ++successes) {
        World world;
        frmURLs dialog(world.app);
        dialog.show();
        dialog.resize(dialog.size() + QSize(10, 10));
        auto &ok = control<QPushButton>(dialog, u"cmdOK"_s);
        {
            const FailingAllocation failure(successes);
            Q_EMIT ok.clicked();
            if (!failure.happened())
                return false;
        }
        if (world.takeLog().contains(tag))
            return true;
    }
    return false;
}

TEST(DialogFailures, areLoggedByTheOKOfTheURLs)
{
    EXPECT_TRUE(logsWhenMemoryRunsOut(u"frmURLs_cmdOK_Click: "_s));
}

TEST(DialogFailures, leaveThePlainTextInAControl)
{
    constexpr int MostAllocations = 200;
    bool plain = false;
    for (int successes = 0; successes < MostAllocations && !plain; ++successes) {
        QLabel label;
        const QString text = u"中文ä"_s;
        const FailingAllocation failure(successes);
        try {
            TextEx(label, text, 936);
        } catch (const std::bad_alloc &) {
            continue; // the control itself had none
        }
        plain = failure.happened() && label.text() == text;
    }
    EXPECT_TRUE(plain);
}

} // namespace
} // namespace sondrel
