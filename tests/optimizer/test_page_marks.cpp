#include "optimizer/page_marks.h"

#include <gtest/gtest.h>

#include <QString>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

TEST(PageMarks, areNoneOnAnEmptyPage)
{
    const PageMarks marks = PageMarks::of({});
    EXPECT_FALSE(marks.javaScriptTag || marks.linkTag || marks.http || marks.framesetTag || marks.refresh);
}

TEST(PageMarks, areFoundInAnyCase)
{
    EXPECT_TRUE(PageMarks::of(u"<JavaScript>").javaScriptTag);
    EXPECT_TRUE(PageMarks::of(u"<A HREF").linkTag);
    EXPECT_TRUE(PageMarks::of(u"Http").http);
    EXPECT_TRUE(PageMarks::of(u"<FRAMESET rows").framesetTag);
    EXPECT_TRUE(PageMarks::of(u"HTTP-EQUIV=\"Refresh\"").refresh);
    EXPECT_TRUE(PageMarks::of(u"<JAVA\u017FCRIPT>").javaScriptTag); // the long s is an "s" too
}

TEST(PageMarks, areFoundWhereverTheyBegin)
{
    // Pages are looked through in parts; no mark gets lost between two of them.
    for (qsizetype before = 0x4000 - 25; before <= 0x4000 + 1; ++before) {
        const QString filler(before, u'x');
        EXPECT_TRUE(PageMarks::of(filler + u"<javascript>"_s).javaScriptTag) << before;
        EXPECT_TRUE(PageMarks::of(filler + u"<a "_s).linkTag) << before;
        EXPECT_TRUE(PageMarks::of(filler + u"http-equiv=\"refresh\""_s).refresh) << before;
        EXPECT_FALSE(PageMarks::of(filler + u"http-equiv=\"refresh"_s).refresh) << before;
    }
}

} // namespace
} // namespace sondrel
