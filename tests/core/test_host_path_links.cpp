#include "tests/core/host_path_test.h"

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

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
