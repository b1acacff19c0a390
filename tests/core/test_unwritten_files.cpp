#include "core/failure.h"
#include "core/host_path.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

/// A folder of the program in which changes fail, and who hears of it.
class UnwrittenFiles : public testing::Test
{
protected:
    UnwrittenFiles()
    {
        QDir().mkpath(root);
        files.onUnwritten = [this](const QString &problem) { heard.append(problem); };
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

    QTemporaryDir folder;
    const QString root = folder.filePath(u"root"_s);
    HostPath files{{root}};
    QStringList heard;
};

} // namespace

TEST_F(UnwrittenFiles, areHeardOfAsTheyAreThrown)
{
    QFile file(root + u"/file"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const std::function<void()> acts[] = {
        [&] { files.writeAll(root + u"\\none\\a"_s, "x"); },
        [&] { files.writeUnflushed(root + u"\\none\\a"_s, "x"); },
        [&] { files.append(root + u"\\none\\a"_s, "x"); },
        [&] { files.writeAll(root + u"\\file\\a"_s, "x"); },
    };
    for (const auto &act : acts) {
        heard.clear();
        const QString failure = failureOf(act);
        EXPECT_TRUE(failure.startsWith(u"Cannot write \""_s + root));
        EXPECT_EQ(heard, QStringList{failure});
    }
}

TEST_F(UnwrittenFiles, areNobodysMatterWhereTheUserChoseThePlace)
{
    EXPECT_NE(failureOf([&] { files.writeAll(folder.filePath(u"rootless/a"_s), "x"); }),
              u"(nothing thrown)"_s);
    EXPECT_EQ(heard, QStringList());
}

TEST_F(UnwrittenFiles, areNotThoseThatCannotBeRead)
{
    EXPECT_NE(failureOf([&] { files.readAll(root + u"\\none"_s); }), u"(nothing thrown)"_s);
    EXPECT_EQ(heard, QStringList());
}
