#include "core/error_log.h"

#include "tests/support/ordinary_user.h"
#include "tests/support/printing.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class LogFile : public testing::Test
{
protected:
    QTemporaryDir folder;
    QString path = folder.filePath(u"Error.log"_s);

    QByteArray bytes() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

} // namespace

TEST_F(LogFile, isMadeWithTheFirstRecord)
{
    ErrorLog log(path);
    EXPECT_FALSE(QFile::exists(path));
    log.write("first");
    EXPECT_EQ(bytes(), "\r\nfirst");
}

TEST_F(LogFile, hasALineEndInFrontOfEveryRecordAndNoneBehind)
{
    ErrorLog log(path);
    log.write("a");
    log.write("");
    log.write("b\r\nc");
    EXPECT_EQ(bytes(), "\r\na\r\n\r\nb\r\nc");
}

TEST_F(LogFile, doesNotWaitForWhoReadsAPipeInItsPlace)
{
    ASSERT_EQ(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    ErrorLog log(path);
    log.write("lost");
    QFile::remove(path);
    log.write("kept");
    EXPECT_EQ(bytes(), "\r\nkept");
}

TEST_F(LogFile, goesOnBehindWhatIsThere)
{
    ErrorLog(path).write("old");
    ErrorLog(path).write("new");
    EXPECT_EQ(bytes(), "\r\nold\r\nnew");
}

TEST_F(LogFile, keepsTheOrderOfTwoWriters)
{
    ErrorLog one(path);
    ErrorLog other(path);
    one.write("1");
    other.write("2");
    one.write("3");
    EXPECT_EQ(bytes(), "\r\n1\r\n2\r\n3");
}

TEST_F(LogFile, holdsEveryRecordOfAProcessThatIsKilled)
{
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        ErrorLog log(path);
        log.write("one");
        log.write("two");
        ::raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(bytes(), "\r\none\r\ntwo");
}

TEST_F(LogFile, saysNothingOfAFolderInItsPlace)
{
    ASSERT_TRUE(QDir().mkpath(path));
    ErrorLog log(path);
    log.write("lost");
    EXPECT_TRUE(QDir(path).isEmpty());
}

TEST_F(LogFile, saysNothingOfAMissingFolder)
{
    ErrorLog log(folder.filePath(u"missing/Error.log"_s));
    log.write("lost");
    EXPECT_FALSE(QFile::exists(folder.filePath(u"missing"_s)));
}

TEST_F(LogFile, beginsOnceItCan)
{
    ASSERT_TRUE(QDir().mkpath(path));
    ErrorLog log(path);
    log.write("lost");
    ASSERT_TRUE(QDir().rmdir(path));
    log.write("kept");
    EXPECT_EQ(bytes(), "\r\nkept");
}

TEST_F(LogFile, saysNothingOfAFileThatMustNotBeWritten)
{
    ErrorLog(path).write("old");
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0444), 0);
    EXPECT_TRUE(asOrdinaryUser(folder.path(), [&] {
        ErrorLog(path).write("new");
        return true;
    }));
    EXPECT_EQ(bytes(), "\r\nold");
}

TEST_F(LogFile, survivesAFullDisk)
{
    ErrorLog log(u"/dev/full"_s);
    log.write("lost");
    log.write("lost again");
}

TEST_F(LogFile, holdsBytesAsTheyAre)
{
    ErrorLog log(path);
    log.write(QByteArray("a\0\xff", 3));
    EXPECT_EQ(bytes(), QByteArray("\r\na\0\xff", 5));
}
