#include "core/clsCodePage.h"
#include "core/modBase64Encode.h"
#include "core/modCommon.h"
#include "core/modUtilit.h"
#include "core/uucode.h"
#include "tests/support/failing_allocation.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

// Whatever allocation of an operation fails, it must tell so under its own tag and return nothing.

namespace {

const QString Page = u"<p>a page</p> that lives on the heap"_s;
const QString PageAndNull = Page + QChar(0);
const QByteArray PageBytes = Page.toLatin1();
const QString Url = u"dir.example/go/site.example/a"_s;

// True when the operation gave a result.
using Step = bool (*)(ApplicationContext &app);

struct LoggedCase
{
    const char *name;
    Step step;
    const char16_t *record; // what stands in the log
};

void PrintTo(const LoggedCase &row, std::ostream *out)
{
    *out << row.name;
}

class LoggedFailure : public testing::TestWithParam<LoggedCase>
{
};

const LoggedCase loggedCases[] = {
    {"CompareURL", [](ApplicationContext &app) { return CompareURL(app, Url, u"site.example"_s); },
     u" clsSearchKeyword_CompareURL: Out of memory"},
    {"AddHTTPToURL", [](ApplicationContext &app) { return !AddHTTPToURL(app, Url).isEmpty(); },
     u"AddHTTPToURL_Error: Out of memoryURL: dir.example/go/site.example/a"},
    {"GetHostFromURL", [](ApplicationContext &app) { return !GetHostFromURL(app, Url).isEmpty(); },
     u" frmHTTP_GetHostFromURL: Out of memory"},
    {"IsCollectionItem",
     [](ApplicationContext &app) {
         static const Collection<QString> items = StringToCollection(u"a;b"_s, u";"_s);
         return IsCollectionItem(app, u"b"_s, &items);
     },
     u"modCommon_IsCollectionItem error:  Out of memory"},
    {"StripHTML", [](ApplicationContext &app) { return !StripHTML(app, Page).isEmpty(); },
     u"modUtilit_StripHTML error:  Out of memory"},
    {"ParseString", [](ApplicationContext &app) { return !ParseString(app, Page, u" "_s, 2).isEmpty(); },
     u"modUtilit_ParseString error:  Out of memory"},
    {"EncodedStringX", [](ApplicationContext &app) { return !EncodedStringX(app, Page).isEmpty(); },
     u"EncodedStringX_Error: Out of memory"},
    {"QuotedPrintableEncode",
     [](ApplicationContext &app) { return !QuotedPrintableEncode(app, Page).isEmpty(); },
     u"QuotedPrintableEncode_Error: Out of memory"},
    {"fURLEncode", [](ApplicationContext &app) { return !clsCodePage(app).fURLEncode(PageBytes).isEmpty(); },
     u"clsCodePage_fURLEncode: Out of memory"},
    {"WideCharToUTF8",
     [](ApplicationContext &app) { return !clsCodePage(app).WideCharToUTF8(Page).isEmpty(); },
     u"clsCodePage_WideCharToUTF8: Out of memory"},
};

struct BoxCase
{
    const char *name;
    Step step;
    MessageBox box;
};

void PrintTo(const BoxCase &row, std::ostream *out)
{
    *out << row.name;
}

class ShownFailure : public testing::TestWithParam<BoxCase>
{
};

const BoxCase boxCases[] = {
    {"EncodedString",
     [](ApplicationContext &app) { return !EncodedString(app, Page).isEmpty(); },
     {u"Error"_s, u"Out of memory"_s, MessageIcon::Information}},
    {"StrToUTF8Encode",
     [](ApplicationContext &app) { return !StrToUTF8Encode(app, Page).isEmpty(); },
     {u"Error"_s, u"StrToUTF8Encode_ErrorOut of memory"_s, MessageIcon::Information}},
    {"Encode",
     [](ApplicationContext &app) { return !Encode(app, Page).isEmpty(); },
     {u"Error"_s, u"EncodeOut of memory"_s, MessageIcon::Exclamation}},
    {"TrimNull",
     [](ApplicationContext &app) { return !TrimNull(app, PageAndNull).isEmpty(); },
     {u"Error"_s, u"Some error occured for this program !\r\nPlease report this error to the vendor !"_s,
      MessageIcon::Critical}},
};

// Runs the step with one allocation failing, the one behind so many others.
struct Attempt
{
    Attempt(World &world, Step step, int successes)
    {
        const FailingAllocation failure(successes);
        succeeded = step(world.app);
        failed = failure.happened();
    }

    bool succeeded;
    bool failed;
};

} // namespace

TEST_P(LoggedFailure, isWrittenUnderItsTag)
{
    World world;
    ASSERT_TRUE(GetParam().step(world.app)); // makes what is made once
    int successes = 0;
    for (bool failed = true; failed; ++successes) {
        const Attempt attempt(world, GetParam().step, successes);
        failed = attempt.failed;
        ASSERT_EQ(attempt.succeeded, !failed) << "behind " << successes << " allocations";
        ASSERT_EQ(world.takeLog(), failed ? QString::fromUtf16(GetParam().record) : QString());
    }
    EXPECT_GT(successes, 1) << "nothing could fail";
}

INSTANTIATE_TEST_SUITE_P(Operations, LoggedFailure, testing::ValuesIn(loggedCases),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_P(ShownFailure, isShownInABox)
{
    World world;
    ASSERT_TRUE(GetParam().step(world.app));
    int successes = 0;
    for (bool failed = true; failed; ++successes) {
        world.desktop.boxes.clear();
        const Attempt attempt(world, GetParam().step, successes);
        failed = attempt.failed;
        ASSERT_EQ(attempt.succeeded, !failed) << "behind " << successes << " allocations";
        ASSERT_EQ(world.desktop.boxes, failed ? std::vector{GetParam().box} : std::vector<MessageBox>());
    }
    EXPECT_GT(successes, 1) << "nothing could fail";
}

INSTANTIATE_TEST_SUITE_P(Operations, ShownFailure, testing::ValuesIn(boxCases),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(CharSetFailure, isWrittenUnderItsTag)
{
    World world;
    const Step step = [](ApplicationContext &app) { return CharSet(app, Page) == u"7bit"_s; };
    ASSERT_TRUE(step(world.app));
    int successes = 0;
    for (bool failed = true; failed; ++successes) {
        // A new setting makes the program look for its code page anew.
        world.setPreference(u"CodePage"_s, successes % 2 == 0 ? u"1252"_s : u""_s);
        const Attempt attempt(world, step, successes);
        failed = attempt.failed;
        ASSERT_EQ(attempt.succeeded, !failed) << "behind " << successes << " allocations";
        ASSERT_EQ(world.takeLog(), failed ? u"CharSet_Error: Out of memory"_s : QString());
    }
    EXPECT_GT(successes, 1) << "nothing could fail";
}

TEST(AToWFailure, isWrittenWithItsTrace)
{
    World world;
    ASSERT_EQ(clsCodePage(world.app).AToW(u"\u6261\u6463"_s, 1252, 0), u"abcd"_s);
    QString result;
    {
        const FailingAllocation failure(0);
        result = clsCodePage(world.app).AToW(u"\u6261\u6463"_s, 1252, 0);
    }
    EXPECT_EQ(result, u""_s);
    EXPECT_THAT(world.takeLog().toStdString(),
                testing::MatchesRegex("AToW_Error: Out of memory-sBuffer=6, lConvertStringPoint=[0-9]+, "
                                      "lBufferPoint=[0-9]+, cwch=0,GetACP\\(\\)=1252"));
}

TEST(CovertToWideCharFailure, isWrittenWithTheText)
{
    World world;
    clsCodePage(world.app).CovertToWideChar(u"abcd"_s, 1252);
    QString result;
    {
        const FailingAllocation failure(0);
        result = clsCodePage(world.app).CovertToWideChar(u"abcd"_s, 1252);
    }
    EXPECT_EQ(result, u""_s);
    EXPECT_EQ(world.takeLog(), u"CovertToWideChar_Error:Out of memory, Text=abcd, sByteArrayString="_s);
}
