#include "shell/column_order.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

TEST(ColumnOrder, beginsWithEveryFieldInItsFirstPlace)
{
    EXPECT_EQ(ColumnOrder().stored(), u"0,1,2,3,4,5,6,7,8"_s);
}

TEST(ColumnOrder, putsTheCheckBoxInTheFourthColumn)
{
    const ColumnOrder order = ColumnOrder::parse(u"3,0,1,2,4,5,6,7,8"_s);
    EXPECT_EQ(order.columnOf(GridField::Show), 3);
    EXPECT_EQ(order.columnOf(GridField::Keyword), 0);
    EXPECT_EQ(order.fieldAt(3), GridField::Show);
    EXPECT_EQ(order.stored(), u"3,0,1,2,4,5,6,7,8"_s);
}

TEST(ColumnOrder, takesTheFirstOrderForWhatIsNotEveryColumnOnce)
{
    for (const QString &stored : {u""_s, u"1"_s, u"0,0,2,3,4,5,6,7,8"_s, u"0,1,2,3,4,5,6,7,9"_s,
                                  u"0,1,2,3,4,5,6,7,x"_s, u"0,1,2,3,4,5,6,7,8,9"_s, u"-1,1,2,3,4,5,6,7,8"_s})
        EXPECT_EQ(ColumnOrder::parse(stored), ColumnOrder()) << stored.toStdString();
}

TEST(ColumnOrder, isReadFromTheHeadersAfterADrag)
{
    const QStringList headers{u"Keyword"_s, u"counts"_s,        u"Show"_s,   u"Positions"_s, u"Page"_s,
                              u"URL"_s,     u"LAST POSITION"_s, u"Change"_s, u"Status"_s};
    EXPECT_EQ(ColumnOrder::fromHeaders(headers).stored(), u"2,0,1,3,4,6,7,5,8"_s);
}
