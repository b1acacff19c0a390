#include "shell/plain_tip.h"

#include "shell/keyword_model.h"
#include "shell/listing_model.h"
#include "tests/support/printing.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const QString Markup = u"<b>sale</b> & more"_s;
const QString Shown = u"<qt>&lt;b&gt;sale&lt;/b&gt; &amp; more</qt>"_s;

TEST(PlainTips, showMarkupLetterForLetter)
{
    EXPECT_EQ(plainTip(Markup), Shown);
    EXPECT_EQ(plainTip(u"salt & pepper"_s), u"salt & pepper"_s);
    EXPECT_EQ(plainTip({}), QString());
}

TEST(PlainTips, areThoseOfKeywords)
{
    World world;
    clsKeywords keywords(world.app);
    KeywordModel model(world.app);
    model.setKeywords(&keywords);
    model.AddKeywordColToGrid({Markup});
    const QModelIndex cell = model.index(0, static_cast<int>(GridField::Keyword));
    EXPECT_EQ(cell.data(Qt::ToolTipRole).toString(), Shown);
    EXPECT_EQ(cell.data().toString(), Markup);
}

TEST(PlainTips, areThoseOfListings)
{
    World world;
    ListingModel model(world.app);
    model.setListings({{u"http://a.example/<i>"_s, Markup}});
    EXPECT_EQ(model.index(0, ListingModel::Title).data(Qt::ToolTipRole).toString(), Shown);
    EXPECT_EQ(model.index(0, ListingModel::Url).data(Qt::ToolTipRole).toString(),
              u"<qt>http://a.example/&lt;i&gt;</qt>"_s);
    EXPECT_EQ(model.index(0, ListingModel::Title).data().toString(), Markup);
}

} // namespace
} // namespace sondrel
