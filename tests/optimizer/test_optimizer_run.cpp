#include "optimizer/optimizer_run.h"

#include "tests/support/bad_files.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

class View final : public OptimizerView
{
public:
    void showProgress(int value) override { values.append(value); }
    void showStatus(const QString &text) override { texts.append(text); }

    QList<int> values;
    QStringList texts;
};

class Run : public testing::Test
{
protected:
    OptimizerOutcome process(const QString &site, const QString &html)
    {
        run.siteURL = site;
        run.pageText = html;
        return processPage(world.app, run, view);
    }

    World world;
    OptimizerRun run;
    View view;
};

TEST_F(Run, writesAndOpensTheReport)
{
    EXPECT_EQ(process(u"site.example/a.htm?x=1"_s, u"<title>für</title>"_s), OptimizerOutcome::Done);
    EXPECT_EQ(world.read(u"Optimizer/site.example_a.htm_x_1.html"_s), world.app.toBytes(run.document));
    EXPECT_TRUE(world.read(u"Optimizer/site.example_a.htm_x_1.html"_s).contains("f\xFCr"));
    ASSERT_EQ(world.desktop.opened.size(), 1U);
    EXPECT_EQ(world.desktop.opened[0],
              std::pair(world.path(u"Optimizer/site.example_a.htm_x_1.html"_s), ShowMode::Maximised));
    EXPECT_EQ(world.desktop.beeps, 1);
    EXPECT_TRUE(world.desktop.boxes.empty());
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(Run, replacesAnOlderReport)
{
    world.write(u"Optimizer/site.example_.html"_s, QByteArray(1 << 20, 'x'));
    process(u"site.example"_s, u"<p>"_s);
    EXPECT_TRUE(world.read(u"Optimizer/site.example_.html"_s).startsWith("<html>"));
}

TEST_F(Run, tellsItsStepsAndYields)
{
    process(u"site.example"_s, u"<p>"_s);
    EXPECT_EQ(view.values, QList<int>({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
    EXPECT_EQ(view.texts, QStringList({u"Please wait while optimizing your web page ..."_s, u"Done"_s}));
    EXPECT_EQ(world.desktop.pendingEventRuns, 12);
}

TEST_F(Run, readsTheSettingsAnew)
{
    world.setPreference(u"WebSite"_s, u"http://www.acme.example"_s);
    world.setPreference(u"CompanyName"_s, u"Acme"_s);
    process(u"site.example"_s, u"<p>"_s);
    EXPECT_TRUE(run.document.contains(u">Acme</a>"_s));
}

TEST_F(Run, asksForADocumentWhenThereIsNone)
{
    EXPECT_EQ(process(u"site.example"_s, {}), OptimizerOutcome::NoDocument);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0],
              (MessageBox{u"Optimizer"_s,
                          u"No document found from HTML file, please check your HTML file and try again."_s,
                          MessageIcon::Information, MessageButtons::Ok}));
    EXPECT_TRUE(view.values.isEmpty());
    EXPECT_FALSE(world.has(u"Optimizer"_s));
}

TEST_F(Run, endsWhenACountOverflows)
{
    const QString html = u"<title>"_s + QString(32768, u't') + u"</title>"_s;
    EXPECT_EQ(process(u"site.example"_s, html), OptimizerOutcome::Failed);
    const QString text = u"Module: Optimizer\r\nOverflow\r\nFile: "_s;
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0],
              (MessageBox{u"Optimizer Error"_s, text, MessageIcon::Information, MessageButtons::Ok}));
    EXPECT_EQ(world.takeLog(), text);
    EXPECT_FALSE(world.has(u"Optimizer"_s));
    EXPECT_TRUE(world.desktop.opened.empty());
}

TEST_F(Run, endsWhenTheReportsNameCannotBe)
{
    const QString longName(300, u'n');
    for (const auto &[site, name] :
         {std::pair(u"http://a\\b.example/"_s, u"a\\b.example_.html"_s),
          std::pair(u"http://site.example/"_s + longName, u"site.example_"_s + longName + u".html"_s)}) {
        EXPECT_EQ(process(site, u"<p>"_s), OptimizerOutcome::Failed);
        const QString log = world.takeLog();
        EXPECT_TRUE(log.startsWith(u"Module: Optimizer\r\n"_s));
        EXPECT_TRUE(log.endsWith(u"\r\nFile: "_s + world.app.AppPath + u"\\Optimizer\\"_s + name));
    }
    EXPECT_TRUE(QDir(world.path(u"Optimizer"_s)).isEmpty());
    EXPECT_TRUE(world.desktop.opened.empty());
    EXPECT_EQ(world.desktop.boxes.size(), 2U);
}

TEST_F(Run, endsWhenTheReportCannotBeWritten)
{
    putFolder(world, u"Optimizer/site.example_.html"_s);
    EXPECT_EQ(process(u"site.example"_s, u"<p>"_s), OptimizerOutcome::Failed);
    EXPECT_TRUE(
        world.takeLog().endsWith(u"\r\nFile: "_s + world.app.AppPath + u"\\Optimizer\\site.example_.html"_s));
    EXPECT_TRUE(world.desktop.opened.empty());
    EXPECT_EQ(world.desktop.beeps, 0);
    EXPECT_EQ(QDir(world.path(u"Optimizer"_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList(u"site.example_.html"_s));
}

TEST_F(Run, endsWhenTheFolderCannotBeMade)
{
    world.write(u"Optimizer"_s, "a file in its place");
    EXPECT_EQ(process(u"site.example"_s, u"<p>"_s), OptimizerOutcome::Failed);
    EXPECT_EQ(world.desktop.boxes.size(), 1U);
}

TEST_F(Run, keepsTheLogWhenTheMessageCannotBeShown)
{
    world.desktop.failing = true;
    EXPECT_EQ(process(u"site.example"_s, {}), OptimizerOutcome::Failed);
    EXPECT_TRUE(world.takeLog().contains(u"Module: Optimizer\r\nThe message cannot be shown\r\nFile: "_s));
}

} // namespace
} // namespace sondrel
