#include "core/application_context.h"

#include "core/file_settings_store.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QDir>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class Context : public testing::Test
{
protected:
    World world;
    ApplicationContext &app = world.app;

    std::unique_ptr<ApplicationContext> contextIn(const QString &appPath, const QString &systemDirectory)
    {
        return std::make_unique<ApplicationContext>(
            appPath, systemDirectory, Doors{world.clock, world.desktop, world.settings, world.http},
            app.locale);
    }
};

} // namespace

TEST_F(Context, knowsThePathsOfTheSettings)
{
    EXPECT_EQ(app.RegPreference, u"Software\\Kestrune\\Marovia Sondrel V4\\Preference"_s);
    EXPECT_EQ(app.RegScheduler, u"Software\\Kestrune\\Marovia Sondrel V4\\Scheduler"_s);
    EXPECT_EQ(app.RegVersion, u"Software\\Kestrune\\Marovia Sondrel V4\\Version"_s);
    EXPECT_EQ(app.RegEngine, u"Software\\Kestrune\\Marovia Sondrel V4\\Engine"_s);
}

TEST_F(Context, takesFoldersWithAndWithoutASeparatorAtTheEnd)
{
    for (const QString &end : {u""_s, u"/"_s, u"\\"_s}) {
        const auto context = contextIn(u"/a"_s + end, u"/b/system"_s + end);
        EXPECT_EQ(context->AppPath, u"/a"_s);
        EXPECT_EQ(context->SystemDirectory, u"/b/system\\"_s);
        EXPECT_EQ(context->EngineDataFile, u"/b/system\\qlteng4.dat"_s);
    }
}

TEST_F(Context, hasARelativeEngineDataFileWithoutASystemDirectory)
{
    const auto context = contextIn(app.AppPath, QString());
    EXPECT_EQ(context->SystemDirectory, u""_s);
    EXPECT_EQ(context->EngineDataFile, u"qlteng4.dat"_s);
    EXPECT_FALSE(context->files.fileExists(context->EngineDataFile));
}

TEST_F(Context, reachesFilesOfBothFoldersInAnyCase)
{
    world.write(u"Results/Finder/Shoes.dat"_s, "1");
    world.writeEngineData("2");
    EXPECT_EQ(app.files.readAll(app.appFile({u"results"_s, u"finder"_s, u"shoes.DAT"_s})), "1");
    EXPECT_EQ(app.files.readAll(app.SystemDirectory + u"QLTENG4.DAT"_s), "2");
}

TEST_F(Context, refusesComponentsThatLeadElsewhere)
{
    EXPECT_EQ(app.appFile({u"Results"_s, u"a b.dat"_s}), app.AppPath + u"\\Results\\a b.dat"_s);
    EXPECT_THROW(app.appFile({u"Results"_s, u".."_s, u"a"_s}), Failure);
    EXPECT_THROW(app.appFile({u"Results/a"_s}), Failure);
}

TEST_F(Context, writesWestern8BitTextUnlessToldOtherwise)
{
    EXPECT_EQ(app.toBytes(u"\u20ac\u4e2d"), "\x80?");
    EXPECT_EQ(app.fromBytes("\x80"), u"\u20ac"_s);
}

TEST_F(Context, takesItsCodePageFromTheSettings)
{
    struct Row
    {
        QString setting;
        int page;
    };
    const Row rows[] = {{u"936"_s, 936},   {u" 1251 "_s, 1251}, {u"65001"_s, 65001}, {u"1200"_s, 1252},
                        {u"1201"_s, 1252}, {u"0"_s, 1252},      {u"437"_s, 1252},    {u"gbk"_s, 1252},
                        {u"936x"_s, 1252}, {u"-1"_s, 1252},     {u"1e300"_s, 1252},  {u"950"_s, 950},
                        {u"932"_s, 932},   {u"949"_s, 949},     {u"1250"_s, 1250},   {u"1258"_s, 1258},
                        {u""_s, 1252}};
    for (const Row &row : rows) {
        world.setPreference(u"CodePage"_s, row.setting);
        EXPECT_EQ(app.codePage().number(), row.page) << qPrintable(row.setting);
    }
}

TEST_F(Context, keepsItsCodePageWhenTheSettingsCannotBeRead)
{
    world.settings.broken = true;
    EXPECT_EQ(app.codePage().number(), 1252);
    EXPECT_EQ(world.read(u"Error.log"_s), "");
}

TEST_F(Context, readsNoSettingsForEveryText)
{
    FileSettingsStore settings(world.folder.filePath(u"settings.ini"_s));
    settings.createKey(app.RegPreference);
    settings.setValue(app.RegPreference, u"CodePage"_s, u"936"_s);
    const ApplicationContext context(app.AppPath, app.SystemDirectory,
                                     Doors{world.clock, world.desktop, settings, world.http}, app.locale);
    const CodePage *page = &context.codePage();
    EXPECT_EQ(page->number(), 936);
    EXPECT_EQ(&context.codePage(), page);
    settings.setValue(app.RegPreference, u"CodePage"_s, u"950"_s);
    EXPECT_EQ(context.codePage().number(), 950);
}

TEST_F(Context, writesTheLogInTheSystemCodePage)
{
    app.WriteErrorLog(u"Caf\u00e9 \u4e2d"_s);
    EXPECT_EQ(world.read(u"Error.log"_s), "\r\nCaf\xe9 ?");
}

TEST_F(Context, writesOnInALogThatIsSpelledOtherwise)
{
    world.write(u"ERROR.LOG"_s, "\r\nold");
    const auto context = contextIn(app.AppPath, app.SystemDirectory);
    context->WriteErrorLog(u"new"_s);
    EXPECT_EQ(world.read(u"ERROR.LOG"_s), "\r\nold\r\nnew");
    EXPECT_FALSE(world.has(u"Error.log"_s));
}

TEST_F(Context, neverRaisesForALogThatCannotBeWritten)
{
    ASSERT_TRUE(QDir().mkpath(world.path(u"Error.log"_s)));
    app.WriteErrorLog(u"lost"_s);
    const auto elsewhere = contextIn(u"/proc/nowhere"_s, QString());
    elsewhere->WriteErrorLog(u"lost"_s);
}

TEST_F(Context, reportsWhatAStepThrows)
{
    EXPECT_TRUE(reportFailure(app, u"Tag: "_s, [] {}));
    EXPECT_FALSE(reportFailure(app, u"Tag: "_s, [] { throw Failure(u"caf\u00e9"_s); }));
    EXPECT_EQ(world.takeLog(), u"Tag: caf\u00e9"_s);
    EXPECT_FALSE(reportFailure(app, u"Tag2"_s, [] { throw std::bad_alloc(); }));
    EXPECT_EQ(world.takeLog(), u"Tag2Out of memory"_s);
    EXPECT_FALSE(reportFailure(app, u"Tag: "_s, [] { throw std::runtime_error("plain"); }));
    EXPECT_EQ(world.takeLog(), u"Tag: plain"_s);
}

TEST_F(Context, writesTodayAsTheLocaleDoesDayAfterDay)
{
    EXPECT_EQ(app.today(), u"11/15/2026"_s);
    world.clock.set(world.clock.now().addDays(1));
    EXPECT_EQ(app.today(), u"11/16/2026"_s);
}
