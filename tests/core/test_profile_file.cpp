#include "core/modCommon.h"
#include "core/profile_file.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QDir>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

ProfileFile parsed(QByteArrayView bytes)
{
    return ProfileFile(*CodePage::western(), bytes);
}

QString readFrom(QByteArrayView bytes, const QString &section, const QString &key)
{
    return parsed(bytes).read(section, key);
}

QByteArray written(QByteArrayView bytes, const QString &section, const QString &key, const QString &value)
{
    ProfileFile file = parsed(bytes);
    file.write(section, key, value);
    return file.bytes();
}

struct ReadRow
{
    const char *name;
    QByteArray bytes;
    QString value;
};

class ProfileFileRead : public testing::TestWithParam<ReadRow>
{
};

struct WriteRow
{
    const char *name;
    QByteArray before;
    QByteArray after;
};

class ProfileFileWrite : public testing::TestWithParam<WriteRow>
{
};

void PrintTo(const ReadRow &row, std::ostream *out)
{
    *out << row.name;
}

void PrintTo(const WriteRow &row, std::ostream *out)
{
    *out << row.name;
}

const auto nameOfRow = [](const auto &info) { return std::string(info.param.name); };

// With the NULs in the text.
template <std::size_t Size>
QByteArray bytesOf(const char (&text)[Size])
{
    return QByteArray(text, Size - 1);
}

} // namespace

TEST_P(ProfileFileRead, givesTheValueOfTheKey)
{
    EXPECT_EQ(readFrom(GetParam().bytes, u"S"_s, u"k"_s), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, ProfileFileRead,
    testing::Values(ReadRow{"plain", "[S]\r\nk=v\r\n", u"v"_s}, ReadRow{"emptyFile", "", QString()},
                    ReadRow{"lineFeedsOnly", "[S]\nk=v\n", u"v"_s},
                    ReadRow{"carriageReturnsOnly", "[S]\rj=1\rk=v\r", u"v"_s},
                    ReadRow{"noEndAtTheEnd", "[S]\r\nk=v", u"v"_s},
                    ReadRow{"byteOrderMark", "\xEF\xBB\xBF[S]\r\nk=caf\xC3\xA9\r\n", u"caf\u00e9"_s},
                    ReadRow{"blanksRoundTheSign", "[S]\r\n \tk \t= \t v \t\r\n", u"v"_s},
                    ReadRow{"otherCase", "[s]\r\nK=v\r\n", u"v"_s},
                    ReadRow{"firstOfTwoKeys", "[S]\r\nk=v\r\nK=w\r\n", u"v"_s},
                    ReadRow{"firstKeyIsEmpty", "[S]\r\nk=\r\nk=w\r\n", QString()},
                    ReadRow{"firstOfTwoSections", "[S]\r\nj=1\r\n[S]\r\nk=v\r\n", QString()},
                    ReadRow{"doubleQuotes", "[S]\r\nk=\" v \"\r\n", u" v"_s},
                    ReadRow{"singleQuotes", "[S]\r\nk='v'\r\n", u"v"_s},
                    ReadRow{"oneQuote", "[S]\r\nk=\"\r\n", u"\""_s},
                    ReadRow{"unlikeQuotes", "[S]\r\nk=\"v'\r\n", u"\"v'"_s},
                    ReadRow{"innerQuotes", "[S]\r\nk='\"v\"'\r\n", u"\"v\""_s},
                    ReadRow{"cutAtNul", bytesOf("[S]\r\nk=v\0w\r\n"), u"v"_s},
                    ReadRow{"quotesGoBeforeNulCuts", bytesOf("[S]\r\nk=\"v\0w\"\r\n"), u"v"_s},
                    ReadRow{"comment", "[S]\r\n;k=w\r\nk=v\r\n", u"v"_s},
                    ReadRow{"lineWithoutSign", "[S]\r\nk\r\nk=v\r\n", u"v"_s},
                    ReadRow{"signInTheValue", "[S]\r\nk==v=\r\n", u"=v="_s},
                    ReadRow{"beforeAnySection", "k=w\r\n[S]\r\nk=v\r\n", u"v"_s},
                    ReadRow{"blanksRoundTheSection", "  [ S ]  \r\nk=v\r\n", u"v"_s},
                    ReadRow{"textBehindTheSection", "[S] ; here\r\nk=v\r\n", u"v"_s},
                    ReadRow{"sectionWithoutEnd", "[S]\r\n[T\r\nk=v\r\n", u"v"_s},
                    ReadRow{"allOf1252", "[S]\r\nk=\x80\x81\x9f\xff\r\n", u"\u20ac\u0081\u0178\u00ff"_s},
                    ReadRow{"trimmedAfterTheCut",
                            "[S]\r\nk=" + QByteArray(550, 'v') + QByteArray(20, ' ') + "z\r\n",
                            QString(550, u'v')}),
    nameOfRow);

TEST_P(ProfileFileWrite, putsTheKeyInItsPlace)
{
    EXPECT_EQ(written(GetParam().before, u"S"_s, u"k"_s, u"v"_s), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, ProfileFileWrite,
    testing::Values(WriteRow{"emptyFile", "", "[S]\r\nk=v\r\n"},
                    WriteRow{"otherSection", "[T]\r\nk=1\r\n", "[T]\r\nk=1\r\n[S]\r\nk=v\r\n"},
                    WriteRow{"otherSectionWithoutEnd", "[T]\r\nk=1", "[T]\r\nk=1\r\n[S]\r\nk=v\r\n"},
                    WriteRow{"sectionWithoutEnd", "[S]", "[S]\r\nk=v\r\n"},
                    WriteRow{"keyWithoutEnd", "[S]\nj=1", "[S]\nj=1\nk=v\n"},
                    WriteRow{"valueWithoutEnd", "[S]\nk=1", "[S]\nk=v"},
                    WriteRow{"plainTextWithoutEnd", "words", "words\r\n[S]\r\nk=v\r\n"},
                    WriteRow{"lineFeedsOnly", "[S]\nj=1\n[T]\n", "[S]\nj=1\nk=v\n[T]\n"},
                    WriteRow{"mixedEnds", "[S]\r\nk=1\nj=2\r\n", "[S]\r\nk=v\nj=2\r\n"},
                    WriteRow{"byteOrderMark", "\xEF\xBB\xBF[S]\r\nk=1\r\n", "\xEF\xBB\xBF[S]\r\nk=v\r\n"},
                    WriteRow{"keepsTheKeysSpelling", "[s]\r\n K = 1 \r\n", "[s]\r\n K = v\r\n"},
                    WriteRow{"firstOfTwoKeys", "[S]\r\nk=1\r\nk=2\r\n", "[S]\r\nk=v\r\nk=2\r\n"},
                    WriteRow{"firstOfTwoSections", "[S]\r\n[S]\r\nk=1\r\n", "[S]\r\nk=v\r\n[S]\r\nk=1\r\n"},
                    WriteRow{"blankLinesStayBetweenSections", "[S]\r\nj=1\r\n\r\n \r\n[T]\r\n",
                             "[S]\r\nj=1\r\nk=v\r\n\r\n \r\n[T]\r\n"},
                    WriteRow{"otherLinesStay", "; a\r\n[S]\r\nwords\r\n; k=2\r\nk=1\r\n",
                             "; a\r\n[S]\r\nwords\r\n; k=2\r\nk=v\r\n"},
                    WriteRow{"bytesOfOtherLinesStay", bytesOf("\0\x81[S]\r\nj=\xff\0\r\n[S]\r\n"),
                             bytesOf("\0\x81[S]\r\nj=\xff\0\r\n[S]\r\nk=v\r\n")}),
    nameOfRow);

TEST(ProfileFile, cutsValuesAt559Characters)
{
    for (const int length : {558, 559, 560, 600, 5000}) {
        EXPECT_EQ(readFrom("[S]\r\nk=" + QByteArray(length, 'v'), u"S"_s, u"k"_s).size(),
                  std::min(length, 559));
    }
}

TEST(ProfileFile, countsCharactersNotBytes)
{
    const ProfileFile file(*CodePage::find(65001), "[S]\nk=" + QByteArray("\xC3\xA9").repeated(600));
    EXPECT_EQ(file.read(u"S"_s, u"k"_s), QString(559, u'\u00e9'));
}

TEST(ProfileFile, foldsNamesOfTwoByteCharacters)
{
    // U+0414 and U+0434, a letter in both cases; U+4E2D has none.
    const auto &page = *CodePage::find(936);
    const ProfileFile file(page, page.toBytes(u"[\u0414\u4e2d]\nK\u0414=v\n"));
    EXPECT_EQ(file.read(u"\u0434\u4e2d"_s, u"k\u0434"_s), u"v"_s);
}

TEST(ProfileFile, findsSectionsWithBracketsInTheName)
{
    EXPECT_EQ(readFrom("[a[b]c]\nk=v\n", u"a[b]c"_s, u"k"_s), u"v"_s);
    const QByteArray bytes = written("", u"x]y"_s, u"k"_s, u"v"_s);
    EXPECT_EQ(readFrom(bytes, u"x]y"_s, u"k"_s), u"v"_s);
}

TEST(ProfileFile, writesUnmappableCharactersAsQuestionMarks)
{
    EXPECT_EQ(written("", u"S\u4e2d"_s, u"k"_s, u"caf\u00e9 \u20ac \u4e2d"_s),
              "[S?]\r\nk=caf\xe9 \x80 ?\r\n");
    EXPECT_EQ(readFrom("[S?]\r\nk=v\r\n", u"S\u4e2d"_s, u"k"_s), u"v"_s);
}

TEST(ProfileFile, keepsAWrittenTextOnItsLine)
{
    const QByteArray bytes = written("", u"S\n[T]"_s, u"k\r"_s, u"a\r\n[U]\rb\nc"_s + QChar(0) + u'd');
    EXPECT_EQ(bytes, "[S [T]]\r\nk=a [U] b c d\r\n");
}

TEST(ProfileFile, readsWhatItHasWritten)
{
    ProfileFile file = parsed("[S]\r\nb=1\r\n");
    file.write(u"S"_s, u"a"_s, u"2"_s);
    file.write(u"s"_s, u"A"_s, u"3"_s);
    file.write(u"T"_s, u"a"_s, u"4"_s);
    file.write(u"S"_s, u"c"_s, u"5"_s);
    EXPECT_EQ(file.read(u"S"_s, u"a"_s), u"3"_s);
    EXPECT_EQ(file.read(u"T"_s, u"a"_s), u"4"_s);
    EXPECT_EQ(file.bytes(), "[S]\r\nb=1\r\na=3\r\nc=5\r\n[T]\r\na=4\r\n");
}

TEST(ProfileFile, endsALastLineWithoutEndBeforeWhatIsWritten)
{
    // The last section is first looked into when others have been written.
    for (const QByteArray last : {"k=1", "words", "words\r"}) {
        ProfileFile file = parsed("[S]\nk=1\n[T]\n" + last);
        file.write(u"S"_s, u"k"_s, u"v"_s);
        EXPECT_EQ(file.read(u"T"_s, u"k"_s), last.startsWith('k') ? u"1"_s : QString());
        file.write(u"T"_s, u"j"_s, u"3"_s);
        const QByteArray closed = last.endsWith('\r') ? last : last + '\n';
        EXPECT_EQ(file.bytes(), "[S]\nk=v\n[T]\n" + closed + "j=3\n");
    }
}

TEST(ProfileFile, givesUnchangedFilesBackByteForByte)
{
    const QByteArray bytes = bytesOf("\xEF\xBB\xBF\r\r\n\n[\n]=[]\r\n[a]]\0=\r=\n;\x80");
    EXPECT_EQ(parsed(bytes).bytes(), bytes);
}

TEST(ProfileFile, listsNumberedKeysUpToACount)
{
    const ProfileFile file = parsed("[S]\n10=a\n2=b\n2=c\n02=d\n-1=e\n0=f\n1x=g\n999999999999999999=h\n"
                                    "9999999999999999999999=i\n; 3=j\n4\n");
    EXPECT_EQ(file.numberedKeys(u"S"_s, 10), (std::vector<qint64>{2, 10}));
    EXPECT_EQ(file.numberedKeys(u"s"_s, 1e300), (std::vector<qint64>{2, 10, 999999999999999999}));
    EXPECT_EQ(file.numberedKeys(u"S"_s, 1.9), std::vector<qint64>());
    EXPECT_EQ(file.numberedKeys(u"T"_s, 5), std::vector<qint64>());
}

TEST(ProfileFile, isEmptyWhenTheFileIsMissing)
{
    World world;
    const QString path = world.app.appFile({u"none.dat"_s});
    EXPECT_EQ(ProfileFile::load(world.app, path).bytes(), QByteArray());
}

TEST(ProfileFile, failsOnAFolderInItsPlace)
{
    World world;
    ASSERT_TRUE(QDir().mkpath(world.path(u"x.dat"_s)));
    EXPECT_THROW(ProfileFile::load(world.app, world.app.appFile({u"x.dat"_s})), Failure);
}

TEST(ProfileFile, replacesTheFileOnDisk)
{
    World world;
    world.write(u"X.dat"_s, "[S]\r\nk=a long value\r\n");
    const QString path = world.app.appFile({u"x.dat"_s});
    ProfileFile file = ProfileFile::load(world.app, path);
    file.write(u"S"_s, u"k"_s, u"v"_s);
    file.save(world.app, path);
    EXPECT_EQ(world.read(u"X.dat"_s), "[S]\r\nk=v\r\n");
    EXPECT_FALSE(world.has(u"x.dat"_s));
}

TEST(ProfileString, readsNothingFromAFolder)
{
    World world;
    ASSERT_TRUE(QDir().mkpath(world.path(u"x.dat"_s)));
    EXPECT_EQ(ReadProfileString(world.app, world.app.appFile({u"x.dat"_s}), u"S"_s, u"k"_s), QString());
}

TEST(ProfileString, makesTheFileButNoFolder)
{
    World world;
    EXPECT_EQ(WriteProfileString(world.app, world.app.appFile({u"x.dat"_s}), u"S"_s, u"k"_s, u"v"_s), u"1"_s);
    EXPECT_EQ(world.read(u"x.dat"_s), "[S]\r\nk=v\r\n");
    const QString inFolder = world.app.appFile({u"no"_s, u"x.dat"_s});
    EXPECT_EQ(WriteProfileString(world.app, inFolder, u"S"_s, u"k"_s, u"v"_s), u"0"_s);
    EXPECT_FALSE(world.has(u"no"_s));
}
