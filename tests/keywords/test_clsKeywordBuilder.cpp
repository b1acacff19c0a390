#include "keywords/clsKeywordBuilder.h"

#include "core/profile_file.h"
#include "keywords/suggestion_list.h"
#include "keywords/suggestions.h"
#include "tests/support/bad_files.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const QByteArray EngineData = "[KeywordBuilder]\r\n1=Finder\r\n2=Perla\r\n4=Hidden\r\n"
                              "[Finder]\r\n"
                              "QuerySuggest1=http://finder.example/s?q=\r\n"
                              "QuerySuggest2=&n=10\r\n"
                              "SuggestStartString=<ol>\r\n"
                              "SuggestEndString=</ol>\r\n"
                              "SuggestSectionStart=<li>\r\n"
                              "SuggestSectionEnd=</li>\r\n"
                              "beginCountSection=<i>\r\n"
                              "endCountSection=</i>\r\n"
                              "begineKeywordSection=<b>\r\n"
                              "endKeywordSection=</b>\r\n";

QByteArray item(const QByteArray &keyword, const QByteArray &count)
{
    return "<li><i>" + count + "</i><b>" + keyword + "</b></li>";
}

class RecordingForm final : public KeywordBuilderForm
{
public:
    void showProgress(int step) override { events.append(u"progress %1"_s.arg(step)); }
    void showStatus(const QString &text) override { events.append(u"status "_s + text); }
    void addSuggestion(const QString &keyword, const QString &count) override { list.add(keyword, count); }
    void DownLoadCompleted() override { events.append(u"completed"_s); }

    QString rows() const
    {
        QStringList texts;
        for (const Suggestion &row : list.rows())
            texts.append(row.Keyword + u'=' + row.Count);
        return texts.join(u',');
    }

    QStringList events;
    SuggestionList list;
};

class KeywordBuilder : public testing::Test
{
protected:
    KeywordBuilder() : builder(world.app)
    {
        world.writeEngineData(EngineData);
        builder.FormKeywordBuilder = &form;
        builder.EngineName = u"Finder"_s;
        builder.Keyword = u" garden  tools "_s;
    }

    // The rows of a page.
    QString result(const QByteArray &page)
    {
        builder.GetResult(QString::fromLatin1(page));
        return form.rows();
    }
    ProfileFile file(const QByteArray &bytes) const { return ProfileFile(world.app.codePage(), bytes); }

    World world;
    RecordingForm form;
    clsKeywordBuilder builder;
};

} // namespace

TEST_F(KeywordBuilder, knowsTheEnginesUpToTheFirstGap)
{
    EXPECT_EQ(suggestionEngines(file(EngineData)), (QStringList{u"Finder"_s, u"Perla"_s}));
    EXPECT_EQ(suggestionEngines(file("[Markets]\n1=M\n")), QStringList());
}

TEST_F(KeywordBuilder, asksWithAPlusForEachBlank)
{
    builder.Connect();
    ASSERT_EQ(world.http.requests.size(), 1U);
    EXPECT_EQ(world.http.requests[0].url, u"http://finder.example/s?q=garden++tools&n=10"_s);
    EXPECT_FALSE(world.http.requests[0].post);
    EXPECT_EQ(form.events,
              (QStringList{u"progress 1"_s, u"status Retrieving data from the search engine ..."_s}));
}

TEST_F(KeywordBuilder, sendsTheKeywordOtherwiseAsTyped)
{
    EngineRow asked;
    asked.QuerySuggest1 = u"http://x.example/?"_s;
    EXPECT_EQ(suggestionAddress(asked, u"tcp/ip & \"more\" 50%"_s),
              u"http://x.example/?tcp/ip+&+\"more\"+50%"_s);
}

TEST_F(KeywordBuilder, handsOverWhatItFinds)
{
    builder.Connect();
    form.events.clear();
    world.http.answer(0, "<ol>" + item("tea", "12") + item("green tea", "1,240") + "</ol>");
    EXPECT_EQ(form.rows(), u"tea=12,green tea=1,240"_s);
    EXPECT_EQ(form.events, (QStringList{u"progress 2"_s, u"progress 3"_s, u"completed"_s}));
    EXPECT_EQ(world.desktop.boxes,
              (std::vector{MessageBox{u"Keyword Builder"_s, u"Retrieving data completed."_s,
                                      MessageIcon::Information}}));
}

TEST_F(KeywordBuilder, looksAtNoResponseStatus)
{
    builder.ProcessData(404, "<ol>" + item("tea", "12") + "</ol>");
    EXPECT_EQ(form.rows(), u"tea=12"_s);
}

TEST_F(KeywordBuilder, tellsOfAnAnswerThatStaysEmpty)
{
    builder.ProcessData(200, {});
    EXPECT_EQ(world.desktop.boxes,
              (std::vector{MessageBox{u"Keyword Builder"_s, u"Connection error. Please try again"_s,
                                      MessageIcon::Critical}}));
    EXPECT_EQ(form.events, QStringList{u"completed"_s});
}

TEST_F(KeywordBuilder, completesWithoutAStringThatBeginsAResult)
{
    world.writeEngineData("[KeywordBuilder]\n1=Finder\n[Finder]\nSuggestSectionEnd=</li>\n");
    builder.ProcessData(200, "<ol>" + item("tea", "12") + "</ol>");
    EXPECT_EQ(form.rows(), QString());
    EXPECT_EQ(world.desktop.boxes.at(0).text, u"Retrieving data completed."_s);
}

TEST_F(KeywordBuilder, searchesTheWholePageWithoutTheStringThatOpensTheStretch)
{
    EXPECT_EQ(result("<p>" + item("tea", "12") + "</ol>" + item("oak", "3")), u"tea=12,oak=3"_s);
}

TEST_F(KeywordBuilder, searchesTheWholePageWithoutTheStringThatClosesTheStretch)
{
    EXPECT_EQ(result(item("elm", "1") + "<ol>" + item("tea", "12")), u"elm=1,tea=12"_s);
}

TEST_F(KeywordBuilder, mindsTheCase)
{
    EXPECT_EQ(result("<OL>" + item("a", "1") + "</OL><ol>" + item("tea", "12") + "</ol>"), u"tea=12"_s);
    EXPECT_EQ(result("<ol><LI><i>1</i><b>x</b></LI></ol>"), u"tea=12"_s);
}

TEST_F(KeywordBuilder, endsAtTheFirstResultThatLacksAField)
{
    EXPECT_EQ(result("<ol>" + item("tea", "12") + "<li><b>x</b></li>" + item("oak", "3") + "</ol>"),
              u"tea=12"_s);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(KeywordBuilder, cleansItsTexts)
{
    EXPECT_EQ(result("<ol>" + item("<u>green</u>&nbsp;\r\n\ttea ", " <u>1</u>\r\n2 ") + "</ol>"),
              u"greentea=12"_s);
}

TEST_F(KeywordBuilder, endsAtAKeywordThatComesTwice)
{
    EXPECT_EQ(
        result("<ol>" + item("tea", "12") + item("oak", "3") + item("Tea", "4") + item("elm", "5") + "</ol>"),
        u"tea=12,oak=3"_s);
    EXPECT_EQ(world.takeLog(), u"clsKeywordBuilder_GetResult: This key is already associated with an element "
                               "of this collection: KeyTea"_s);
}

TEST_F(KeywordBuilder, logsEngineDataThatCannotBeRead)
{
    putUnreadable(world, u"../system/qlteng4.dat"_s);
    builder.Connect();
    EXPECT_TRUE(world.takeLog().startsWith(u"clsKeywordBuilder_Connect Error:  "_s));
    EXPECT_TRUE(world.http.requests.empty());
    builder.GetResult(u"x"_s);
    EXPECT_TRUE(world.takeLog().startsWith(u"clsKeywordBuilder_GetResult: "_s));
}

TEST_F(KeywordBuilder, completesWhenItsMessageCannotBeShown)
{
    world.desktop.failing = true;
    builder.ProcessData(200, "<ol>" + item("tea", "12") + "</ol>");
    EXPECT_EQ(world.takeLog(), u"clsKeywordBuilder_ProcessData error:  The message cannot be shown"_s);
    EXPECT_EQ(form.events.last(), u"completed"_s);
    EXPECT_EQ(form.rows(), u"tea=12"_s);
}

TEST_F(KeywordBuilder, isDisconnectedWhenTheTransferHasEnded)
{
    builder.Connect();
    world.http.requests[0].control->hangsOnAbort = true;
    builder.Disconnect();
    EXPECT_FALSE(builder.Disconnected);
    world.http.answer(0, "late");
    EXPECT_TRUE(builder.Disconnected);
    EXPECT_EQ(form.rows(), QString());
    EXPECT_TRUE(world.desktop.boxes.empty());
}

TEST_F(KeywordBuilder, isDisconnectedAtOnceWhenNothingIsUnderWay)
{
    world.http.failStart = u"No network"_s;
    builder.Connect();
    builder.Disconnect();
    EXPECT_TRUE(builder.Disconnected);
    EXPECT_EQ(world.takeLog(), u"frmHTTP_Connect1_Error: No network"_s);
}

TEST_F(KeywordBuilder, letsGoOfItsConnection)
{
    builder.Connect();
    builder.CloseHTTPForm();
    EXPECT_EQ(world.http.controlsAlive, 0);
    builder.Disconnect();
    EXPECT_TRUE(builder.Disconnected);
    builder.Connect();
    EXPECT_EQ(world.takeLog(), u"clsKeywordBuilder_Connect Error:  The connection has been closed"_s);
}
