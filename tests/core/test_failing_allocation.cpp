#include "core/failure.h"
#include "tests/support/failing_allocation.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <vector>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const QString Word = u"a text that lives on the heap"_s;

// What is seen from outside cannot be optimised away.
const void *volatile seen = nullptr;

struct Case
{
    const char *name;
    void (*step)();
};

void PrintTo(const Case &row, std::ostream *out)
{
    *out << row.name;
}

class FailingAllocationOf : public testing::TestWithParam<Case>
{
};

const Case cases[] = {
    {"newText", [] { const QString text(1000, u'x'); }},
    {"joinedText", [] { const QString text = Word + Word; }},
    {"changedText",
     [] {
         QString text = Word;
         text.append(u'!');
     }},
    {"grownText",
     [] {
         QString text;
         for (int i = 0; i < 100; ++i)
             text += Word;
     }},
    {"replacedText", [] { QString(Word).replace(u"t"_s, u"longer"_s); }},
    {"splitText", [] { const QStringList words = Word.split(u' '); }},
    {"textAsBytes", [] { const QByteArray bytes = Word.toUtf8(); }},
    {"grownBytes",
     [] {
         QByteArray bytes;
         for (int i = 0; i < 100; ++i)
             bytes.append("0123456789");
     }},
    {"vector",
     [] {
         const std::vector<int> numbers(100);
         seen = numbers.data();
     }},
    {"object",
     [] {
         const auto text = std::make_unique<QString>(Word);
         seen = text.get();
     }},
};

} // namespace

// Every allocation of the step in turn: each one that fails must arrive as an exception, none may be passed
// over or bring the program down.
TEST_P(FailingAllocationOf, arrivesAsBadAlloc)
{
    int successes = 0;
    for (bool happened = true; happened; ++successes) {
        bool thrown = false;
        const FailingAllocation failure(successes);
        try {
            GetParam().step();
        } catch (const std::bad_alloc &) {
            thrown = true;
        }
        happened = failure.happened();
        ASSERT_EQ(thrown, happened) << "behind " << successes << " allocations";
    }
    EXPECT_GT(successes, 1) << "the step allocates nothing";
}

INSTANTIATE_TEST_SUITE_P(Steps, FailingAllocationOf, testing::ValuesIn(cases),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(FailingAllocation, failsOnceOnly)
{
    const FailingAllocation failure(0);
    EXPECT_THROW(QString(1000, u'x'), std::bad_alloc);
    EXPECT_TRUE(failure.happened());
    EXPECT_EQ(QString(1000, u'x').size(), 1000);
}

TEST(FailingAllocation, doesNotKeepAnExceptionFromBeingThrown)
{
    const Failure prepared(Word);
    const FailingAllocation failure(0);
    EXPECT_THROW(throw prepared, Failure);
}

TEST(FailingAllocation, leavesTheErrorLogAbleToTellIt)
{
    World world;
    world.app.WriteErrorLog(u"before"_s);
    world.takeLog();
    {
        const FailingAllocation failure(0);
        reportFailure(world.app, u"Tag: "_s, [] { const QString text(1000, u'x'); });
    }
    EXPECT_EQ(world.takeLog(), u"Tag: Out of memory"_s);
}

TEST(FailingAllocation, neverMakesALogWriteRaise)
{
    World world;
    bool happened = true;
    for (int successes = 0; happened; ++successes) {
        const FailingAllocation failure(successes);
        world.app.WriteErrorLog(Word);
        happened = failure.happened();
    }
    EXPECT_TRUE(world.takeLog().endsWith(Word));
}

TEST(FailingAllocation, endsWithItsScope)
{
    {
        const FailingAllocation failure(1000);
        EXPECT_FALSE(failure.happened());
    }
    EXPECT_NO_THROW(for (int i = 0; i < 2000; ++i) QString(1000, u'x'));
}
