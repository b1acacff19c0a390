#include "tests/project/project_world.h"

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class ProjectURLs : public ProjectWorld
{
};

class ProjectEngines : public ProjectWorld
{
};

} // namespace

TEST_F(ProjectURLs, keepAStaleKeyBehindTheirCount)
{
    for (const auto &url : {u"a.example"_s, u"b.example"_s, u"c.example"_s})
        addURL(url);
    project.SaveURLs();
    project.URLs->Remove(2);
    project.SaveURLs();
    EXPECT_EQ(world.read(file),
              "[URL]\r\n1=a.example|False\r\n2=c.example|False\r\n3=c.example|False\r\nNumURL=2\r\n");
    project.URLs = project.LoadURLs();
    EXPECT_EQ(urls(), (QStringList{u" a.example"_s, u" c.example"_s}));
}

TEST_F(ProjectURLs, skipGapsAndEmptyValues)
{
    world.write(file, "[URL]\nNumURL=1000000000\n2=a|-1\n4=\n7=b|0\n");
    project.URLs = project.LoadURLs();
    EXPECT_EQ(urls(), (QStringList{u"!a"_s, u" b"_s}));
}

TEST_F(ProjectURLs, areNoneBelowACountOfOne)
{
    for (const QByteArray count : {"0", "-3", "0.9", "none", ""}) {
        world.write(file, "[URL]\n1=a|True\nNumURL=" + count + '\n');
        const auto loaded = project.LoadURLs();
        ASSERT_TRUE(loaded);
        EXPECT_EQ(loaded->Count(), 0);
    }
}

TEST_F(ProjectURLs, areLostThroughOneThatIsBroken)
{
    for (const QByteArray entry : {"b", "b|c|False", "b|", "b|maybe", "A|True"}) {
        world.write(file, "[URL]\n1=a|True\n2=" + entry + "\n3=c|True\nNumURL=3\n");
        EXPECT_FALSE(project.LoadURLs()) << entry.toStdString();
        EXPECT_TRUE(world.takeLog().contains("clsAccount_LoadURLs error: "_L1));
    }
}

TEST_F(ProjectURLs, areAbsentWithoutAFile)
{
    EXPECT_FALSE(project.LoadURLs());
    EXPECT_FALSE(project.LoadEngines());
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ProjectURLs, failAloneWhenTheyAreAbsent)
{
    addEngine(u"Finder"_s);
    project.SaveSettings();
    EXPECT_TRUE(world.takeLog().startsWith("clsAccount_SaveURLs error: "_L1));
    const QByteArray text = world.read(file);
    EXPECT_TRUE(text.contains("NumLink=0\r\n[Engine]\r\n1=Finder\r\nNumEngine=1\r\n"));
    project.SaveURLs();
    EXPECT_TRUE(world.takeLog().contains("clsAccount_SaveURLs error: "_L1));
    EXPECT_EQ(world.read(file), text);
}

TEST_F(ProjectURLs, areReadAsPlainLines)
{
    world.write(u"Projects/Garden/URLs.dat"_s, "http://a.example\r\n b.example \r\nHTTP://A.example\r\n");
    const auto lines = project.GetURLCollectionX(u"Garden"_s);
    ASSERT_TRUE(lines);
    EXPECT_EQ(lines->Count(), 2);
    EXPECT_EQ(lines->at(2), u"b.example"_s);
    EXPECT_FALSE(project.GetURLCollectionX(u"Other"_s));
    EXPECT_FALSE(project.GetURLCollectionX(u".."_s));
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ProjectEngines, vanishWithTheCatalogue)
{
    world.write(file, "[Engine]\n1=Gone\n2= finder \n3=Hunt, Inc.\n4=\nNumEngine=4\n");
    project.Engine = project.LoadEngines();
    EXPECT_EQ(engineNames(), (QStringList{u"finder"_s, u"Hunt, Inc."_s}));
    project.SaveEngine();
    EXPECT_TRUE(world.read(file).startsWith("[Engine]\n1=finder\n2= Hunt, Inc.\n3=Hunt, Inc.\n"));
    EXPECT_TRUE(world.read(file).endsWith("NumEngine=2\n"));
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ProjectEngines, areLostThroughARepeatedName)
{
    world.write(file, "[Engine]\n1=Finder\n2=finder\nNumEngine=2\n");
    EXPECT_FALSE(project.LoadEngines());
    EXPECT_TRUE(world.takeLog().startsWith("clsAccount_LoadEngines error: "_L1));
}

TEST_F(ProjectEngines, failAloneWhenTheyAreAbsent)
{
    addURL(u"a.example"_s);
    project.SaveSettings();
    EXPECT_TRUE(world.takeLog().startsWith("clsAccount_SaveEngine error: "_L1));
    EXPECT_TRUE(world.read(file).endsWith("[URL]\r\n1=a.example|False\r\nNumURL=1\r\n"));
    project.SaveEngine();
    EXPECT_TRUE(world.takeLog().contains("clsAccount_SaveEngine error: "_L1));
}

TEST_F(ProjectEngines, stayOnDiskWhenTheCatalogueDidNotLoad)
{
    const QByteArray before = "[Engine]\n1=Finder\nNumEngine=1\n";
    world.write(file, before);
    addEngine(u"Finder"_s);
    world.writeEngineData(randomBytes(1000));
    ASSERT_FALSE(engines.loadEngineData());
    world.takeLog();
    project.DeleteInvalidEngine();
    EXPECT_TRUE(world.takeLog().startsWith("clsAccount_DeleteInvalidEngine: "_L1));
    EXPECT_EQ(engineNames(), QStringList{u"Finder"_s});
    project.Engine = project.LoadEngines();
    EXPECT_FALSE(project.Engine);
    EXPECT_TRUE(world.takeLog().contains("clsAccount_LoadEngines error: "_L1));
    project.SaveEngine();
    EXPECT_EQ(world.read(file), before);
}

TEST_F(ProjectEngines, areDroppedWhenTheyAreInvalid)
{
    for (const auto &name : {u"Gone"_s, u"Other"_s, u"PERLA"_s, u"Last"_s, u"Finder"_s})
        addEngine(name);
    project.DeleteInvalidEngine();
    EXPECT_EQ(engineNames(), (QStringList{u"PERLA"_s, u"Finder"_s}));
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ProjectEngines, areNotDroppedFromNoList)
{
    project.DeleteInvalidEngine();
    EXPECT_TRUE(world.takeLog().startsWith("clsAccount_DeleteInvalidEngine: "_L1));
}
