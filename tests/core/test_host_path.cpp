#include "core/failure.h"
#include "core/host_path.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <array>
#include <csignal>
#include <functional>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class HostPathTest : public testing::Test
{
protected:
    QTemporaryDir folder;
    const QString root = folder.filePath(u"root"_s);
    const QString outside = folder.filePath(u"outside"_s);
    HostPath files{{root}};

    HostPathTest()
    {
        QDir().mkpath(root);
        QDir().mkpath(outside);
    }

    QString native(const QString &relative) const { return root + u'/' + relative; }
    QString composed(const QString &relative) const
    {
        return root + u'\\' + QString(relative).replace(u'/', u'\\');
    }

    // As somebody else would, past the index.
    void put(const QString &path, const QByteArray &bytes = "x") const
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    QByteArray bytesOf(const QString &path) const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
    }
    void link(const QString &target, const QString &path) const
    {
        ASSERT_EQ(::symlink(QFile::encodeName(target).constData(), QFile::encodeName(path).constData()), 0);
    }
    QStringList names(const QString &path) const
    {
        return QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                    QDir::Name);
    }
    QString failureOf(const std::function<void()> &act) const
    {
        try {
            act();
        } catch (const Failure &failure) {
            return failure.text();
        }
        return u"(nothing thrown)"_s;
    }
};

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

// No file grows beyond this size meanwhile, as on a full disk.
class SizeLimit
{
public:
    explicit SizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limit{bytes, m_old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SizeLimit()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_handler);
    }
    SizeLimit(const SizeLimit &) = delete;
    SizeLimit &operator=(const SizeLimit &) = delete;

private:
    void (*m_handler)(int);
    rlimit m_old{};
};

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

TEST_F(HostPathTest, writesUnderTheSpellingOnDisk)
{
    put(native(u"REPORTS/Demo/PAGE.html"_s), "old");
    files.writeAll(composed(u"Reports/demo/page.html"_s), "new");
    files.append(composed(u"reports/DEMO/Page.html"_s), "er");
    EXPECT_EQ(bytesOf(native(u"REPORTS/Demo/PAGE.html"_s)), "newer");
    EXPECT_EQ(names(native(u"REPORTS/Demo"_s)), QStringList{u"PAGE.html"_s});
    EXPECT_EQ(names(root), QStringList{u"REPORTS"_s});
}

TEST_F(HostPathTest, writesSeveralFilesOfAFolderThatIsLookedUpOnce)
{
    put(native(u"REPORTS/PAGE.html"_s), "old");
    HostPath::Folder reports = files.folder(composed(u"Reports"_s));
    reports.writeUnflushed(u"page.html"_s, "new", "er");
    reports.openToAppend(u"List.dat"_s).append("1");
    reports.openToAppend(u"LIST.dat"_s).append("2");
    reports.openAnew(u"list.dat"_s).append("3");
    reports.openAnew(u"New.dat"_s).append("4");
    EXPECT_EQ(bytesOf(native(u"REPORTS/PAGE.html"_s)), "newer");
    EXPECT_EQ(bytesOf(native(u"REPORTS/list.dat"_s)), "3");
    EXPECT_EQ(bytesOf(native(u"REPORTS/New.dat"_s)), "4");
    EXPECT_EQ(names(native(u"REPORTS"_s)), (QStringList{u"New.dat"_s, u"PAGE.html"_s, u"list.dat"_s}));
    EXPECT_EQ(names(root), QStringList{u"REPORTS"_s});
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

TEST_F(HostPathTest, writesNamesOfTheLongestLength)
{
    const QString longest(255, u'a');
    files.writeAll(composed(longest), "1");
    files.writeUnflushed(composed(longest), "2");
    files.append(composed(longest), "3");
    EXPECT_EQ(bytesOf(native(longest)), "23");
    EXPECT_EQ(names(root), QStringList{longest});
}

TEST_F(HostPathTest, keepsTheOldFileWhenTheDiskIsFull)
{
    files.writeAll(composed(u"a.dat"_s), "old");
    QString failure;
    {
        const SizeLimit limit(1000);
        failure = failureOf([&] { files.writeAll(composed(u"a.dat"_s), QByteArray(2000, 'n')); });
    }
    EXPECT_EQ(failure, u"Cannot write \""_s + native(u"a.dat"_s) + u"\": File too large"_s);
    EXPECT_EQ(bytesOf(native(u"a.dat"_s)), "old");
    EXPECT_EQ(names(root), QStringList{u"a.dat"_s});
}

TEST_F(HostPathTest, takesBackAHalfAddedPiece)
{
    files.append(composed(u"a.dat"_s), "old");
    QString failure;
    {
        const SizeLimit limit(1000);
        failure = failureOf([&] { files.append(composed(u"a.dat"_s), QByteArray(2000, 'n')); });
    }
    EXPECT_EQ(failure, u"Cannot write \""_s + native(u"a.dat"_s) + u"\": File too large"_s);
    EXPECT_EQ(bytesOf(native(u"a.dat"_s)), "old");
}

TEST_F(HostPathTest, addsNothingButMakesTheFile)
{
    files.append(composed(u"a.dat"_s), {});
    EXPECT_EQ(bytesOf(native(u"a.dat"_s)), "");
}

TEST_F(HostPathTest, keepsThePermissionsOfAReplacedFile)
{
    put(native(u"a.dat"_s));
    ASSERT_EQ(::chmod(QFile::encodeName(native(u"a.dat"_s)).constData(), 0640), 0);
    files.writeAll(composed(u"a.dat"_s), "new");
    struct stat info = {};
    ASSERT_EQ(::stat(QFile::encodeName(native(u"a.dat"_s)).constData(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777U, 0640U);
}

TEST_F(HostPathTest, leavesAFileThatIsNotToBeWritten)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "the superuser may write everything";
    put(native(u"a.dat"_s), "old");
    ASSERT_EQ(::chmod(QFile::encodeName(native(u"a.dat"_s)).constData(), 0400), 0);
    EXPECT_EQ(failureOf([&] { files.writeAll(composed(u"a.dat"_s), "new"); }),
              u"Cannot write \""_s + native(u"a.dat"_s) + u"\": Permission denied"_s);
    EXPECT_EQ(bytesOf(native(u"a.dat"_s)), "old");
}

TEST_F(HostPathTest, saysWhyItFails)
{
    put(native(u"file"_s));
    QDir().mkpath(native(u"folder/inside"_s));
    ASSERT_EQ(::mkfifo(QFile::encodeName(native(u"pipe"_s)).constData(), 0600), 0);
    struct Row
    {
        const char *name;
        std::function<void()> act;
        QString text;
    };
    const Row rows[] = {
        {"read nothing", [&] { files.readAll(composed(u"none"_s)); },
         u"Cannot read \"%1/none\": No such file or directory"_s},
        {"read a folder", [&] { files.readAll(composed(u"folder"_s)); },
         u"Cannot read \"%1/folder\": it is a folder"_s},
        {"read a pipe", [&] { files.readAll(composed(u"pipe"_s)); },
         u"Cannot read \"%1/pipe\": it is not a file"_s},
        {"read an impossible name", [&] { files.readAll(root + u"\\.."_s); },
         u"Cannot read \"%1\\..\": it cannot be the name of a file"_s},
        {"write an impossible name", [&] { files.writeAll(root + u"\\a\\..\\b"_s, "x"); },
         u"Cannot write \"%1\\a\\..\\b\": it cannot be the name of a file"_s},
        {"write over a folder", [&] { files.writeAll(composed(u"folder"_s), "x"); },
         u"Cannot write \"%1/folder\": it is a folder"_s},
        {"write over a pipe", [&] { files.writeUnflushed(composed(u"pipe"_s), "x"); },
         u"Cannot write \"%1/pipe\": it is not a file"_s},
        {"add to a folder", [&] { files.append(composed(u"folder"_s), "x"); },
         u"Cannot write \"%1/folder\": it is a folder"_s},
        {"add to a pipe", [&] { files.append(composed(u"pipe"_s), "x"); },
         u"Cannot write \"%1/pipe\": it is not a file"_s},
        {"write into nowhere", [&] { files.writeAll(composed(u"none/a"_s), "x"); },
         u"Cannot write \"%1/none/a\": No such file or directory"_s},
        {"add into nowhere", [&] { files.append(composed(u"none/a"_s), "x"); },
         u"Cannot write \"%1/none/a\": No such file or directory"_s},
        {"write into a file", [&] { files.writeAll(composed(u"file/a"_s), "x"); },
         u"Cannot write \"%1/file/a\": Not a directory"_s},
        {"write the root", [&] { files.writeAll(root + u'\\', "x"); },
         u"Cannot write \"%1\\\": it is a folder"_s},
        {"remove a folder", [&] { files.remove(composed(u"folder"_s)); },
         u"Cannot remove \"%1/folder\": it is a folder"_s},
        {"make a folder of a file", [&] { files.makeFolder(composed(u"file"_s)); },
         u"Cannot make the folder \"%1/file\": a file is in its place"_s},
        {"make a folder in a file", [&] { files.makeFolder(composed(u"file/a"_s)); },
         u"Cannot make the folder \"%1/file\": a file is in its place"_s},
        {"make an impossible folder", [&] { files.makeFolder(root + u"\\.."_s); },
         u"Cannot make the folder \"%1\\..\": it cannot be the name of a file"_s},
    };
    for (const Row &row : rows)
        EXPECT_EQ(failureOf(row.act), row.text.arg(root)) << row.name;
}

TEST_F(HostPathTest, removesNothingWithoutAWord)
{
    files.remove(composed(u"none"_s));
    files.remove(composed(u"none/either"_s));
    EXPECT_EQ(names(root), QStringList());
}

TEST_F(HostPathTest, makesFoldersInsideTheSpellingOnDisk)
{
    QDir().mkpath(native(u"PROJECTS"_s));
    files.makeFolder(composed(u"Projects/Demo/More"_s));
    files.makeFolder(composed(u"projects/demo/more"_s));
    EXPECT_EQ(names(root), QStringList{u"PROJECTS"_s});
    EXPECT_EQ(names(native(u"PROJECTS"_s)), QStringList{u"Demo"_s});
}

TEST_F(HostPathTest, makesTheRootItself)
{
    HostPath other({native(u"new/root"_s)});
    other.makeFolder(native(u"new/root"_s) + u'\\');
    EXPECT_TRUE(QFileInfo(native(u"new/root"_s)).isDir());
}

TEST_F(HostPathTest, picksTheInnerOfTwoRoots)
{
    put(native(u"inner/A"_s), "x");
    const HostPath both({root, native(u"inner"_s)});
    EXPECT_EQ(both.readAll(native(u"inner"_s) + u"\\a"_s), "x");
}

TEST_F(HostPathTest, writesThroughALinkThatStaysInside)
{
    QDir().mkpath(native(u"data/deep"_s));
    link(u"data/deep"_s, native(u"Results"_s));
    link(native(u"data/file"_s), native(u"file"_s));
    put(native(u"data/file"_s), "old");
    files.writeAll(composed(u"Results/a"_s), "a");
    files.writeAll(composed(u"file"_s), "new");
    EXPECT_EQ(bytesOf(native(u"data/deep/a"_s)), "a");
    EXPECT_EQ(bytesOf(native(u"data/file"_s)), "new");
    EXPECT_TRUE(QFileInfo(native(u"file"_s)).isSymLink());
}

TEST_F(HostPathTest, writesNothingThroughALinkThatLeadsOut)
{
    put(outside + u"/file"_s, "theirs");
    link(outside, native(u"Results"_s));
    link(outside + u"/file"_s, native(u"file"_s));
    const std::function<void()> acts[] = {
        [&] { files.writeAll(composed(u"Results/a"_s), "x"); },
        [&] { files.writeUnflushed(composed(u"Results/file"_s), "x"); },
        [&] { files.append(composed(u"Results/file"_s), "x"); },
        [&] { files.remove(composed(u"Results/file"_s)); },
        [&] { files.makeFolder(composed(u"Results/Engine"_s)); },
        [&] { files.linkBeside(composed(u"Results/file"_s), u"other"_s); },
        [&] { files.writeAll(composed(u"file"_s), "x"); },
        [&] { files.append(composed(u"file"_s), "x"); },
    };
    for (const auto &act : acts)
        EXPECT_TRUE(failureOf(act).endsWith(u"it leads out of the program's folders"_s))
            << failureOf(act).toStdString();
    EXPECT_EQ(names(outside), QStringList{u"file"_s});
    EXPECT_EQ(bytesOf(outside + u"/file"_s), "theirs");
    EXPECT_EQ(files.readAll(composed(u"results/FILE"_s)), "theirs");
}

TEST_F(HostPathTest, removesALinkAndNotWhatItLeadsTo)
{
    put(outside + u"/file"_s, "theirs");
    link(outside + u"/file"_s, native(u"file"_s));
    files.remove(composed(u"file"_s));
    EXPECT_EQ(names(root), QStringList());
    EXPECT_EQ(bytesOf(outside + u"/file"_s), "theirs");
}

TEST_F(HostPathTest, worksBelowARootThatIsALink)
{
    link(root, folder.filePath(u"alias"_s));
    HostPath aliased({folder.filePath(u"alias"_s)});
    QDir().mkpath(native(u"data"_s));
    link(native(u"data"_s), native(u"Results"_s));
    aliased.writeAll(folder.filePath(u"alias"_s) + u"\\Results\\a"_s, "x");
    EXPECT_EQ(bytesOf(native(u"data/a"_s)), "x");
}

TEST_F(HostPathTest, doesNotLoopWithLinksThatDo)
{
    link(u"a"_s, native(u"b"_s));
    link(u"b"_s, native(u"a"_s));
    EXPECT_EQ(failureOf([&] { files.writeAll(composed(u"a/x"_s), "x"); }),
              u"Cannot follow the link \""_s + native(u"a"_s) + u"\": Too many levels of symbolic links"_s);
}

TEST_F(HostPathTest, linksBesideAFile)
{
    put(native(u"Reports/a%27b.html"_s), "page");
    files.linkBeside(composed(u"reports/A%27b.html"_s), u"a'b.html"_s);
    EXPECT_EQ(QFile::symLinkTarget(native(u"Reports/a'b.html"_s)), native(u"Reports/a%27b.html"_s));
    EXPECT_EQ(bytesOf(native(u"Reports/a'b.html"_s)), "page");
    std::array<char, 100> text{};
    EXPECT_EQ(
        ::readlink(QFile::encodeName(native(u"Reports/a'b.html"_s)).constData(), text.data(), text.size()),
        10)
        << "not relative";
}

TEST_F(HostPathTest, replacesAnOlderLinkButNoFile)
{
    put(native(u"new.html"_s));
    put(native(u"kept.html"_s), "kept");
    link(u"old.html"_s, native(u"link.html"_s));
    files.linkBeside(composed(u"new.html"_s), u"link.html"_s);
    files.linkBeside(composed(u"new.html"_s), u"kept.html"_s);
    EXPECT_EQ(QFile::symLinkTarget(native(u"link.html"_s)), native(u"new.html"_s));
    EXPECT_EQ(bytesOf(native(u"kept.html"_s)), "kept");
}

TEST_F(HostPathTest, linksUnderANameWithABackslash)
{
    put(native(u"a%5Cb"_s));
    files.linkBeside(composed(u"a%5Cb"_s), u"a\\b"_s);
    EXPECT_EQ(QFile::symLinkTarget(native(u"a\\b"_s)), native(u"a%5Cb"_s));
    EXPECT_FALSE(files.fileExists(root + u"\\a\\b"_s));
}

TEST_F(HostPathTest, linksUnderNoImpossibleName)
{
    put(native(u"a%2Fb"_s));
    files.linkBeside(composed(u"a%2Fb"_s), u"a/b"_s);
    files.linkBeside(composed(u"a%2Fb"_s), u".."_s);
    files.linkBeside(composed(u"a%2Fb"_s), u"a%2Fb"_s);
    EXPECT_EQ(names(root), QStringList{u"a%2Fb"_s});
}

TEST_F(HostPathTest, writesToTheFileOfASecondSpelling)
{
    put(native(u"details.html"_s), "old");
    files.linkBeside(composed(u"details.html"_s), u"Details.html"_s);
    files.writeAll(composed(u"Details.html"_s), "new");
    files.append(composed(u"Details.html"_s), "er");
    EXPECT_EQ(bytesOf(native(u"details.html"_s)), "newer");
    EXPECT_TRUE(QFileInfo(native(u"Details.html"_s)).isSymLink());
    files.remove(composed(u"Details.html"_s));
    EXPECT_FALSE(files.fileExists(composed(u"details.html"_s)));
    files.writeUnflushed(composed(u"Details.html"_s), "again");
    EXPECT_EQ(bytesOf(native(u"details.html"_s)), "again");
}

TEST_F(HostPathTest, replacesALinkToAnotherFileInsteadOfWritingThere)
{
    for (const bool append : {false, true}) {
        put(native(u"x%41"_s), "theirs");
        files.linkBeside(composed(u"x%41"_s), u"xA"_s);
        if (append)
            files.append(composed(u"xA"_s), "mine");
        else
            files.writeAll(composed(u"xA"_s), "mine");
        EXPECT_EQ(bytesOf(native(u"x%41"_s)), "theirs");
        EXPECT_EQ(bytesOf(native(u"xA"_s)), "mine");
        EXPECT_FALSE(QFileInfo(native(u"xA"_s)).isSymLink());
        QFile::remove(native(u"xA"_s));
    }
}

TEST_F(HostPathTest, makesTheFolderThatADanglingSecondSpellingStandsFor)
{
    link(u"Reports"_s, native(u"reports"_s));
    files.makeFolder(composed(u"reports/Demo"_s));
    EXPECT_TRUE(QFileInfo(native(u"Reports/Demo"_s)).isDir());
    EXPECT_FALSE(QFileInfo(native(u"Reports"_s)).isSymLink());
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
