#include "engines/clsEngine.h"
#include "tests/support/bad_files.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const auto UserFile = u"Engines.dat"_s;

class ClsEngine : public testing::Test
{
protected:
    ClsEngine() : engines(world.app) {}

    bool load(const QByteArray &shared)
    {
        world.writeEngineData(shared);
        return engines.loadEngineData();
    }

    QStringList rows() const
    {
        QStringList result;
        for (qint16 index = 1; index <= engines.GetEngineCount(); ++index)
            result.append(engines.row(index).Market + u'/' + engines.GetEnginName(index));
        return result;
    }

    World world;
    clsEngine engines;
};

} // namespace

TEST_F(ClsEngine, readsEveryKeyOfASection)
{
    QByteArray section;
    const QByteArrayList keys{"EngineKey",
                              "EngineURL",
                              "LoginURL",
                              "QueryKeyword1",
                              "QueryKeyword2",
                              "PostString",
                              "SubmitMethod",
                              "NextPage1",
                              "NextPage2",
                              "NextPage3",
                              "NextPage4",
                              "ResultStartString",
                              "ResultEndString",
                              "Sectionstart",
                              "SectionEnd",
                              "NoFoundString",
                              "FilterKeyword1",
                              "FilterKeyword2",
                              "HREF_KEYWORD1",
                              "HREF_KEYWORD2",
                              "LinkType",
                              "beginTitle",
                              "endTitle",
                              "beginURL",
                              "endURL",
                              "beginMatches",
                              "endMatches",
                              "QuerySuggest1",
                              "QuerySuggest2",
                              "SuggestStartString",
                              "SuggestEndString",
                              "SuggestSectionStart",
                              "SuggestSectionEnd",
                              "beginCountSection",
                              "endCountSection",
                              "begineKeywordSection",
                              "endKeywordSection"};
    for (const QByteArray &key : keys)
        section += key + " =  '  v-" + key + " '\r\n";
    ASSERT_TRUE(load("[Markets]\r\n1=M\r\n[M]\r\n1= E \r\n[E]\r\n" + section +
                     "Start=10th\r\nPerPage=2.5\r\n"
                     "DTCURL=ignored\r\n"));
    const EngineRow &row = engines.row(1);
    const std::vector<const QString *> fields{&row.EngineKey,
                                              &row.EngineURL,
                                              &row.LoginURL,
                                              &row.QueryKeyword1,
                                              &row.QueryKeyword2,
                                              &row.PostString,
                                              &row.SubmitMethod,
                                              &row.NextPage1,
                                              &row.NextPage2,
                                              &row.NextPage3,
                                              &row.NextPage4,
                                              &row.ResultStartString,
                                              &row.ResultEndString,
                                              &row.Sectionstart,
                                              &row.SectionEnd,
                                              &row.NoFoundString,
                                              &row.FilterKeyword1,
                                              &row.FilterKeyword2,
                                              &row.HREF_KEYWORD1,
                                              &row.HREF_KEYWORD2,
                                              &row.LinkType,
                                              &row.beginTitle,
                                              &row.endTitle,
                                              &row.beginURL,
                                              &row.endURL,
                                              &row.beginMatches,
                                              &row.endMatches,
                                              &row.QuerySuggest1,
                                              &row.QuerySuggest2,
                                              &row.SuggestStartString,
                                              &row.SuggestEndString,
                                              &row.SuggestSectionStart,
                                              &row.SuggestSectionEnd,
                                              &row.beginCountSection,
                                              &row.endCountSection,
                                              &row.begineKeywordSection,
                                              &row.endKeywordSection};
    for (qsizetype i = 0; i < keys.size(); ++i)
        EXPECT_EQ(*fields[static_cast<std::size_t>(i)], u"v-"_s + QString::fromLatin1(keys[i]));
    EXPECT_EQ(row.EngineName, u"E"_s);
    EXPECT_EQ(row.Market, u"M"_s);
    EXPECT_EQ(row.Start, 10);
    EXPECT_EQ(row.PerPage, 2);
    EXPECT_EQ(engines.GetDTCURL(1), QString());
}

TEST_F(ClsEngine, stopsAtGapsInTheNumbering)
{
    ASSERT_TRUE(load("[Markets]\n1=A\n3=C\n[A]\n1=Finder\n2=\n3=Poster\n[C]\n1=Other\n"));
    EXPECT_EQ(rows(), QStringList{u"A/Finder"_s});
}

TEST_F(ClsEngine, hasARowForEveryMarketOfAnEngine)
{
    ASSERT_TRUE(load("[Markets]\n1=A\n2=B\n3=a\n[A]\n1=Finder\n2=Ghost\n3=FINDER\n[B]\n1=finder\n"
                     "[Finder]\nEngineKey=f\n"));
    EXPECT_EQ(rows(), (QStringList{u"A/Finder"_s, u"A/Ghost"_s, u"B/finder"_s}));
    EXPECT_EQ(engines.GetEngineKey(3), u"f"_s);
    EXPECT_EQ(engines.GetEngineKey(2), QString()) << "it has no section";
    EXPECT_EQ(engines.GetEngineIndex(u"FINDER"_s), 1);
    EXPECT_EQ(engines.GetEngineIndex(u"nobody"_s), 0);
    EXPECT_FALSE(engines.GetEngineNameMarketCol());
}

TEST_F(ClsEngine, trimsANameWhenItIsInTheTableOnly)
{
    ASSERT_TRUE(load("[Markets]\n1=A\n2=a\n[A]\n1=' Finder '\n2=Seeker\n"));
    EXPECT_EQ(rows(), (QStringList{u"A/Finder"_s, u"A/Seeker"_s, u"a/Finder"_s}));
}

TEST_F(ClsEngine, listsMarketsAndNames)
{
    ASSERT_TRUE(load("[Markets]\n1=' A '\n2=B\n[A]\n1=Finder\n[B]\n1=Poster\n"));
    const auto names = engines.GetEngineNameMarketCol();
    ASSERT_TRUE(names);
    EXPECT_EQ(names->at(1), u"A|Finder"_s);
    EXPECT_EQ(names->at(u"POSTER"_s), u"B|Poster"_s);
}

TEST_F(ClsEngine, addsTheUsersEnginesBehindTheShared)
{
    world.write(UserFile, "[Markets]\n1=a\n2=Mine\n[A]\n1=finder\n2=Extra\n[Mine]\n1=Finder\n"
                          "[Finder]\nEngineKey=user\n");
    ASSERT_TRUE(load("[Markets]\n1=A\n[A]\n1=Finder\n[Finder]\nEngineKey=shared\n"));
    EXPECT_EQ(rows(), (QStringList{u"A/Finder"_s, u"a/Extra"_s, u"Mine/Finder"_s}));
    EXPECT_EQ(engines.DefaultEngineNum(), 1);
    EXPECT_EQ(engines.GetEngineKey(1), u"shared"_s);
    EXPECT_EQ(engines.GetEngineKey(3), u"user"_s);
}

TEST_F(ClsEngine, loadsAnewEachTime)
{
    ASSERT_TRUE(load("[Markets]\n1=A\n[A]\n1=Finder\n2=Poster\n"));
    ASSERT_TRUE(load("[Markets]\n1=A\n[A]\n1=Poster\n"));
    EXPECT_EQ(rows(), QStringList{u"A/Poster"_s});
    EXPECT_EQ(engines.GetEngineIndex(u"Finder"_s), 0);
    EXPECT_FALSE(engines.IsEngineExist(u"A"_s, u"Finder"_s));
    EXPECT_TRUE(engines.IsEngineExist(u"a"_s, u"POSTER"_s));
}

TEST_F(ClsEngine, logsTheFirstLookIntoTheEmptyTable)
{
    ASSERT_TRUE(load("[Markets]\n1=A\n[A]\n1=Finder\n2=Poster\n"));
    const QString log = world.takeLog();
    EXPECT_TRUE(log.startsWith("IsEngineExist_Error: "_L1));
    EXPECT_EQ(log.count("IsEngineExist_Error"_L1), 1);
}

TEST_F(ClsEngine, tellsThatTheSharedFileIsMissing)
{
    int told = 0;
    engines.beforeMissingMessage = [&] {
        EXPECT_TRUE(world.desktop.boxes.empty());
        ++told;
    };
    EXPECT_FALSE(engines.loadEngineData());
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    const MessageBox &box = world.desktop.boxes.front();
    EXPECT_EQ(box.title, u"Error"_s);
    EXPECT_EQ(box.icon, MessageIcon::Information);
    EXPECT_EQ(box.text,
              u"Engine data file is corrupted or missing, you need to download the new engine data file "
              "from our web site by click on the 'File/Update Engine Data' menu item from the main menu "
              "bar and following the instruction on the screen."_s);
    EXPECT_EQ(told, 1);
    EXPECT_FALSE(engines.isLoaded());
    EXPECT_EQ(engines.loadError(), QString());
}

TEST_F(ClsEngine, takesAFolderForAMissingSharedFile)
{
    putFolder(world, u"../system/qlteng4.dat"_s);
    EXPECT_FALSE(engines.loadEngineData());
    EXPECT_EQ(world.desktop.boxes.size(), 1U);
}

TEST_F(ClsEngine, failsSilentlyOnFilesWithoutEngines)
{
    for (const QByteArray &bytes : {QByteArray(), QByteArray("[Markets]\n1=A\n"), randomBytes(50000)}) {
        EXPECT_FALSE(load(bytes));
        EXPECT_EQ(engines.GetEngineCount(), 0);
        EXPECT_FALSE(engines.loadError().isEmpty());
    }
    EXPECT_TRUE(world.desktop.boxes.empty());
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ClsEngine, failsOnASharedFileThatCannotBeRead)
{
    putUnreadable(world, u"../system/qlteng4.dat"_s);
    EXPECT_FALSE(engines.loadEngineData());
    EXPECT_TRUE(engines.loadError().startsWith("Cannot read"_L1));
}

TEST_F(ClsEngine, failsOnAUsersFileThatCannotBeRead)
{
    putFolder(world, UserFile);
    EXPECT_FALSE(load("[Markets]\n1=A\n[A]\n1=Finder\n"));
    EXPECT_TRUE(engines.loadError().startsWith("Cannot read"_L1));
}

TEST_F(ClsEngine, takesNothingFromAUsersFileOfRandomBytes)
{
    world.write(UserFile, randomBytes(50000));
    EXPECT_TRUE(load("[Markets]\n1=A\n[A]\n1=Finder\n"));
    EXPECT_EQ(rows(), QStringList{u"A/Finder"_s});
    EXPECT_EQ(world.read(UserFile), randomBytes(50000));
}

TEST_F(ClsEngine, failsOnNumbersThatAreTooBig)
{
    for (const QByteArray key : {"Start", "PerPage"}) {
        EXPECT_FALSE(load("[Markets]\n1=A\n[A]\n1=Finder\n[Finder]\n" + key + "=32768\n"));
        EXPECT_EQ(engines.loadError(), u"Overflow"_s);
        EXPECT_TRUE(load("[Markets]\n1=A\n[A]\n1=Finder\n[Finder]\n" + key + "=32767\n"));
    }
}

TEST_F(ClsEngine, findsANumberThatIsTooBigHoweverItsLineIsWritten)
{
    for (const QByteArray line :
         {"START=40000", " \tstart \t=40000\r", "PerPage=7\rStart=40000", "x=1\r\n\r\nPERPAGE=1e9\r\n"})
        EXPECT_FALSE(load("[Markets]\n1=A\n[A]\n1=Finder\n[Finder]\n" + line)) << line.constData();
    for (const QByteArray line :
         {"Startx=40000", "xStart=40000", "Start 40000", ";Start=40000", "NextPage1=Start=40000"})
        EXPECT_TRUE(load("[Markets]\n1=A\n[A]\n1=Finder\n[Finder]\n" + line)) << line.constData();
}

TEST_F(ClsEngine, holdsTheRowsUpToANumberThatIsTooBig)
{
    EXPECT_FALSE(load("[Markets]\n1=A\n[A]\n1=Good\n2=Bad\n3=Never\n[Bad]\nEngineKey=bad\nStart=1e9\n"));
    EXPECT_EQ(rows(), (QStringList{u"A/Good"_s, u"A/Bad"_s}));
    EXPECT_EQ(engines.GetEngineKey(2), u"bad"_s);
    EXPECT_EQ(engines.DefaultEngineNum(), 0);
}

TEST_F(ClsEngine, holdsNoMoreRowsThanItCanCount)
{
    QByteArray file = "[Markets]\n1=A\n2=B\n[A]\n";
    for (int number = 1; number <= 32767; ++number)
        file += QByteArray::number(number) + "=E" + QByteArray::number(number) + '\n';
    ASSERT_TRUE(load(file));
    EXPECT_EQ(engines.GetEngineIndex(u"e32767"_s), 32767);
    EXPECT_FALSE(load(file + "[B]\n1=One more\n"));
    EXPECT_TRUE(engines.loadError().startsWith("Overflow"_L1));
}

TEST_F(ClsEngine, putsTheKeywordIntoTheQuery)
{
    ASSERT_TRUE(
        load("[Markets]\n1=A\n[A]\n1=Plain\n2=Marked\n[Plain]\nEngineURL=http://p.example/\n"
             "QueryKeyword1=?q=\nQueryKeyword2=&n=10\n[Marked]\nEngineURL=http://m.example/<KEYWORD>\n"
             "QueryKeyword1=?q=<Keyword>\nQueryKeyword2=&n=10\n"));
    EXPECT_EQ(engines.GetURL(u"PLAIN"_s, u"a+b"_s), u"http://p.example/?q=a+b&n=10"_s);
    EXPECT_EQ(engines.GetURL(u"Marked"_s, u"<keyword>x"_s), u"http://m.example/<keyword>x?q=<keyword>x"_s);
    EXPECT_EQ(engines.GetURL(u"Nobody"_s, u"a"_s), QString());
    EXPECT_EQ(engines.EngineURL(u"plain"_s), u"http://p.example/?q=&n=10"_s);
    EXPECT_EQ(engines.EngineURL(u"Nobody"_s), QString());
}

TEST_F(ClsEngine, putsTheKeywordIntoTheForm)
{
    ASSERT_TRUE(load("[Markets]\n1=A\n[A]\n1=Poster\n[Poster]\nPostString=a b=<KEYWORD>&c=<keyword>\n"));
    EXPECT_EQ(engines.GetPostString(1, u"x y"_s), u"a%20b=x%20y&c=x%20y"_s);
}

TEST_F(ClsEngine, cutsLongValues)
{
    ASSERT_TRUE(load("[Markets]\n1=A\n[A]\n1=Long\n[Long]\nEngineURL=" + QByteArray(600, 'x') + '\n'));
    EXPECT_EQ(engines.GetEngineURL(1).size(), 559);
}

TEST_F(ClsEngine, refusesAnIndexOutsideTheTable)
{
    ASSERT_TRUE(load("[Markets]\n1=A\n[A]\n1=Finder\n"));
    for (const qint16 index : std::initializer_list<qint16>{0, 2, -1}) {
        EXPECT_THROW(engines.GetEngineKey(index), Failure);
        EXPECT_THROW(engines.GetPostString(index, u"x"_s), Failure);
    }
}
