#include "tests/core/host_path_test.h"

#include <array>
#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

timespec timeOf(const QString &path)
{
    struct stat info = {};
    ::stat(QFile::encodeName(path).constData(), &info);
    return info.st_mtim;
}

// Puts a folder's time back, so that a change in it cannot be seen without reading the folder.
void setTime(const QString &path, const timespec &time)
{
    const timespec both[] = {time, time};
    ::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), both, 0);
}

constexpr timespec LongAgo{1'000'000'000, 0};

} // namespace

TEST(HostPathNames, areRefusedWhenNoFileCanBearThem)
{
    struct Row
    {
        const char *name;
        QString text;
        bool possible;
    };
    const Row rows[] = {
        {"ordinary", u"word.dat"_s, true},
        {"blanks and marks", u" a b %2F;'\" "_s, true},
        {"reserved elsewhere", u"con"_s, true},
        {"three dots", u"..."_s, true},
        {"255 bytes", QString(255, u'a'), true},
        {"255 bytes in longer characters", QString(85, u'\u20ac'), true},
        {"empty", u""_s, false},
        {"the folder itself", u"."_s, false},
        {"the folder above", u".."_s, false},
        {"slash", u"a/b"_s, false},
        {"backslash", u"a\\b"_s, false},
        {"line feed", u"a\nb"_s, false},
        {"zero", QString(QChar(0)), false},
        {"delete", u"a\u007fb"_s, false},
        {"256 bytes", QString(256, u'a'), false},
        {"257 bytes in 129 characters", QString(128, u'\u00e9') + u'a', false},
    };
    for (const Row &row : rows)
        EXPECT_EQ(HostPath::isFileName(row.text), row.possible) << row.name;
}

TEST(HostPathNames, areComposedWithBackslashes)
{
    EXPECT_EQ(HostPath::compose(u"/r"_s, {u"Results"_s, u"My Engine"_s, u"a.dat"_s}),
              u"/r\\Results\\My Engine\\a.dat"_s);
    EXPECT_THROW(HostPath::compose(u"/r"_s, {u"Results"_s, u".."_s}), Failure);
}

TEST_F(HostPathTest, findsFoldersAndFilesInAnyCase)
{
    put(native(u"results/ENGINE/Wort\u00c4.DAT"_s), "bytes");
    EXPECT_EQ(files.find(composed(u"Results/Engine/wort\u00e4.dat"_s)),
              native(u"results/ENGINE/Wort\u00c4.DAT"_s));
    EXPECT_EQ(files.readAll(composed(u"Results/Engine/wort\u00e4.dat"_s)), "bytes");
    EXPECT_TRUE(files.fileExists(composed(u"RESULTS/engine/WORT\u00c4.dat"_s)));
    EXPECT_TRUE(files.folderExists(composed(u"RESULTS/engine"_s)));
    EXPECT_EQ(files.size(composed(u"RESULTS/engine/WORT\u00c4.dat"_s)), 5);
}

TEST_F(HostPathTest, prefersTheNameAsSpelled)
{
    put(native(u"A.dat"_s), "upper");
    put(native(u"a.dat"_s), "lower");
    EXPECT_EQ(files.readAll(composed(u"a.dat"_s)), "lower");
    EXPECT_EQ(files.readAll(composed(u"A.dat"_s)), "upper");
    EXPECT_EQ(files.readAll(composed(u"A.DAT"_s)), "upper");
}

TEST_F(HostPathTest, spellsMissingNamesAsGiven)
{
    put(native(u"RESULTS/x"_s));
    EXPECT_EQ(files.find(composed(u"Results/Engine/a.dat"_s)), native(u"RESULTS/Engine/a.dat"_s));
    EXPECT_FALSE(files.fileExists(composed(u"Results/Engine/a.dat"_s)));
    EXPECT_EQ(files.size(composed(u"Results/Engine/a.dat"_s)), -1);
}

TEST_F(HostPathTest, findsNothingUnderAnImpossibleName)
{
    EXPECT_EQ(files.find(composed(u"Results/../../outside/x"_s)), std::nullopt);
    EXPECT_EQ(files.find(root + u"\\Results/x"_s), std::nullopt);
    EXPECT_FALSE(files.fileExists(composed(QString(300, u'a'))));
    EXPECT_FALSE(files.folderExists(composed(u".."_s)));
}

TEST_F(HostPathTest, takesOtherPathsAsTheSystemSpellsThem)
{
    put(outside + u"/a\\b.txt"_s, "picked");
    EXPECT_EQ(files.readAll(outside + u"/a\\b.txt"_s), "picked");
    EXPECT_EQ(files.find(outside + u"/Missing.txt"_s), outside + u"/Missing.txt"_s);
    files.writeAll(outside + u"/c.txt"_s, "new");
    EXPECT_EQ(bytesOf(outside + u"/c.txt"_s), "new");
    EXPECT_EQ(files.find(outside + QChar(0) + u"x"_s), std::nullopt);
    EXPECT_EQ(files.find(QString()), std::nullopt);
}

TEST_F(HostPathTest, toleratesDoubledAndClosingSeparators)
{
    put(native(u"Reports/a"_s));
    EXPECT_TRUE(files.folderExists(root + u"\\Reports\\"_s));
    EXPECT_TRUE(files.fileExists(root + u"\\Reports\\\\a"_s));
    EXPECT_TRUE(files.folderExists(root + u'\\'));
}

TEST_F(HostPathTest, seesWhatOthersAddRightAfterALookUp)
{
    EXPECT_FALSE(files.fileExists(composed(u"late.dat"_s)));
    put(native(u"LATE.dat"_s));
    EXPECT_TRUE(files.fileExists(composed(u"late.dat"_s)));
}

TEST_F(HostPathTest, seesWhatOthersRemove)
{
    put(native(u"GONE.dat"_s));
    EXPECT_TRUE(files.fileExists(composed(u"gone.dat"_s)));
    QFile::remove(native(u"GONE.dat"_s));
    EXPECT_FALSE(files.fileExists(composed(u"gone.dat"_s)));
}

TEST_F(HostPathTest, doesNotReadAnUnchangedFolderAgain)
{
    setTime(root, LongAgo);
    EXPECT_FALSE(files.fileExists(composed(u"word.dat"_s)));
    put(native(u"WORD.dat"_s));
    setTime(root, LongAgo);
    EXPECT_FALSE(files.fileExists(composed(u"word.dat"_s))) << "the folder has been read again";
    setTime(root, timespec{LongAgo.tv_sec + 1, 0});
    EXPECT_TRUE(files.fileExists(composed(u"word.dat"_s)));
}

TEST_F(HostPathTest, doesNotReadAFolderAgainAfterItsOwnWrites)
{
    struct Row
    {
        const char *name;
        std::function<void()> act;
    };
    const Row rows[] = {
        {"append", [&] { files.append(composed(u"1.dat"_s), "a"); }},
        {"append again", [&] { files.append(composed(u"1.dat"_s), "b"); }},
        {"write", [&] { files.writeAll(composed(u"2.dat"_s), "a"); }},
        {"write again", [&] { files.writeAll(composed(u"2.dat"_s), "b"); }},
        {"write unflushed", [&] { files.writeUnflushed(composed(u"3.dat"_s), "a"); }},
        {"remove", [&] { files.remove(composed(u"2.dat"_s)); }},
        {"make a folder", [&] { files.makeFolder(composed(u"Folder"_s)); }},
        {"link", [&] { files.linkBeside(composed(u"1.dat"_s), u"one.dat"_s); }},
    };
    setTime(root, LongAgo);
    EXPECT_FALSE(files.fileExists(composed(u"hidden.dat"_s)));
    for (const Row &row : rows) {
        row.act();
        const timespec after = timeOf(root);
        put(native(u"HIDDEN.dat"_s));
        setTime(root, after);
        EXPECT_FALSE(files.fileExists(composed(u"hidden.dat"_s))) << row.name;
        QFile::remove(native(u"HIDDEN.dat"_s));
        setTime(root, after);
    }
}

TEST_F(HostPathTest, knowsItsOwnWritesWithoutReadingTheFolder)
{
    setTime(root, LongAgo);
    EXPECT_FALSE(files.fileExists(composed(u"A.DAT"_s)));
    files.writeAll(composed(u"a.dat"_s), "1");
    files.append(composed(u"A.dat"_s), "2");
    files.writeUnflushed(composed(u"B.dat"_s), "3");
    files.writeUnflushed(composed(u"b.DAT"_s), "4");
    EXPECT_EQ(names(root), (QStringList{u"B.dat"_s, u"a.dat"_s}));
    EXPECT_EQ(bytesOf(native(u"a.dat"_s)), "12");
    EXPECT_EQ(bytesOf(native(u"B.dat"_s)), "4");
    files.remove(composed(u"A.DAT"_s));
    EXPECT_FALSE(files.fileExists(composed(u"a.dat"_s)));
}

TEST_F(HostPathTest, findsTheOtherSpellingOnceTheFirstIsRemoved)
{
    put(native(u"A.dat"_s), "upper");
    put(native(u"a.dat"_s), "lower");
    files.remove(composed(u"a.dat"_s));
    EXPECT_EQ(files.readAll(composed(u"a.dat"_s)), "upper");
}

TEST_F(HostPathTest, missesNothingThatOthersAddToAFolderMeanwhile)
{
    EXPECT_FALSE(files.fileExists(composed(u"Reports/other.dat"_s)));
    HostPath::Folder reports = files.folder(composed(u"Reports"_s));
    reports.writeUnflushed(u"a.dat"_s, "1", {});
    put(native(u"Reports/OTHER.dat"_s), "theirs");
    setTime(native(u"Reports"_s), LongAgo);
    reports.writeUnflushed(u"b.dat"_s, "2", {});
    EXPECT_EQ(files.readAll(composed(u"Reports/other.dat"_s)), "theirs");
}

TEST_F(HostPathTest, looksForAFolderAgainThatIsNoLongerWhereItWas)
{
    EXPECT_FALSE(files.knownFolder(composed(u"Reports\\Demo"_s)));
    files.folder(composed(u"Reports\\Demo"_s));
    EXPECT_TRUE(files.knownFolder(composed(u"Reports\\Demo"_s)));
    QDir(native(u"Reports"_s)).rename(u"Demo"_s, u"DEMO"_s);
    EXPECT_FALSE(files.knownFolder(composed(u"Reports\\Demo"_s)));
    files.folder(composed(u"Reports\\Demo"_s)).openAnew(u"a.dat"_s).append("1");
    EXPECT_EQ(bytesOf(native(u"Reports/DEMO/a.dat"_s)), "1");
    QDir(native(u"Reports/DEMO"_s)).removeRecursively();
    put(native(u"Reports/DEMO"_s), "a file");
    EXPECT_FALSE(files.knownFolder(composed(u"Reports\\Demo"_s)));
    EXPECT_EQ(failureOf([&] { files.folder(composed(u"Reports\\Demo"_s)); }),
              u"Cannot make the folder \""_s + native(u"Reports/DEMO"_s) + u"\": a file is in its place"_s);
}

TEST_F(HostPathTest, keepsAFolderThatIsLookedUpToItsFiles)
{
    HostPath::Folder reports = files.folder(composed(u"Reports"_s));
    for (const QString &name : {u"../x"_s, u"a\\b"_s, u".."_s, QString()}) {
        const QString text = u"\""_s + name + u"\" cannot be the name of a file"_s;
        EXPECT_EQ(failureOf([&] { reports.writeUnflushed(name, "x", {}); }), text);
        EXPECT_EQ(failureOf([&] { reports.openToAppend(name); }), text);
        EXPECT_EQ(failureOf([&] { reports.openAnew(name); }), text);
    }
    EXPECT_EQ(names(folder.path()), (QStringList{u"outside"_s, u"root"_s}));
}

TEST_F(HostPathTest, picksTheInnerOfTwoRoots)
{
    put(native(u"inner/A"_s), "x");
    const HostPath both({root, native(u"inner"_s)});
    EXPECT_EQ(both.readAll(native(u"inner"_s) + u"\\a"_s), "x");
}

TEST_F(HostPathTest, keepsOneIndexForBothSpellingsOfAFolder)
{
    QDir().mkpath(native(u"Reports"_s));
    link(u"Reports"_s, native(u"reports"_s));
    setTime(native(u"Reports"_s), LongAgo);
    EXPECT_FALSE(files.fileExists(composed(u"reports/hidden"_s)));
    files.append(composed(u"Reports/mine"_s), "x");
    const timespec after = timeOf(native(u"Reports"_s));
    put(native(u"Reports/HIDDEN"_s));
    setTime(native(u"Reports"_s), after);
    EXPECT_FALSE(files.fileExists(composed(u"reports/hidden"_s)));
}

TEST_F(HostPathTest, passesOverNamesThatAreNoText)
{
    const QByteArray name = QFile::encodeName(root) + "/\xff\xfe.dat";
    const int handle = ::open(name.constData(), O_WRONLY | O_CREAT, 0644);
    ASSERT_GE(handle, 0);
    ::close(handle);
    EXPECT_FALSE(files.fileExists(composed(u"x.dat"_s)));
    ::unlink(name.constData()); // the temporary folder could not
}

TEST_F(HostPathTest, readsFilesThatAreLongerThanTheySay)
{
    EXPECT_TRUE(files.readAll(u"/proc/self/status"_s).contains("Pid:"));
}
