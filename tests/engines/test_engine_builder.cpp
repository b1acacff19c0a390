#include "engines/engine_builder.h"

#include "core/modCommon.h"
#include "tests/support/bad_files.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const auto UserFile = u"Engines.dat"_s;

const QByteArray Markets =
    "[Markets]\r\n1=US/Global\r\n2=UK/European\r\n3=Australia/NZ\r\n4=Asia\r\n5=Others\r\n\r\n";

clsEngineData engine(const QString &name, const QString &market = u"US/Global"_s)
{
    clsEngineData engine;
    engine.EngineName = name;
    engine.Market = market;
    engine.SubmitMethod = u"Get"_s;
    return engine;
}

class Builder : public testing::Test
{
protected:
    Builder() : builder(world.app) {}

    // Adds an engine as a person does, and enters its fields.
    void addEngine(const clsEngineData &data)
    {
        world.desktop.texts = {data.EngineName};
        ASSERT_EQ(builder.AddNew(), data.EngineName);
        builder.SaveObject(data.EngineName, data);
    }
    QString prompt(std::size_t question) const { return world.desktop.textQuestions.at(question).prompt; }
    void loadCatalogue(const QByteArray &shared)
    {
        world.writeEngineData(shared);
        catalogue.loadEngineData();
        world.app.EngineCatalogue = &catalogue;
        world.takeLog(); // the first load always leaves a line
    }

    World world;
    clsEngine catalogue{world.app};
    EngineBuilder builder;
};

} // namespace

TEST_F(Builder, writesTheMarketsAloneWithoutEngines)
{
    builder.SaveFile();
    EXPECT_EQ(world.read(UserFile), Markets);
}

TEST_F(Builder, writesEveryKeyOfAnEngineInItsForm)
{
    clsEngineData data{u"Asia"_s, u"Finder"_s, u"key"_s,  u"http://www.finder.example:81/find"_s,
                       u"q1"_s,   {},          u"post"_s, u"Post"_s,
                       u"rs"_s,   u"re"_s,     u"ss"_s,   u"se"_s,
                       u"bt"_s,   u"et"_s,     u"n1"_s,   u"n2"_s,
                       u"n3"_s,   u"n4"_s,     u"bu"_s,   u"eu"_s,
                       u"bm"_s,   u"em"_s};
    addEngine(data);
    builder.SaveFile();
    EXPECT_EQ(world.read(UserFile), Markets + "[Asia]\r\n1=Finder\r\n\r\n"
                                              "[Finder]\r\n"
                                              "EngineKey=key\r\n"
                                              "EngineURL =http://www.finder.example:81/find\r\n"
                                              "Host =www.finder.example:81\r\n"
                                              "QueryKeyword1 =q1\r\n"
                                              "QueryKeyword2=\r\n"
                                              "PostString =post\r\n"
                                              "SubmitMethod =Post\r\n"
                                              "ResultStartString =rs\r\n"
                                              "ResultEndString =re\r\n"
                                              "Sectionstart=ss\r\n"
                                              "SectionEnd=se\r\n"
                                              "beginTitle =bt\r\n"
                                              "endTitle =et\r\n"
                                              "NextPage1 =n1\r\n"
                                              "NextPage2 =n2\r\n"
                                              "NextPage3 =n3\r\n"
                                              "NextPage4 =n4\r\n"
                                              "beginURL =bu\r\n"
                                              "endURL =eu\r\n"
                                              "beginMatches =bm\r\n"
                                              "endMatches =em\r\n\r\n");
}

TEST_F(Builder, writesMarketsInTheirOrderAndEnginesInTheirs)
{
    addEngine(engine(u"D"_s, u"asia"_s));
    addEngine(engine(u"A"_s));
    addEngine(engine(u"C"_s, u"Nowhere"_s));
    addEngine(engine(u"B"_s, u"US/GLOBAL"_s));
    const QString text = builder.fileText();
    const QString sections = u"[US/Global]\r\n1=A\r\n2=B\r\n[Asia]\r\n1=D\r\n\r\n[D]\r\n"_s;
    EXPECT_TRUE(text.startsWith(QString::fromLatin1(Markets) + sections)) << text.toStdString();
    // An engine of an unknown market keeps its section, where nobody finds it.
    EXPECT_TRUE(text.contains(u"\r\n[C]\r\nEngineKey="_s));
    EXPECT_EQ(text.count(u"C\r\n"_s), 0);
}

TEST_F(Builder, leavesNoBlankLineForMarketsThatAreAllUnknown)
{
    addEngine(engine(u"C"_s, u"Nowhere"_s));
    EXPECT_TRUE(builder.fileText().startsWith(QString::fromLatin1(Markets) + u"[C]\r\n"_s));
}

TEST_F(Builder, readsItsFileBack)
{
    clsEngineData first = engine(u"Finder"_s);
    first.EngineURL = u"http://finder.example/find"_s;
    first.QueryKeyword1 = u"?a=b&q="_s;
    first.beginURL = u"href=\""_s;
    first.endURL = u"\""_s;
    first.PostString = u"q=<KEYWORD>&x=[1]"_s;
    const clsEngineData second = engine(u"Größte Suche"_s, u"UK/European"_s);
    addEngine(first);
    addEngine(second);
    builder.SaveFile();
    EngineBuilder again(world.app);
    again.LoadEngines();
    EXPECT_EQ(again.names(), (QStringList{u"Finder"_s, u"Größte Suche"_s}));
    EXPECT_EQ(again.Engines().at(1), first);
    EXPECT_EQ(again.Engines().at(2), second);
    EXPECT_EQ(again.fileText(), builder.fileText());
}

TEST_F(Builder, writesWhatTheCatalogueLoads)
{
    clsEngineData data = engine(u"Finder"_s, u"Others"_s);
    data.EngineURL = u"http://finder.example"_s;
    data.QueryKeyword1 = u"/find?q=<keyword>"_s;
    data.NextPage4 = u"data-next="_s;
    addEngine(data);
    builder.SaveFile();
    loadCatalogue("[Markets]\r\n1=Global\r\n[Global]\r\n1=Shared\r\n");
    ASSERT_EQ(catalogue.GetEngineIndex(u"Finder"_s), 2);
    EXPECT_EQ(catalogue.row(2).Market, u"Others"_s);
    EXPECT_EQ(catalogue.GetURL(u"Finder"_s, u"tea"_s), u"http://finder.example/find?q=tea"_s);
    EXPECT_EQ(catalogue.GetNextPage4(2), u"data-next="_s);
    EXPECT_EQ(catalogue.GetSubmitMethod(2), u"Get"_s);
}

TEST_F(Builder, keepsTheSecondQueryStringOfTheFile)
{
    world.write(UserFile, "[Markets]\n1=M\n[M]\n1=Finder\n[Finder]\nQueryKeyword2 = &n=10 \n");
    builder.LoadEngines();
    builder.SaveObject(u"finder"_s, engine(u"Finder"_s));
    EXPECT_EQ(builder.Engines().at(1).QueryKeyword2, u"&n=10"_s);
    EXPECT_EQ(builder.Engines().at(1).Market, u"US/Global"_s);
}

TEST_F(Builder, readsKeysWithABlankInFrontOfTheSign)
{
    world.write(UserFile, "[Markets]\n1=M\n[M]\n1= Finder \n[Finder]\nEngineURL = http://f.example \n");
    builder.LoadEngines();
    EXPECT_EQ(builder.Engines().at(1).EngineURL, u"http://f.example"_s);
    EXPECT_EQ(ReadProfileString(world.app, world.app.appFile({UserFile}), u"Finder"_s, u"EngineURL"_s),
              u"http://f.example"_s);
}

TEST_F(Builder, stopsAtAGapInTheNumbers)
{
    world.write(UserFile, "[Markets]\n1=A\n2=B\n4=D\n[A]\n1=one\n3=three\n[B]\n1=two\n[D]\n1=four\n");
    builder.LoadEngines();
    EXPECT_EQ(builder.names(), (QStringList{u"one"_s, u"two"_s}));
}

TEST_F(Builder, isSilentWithoutAFile)
{
    builder.LoadEngines();
    EXPECT_TRUE(builder.names().isEmpty());
    EXPECT_EQ(world.takeLog(), QString());
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(Builder, stopsAtAnEngineThatStandsInTwoMarkets)
{
    world.write(UserFile, "[Markets]\n1=A\n2=B\n[A]\n1=one\n[B]\n1=ONE\n2=two\n");
    builder.LoadEngines();
    EXPECT_EQ(builder.names(), QStringList{u"one"_s});
    const QString problem = u"This key is already associated with an element of this collection: ONE"_s;
    EXPECT_EQ(world.takeLog(), u"frmEngineBuilder_loadEngines error: "_s + problem);
    EXPECT_EQ(world.desktop.boxes,
              (std::vector{MessageBox{u"Engine Builder"_s, u"loadCustomEngineError: "_s + problem}}));
}

TEST_F(Builder, keepsForGoodWhatItCouldNotReadToTheEnd)
{
    const QByteArray handMade = "[Markets]\n1=A\n2=B\n[A]\n1=one\n[B]\n1=one\n2=two\n";
    world.write(UserFile, handMade);
    builder.LoadEngines();
    builder.SaveFile();
    builder.SaveObject(u"one"_s, engine(u"renamed"_s));
    builder.SaveFile();
    EXPECT_EQ(world.read(UserFile + u".damaged"_s), handMade);
    EXPECT_EQ(QString::fromLatin1(world.read(UserFile)), builder.fileText());
    world.write(UserFile, "[Markets]\n1=A\n[A]\n1=x\n2=x\n3=y\n");
    EngineBuilder next(world.app);
    next.LoadEngines();
    next.SaveFile();
    EXPECT_EQ(world.read(UserFile + u".damaged"_s), handMade);
    EXPECT_EQ(world.read(UserFile + u".damaged2"_s), "[Markets]\n1=A\n[A]\n1=x\n2=x\n3=y\n");
}

TEST_F(Builder, keepsOneCopyOfTheSameDamage)
{
    const QByteArray handMade = "[Markets]\n1=A\n[A]\n1=x\n2=x\n3=y\n";
    for (int start = 0; start < 2; ++start) {
        world.write(UserFile, handMade);
        EngineBuilder next(world.app);
        next.LoadEngines();
        next.SaveFile();
    }
    EXPECT_EQ(world.read(UserFile + u".damaged"_s), handMade);
    EXPECT_FALSE(world.has(UserFile + u".damaged2"_s));
}

TEST_F(Builder, keepsTheFileBeforeInACopy)
{
    const QByteArray handMade =
        "; mine\n[Markets]\n1=Asia\n[Asia]\n1=one\n[one]\nLoginURL=http://x.example\n";
    world.write(UserFile, handMade);
    builder.LoadEngines();
    builder.SaveFile();
    EXPECT_EQ(world.read(UserFile + u".bak"_s), handMade);
    builder.SaveFile(); // nothing changes
    EXPECT_EQ(world.read(UserFile + u".bak"_s), handMade);
    EXPECT_FALSE(world.has(UserFile + u".damaged"_s));
}

TEST_F(Builder, logsAFileThatCannotBeRead)
{
    putFolder(world, UserFile);
    builder.LoadEngines();
    EXPECT_TRUE(world.takeLog().startsWith(u"frmEngineBuilder_loadEngines error: "_s));
    EXPECT_EQ(world.desktop.boxes.size(), 1U);
}

TEST_F(Builder, logsAFileThatCannotBeWritten)
{
    putFolder(world, UserFile);
    builder.SaveFile();
    EXPECT_TRUE(world.takeLog().startsWith(u"frmEngineBuilder_SaveFile error: "_s));
}

TEST_F(Builder, leavesTheFileWhereNoCopyCanBeKept)
{
    world.write(UserFile, "[Markets]\n");
    putFolder(world, UserFile + u".bak"_s);
    builder.SaveFile();
    EXPECT_EQ(world.read(UserFile), "[Markets]\n");
    EXPECT_TRUE(world.takeLog().startsWith(u"frmEngineBuilder_SaveFile error: "_s));
}

TEST_F(Builder, asksForTheNameOfANewEngine)
{
    world.desktop.texts = {u" Finder "_s};
    EXPECT_EQ(builder.AddNew(), u"Finder"_s);
    EXPECT_EQ(world.desktop.textQuestions,
              (std::vector{TextQuestion{u"Create a new engine"_s,
                                        u"Please enter the name of the new engine you want to create: "_s}}));
    EXPECT_EQ(builder.names(), QStringList{u"Finder"_s});
}

TEST_F(Builder, addsNothingWithoutAName)
{
    world.desktop.texts = {u"  "_s};
    EXPECT_EQ(builder.AddNew(), std::nullopt);
    EXPECT_TRUE(builder.names().isEmpty());
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(Builder, asksAgainUntilTheNameIsFree)
{
    loadCatalogue("[Markets]\n1=M\n[M]\n1=Shared\n2=Other\n");
    world.desktop.texts = {u"shared"_s, u"SHARED"_s, u"Mine"_s};
    EXPECT_EQ(builder.AddNew(), u"Mine"_s);
    ASSERT_EQ(world.desktop.textQuestions.size(), 3U);
    EXPECT_EQ(prompt(1), u"This engine name is already exsit in the engine database. "
                         "Please choose a different name."_s);
    EXPECT_EQ(prompt(2), prompt(1));
    EXPECT_EQ(world.desktop.textQuestions[2].title, u"Create a new engine"_s);
}

TEST_F(Builder, stopsAskingWhenCancelled)
{
    loadCatalogue("[Markets]\n1=M\n[M]\n1=Shared\n2=Other\n");
    world.desktop.texts = {u"shared"_s};
    EXPECT_EQ(builder.AddNew(), std::nullopt);
    EXPECT_EQ(world.desktop.textQuestions.size(), 2U);
    EXPECT_TRUE(builder.names().isEmpty());
}

TEST_F(Builder, refusesTheNameOfTheLastSharedEngine)
{
    loadCatalogue("[Markets]\n1=M\n[M]\n1=Shared\n2=Last\n");
    EXPECT_TRUE(builder.IsEngineNameUsed(u"Last"_s));
}

TEST_F(Builder, tellsUsedNamesFromFreeOnes)
{
    world.write(UserFile, "[Markets]\n1=Asia\n[Asia]\n1=Mine\n2=Gone\n");
    loadCatalogue("[Markets]\n1=M\n[M]\n1=Shared\n2=Other\n");
    builder.LoadEngines();
    EXPECT_FALSE(builder.IsEngineNameUsed(u""_s));
    EXPECT_TRUE(builder.IsEngineNameUsed(u"SHARED"_s));
    EXPECT_FALSE(builder.IsEngineNameUsed(u"Free"_s));
    EXPECT_FALSE(builder.IsEngineNameUsed(u"Mine"_s)); // the collection refuses it
    builder.remove(u"Gone"_s);
    EXPECT_TRUE(builder.IsEngineNameUsed(u"Gone"_s)); // until the catalogue is loaded again
}

TEST_F(Builder, addsNoEngineOfItsOwnTwice)
{
    addEngine(engine(u"Mine"_s));
    world.desktop.texts = {u"MINE"_s};
    EXPECT_EQ(builder.AddNew(), std::nullopt);
    EXPECT_EQ(builder.names(), QStringList{u"Mine"_s});
    EXPECT_EQ(world.takeLog(), u"frmEngineBuilder_AddNew error: This key is already associated with an "
                               "element of this collection: MINE"_s);
}

TEST_F(Builder, logsAQuestionThatCannotBeAsked)
{
    world.desktop.failing = true;
    EXPECT_EQ(builder.AddNew(), std::nullopt);
    EXPECT_EQ(world.takeLog(), u"frmEngineBuilder_AddNew error: The message cannot be shown"_s);
}

TEST_F(Builder, keepsTheKeyOfARenamedEngine)
{
    addEngine(engine(u"Old"_s));
    builder.SaveObject(u"Old"_s, engine(u"New"_s));
    EXPECT_EQ(builder.names(), QStringList{u"Old"_s});
    EXPECT_TRUE(builder.Engines().HasKey(u"Old"_s));
    EXPECT_EQ(builder.GetMarketEngines(u"us/global"_s), u"1=New\r\n"_s);
    builder.SaveFile();
    EngineBuilder again(world.app);
    again.LoadEngines();
    EXPECT_EQ(again.names(), QStringList{u"New"_s});
}

TEST_F(Builder, keepsTheNameOfAnEngineThatIsLeftWithoutOne)
{
    addEngine(engine(u"Mine"_s));
    builder.SaveObject(u"Mine"_s, engine(u"  "_s));
    EXPECT_EQ(builder.Engines().at(1).EngineName, u"Mine"_s);
}

TEST_F(Builder, savesNothingForUnknownNames)
{
    addEngine(engine(u"Mine"_s));
    builder.SaveObject(u""_s, engine(u"X"_s));
    builder.SaveObject(u"Other"_s, engine(u"X"_s));
    EXPECT_EQ(builder.Engines().Count(), 1);
    EXPECT_EQ(builder.Engines().at(1).EngineName, u"Mine"_s);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(Builder, showsAnEngineAsTheCatalogueReadsIt)
{
    clsEngineData data = engine(u"Mine"_s);
    data.beginTitle = u"  '<b>'  "_s;
    data.endTitle = u"x"_s.repeated(600);
    data.beginURL = u"href=\""_s;
    const EngineRow row = builder.asCatalogued(data);
    EXPECT_EQ(row.beginTitle, u"<b>"_s);
    EXPECT_EQ(row.endTitle.size(), 559);
    EXPECT_EQ(row.beginURL, u"href=\""_s);
    EXPECT_EQ(row.EngineName, u"Mine"_s);
    EXPECT_EQ(row.Market, u"US/Global"_s);
}

TEST_F(Builder, dividesAnAddressIntoFields)
{
    EXPECT_EQ(dividedSearchAddress(world.app, u"https://www.finder.example/find?q=tea"_s),
              (SearchAddress{u"http://www.finder.example"_s, u"finder.example"_s, u"/find?q=tea"_s}));
    EXPECT_EQ(dividedSearchAddress(world.app, u"finder.example"_s),
              (SearchAddress{u"http://finder.example"_s, u"finder.example"_s, u"/"_s}));
    EXPECT_EQ(dividedSearchAddress(world.app, u"http://www.WWW.x.example/"_s),
              (SearchAddress{u"http://www.WWW.x.example"_s, u"x.example"_s, u"/"_s}));
}
