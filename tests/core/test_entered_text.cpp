#include "core/entered_text.h"

#include "tests/support/printing.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

struct Case
{
    const char *name;
    QString entered;
    QString kept;
};

TEST(EnteredText, isOneLineWithoutWhatStandsAroundIt)
{
    const Case cases[] = {
        {"plain", u"www.site.example"_s, u"www.site.example"_s},
        {"empty", {}, {}},
        {"nothing but blanks", u" \t\r\n"_s, {}},
        {"blanks around", u"  Blue Shoes "_s, u"Blue Shoes"_s},
        {"line end behind", u"mail.site.example\r\n"_s, u"mail.site.example"_s},
        {"tab and blank that does not break", u"\tBlue Shoes\u00a0"_s, u"Blue Shoes"_s},
        {"signs without width", u"\ufeffwww.site.example\u200b"_s, u"www.site.example"_s},
        {"control characters", u"\u0000\u001bname\u007f"_s, u"name"_s},
        {"lines", u" Weekly report \r\n\r\n  of the shop"_s, u"Weekly report of the shop"_s},
        {"separators of other systems", u"one\u2028two\u2029three\rfour"_s, u"one two three four"_s},
        {"blanks inside", u"two  blanks\tand a tab"_s, u"two  blanks\tand a tab"_s},
    };
    for (const Case &one : cases)
        EXPECT_EQ(enteredLine(one.entered), one.kept) << one.name;
}

TEST(EnteredText, isAListOfAddressesWithCommas)
{
    const Case cases[] = {
        {"one", u" ann@site.example\r\n"_s, u"ann@site.example"_s},
        {"empty", u"\n"_s, {}},
        {"on a line", u"ann@site.example, bob@site.example"_s, u"ann@site.example, bob@site.example"_s},
        {"a column", u"ann@site.example\nbob@site.example\n\ncy@site.example\n"_s,
         u"ann@site.example, bob@site.example, cy@site.example"_s},
        {"a column with commas", u"ann@site.example,\nbob@site.example;\ncy@site.example"_s,
         u"ann@site.example, bob@site.example; cy@site.example"_s},
    };
    for (const Case &one : cases)
        EXPECT_EQ(enteredAddresses(one.entered), one.kept) << one.name;
}

TEST(EnteredText, keepsItsBlanksWhereTheyCount)
{
    const Case cases[] = {
        {"blanks", u" se cret "_s, u" se cret "_s},
        {"line end behind", u"secret\r\n"_s, u"secret"_s},
        {"line ends inside", u"<b>\n <a"_s, u"<b> <a"_s},
        {"a tab", u"\t<li>"_s, u"\t<li>"_s},
        {"empty", {}, {}},
    };
    for (const Case &one : cases)
        EXPECT_EQ(enteredExactly(one.entered), one.kept) << one.name;
}

} // namespace
