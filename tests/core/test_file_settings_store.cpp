#include "core/file_settings_store.h"

#include "core/failure.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/printing.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const QString Key = u"Software\\Vendor\\Product\\Preference"_s;

class SettingsOnDisk : public testing::Test
{
protected:
    QTemporaryDir folder;
    QString file = folder.filePath(u"config/Vendor/settings.ini"_s);
    FileSettingsStore store{file};

    void write(const QByteArray &bytes) const
    {
        QDir().mkpath(QFileInfo(file).path());
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        ASSERT_EQ(out.write(bytes), bytes.size());
    }

    QByteArray bytes() const
    {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }

    /// The value, also as another process sees it.
    QString stored(const QString &name) const
    {
        const FileSettingsStore other(file);
        return other.value(Key, name).value_or(QVariant()).toString();
    }

    mode_t mode() const
    {
        struct stat info = {};
        return ::stat(QFile::encodeName(file).constData(), &info) == 0 ? info.st_mode & 07777 : 0;
    }

    ino_t fileNumber() const
    {
        struct stat info = {};
        return ::stat(QFile::encodeName(file).constData(), &info) == 0 ? info.st_ino : 0;
    }

    template <typename Step>
    static QString failureOf(Step &&step)
    {
        try {
            step();
            return QString();
        } catch (const Failure &failure) {
            return failure.text();
        }
    }
};

} // namespace

TEST_F(SettingsOnDisk, areEmptyAndWithoutAFileAtFirst)
{
    EXPECT_FALSE(store.hasKey(Key));
    EXPECT_FALSE(store.value(Key, u"Proxy"_s));
    EXPECT_FALSE(QFileInfo::exists(file));
}

TEST_F(SettingsOnDisk, makeTheParentsOfAKey)
{
    store.createKey(Key);
    EXPECT_TRUE(store.hasKey(u"Software\\Vendor"_s));
    EXPECT_TRUE(store.hasKey(u"software"_s));
    EXPECT_FALSE(store.hasKey(u"Software\\Vend"_s));
    EXPECT_FALSE(store.hasKey(Key + u"\\Below"_s));
    EXPECT_TRUE(FileSettingsStore(file).hasKey(Key));
}

TEST_F(SettingsOnDisk, reachTheDiskWithEveryChange)
{
    store.createKey(Key);
    store.setValue(Key, u"Proxy"_s, u"proxy.example"_s);
    EXPECT_EQ(stored(u"Proxy"_s), u"proxy.example"_s);
}

TEST_F(SettingsOnDisk, ignoreTheCaseOfPathsAndNames)
{
    store.createKey(Key);
    store.setValue(Key.toUpper(), u"PROXY"_s, u"a"_s);
    store.setValue(Key, u"Proxy"_s, u"b"_s);
    EXPECT_EQ(store.value(Key.toLower() + u'\\', u"proxy"_s)->toString(), u"b"_s);
}

TEST_F(SettingsOnDisk, holdNoValueUnderAKeyThatDoesNotExist)
{
    store.setValue(Key, u"Proxy"_s, u"a"_s);
    EXPECT_FALSE(store.hasKey(Key));
    EXPECT_FALSE(QFileInfo::exists(file));
}

TEST_F(SettingsOnDisk, holdValuesUnderAParentToo)
{
    store.createKey(Key);
    store.setValue(u"Software"_s, u"Name"_s, u"a"_s);
    EXPECT_EQ(FileSettingsStore(file).value(u"Software"_s, u"Name"_s)->toString(), u"a"_s);
}

TEST_F(SettingsOnDisk, areForTheirOwnerAlone)
{
    store.createKey(Key);
    EXPECT_EQ(mode(), 0600U);
    store.setValue(Key, u"Auth_Password"_s, u"secret"_s);
    EXPECT_EQ(mode(), 0600U);
}

TEST_F(SettingsOnDisk, areClosedToOthersWhenTheyCameOpen)
{
    write("[A]\n");
    ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), 0644), 0);
    EXPECT_TRUE(store.hasKey(u"A"_s));
    EXPECT_EQ(mode(), 0600U);
}

TEST_F(SettingsOnDisk, leaveNoOtherFileBehind)
{
    store.createKey(Key);
    store.setValue(Key, u"Proxy"_s, u"a"_s);
    EXPECT_EQ(QDir(QFileInfo(file).path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{u"settings.ini"_s});
}

TEST_F(SettingsOnDisk, takeAwayWhatAKilledProcessHasLeft)
{
    write("");
    const QDir place = QFileInfo(file).dir();
    QFile leftover(place.filePath(u".sondrel-1.tmp"_s));
    ASSERT_TRUE(leftover.open(QIODevice::WriteOnly));
    leftover.close();
    const FileSettingsStore next(file);
    EXPECT_EQ(place.entryList(QDir::Files | QDir::Hidden), QStringList{u"settings.ini"_s});
}

TEST_F(SettingsOnDisk, areReplacedAsAWhole)
{
    store.createKey(Key);
    QFile old(file);
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    const QByteArray before = old.peek(1000);
    store.setValue(Key, u"Proxy"_s, u"a"_s);
    EXPECT_EQ(old.readAll(), before) << "the old file was written to";
}

TEST_F(SettingsOnDisk, areNotWrittenForNothing)
{
    store.createKey(Key);
    store.setValue(Key, u"Proxy"_s, u"a"_s);
    const ino_t before = fileNumber();
    const QFile held(file);
    store.createKey(Key);
    store.setValue(Key, u"Proxy"_s, u"a"_s);
    EXPECT_EQ(fileNumber(), before);
}

TEST_F(SettingsOnDisk, areWrittenOnceForChangesThatBelongTogether)
{
    store.createKey(Key);
    const QByteArray before = bytes();
    store.storeTogether([&] {
        store.setValue(Key, u"Proxy"_s, u"a"_s);
        store.storeTogether([&] { store.setValue(Key, u"Port"_s, u"8080"_s); });
        EXPECT_EQ(store.value(Key, u"Port"_s)->toString(), u"8080"_s);
        EXPECT_EQ(bytes(), before);
    });
    EXPECT_EQ(stored(u"Proxy"_s) + stored(u"Port"_s), u"a8080"_s);
}

TEST_F(SettingsOnDisk, keepWhatWasChangedBeforeAFailure)
{
    store.createKey(Key);
    EXPECT_THROW(store.storeTogether([&] {
        store.setValue(Key, u"Proxy"_s, u"a"_s);
        throw std::runtime_error("stop");
    }),
                 std::runtime_error);
    EXPECT_EQ(stored(u"Proxy"_s), u"a"_s);
    store.setValue(Key, u"Port"_s, u"1"_s);
    EXPECT_EQ(stored(u"Port"_s), u"1"_s);
}

TEST_F(SettingsOnDisk, seeWhatAnotherProcessHasWritten)
{
    store.createKey(Key);
    const quint64 before = store.revision();
    FileSettingsStore other(file);
    other.setValue(Key, u"Proxy"_s, u"a"_s);
    EXPECT_EQ(store.value(Key, u"Proxy"_s)->toString(), u"a"_s);
    EXPECT_NE(store.revision(), before);
    store.setValue(Key, u"Port"_s, u"1"_s);
    EXPECT_EQ(stored(u"Proxy"_s) + stored(u"Port"_s), u"a1"_s);
}

TEST_F(SettingsOnDisk, countTheirChanges)
{
    store.createKey(Key);
    const quint64 made = store.revision();
    store.setValue(Key, u"Proxy"_s, u"a"_s);
    const quint64 changed = store.revision();
    EXPECT_NE(changed, made);
    EXPECT_TRUE(store.value(Key, u"Proxy"_s));
    store.setValue(Key, u"Proxy"_s, u"a"_s);
    EXPECT_EQ(store.revision(), changed);
}

TEST_F(SettingsOnDisk, followALinkToTheFile)
{
    const QString real = folder.filePath(u"real.ini"_s);
    QFile(real).open(QIODevice::WriteOnly);
    QDir().mkpath(QFileInfo(file).path());
    ASSERT_TRUE(QFile::link(real, file));
    store.createKey(Key);
    EXPECT_TRUE(QFileInfo(file).isSymLink());
    EXPECT_TRUE(FileSettingsStore(real).hasKey(Key));
}

TEST_F(SettingsOnDisk, areNotTouchedWhenTheyAreDamaged)
{
    const QByteArray damaged("\x00\xff\x13random\nbytes\x01", 15);
    write(damaged);
    const QString told =
        u"Cannot read the settings file \""_s + file + u"\": line 1 is neither a key nor a value"_s;
    EXPECT_NE(failureOf([&] { store.createKey(Key); }), u""_s);
    EXPECT_NE(failureOf([&] { store.setValue(Key, u"Proxy"_s, u"a"_s); }), u""_s);
    EXPECT_NE(failureOf([&] { store.value(Key, u"Proxy"_s); }), u""_s);
    EXPECT_EQ(bytes(), damaged);
    write("nonsense");
    EXPECT_EQ(failureOf([&] { store.hasKey(Key); }), told);
}

TEST_F(SettingsOnDisk, workAgainWhenTheFileHasBeenRepaired)
{
    write("nonsense");
    EXPECT_THROW(store.hasKey(Key), Failure);
    write("[A]\nx=1\n");
    EXPECT_EQ(store.value(u"A"_s, u"x"_s)->toString(), u"1"_s);
}

TEST_F(SettingsOnDisk, startFromAnEmptyFile)
{
    write("");
    EXPECT_FALSE(store.hasKey(Key));
    store.createKey(Key);
    EXPECT_TRUE(FileSettingsStore(file).hasKey(Key));
}

TEST_F(SettingsOnDisk, areEmptyAgainWhenTheFileIsGone)
{
    store.createKey(Key);
    ASSERT_TRUE(QFile::remove(file));
    EXPECT_FALSE(store.hasKey(Key));
}

TEST_F(SettingsOnDisk, leaveAFolderInTheirPlaceAlone)
{
    ASSERT_TRUE(QDir().mkpath(file));
    EXPECT_EQ(failureOf([&] { store.createKey(Key); }),
              u"Cannot read the settings file \""_s + file + u"\": it is not a file"_s);
    EXPECT_TRUE(QFileInfo(file).isDir());
}

TEST_F(SettingsOnDisk, doNotWaitForAPipeInTheirPlace)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(file).path()));
    ASSERT_EQ(::mkfifo(QFile::encodeName(file).constData(), 0600), 0);
    EXPECT_THROW(store.hasKey(Key), Failure);
}

TEST_F(SettingsOnDisk, tellWhenTheirFolderCannotBeMade)
{
    QFile(folder.filePath(u"config"_s)).open(QIODevice::WriteOnly);
    EXPECT_THROW(store.createKey(Key), Failure);
}

TEST_F(SettingsOnDisk, areReadOnlyWhereTheUserMadeThemSo)
{
    store.createKey(Key);
    ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), 0400), 0);
    EXPECT_TRUE(asOrdinaryUser(folder.path(), [&] {
        return failureOf([&] { store.setValue(Key, u"Proxy"_s, u"a"_s); }) ==
               u"Cannot write the settings file \""_s + file + u"\": it is read-only"_s;
    }));
    EXPECT_FALSE(store.value(Key, u"Proxy"_s));
}

TEST_F(SettingsOnDisk, tellWhenTheyMustNotBeRead)
{
    write("[A]\n");
    ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), 0), 0);
    EXPECT_TRUE(asOrdinaryUser(folder.path(), [&] {
        return failureOf([&] { store.createKey(Key); }).startsWith(u"Cannot read the settings file"_s);
    }));
    EXPECT_EQ(bytes(), "[A]\n");
}

TEST_F(SettingsOnDisk, tellWhenTheirFolderMustNotBeWritten)
{
    store.createKey(Key);
    const QByteArray before = bytes();
    ASSERT_EQ(::chmod(QFile::encodeName(QFileInfo(file).path()).constData(), 0500), 0);
    EXPECT_TRUE(asOrdinaryUser(folder.path(), [&] {
        return failureOf([&] { store.setValue(Key, u"Proxy"_s, u"a"_s); })
            .startsWith(u"Cannot write the settings file"_s);
    }));
    EXPECT_EQ(bytes(), before);
    ASSERT_EQ(::chmod(QFile::encodeName(QFileInfo(file).path()).constData(), 0700), 0);
}

TEST_F(SettingsOnDisk, letItBeHeardWhenTheyCannotBeStored)
{
    QStringList heard;
    store.onUnwritten = [&](const QString &problem) { heard.append(problem); };
    QFile inTheWay(folder.filePath(u"config"_s));
    const auto failure = failureOf([&] {
        store.storeTogether([&] {
            store.createKey(Key);
            inTheWay.open(QIODevice::WriteOnly);
        });
    });
    EXPECT_EQ(failure, u"Cannot write the settings file \""_s + file + u"\": its folder cannot be made"_s);
    EXPECT_EQ(heard, QStringList{failure});
}

TEST_F(SettingsOnDisk, giveUpWhatCannotBeStored)
{
    store.createKey(Key);
    // The folder goes while the changes are made, so that they have nowhere to go.
    EXPECT_THROW(store.storeTogether([&] {
        store.setValue(Key, u"Proxy"_s, u"a"_s);
        QDir(folder.filePath(u"config"_s)).removeRecursively();
        QFile(folder.filePath(u"config"_s)).open(QIODevice::WriteOnly);
    }),
                 Failure);
    EXPECT_THROW(store.value(Key, u"Proxy"_s), Failure);
    QFile::remove(folder.filePath(u"config"_s));
    EXPECT_FALSE(store.value(Key, u"Proxy"_s));
}
