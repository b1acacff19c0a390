#include "core/profile_file.h"
#include "project/clsKeywords.h"
#include "tests/project/project_world.h"

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const QByteArray Settings =
    "[Schedler]\r\nSchedlerEnable=True\r\nFrequency=2\r\nLastLookup=October,15 2026\r\n"
    "StartDate=January,05 2026\r\nStartTime=09:30:00 AM\r\n"
    "NextLookup=November,20 2026\r\nSentReport=True\r\nExcludeUnRanking=False\r\n"
    "KeywordSummary=False\r\nTopPosOnly=True\r\nRankingDetail=False\r\n"
    "EngineSummary=False\r\nKeywordURL=True\r\nReportformat=1\r\n"
    "ReportTo=boss@site.example\r\nSubject=\xdc"
    "ber uns\r\nCC=desk@site.example\r\nNumLink=100\r\n"
    "[URL]\r\n1=http://www.site.example|False\r\n2=rival.example|True\r\nNumURL=2\r\n"
    "[Engine]\r\n1=Finder\r\n2=Perla\r\nNumEngine=2\r\n";

// The settings with one key of the schedule changed, or taken out for no value.
QByteArray settingsWith(const QByteArray &key, const std::optional<QByteArray> &value)
{
    QByteArray text = Settings;
    const qsizetype begin = text.indexOf("\r\n" + key + '=') + 2;
    const qsizetype end = text.indexOf("\r\n", begin) + 2;
    return text.replace(begin, end - begin, value ? key + '=' + *value + "\r\n" : QByteArray());
}

class ClsAccount : public ProjectWorld
{
protected:
    void load(const QByteArray &settings)
    {
        world.write(file, settings);
        project.GetSettings();
    }

    // One key of the schedule as the file holds it now.
    QString stored(const QString &key) const
    {
        return ProfileFile(*CodePage::western(), world.read(file)).read(u"Schedler"_s, key);
    }
};

} // namespace

TEST_F(ClsAccount, loadsEveryField)
{
    load(Settings);
    EXPECT_TRUE(project.SchedulerEnable);
    EXPECT_EQ(project.Frequency, 2);
    EXPECT_EQ(project.LastLookup, QDate(2026, 10, 15));
    EXPECT_EQ(project.StartDate, QDate(2026, 1, 5));
    EXPECT_EQ(project.StartTime, u"09:30:00 AM"_s);
    EXPECT_EQ(project.NextLookup, QDate(2026, 11, 20));
    EXPECT_TRUE(project.SentReport);
    EXPECT_FALSE(project.ExcludeUnRanking);
    EXPECT_FALSE(project.KeywordSummaryReport);
    EXPECT_TRUE(project.TopPosOnly);
    EXPECT_FALSE(project.RankingDetailReport);
    EXPECT_FALSE(project.EngineSummaryReport);
    EXPECT_TRUE(project.KeywordURL);
    EXPECT_EQ(project.ReportFormat, 1);
    EXPECT_EQ(project.ReportTo, u"boss@site.example"_s);
    EXPECT_EQ(project.Subject, u"\u00dcber uns"_s);
    EXPECT_EQ(project.CC, u"desk@site.example"_s);
    EXPECT_EQ(project.LinksNum, 100);
    EXPECT_EQ(urls(), (QStringList{u" http://www.site.example"_s, u"!rival.example"_s}));
    EXPECT_EQ(engineNames(), (QStringList{u"Finder"_s, u"Perla"_s}));
    EXPECT_EQ(world.takeLog(), QString());
    EXPECT_EQ(world.read(file), Settings);
    EXPECT_EQ(world.desktop.waits, 1);
    EXPECT_EQ(world.desktop.waiting, 0);
}

TEST_F(ClsAccount, savesWhatItLoaded)
{
    load(Settings);
    ASSERT_TRUE(QDir(world.path(u"Projects"_s)).removeRecursively());
    project.SaveSettings();
    EXPECT_EQ(world.read(file), Settings);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ClsAccount, keepsWhatElseTheFileHolds)
{
    world.write(file, "; mine\r\n[Other]\r\nk=v\r\n[schedler]\r\nNextLookUp=x\r\n");
    addURL(u"a.example"_s);
    addEngine(u"Finder"_s);
    project.NextLookup = QDate(2026, 11, 20);
    project.SaveSettings();
    const QByteArray text = world.read(file);
    EXPECT_TRUE(text.startsWith("; mine\r\n[Other]\r\nk=v\r\n[schedler]\r\nNextLookUp=November,20 2026\r\n"));
    EXPECT_EQ(text.toLower().count("nextlookup"), 1);
}

TEST_F(ClsAccount, loadsNothingWithoutAFile)
{
    project.Frequency = 3;
    project.GetSettings();
    EXPECT_EQ(project.Frequency, 3);
    EXPECT_FALSE(project.URLs);
    EXPECT_FALSE(world.has(file));
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ClsAccount, loadsNothingWithoutTheScheduleFlag)
{
    for (const std::optional<QByteArray> &value : {std::optional<QByteArray>(), {""}, {"yes"}}) {
        load(settingsWith("SchedlerEnable", value));
        EXPECT_EQ(world.takeLog(), u"clsAccount_Getsettings error: Type mismatch"_s);
        EXPECT_EQ(project.LinksNum, 0);
        EXPECT_FALSE(project.URLs);
        EXPECT_FALSE(project.Engine);
    }
}

TEST_F(ClsAccount, convertsTheScheduleFlagStrictly)
{
    for (const auto &[value, wanted] : {std::pair{"True", true},
                                        {"FALSE", false},
                                        {"-1", true},
                                        {"1", true},
                                        {"0", false},
                                        {"2.5", true}}) {
        load(settingsWith("SchedlerEnable", value));
        EXPECT_EQ(project.SchedulerEnable, wanted) << value;
    }
}

TEST_F(ClsAccount, takesTwoTextsForTrueInOtherFlags)
{
    for (const auto &[value, wanted] :
         {std::pair{"-1", true}, {"true", true}, {"1", false}, {"False", false}, {"", false}}) {
        load(settingsWith("SentReport", value));
        EXPECT_EQ(project.SentReport, wanted) << value;
    }
    load(settingsWith("SentReport", {}));
    EXPECT_FALSE(project.SentReport);
}

TEST_F(ClsAccount, takesTheLeadingNumber)
{
    for (const auto &[value, wanted] :
         {std::pair{"3rd", 3}, {"", 0}, {"Weekly", 0}, {"2.5", 2}, {"3.5", 4}, {"-1", -1}}) {
        load(settingsWith("Frequency", value));
        EXPECT_EQ(project.Frequency, wanted) << value;
    }
}

TEST_F(ClsAccount, endsTheLoadAtANumberThatIsTooBig)
{
    load(settingsWith("NumLink", "32768"));
    EXPECT_EQ(world.takeLog(), u"clsAccount_Getsettings error: Overflow"_s);
    EXPECT_EQ(project.Subject, u"\u00dcber uns"_s) << "what was read stays";
    EXPECT_FALSE(project.URLs);
}

TEST_F(ClsAccount, takesTodayForDatesThatAreNone)
{
    load(settingsWith("LastLookup", "yesterday"));
    EXPECT_EQ(project.LastLookup, QDate(2026, 11, 15));
    load(settingsWith("StartDate", {}));
    EXPECT_EQ(project.StartDate, QDate(2026, 11, 15));
}

TEST_F(ClsAccount, takesNoonForATimeThatIsNone)
{
    load(settingsWith("StartTime", {}));
    EXPECT_EQ(project.StartTime, u"12:00:00"_s);
    load(settingsWith("StartTime", "noonish"));
    EXPECT_EQ(project.StartTime, u"12:00:00"_s);
    load(settingsWith("StartTime", "14:30"));
    EXPECT_EQ(project.StartTime, u"02:30:00 PM"_s);
}

TEST_F(ClsAccount, reckonsAndStoresANextLookupThatIsNone)
{
    load("[Schedler]\r\nSchedlerEnable=True\r\nFrequency=2\r\nLastLookUp=January,31 "
         "2003\r\nNextLookUp=soon\r\n");
    EXPECT_EQ(project.NextLookup, QDate(2003, 2, 28));
    EXPECT_EQ(world.read(file), "[Schedler]\r\nSchedlerEnable=True\r\nFrequency=2\r\n"
                                "LastLookUp=January,31 2003\r\nNextLookUp=February,28 2003\r\n");
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ClsAccount, movesTheNextLookupByTheFrequency)
{
    load(Settings);
    for (const auto &[frequency, base, wanted] : {std::tuple{0, QDate(2026, 12, 28), QDate(2027, 1, 4)},
                                                  {1, QDate(2026, 11, 15), QDate(2026, 11, 29)},
                                                  {2, QDate(2024, 1, 31), QDate(2024, 2, 29)},
                                                  {3, QDate(2026, 11, 30), QDate(2027, 2, 28)},
                                                  {4, QDate(2026, 11, 15), QDate(1899, 12, 30)},
                                                  {-1, QDate(2026, 11, 15), QDate(1899, 12, 30)}}) {
        project.Frequency = frequency;
        project.SetNextLookupDate(base);
        EXPECT_EQ(project.NextLookup, wanted);
    }
    EXPECT_EQ(world.read(file), settingsWith("NextLookup", "December,30 1899"));
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(ClsAccount, logsANextLookupThatCannotBeStored)
{
    project.SetNextLookupDate(QDate(2026, 11, 15));
    EXPECT_EQ(project.NextLookup, QDate(2026, 11, 22));
    EXPECT_TRUE(world.takeLog().startsWith("clsAccount_SetNextLookupDate: Cannot write"_L1));
    EXPECT_FALSE(world.has(u"Projects"_s)) << "it makes no folder";
}

TEST_F(ClsAccount, changesNothingBySavingTheLastLookup)
{
    load(Settings);
    project.LastLookup = QDate(2026, 11, 1);
    project.SaveLastLookupTime();
    EXPECT_EQ(world.read(file), Settings);
}

TEST_F(ClsAccount, deletesItsSettingsOnly)
{
    load(Settings);
    clsKeywords keywords(world.app);
    keywords.AccountName = project.Name;
    keywords.Add(u"shoes"_s, u"shoes"_s, -1);
    keywords.SaveKeywords();
    project.DeleteFile();
    EXPECT_FALSE(world.has(file));
    project.DeleteFile();
    EXPECT_EQ(world.takeLog(), QString());
    project.SaveSettings();
    clsKeywords again(world.app);
    again.AccountName = project.Name;
    again.LoadKeywords();
    EXPECT_EQ(again.GetKeyword(1), u"shoes"_s);
}

TEST_F(ClsAccount, logsAFolderInItsPlace)
{
    putFolder(world, file);
    addURL(u"a.example"_s);
    addEngine(u"Finder"_s);
    const auto step = [&](void (clsAccount::*operation)(), const QString &log) {
        (project.*operation)();
        EXPECT_TRUE(world.takeLog().contains(log)) << log.toStdString();
    };
    step(&clsAccount::GetSettings, u"clsAccount_Getsettings error: Cannot read"_s);
    step(&clsAccount::SaveSettings, u"clsAccount_SaveSettings: Cannot read"_s);
    step(&clsAccount::SaveURLs, u"clsAccount_SaveURLs error: Cannot read"_s);
    step(&clsAccount::SaveEngine, u"clsAccount_SaveEngine error: Cannot read"_s);
    step(&clsAccount::DeleteFile, u"clsAccount_DeleteFile: "_s);
    EXPECT_FALSE(project.LoadURLs());
    EXPECT_TRUE(world.takeLog().contains("clsAccount_LoadURLs error: Cannot read"_L1));
    EXPECT_FALSE(project.LoadEngines());
    EXPECT_TRUE(world.takeLog().contains("clsAccount_LoadEngines error: Cannot read"_L1));
    project.SetNextLookupDate(QDate(2026, 11, 15));
    EXPECT_TRUE(world.takeLog().contains("clsAccount_SetNextLookupDate: Cannot read"_L1));
}

TEST_F(ClsAccount, savesNothingOverAFileThatCannotBeRead)
{
    putUnreadable(world, file);
    project.GetSettings();
    EXPECT_TRUE(world.takeLog().startsWith("clsAccount_Getsettings error: Cannot read"_L1));
    addURL(u"a.example"_s);
    addEngine(u"Finder"_s);
    project.SaveSettings();
    EXPECT_TRUE(world.takeLog().contains("clsAccount_SaveSettings: Cannot read"_L1));
    EXPECT_TRUE(QFileInfo(world.path(file)).isSymLink());
}

TEST_F(ClsAccount, loadsNothingFromEmptyFilesAndRandomBytes)
{
    for (const QByteArray &bytes : {QByteArray(), randomBytes(20000)}) {
        load(bytes);
        EXPECT_TRUE(world.takeLog().contains("clsAccount_Getsettings error: "_L1));
        EXPECT_FALSE(project.URLs);
        EXPECT_EQ(world.read(file), bytes);
    }
    project.SaveSettings();
    EXPECT_TRUE(world.read(file).startsWith(randomBytes(20000))) << "the other lines stay";
}

TEST_F(ClsAccount, staysInsideItsFolder)
{
    world.write(u"Secret.dat"_s, Settings);
    const QByteArray before = world.read(u"Secret.dat"_s);
    for (const auto &name :
         {u".."_s, u"../Secret"_s, u"..\\Secret"_s, QString(), u"a/b"_s, QString(252, u'n')}) {
        project.Name = name;
        project.GetSettings();
        EXPECT_FALSE(project.LoadURLs());
        project.DeleteFile();
        EXPECT_EQ(project.LinksNum, 0);
        EXPECT_EQ(world.takeLog(), QString()) << "there is no such file";
        project.SaveSettings();
        EXPECT_TRUE(world.takeLog().contains("clsAccount_SaveSettings: "_L1)) << name.toStdString();
    }
    EXPECT_EQ(world.read(u"Secret.dat"_s), before);
}
