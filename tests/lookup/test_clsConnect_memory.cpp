#include "lookup/address_match.h"
#include "lookup/clsConnect.h"
#include "tests/support/failing_allocation.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

TEST(ScanningWithoutMemory, isLoggedAndGivesNothing)
{
    World world;
    clsConnect connect(world.app);
    connect.ActionMarker = u"action="_s;
    const QString text = u"<a href=\"x\" action=\"some longer address of a form\" >"_s;
    QString left = text;
    struct Row
    {
        QString log;
        std::function<QString()> act;
    };
    const Row rows[] = {
        {u"clsConnect_Findsection error:  "_s, [&] { return connect.FindSection(left, u"<a"_s, u">"_s); }},
        {u"clsConnect_FindActionURL Error:  "_s, [&] { return connect.FindActionURL(left); }},
        {u"clsConnect_GetRankingElement error: "_s,
         [&] { return connect.GetRankingElement(text, u"<a"_s, u">"_s); }},
        {u"clsConnect_GetRankingElement error: "_s,
         [&] { return connect.GetMatchesCounts(text, u"<a"_s, u">"_s); }},
        {u"clsConnect_FindhrefURL error:  "_s, [&] { return connect.FindhrefURL(text); }},
        {u"clsConnect_GetErrorMessage error:  "_s, [&] { return connect.GetErrorMessage(1, text); }},
        {u" clsSearchKeyword_CompareURL: "_s,
         [&] {
             return SearchKeywordCompareURL(world.app, u"a.example"_s, u"a.example"_s) ? u"x"_s : QString();
         }},
    };
    for (const Row &row : rows) {
        QString result;
        {
            const FailingAllocation failing(0);
            result = row.act();
            EXPECT_TRUE(failing.happened()) << row.log.toStdString();
        }
        EXPECT_EQ(result, QString()) << row.log.toStdString();
        EXPECT_EQ(world.takeLog(), row.log + u"Out of memory"_s);
        EXPECT_EQ(left, text);
    }
}
