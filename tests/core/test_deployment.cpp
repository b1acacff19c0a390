#include "core/deployment.h"

#include "core/failure.h"
#include "tests/support/printing.h"
#include "tests/support/source_tree.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

QByteArray publishedFile()
{
    QFile file(sourceFile(u"data/deployment.ini"_s));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TEST(DeploymentValues, areAllBuiltIn)
{
    const Deployment &values = Deployment::builtIn();
    EXPECT_EQ(values.Title, u"Marovia Sondrel V4"_s);
    EXPECT_EQ(values.SupportEmail, u"support@kestrune.example"_s);
    EXPECT_EQ(values.SalesMailbox, u"sales@kestrune.example"_s);
    EXPECT_EQ(values.VendorHost, u"http://www.kestrune.example"_s);
    EXPECT_EQ(values.KnowledgeBase, u"http://kb.kestrune.example"_s);
    EXPECT_EQ(values.EngineDataHost, u"http://data.kestrune.example"_s);
    EXPECT_EQ(values.TutorialSite, u"http://tutorial.kestrune.example"_s);
    EXPECT_EQ(values.StatisticsSite, u"http://stats.kestrune.example"_s);
    EXPECT_EQ(values.ExampleURL, u"http://www.other-site.example/"_s);
}

TEST(DeploymentValues, areThoseOfThePublishedFile)
{
    const QByteArray published = publishedFile();
    ASSERT_FALSE(published.isEmpty());
    EXPECT_EQ(Deployment::read(published), Deployment::builtIn());
}

TEST(DeploymentValues, comeFromTheFileBesideTheProgram)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"Deployment.INI"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "[Deployment]\r\nTitle=Position Finder\r\nVendorHost=https://dealer.example\r\nSalesMailbox=\r\n");
    file.close();
    const Deployment values = Deployment::load(folder.path());
    EXPECT_EQ(values.Title, u"Position Finder"_s);
    EXPECT_EQ(values.VendorHost, u"https://dealer.example"_s);
    EXPECT_EQ(values.SalesMailbox, u"sales@kestrune.example"_s);
    EXPECT_EQ(values.SupportEmail, u"support@kestrune.example"_s);
}

TEST(DeploymentValues, areBuiltInWithoutAFile)
{
    const QTemporaryDir folder;
    EXPECT_EQ(Deployment::load(folder.path()), Deployment::builtIn());
}

TEST(DeploymentValues, areBuiltInForAFileOfOtherContent)
{
    EXPECT_EQ(Deployment::read(""), Deployment::builtIn());
    EXPECT_EQ(Deployment::read(QByteArray("\x00\xff[x\n=\r\r[Deployment\n", 20)), Deployment::builtIn());
}

TEST(DeploymentValues, areNotReadFromAFolder)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"deployment.ini"_s));
    EXPECT_THROW(Deployment::load(folder.path()), Failure);
}
