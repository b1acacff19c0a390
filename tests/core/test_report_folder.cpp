#include "core/report_folder.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

// "name" or "link>target" of everything in the application folder.
QStringList shown(const World &world, const QString &relative)
{
    QStringList result;
    const QDir folder(world.path(relative));
    for (const QFileInfo &info : folder.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name))
        result.append(info.isSymLink() ? info.fileName() + u'>' + QFileInfo(info.symLinkTarget()).fileName()
                                       : info.fileName());
    return result;
}

} // namespace

TEST(ReportFolder, isMadeWithASecondSpelling)
{
    World world;
    ensureReportsFolder(world.app);
    ensureReportsFolder(world.app);
    EXPECT_EQ(shown(world, u"."_s), (QStringList{u"Reports"_s, u"reports>Reports"_s}));
}

TEST(ReportFolder, isTakenInTheSpellingThatIsThere)
{
    World lower;
    lower.write(u"reports/Demo/a"_s, "x");
    ensureReportsFolder(lower.app);
    EXPECT_EQ(shown(lower, u"."_s), (QStringList{u"Reports>reports"_s, u"reports"_s}));

    World upper;
    upper.write(u"REPORTS/Demo/a"_s, "x");
    ensureReportsFolder(upper.app);
    EXPECT_EQ(shown(upper, u"."_s), (QStringList{u"REPORTS"_s, u"Reports>REPORTS"_s, u"reports>REPORTS"_s}));
}

TEST(ReportFolder, leavesTwoFoldersAsTheyAre)
{
    World world;
    world.write(u"Reports/a"_s, "x");
    world.write(u"reports/b"_s, "x");
    ensureReportsFolder(world.app);
    EXPECT_EQ(shown(world, u"."_s), (QStringList{u"Reports"_s, u"reports"_s}));
}

TEST(ReportFolder, isMadeAgainBehindALinkThatLeadsNowhere)
{
    World world;
    ensureReportsFolder(world.app);
    QDir().rmdir(world.path(u"Reports"_s));
    ensureReportsFolder(world.app);
    EXPECT_EQ(shown(world, u"."_s), (QStringList{u"Reports"_s, u"reports>Reports"_s}));
}

TEST(ReportFolder, isNotMadeOverAFile)
{
    World world;
    world.write(u"Reports"_s, "mine");
    EXPECT_THROW(ensureReportsFolder(world.app), Failure);
    EXPECT_EQ(world.read(u"Reports"_s), "mine");
}

TEST(BrowserNames, areLinkedWhereAFileCanBearThem)
{
    struct Row
    {
        const char *name;
        QString file;
        QStringList shown;
    };
    const Row rows[] = {
        {"no escapes", u"a b.html"_s, {u"a b.html"_s}},
        {"escapes in either case", u"a%3bb%3Bc"_s, {u"a%3bb%3Bc"_s, u"a;b;c>a%3bb%3Bc"_s}},
        {"several bytes", u"%C3%A9"_s, {u"%C3%A9"_s, u"\u00e9>%C3%A9"_s}},
        {"an escape of an escape", u"a%2541"_s, {u"a%2541"_s, u"a%41>a%2541"_s}},
        {"no escape after all", u"50%_x%zz%4"_s, {u"50%_x%zz%4"_s}},
        {"slash", u"a%2Fb"_s, {u"a%2Fb"_s}},
        {"zero", u"a%00b"_s, {u"a%00b"_s}},
        {"no text", u"a%FFb"_s, {u"a%FFb"_s}},
        {"the folder above", u"%2E%2E"_s, {u"%2E%2E"_s}},
        {"read as UTF-8, as Central European, as Baltic",
         u"na\u00efve"_s,
         {u"na\u00efve"_s, u"na\u010fve>na\u00efve"_s, u"na\u013cve>na\u00efve"_s,
          u"na\ufffdve>na\u00efve"_s}},
        {"letters and escapes",
         u"b\u00e8%27s"_s,
         {u"b\u00e8%27s"_s, u"b\u00e8's>b\u00e8%27s"_s, u"b\u010d's>b\u00e8%27s"_s,
          u"b\ufffd's>b\u00e8%27s"_s}},
        {"letters that all read alike but for UTF-8",
         u"gr\u00f6\u00dfe"_s,
         {u"gr\u00f6\u00dfe"_s, u"gr\ufffd\ufffde>gr\u00f6\u00dfe"_s}},
    };
    for (const Row &row : rows) {
        World world;
        world.write(u"Reports/"_s + row.file, "x");
        linkBrowserNames(world.app, world.app.appFile({u"Reports"_s, row.file}));
        EXPECT_EQ(shown(world, u"Reports"_s), row.shown) << row.name;
    }
}

TEST(BrowserNames, areNotGuessedWhereThePagesAreUtf8)
{
    World world;
    world.setPreference(u"CodePage"_s, u"65001"_s);
    world.write(u"Reports/na\u00efve"_s, "x");
    linkBrowserNames(world.app, world.app.appFile({u"Reports"_s, u"na\u00efve"_s}));
    EXPECT_EQ(shown(world, u"Reports"_s), QStringList{u"na\u00efve"_s});
}

TEST(BrowserNames, leadToTheFolderWhenTheyMayMeanSeveralFiles)
{
    World world;
    const QStringList words{u"gr\u00f6\u00dfe"_s, u"gr\u00fc\u00dfe"_s};
    for (const QString &word : words)
        world.write(u"Reports/"_s + word, "x");
    const QString shared = world.path(u"Reports/gr\ufffd\ufffde"_s);
    const auto link = [&](const QString &word) {
        linkBrowserNames(world.app, world.app.appFile({u"Reports"_s, word}));
        return QFile::symLinkTarget(shared);
    };
    EXPECT_EQ(link(words[0]), world.path(u"Reports/"_s + words[0]));
    EXPECT_EQ(link(words[0]), world.path(u"Reports/"_s + words[0]));
    for (const QString &word : {words[1], words[0], words[1]})
        EXPECT_TRUE(QFileInfo(link(word)).isDir()) << qPrintable(word);
}

TEST(BrowserNames, leaveALinkToAFileThatIsGone)
{
    World world;
    world.write(u"Reports/gr\u00fc\u00dfe"_s, "x");
    const auto path = [&](const QString &word) { return world.app.appFile({u"Reports"_s, word}); };
    linkBrowserNames(world.app, path(u"gr\u00fc\u00dfe"_s));
    world.app.files.remove(path(u"gr\u00fc\u00dfe"_s));
    world.write(u"Reports/gr\u00f6\u00dfe"_s, "x");
    linkBrowserNames(world.app, path(u"gr\u00f6\u00dfe"_s));
    EXPECT_EQ(QFile::symLinkTarget(world.path(u"Reports/gr\ufffd\ufffde"_s)),
              world.path(u"Reports/gr\u00f6\u00dfe"_s));
}
