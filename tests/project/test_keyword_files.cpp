#include "project/clsKeywords.h"
#include "tests/support/bad_files.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const auto Terms = u"Projects/Garden/Keywords.dat"_s;
const auto Results = u"Projects/Garden/GoogleUK.dat"_s;

class KeywordFiles : public testing::Test
{
protected:
    KeywordFiles() : keywords(world.app)
    {
        keywords.AccountName = u"Garden"_s;
        keywords.Engine = u"Google(UK)"_s;
    }

    void addRow(const QString &keyword, const QString &position = {}, bool optimize = true)
    {
        clsKeyword row;
        row.Keyword = keyword;
        row.CurPos = position;
        row.Optimize = optimize;
        keywords.AddKeyword(row, -1);
    }

    QStringList rows() const
    {
        QStringList names;
        for (const clsKeyword &row : keywords.Keywords)
            names.append(row.Keyword + (row.Optimize ? u"+"_s : u"-"_s) + row.CurPos);
        return names;
    }

    World world;
    clsKeywords keywords;
};

} // namespace

TEST_F(KeywordFiles, loadsTermsAndFlags)
{
    world.write(Terms, "shoes;-1\r\n\r\nred shoes;0;more\r\nboots;2\r\n;-1\r\n");
    keywords.LoadKeywords();
    EXPECT_EQ(rows(), (QStringList{u"shoes+"_s, u"red shoes-"_s, u"boots+"_s}));
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(KeywordFiles, replacesTheRowsWhenItLoads)
{
    addRow(u"old"_s);
    keywords.LoadKeywords();
    EXPECT_EQ(rows(), QStringList{u"old+"_s}) << "without a file";
    world.write(Terms, "new;-1\r\n");
    keywords.LoadKeywords();
    EXPECT_EQ(rows(), QStringList{u"new+"_s});
}

TEST_F(KeywordFiles, makesTheProjectsFoldersToLoad)
{
    keywords.LoadKeywords();
    EXPECT_TRUE(world.has(u"Projects/Garden"_s));
    EXPECT_FALSE(world.has(Terms));
}

TEST_F(KeywordFiles, takesALineWithoutAFlagForAnEmptyTerm)
{
    world.write(Terms, "shoes\r\nboots;-1\r\nhats\r\nbags;-1\r\n");
    keywords.LoadKeywords();
    EXPECT_EQ(rows(), (QStringList{u"+"_s, u"boots+"_s}));
    EXPECT_TRUE(world.takeLog().startsWith("clsKeywords_LoadKeywords error : "_L1));
}

TEST_F(KeywordFiles, endsTheLoadAtARepeatedTerm)
{
    world.write(Terms, "Shoes;-1\r\nboots;-1\r\nshoes;0\r\nhats;-1\r\n");
    keywords.LoadKeywords();
    EXPECT_EQ(rows(), (QStringList{u"Shoes+"_s, u"boots+"_s}));
    EXPECT_TRUE(world.takeLog().startsWith("clsKeywords_LoadKeywords error : "_L1));
}

TEST_F(KeywordFiles, endsTheLoadAtAFlagThatIsNoNumber)
{
    world.write(Terms, "shoes;-1\r\nboots;yes\r\nhats;-1\r\n");
    keywords.LoadKeywords();
    EXPECT_EQ(rows(), QStringList{u"shoes+"_s});
    EXPECT_EQ(world.takeLog(), u"clsKeywords_LoadKeywords error : Type mismatch"_s);
}

TEST_F(KeywordFiles, keepsAListForGoodThatItReadInPart)
{
    world.write(Terms, "a;-1\r\nb;x\r\nc;-1\r\n");
    keywords.LoadKeywords();
    keywords.SaveKeywords();
    EXPECT_EQ(world.read(Terms), "a;-1\r\n\r\n");
    EXPECT_EQ(world.read(Terms + u".damaged"_s), "a;-1\r\nb;x\r\nc;-1\r\n");
    keywords.LoadKeywords();
    keywords.SaveKeywords();
    EXPECT_FALSE(world.has(Terms + u".damaged2"_s));
}

TEST_F(KeywordFiles, savesTermsWithoutFurtherHits)
{
    addRow(u"shoes"_s, u"3"_s);
    addRow(u"shoes(2)"_s, u"9"_s);
    addRow(u"caf\u00e9"_s, {}, false);
    keywords.SaveKeywords();
    EXPECT_EQ(world.read(Terms), "shoes;-1\r\ncaf\xe9;0\r\n\r\n");
    EXPECT_EQ(world.desktop.waits, 1);
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(KeywordFiles, savesEveryRowsResults)
{
    clsKeyword row;
    row.Keyword = u"shoes"_s;
    row.Count = u"1,240"_s;
    row.CurPos = u"3"_s;
    row.Page = u"1"_s;
    row.LastPosition = u"5"_s;
    row.Change = u"+2"_s;
    row.URL = u"http://site.example/"_s;
    row.Status = u"11/15/2026"_s;
    keywords.AddKeyword(row, -1);
    addRow(u"shoes(2)"_s, u"9"_s);
    keywords.SaveKeywordResults();
    EXPECT_EQ(world.read(Results), "shoes;1,240;3;1;5;+2;http://site.example/;11/15/2026\r\n"
                                   "shoes(2);;9;;;;;\r\n\r\n");
    EXPECT_FALSE(world.has(Terms));
}

TEST_F(KeywordFiles, savesNoResultsWithoutAProject)
{
    addRow(u"shoes"_s);
    keywords.AccountName.clear();
    keywords.SaveKeywordResults();
    EXPECT_EQ(QDir(world.path(u"Projects"_s)).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
              QStringList());
    EXPECT_TRUE(world.has(u"Projects"_s));
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(KeywordFiles, bringsFurtherHitsBack)
{
    world.write(Terms, "shoes;0\r\n");
    world.write(Results, "SHOES;10;3;1;5;+2;http://site.example/;Failed;ninth\r\n"
                         "shoes(2);10;9;1;;;http://site.example/b;11/15/2026\r\n"
                         "shoes(x);10;11;1;;;http://site.example/c;11/15/2026\r\n"
                         "gone;10;12;1;;;http://site.example/d;11/15/2026\r\n"
                         "shoes(3);10;13\r\n;;;;;;;\r\n"
                         "shoes( 4 );10;14;1;;;u;s\r\nother)5(;10;15;1;;;u;s\r\n");
    keywords.LoadKeywords();
    keywords.FillKeywordsLookupValue();
    EXPECT_EQ(rows(), (QStringList{u"shoes-3"_s, u"shoes(2)+9"_s, u"shoes( 4 )+14"_s}));
    const clsKeyword &row = keywords.Keywords.at(1);
    EXPECT_EQ(row.Keyword, u"shoes"_s);
    EXPECT_EQ(row.Count, u"10"_s);
    EXPECT_EQ(row.Page, u"1"_s);
    EXPECT_EQ(row.LastPosition, u"5"_s);
    EXPECT_EQ(row.Change, u"+2"_s);
    EXPECT_EQ(row.URL, u"http://site.example/"_s);
    EXPECT_EQ(row.Status, u"Failed"_s);
}

TEST_F(KeywordFiles, updatesAFurtherHitThatStandsTwice)
{
    addRow(u"shoes"_s);
    world.write(Results, "shoes(2);;9;;;;;\r\nSHOES(2);;8;;;;;\r\n");
    keywords.FillKeywordsLookupValue();
    EXPECT_EQ(rows(), (QStringList{u"shoes+"_s, u"shoes(2)+8"_s}));
}

TEST_F(KeywordFiles, fillsARowUnderItsEditedText)
{
    keywords.Add(u"old"_s, u"new"_s, -1);
    world.write(Results, "new;;3;;;;;\r\nold;;4;;;;;\r\nold(2);;5;;;;;\r\n");
    keywords.FillKeywordsLookupValue();
    EXPECT_EQ(rows(), (QStringList{u"new+3"_s, u"old(2)+5"_s}));
}

TEST_F(KeywordFiles, fillsNothingWithoutRows)
{
    world.write(Results, "shoes(2);;9;;;;;\r\n");
    keywords.FillKeywordsLookupValue();
    EXPECT_EQ(rows(), QStringList());
}

TEST_F(KeywordFiles, loadsBackWhatItSaved)
{
    addRow(u"shoes"_s, u"3"_s);
    addRow(u"shoes(2)"_s, u"9"_s);
    for (const auto &name : {u"tcp/ip"_s, u"a\\b"_s, u".."_s, u"50%"_s, u"\"x\""_s, u"\u20ac 5"_s})
        addRow(name, u"4"_s, false);
    const QStringList before = rows();
    keywords.SaveKeywordResults();
    keywords.SaveKeywords();
    keywords.RemoveAll();
    keywords.LoadKeywords();
    keywords.FillKeywordsLookupValue();
    QStringList after = rows();
    EXPECT_EQ(QSet<QString>(after.begin(), after.end()), QSet<QString>(before.begin(), before.end()));
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(KeywordFiles, readsLinesOfNineFieldsUnderAnotherKey)
{
    world.write(Results, "shoes;10;3;1;5;+2;http://site.example/;Failed;\r\nboots;;4;;;;;\r\n\r\n");
    keywords.LoadKeywordResults();
    EXPECT_EQ(rows(), (QStringList{u"shoes+3"_s, u"+"_s}));
    EXPECT_TRUE(keywords.Keywords.HasKey(u"keyshoes"_s));
    EXPECT_TRUE(keywords.Keywords.HasKey(u"Key"_s));
}

TEST_F(KeywordFiles, logsASecondLineThatIsTooShort)
{
    world.write(Results, "shoes;;3;;;;;\r\nboots;;4;;;;;\r\n");
    keywords.LoadKeywordResults();
    EXPECT_TRUE(world.takeLog().startsWith("clsKeywords_LoadKeywordResults: "_L1));
    EXPECT_EQ(keywords.Count(), 1);
}

TEST_F(KeywordFiles, logsNamesThatNoFileCanHave)
{
    addRow(u"shoes"_s);
    keywords.Engine = u"a/b"_s;
    keywords.SaveKeywordResults();
    EXPECT_TRUE(world.takeLog().startsWith("clsKeywords_SaveKeywordResults"_L1));
    keywords.FillKeywordsLookupValue();
    keywords.LoadKeywordResults();
    EXPECT_EQ(world.takeLog(), QString()) << "a reader only finds no file";
    keywords.AccountName = u".."_s;
    keywords.SaveKeywords();
    EXPECT_TRUE(world.takeLog().contains("clsKeywords_SaveKeywords\"..\""_L1));
    EXPECT_FALSE(world.has(u"Keywords.dat"_s));
}

TEST_F(KeywordFiles, logsFoldersInThePlaceOfFiles)
{
    addRow(u"shoes"_s);
    putFolder(world, Terms);
    putFolder(world, Results);
    keywords.FillKeywordsLookupValue();
    EXPECT_TRUE(world.takeLog().startsWith("clsKeywords_FillKeywordsValueFromLookup error: "_L1));
    keywords.LoadKeywordResults();
    EXPECT_TRUE(world.takeLog().contains("clsKeywords_LoadKeywordResults: "_L1));
    keywords.SaveKeywordResults();
    EXPECT_TRUE(world.takeLog().contains("clsKeywords_SaveKeywordResults"_L1));
    keywords.SaveKeywords();
    EXPECT_TRUE(world.takeLog().contains("clsKeywords_SaveKeywordsCannot write"_L1));
    keywords.LoadKeywords();
    EXPECT_TRUE(world.takeLog().contains("clsKeywords_LoadKeywords error : "_L1));
    EXPECT_EQ(keywords.Count(), 0);
}

TEST_F(KeywordFiles, readsEmptyFilesAndRandomBytes)
{
    for (const QByteArray &bytes : {QByteArray(), randomBytes(10000)}) {
        world.write(Terms, bytes);
        world.write(Results, bytes);
        keywords.LoadKeywords();
        addRow(u"shoes"_s);
        keywords.FillKeywordsLookupValue();
        keywords.LoadKeywordResults();
        EXPECT_EQ(world.read(Terms), bytes);
        EXPECT_EQ(world.read(Results), bytes);
    }
}

TEST_F(KeywordFiles, savesNothingOverTermsItCouldNotRead)
{
    putUnreadable(world, Terms);
    keywords.LoadKeywords();
    EXPECT_TRUE(world.takeLog().startsWith("clsKeywords_LoadKeywords error : Cannot read"_L1));
    ASSERT_TRUE(QFile::remove(world.path(Terms)));
    world.write(Terms, "shoes;-1\r\n");
    world.write(Results, "shoes;;3;;;;;\r\n");
    addRow(u"boots"_s);
    keywords.SaveKeywordResults();
    keywords.SaveKeywords();
    EXPECT_EQ(world.read(Terms), "shoes;-1\r\n");
    EXPECT_EQ(world.read(Results), "shoes;;3;;;;;\r\n");
    EXPECT_TRUE(world.takeLog().contains("clsKeywords_SaveKeywords\""_L1));
    keywords.LoadKeywords();
    keywords.SaveKeywords();
    EXPECT_EQ(world.read(Terms), "shoes;-1\r\n\r\n") << "once it has been read";
}

TEST_F(KeywordFiles, savesNothingOverResultsItCouldNotRead)
{
    addRow(u"shoes"_s);
    putUnreadable(world, Results);
    keywords.FillKeywordsLookupValue();
    ASSERT_TRUE(QFile::remove(world.path(Results)));
    world.write(Results, "shoes;;3;;;;;\r\n");
    keywords.SaveKeywordResults();
    EXPECT_EQ(world.read(Results), "shoes;;3;;;;;\r\n");
    keywords.SaveKeywords();
    EXPECT_EQ(world.read(Terms), "shoes;-1\r\n\r\n") << "the terms are known";
}
