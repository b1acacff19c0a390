#include "optimizer/page_advice.h"

#include "core/failure.h"
#include "optimizer/indexing_reasons.h"
#include "tests/support/printing.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

QString letters(qsizetype count)
{
    return QString(count, u'k');
}

TEST(KeywordAdvice, goesByTheLength)
{
    EXPECT_TRUE(keywordAdvice({}).startsWith(u"No <META> keywords tag was found"_s));
    EXPECT_TRUE(
        keywordAdvice(letters(1)).contains(u"are 1 characters, which is fine. However, they are less"_s));
    EXPECT_TRUE(keywordAdvice(letters(299)).contains(u"less than 35% of the permitted length"_s));
    EXPECT_TRUE(
        keywordAdvice(letters(300))
            .startsWith(
                u"The keywords are 300 characters, which is fine. For optimal results we suggest a tag sized"_s));
    EXPECT_TRUE(keywordAdvice(letters(1000)).contains(u"1000 characters, which is fine."_s));
    EXPECT_TRUE(
        keywordAdvice(letters(1001)).contains(u"1001 characters, which is more than the permitted"_s));
}

TEST(KeywordAdvice, notesTheCommaWhereThereIsOne)
{
    const QString note = u" Note that the keywords should be separated with commas rather than spaces."_s;
    EXPECT_TRUE(keywordAdvice(u"a,b"_s).endsWith(note));
    EXPECT_FALSE(keywordAdvice(u"a b"_s).contains(note));
    EXPECT_FALSE(keywordAdvice(letters(300)).contains(note));
}

TEST(DescriptionAdvice, goesByTheLength)
{
    EXPECT_TRUE(descriptionAdvice({}).contains(u"&lt;/HEAD&gt;</font>> portion."_s));
    EXPECT_TRUE(descriptionAdvice(letters(200))
                    .startsWith(u"The description tag is 200 characters, which is fine."_s));
    EXPECT_TRUE(
        descriptionAdvice(letters(201)).startsWith(u"The description is 201 characters, which is more"_s));
}

TEST(TitleAdvice, goesByTheLength)
{
    EXPECT_TRUE(titleAdvice({}).startsWith(u"No title tag was found in the  <font"_s));
    EXPECT_TRUE(titleAdvice(letters(100)).startsWith(u"The title tag is 100 characters, which is fine."_s));
    EXPECT_TRUE(titleAdvice(letters(101)).startsWith(u"The title is 101 characters, which is more than"_s));
}

TEST(TitleAdvice, saysNothingOfABlankInFront)
{
    EXPECT_EQ(titleAdvice(u" title"_s), titleAdvice(u"titles"_s));
}

TEST(Advice, failsBeyondSixteenBits)
{
    const QString most = letters(32767);
    EXPECT_TRUE(keywordAdvice(most).contains(u"32767"_s));
    EXPECT_TRUE(descriptionAdvice(most).contains(u"32767"_s));
    EXPECT_TRUE(titleAdvice(most).contains(u"32767"_s));
    const QString tooMany = letters(32768);
    EXPECT_THROW(keywordAdvice(tooMany), Failure);
    EXPECT_THROW(descriptionAdvice(tooMany), Failure);
    EXPECT_THROW(titleAdvice(tooMany), Failure);
}

TEST(ContentsAdvice, goesByTheWords)
{
    EXPECT_TRUE(contentsAdvice(0).contains(u"is 0 words, which is too short."_s));
    EXPECT_TRUE(contentsAdvice(3).contains(u"is 3 words, which is too short."_s));
    EXPECT_TRUE(contentsAdvice(299).contains(u"too short"_s));
    EXPECT_TRUE(contentsAdvice(300).contains(
        u"<br><br>Note: The contents of your web page is 300 words, which it is fine."_s));
    EXPECT_TRUE(contentsAdvice(1000).contains(u"which it is fine"_s));
    EXPECT_TRUE(contentsAdvice(1001).contains(u"1001 words, which may be too long."_s));
}

TEST(FrameAdvice, listsTheAddresses)
{
    EXPECT_TRUE(frameAdvice({u"a"_s, u"b"_s}).endsWith(u"<br><br><lo><li>a</li><li>b</li></lo>"_s));
    EXPECT_TRUE(frameAdvice({}).endsWith(u"<lo></lo>"_s));
}

QStringList reasonsFor(const QString &page, const QString &site, qint32 words)
{
    const QString reasons = indexingReasons(PageMarks::of(page), site, words, u"http://other.example/"_s);
    QStringList heads;
    for (const QString &item : reasons.split(u"<li>"_s, Qt::SkipEmptyParts))
        heads.append(item.mid(34, 10));
    return heads;
}

const QString Linked = u"<a href=\"http://x\">"_s;

TEST(IndexingReasons, areNoneForAGoodPage)
{
    EXPECT_EQ(reasonsFor(Linked, u"a.example"_s, 300), QStringList());
}

TEST(IndexingReasons, eachHaveTheirTest)
{
    const QString site = u"http://a.example/"_s;
    EXPECT_EQ(reasonsFor(Linked + u"<javascript>"_s, site, 300), QStringList(u"JavaScript"_s));
    EXPECT_EQ(reasonsFor(Linked + u"<script language=javascript>"_s, site, 300), QStringList());
    EXPECT_EQ(reasonsFor(Linked, site, 299), QStringList(u"There is n"_s));
    EXPECT_EQ(reasonsFor(u"<a href=x>"_s, site, 300), QStringList(u"Your page "_s));
    EXPECT_EQ(reasonsFor(u"http"_s, site, 300), QStringList(u"Your page "_s));
    EXPECT_EQ(reasonsFor(u"<!--http--><a href=x>"_s, site, 300), QStringList());
    EXPECT_EQ(reasonsFor(Linked + u"<frameset"_s, site, 300), QStringList(u"Your web s"_s));
    for (const QString &script : {u"a.PHP"_s, u"a?"_s, u"a.aspx"_s})
        EXPECT_EQ(reasonsFor(Linked, script, 300), QStringList(u"Your web s"_s));
    EXPECT_EQ(reasonsFor(Linked + u"http-equiv=\"refresh\""_s, site, 300), QStringList(u"Your web p"_s));
    EXPECT_EQ(reasonsFor(Linked + u"http-equiv=refresh"_s, site, 300), QStringList());
}

TEST(IndexingReasons, followEachOther)
{
    EXPECT_EQ(reasonsFor(u"<javascript><frameset http-equiv=\"refresh\""_s, u"?"_s, 0).size(), 6);
}

TEST(IndexingReasons, nameAForeignSite)
{
    EXPECT_TRUE(indexingReasons(PageMarks::of(Linked + u"http-equiv=\"refresh\""_s), {}, 300,
                                u"http://other.example/"_s)
                    .contains(u"content=\"0; URL=http://other.example/\">his tag redirects"_s));
}

} // namespace
} // namespace sondrel
