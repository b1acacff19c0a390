#include "core/native_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <tuple>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class TemporaryFiles : public testing::Test
{
protected:
    QTemporaryDir folder;
    const QString first = folder.filePath(u".sondrel-1.tmp"_s);

    QStringList names() const
    {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }
    QByteArray bytesOf(const QString &path) const
    {
        QFile in(path);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }
    void put(const QString &path, const QByteArray &bytes) const
    {
        QFile out(path);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }
};

/// Another process that has begun a file in the folder and is killed with this object.
class OtherWriter
{
public:
    explicit OtherWriter(const QString &folder)
    {
        std::array<int, 2> begun{};
        if (::pipe(begun.data()) != 0 || (m_process = ::fork()) < 0)
            return;
        if (m_process == 0) {
            const TemporaryFile file(folder);
            file.file().write("half");
            std::ignore = ::write(begun[1], "!", 1);
            for (;;)
                ::pause();
        }
        ::close(begun[1]);
        char mark = 0;
        m_begun = ::read(begun[0], &mark, 1) == 1;
        ::close(begun[0]);
    }
    ~OtherWriter() { kill(); }
    OtherWriter(const OtherWriter &) = delete;
    OtherWriter &operator=(const OtherWriter &) = delete;

    bool hasBegun() const { return m_begun; }
    void kill()
    {
        if (m_process <= 0)
            return;
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
        m_process = -1;
    }

private:
    pid_t m_process = -1;
    bool m_begun = false;
};

} // namespace

TEST(NativePaths, areWhatTheSystemCallsThem)
{
    const QString parts[] = {QString(), u"plain"_s, u"größe/\u4E2D\U0001F600"_s, u"lone\xD800"_s,
                             QString(5000, u'é')};
    for (const QString &path : parts)
        EXPECT_EQ(QByteArray(NativePath(path).text()), QFile::encodeName(path)) << path.toStdString();
}

TEST_F(TemporaryFiles, areGoneUnlessTheyAreMoved)
{
    {
        const TemporaryFile file(folder.path());
        ASSERT_TRUE(file.isOpen());
        EXPECT_EQ(names(), QStringList{u".sondrel-1.tmp"_s});
    }
    EXPECT_EQ(names(), QStringList());
}

TEST_F(TemporaryFiles, takeTheirPlace)
{
    put(folder.filePath(u"a.dat"_s), "old");
    TemporaryFile file(folder.path());
    file.file().write("new");
    EXPECT_TRUE(file.moveTo(folder.filePath(u"a.dat"_s)));
    EXPECT_EQ(names(), QStringList{u"a.dat"_s});
    EXPECT_EQ(bytesOf(folder.filePath(u"a.dat"_s)), "new");
}

TEST_F(TemporaryFiles, standSideBySide)
{
    const TemporaryFile one(folder.path());
    const TemporaryFile two(folder.path());
    EXPECT_EQ(names(), (QStringList{u".sondrel-1.tmp"_s, u".sondrel-2.tmp"_s}));
}

TEST_F(TemporaryFiles, takeThePlaceOfWhatAKilledProcessHasLeft)
{
    put(first, "half");
    TemporaryFile file(folder.path());
    file.file().write("new");
    EXPECT_EQ(names(), QStringList{u".sondrel-1.tmp"_s});
    EXPECT_TRUE(file.moveTo(folder.filePath(u"a.dat"_s)));
    EXPECT_EQ(bytesOf(folder.filePath(u"a.dat"_s)), "new");
}

TEST_F(TemporaryFiles, leaveTheFileOfAnotherProcessAlone)
{
    const OtherWriter other(folder.path());
    ASSERT_TRUE(other.hasBegun());
    {
        const TemporaryFile file(folder.path());
        ASSERT_TRUE(file.isOpen());
        TemporaryFile::removeLeftovers(folder.path());
        EXPECT_EQ(names(), (QStringList{u".sondrel-1.tmp"_s, u".sondrel-2.tmp"_s}));
    }
    EXPECT_EQ(bytesOf(first), "half");
}

TEST_F(TemporaryFiles, areTakenAwayOnceTheirProcessIsKilled)
{
    OtherWriter other(folder.path());
    ASSERT_TRUE(other.hasBegun());
    TemporaryFile::removeLeftovers(folder.path());
    EXPECT_EQ(names(), QStringList{u".sondrel-1.tmp"_s});
    other.kill();
    TemporaryFile::removeLeftovers(folder.path());
    EXPECT_EQ(names(), QStringList());
}

TEST_F(TemporaryFiles, passOverWhatIsNoFile)
{
    QDir().mkpath(first);
    ASSERT_EQ(::mkfifo(QFile::encodeName(folder.filePath(u".sondrel-2.tmp"_s)).constData(), 0600), 0);
    put(folder.filePath(u"a.dat"_s), "kept");
    ASSERT_TRUE(QFile::link(folder.filePath(u"a.dat"_s), folder.filePath(u".sondrel-3.tmp"_s)));
    const QStringList before = names();
    {
        const TemporaryFile file(folder.path());
        ASSERT_TRUE(file.isOpen());
        TemporaryFile::removeLeftovers(folder.path());
        EXPECT_TRUE(QFile::exists(folder.filePath(u".sondrel-4.tmp"_s)));
    }
    EXPECT_EQ(names(), before);
    EXPECT_EQ(bytesOf(folder.filePath(u"a.dat"_s)), "kept");
}

TEST_F(TemporaryFiles, sayWhyTheyCannotBeMade)
{
    const TemporaryFile file(folder.filePath(u"none"_s));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(file.isOpen());
}
