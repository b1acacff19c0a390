#include "tests/core/host_path_test.h"

#include <array>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

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
