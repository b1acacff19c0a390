// The engine data that comes with the program, against saved answers of the engines.
#include "core/modCommon.h"
#include "core/profile_file.h"
#include "core/shown_text.h"
#include "keywords/suggestions.h"
#include "lookup/engine_trial.h"
#include "lookup/lookup_session.h"
#include "tests/support/source_tree.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

QByteArray readSource(const QString &path)
{
    QFile file(sourceFile(path));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("no such file: " + path.toStdString());
    return file.readAll();
}

QByteArray starterData()
{
    return readSource(u"data/qlteng4.dat"_s);
}

class StarterWorld : public World
{
public:
    StarterWorld() : catalogue(app)
    {
        writeEngineData(starterData());
        loaded = catalogue.loadEngineData();
        app.EngineCatalogue = &catalogue;
        takeLog(); // the first load always leaves a line
    }

    clsEngine catalogue;
    bool loaded = false;
};

/// A saved page and what stands in it.
struct SavedPage
{
    QString folder;
    QJsonObject expected;

    QString engine() const { return expected[u"engine"_s].toString(); }
    QString name() const { return expected[u"page"_s].toString(); }
    QString address() const { return expected[u"url"_s].toString(); }
    QByteArray bytes() const { return readSource(u"tests/engines/pages/"_s + folder + u'/' + name()); }
    QJsonArray listings() const { return expected[u"listings"_s].toArray(); }
    /// The engine shows an address that is not the whole one.
    bool hostsOnly() const { return expected[u"cite"_s].toBool(); }
};

void PrintTo(const SavedPage &page, std::ostream *stream)
{
    *stream << page.folder.toStdString() << '/' << page.name().toStdString();
}

std::vector<SavedPage> savedPages()
{
    std::vector<SavedPage> pages;
    const QDir folders(sourceFile(u"tests/engines/pages"_s));
    for (const QString &folder : folders.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (!QFile::exists(folders.filePath(folder + u"/expected.json"_s)))
            continue;
        const auto list =
            QJsonDocument::fromJson(readSource(u"tests/engines/pages/"_s + folder + u"/expected.json"_s));
        for (const QJsonValue page : list.array())
            pages.push_back({folder, page.toObject()});
    }
    return pages;
}

class StarterPage : public testing::TestWithParam<SavedPage>
{
protected:
    // Runs a lookup whose first answer is the page. Tracks the page's last listing.
    void lookUp()
    {
        auto account = std::make_shared<clsAccount>(world.app);
        account->Name = u"Demo"_s;
        account->LinksNum = 200;
        account->URLs.emplace();
        const QString last = GetParam().listings().last()[u"url"_s].toString();
        account->URLs->Add({last, false}, last);
        world.write(u"Projects/Demo/Keywords.dat"_s, "word;-1\r\n");
        session.Account = account;
        session.EngineName = GetParam().engine();
        session.open();
        session.LookUpSelectedKeyword(true, {{u"word"_s, true}});
        world.http.answer(0, GetParam().bytes());
    }
    QString shown(const QString &stored) { return shownText(world.app, stored); }
    QString compared(const QString &url)
    {
        return GetParam().hostsOnly() ? GetHostFromURL(world.app, url) : url;
    }

    StarterWorld world;
    LookupSession session{world.app};
};

} // namespace

TEST_P(StarterPage, givesItsListingsToALookup)
{
    lookUp();
    const QString file = u"Results/"_s + GetParam().engine() + u"/word.dat"_s;
    const QStringList lines = world.app.fromBytes(world.read(file)).split(u"\r\n"_s, Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), GetParam().listings().size());
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QStringList fields = lines[i].split(u";#"_s);
        const QJsonObject listing = GetParam().listings()[i].toObject();
        EXPECT_EQ(listing[u"position"_s].toInt(), i + 1);
        EXPECT_EQ(compared(fields.at(0)), compared(listing[u"url"_s].toString()));
        EXPECT_EQ(shown(fields.at(1)), listing[u"title"_s].toString());
        EXPECT_EQ(fields.at(2), u"1"_s);
    }
}

TEST_P(StarterPage, givesItsCountToALookup)
{
    lookUp();
    EXPECT_EQ(session.Keywords->Keywords.at(1).Count, GetParam().expected[u"count"_s].toString());
}

TEST_P(StarterPage, leadsALookupToItsNextPage)
{
    lookUp();
    const QString next = GetParam().expected[u"next"_s].toString();
    ASSERT_EQ(world.http.requests.size(), next.isEmpty() ? 1U : 2U);
    EXPECT_EQ(next.isEmpty() ? QString() : world.http.requests.back().url, next);
}

TEST_P(StarterPage, hasItsLastListingAtItsPosition)
{
    lookUp();
    const clsKeyword &row = session.Keywords->Keywords.at(1);
    QStringList urls;
    for (const QJsonValue listing : GetParam().listings())
        urls.append(compared(listing[u"url"_s].toString()));
    // The tracked host may stand further up too.
    EXPECT_EQ(row.CurPos, QString::number(urls.indexOf(urls.last()) + 1));
}

TEST_P(StarterPage, isReadAlikeByATrial)
{
    const EngineRow &row = world.catalogue.row(world.catalogue.GetEngineIndex(GetParam().engine()));
    const QByteArray bytes = GetParam().bytes();
    const EngineTrial trial =
        tryEngine(world.app, row, {bytes, world.app.fromBytes(bytes)}, GetParam().address());
    ASSERT_EQ(static_cast<qsizetype>(trial.listings.size()), GetParam().listings().size());
    for (qsizetype i = 0; i < GetParam().listings().size(); ++i) {
        const QJsonObject listing = GetParam().listings()[i].toObject();
        const TrialListing &found = trial.listings[static_cast<std::size_t>(i)];
        EXPECT_EQ(found.position, listing[u"position"_s].toInt());
        EXPECT_EQ(compared(found.url), compared(listing[u"url"_s].toString()));
        EXPECT_EQ(shown(found.title), listing[u"title"_s].toString());
    }
    EXPECT_EQ(trial.count, GetParam().expected[u"count"_s].toString());
    EXPECT_EQ(trial.next, GetParam().expected[u"next"_s].toString());
    EXPECT_TRUE(trial.hasResultStart);
    EXPECT_EQ(world.takeLog(), QString());
}

INSTANTIATE_TEST_SUITE_P(Pages, StarterPage, testing::ValuesIn(savedPages()),
                         [](const testing::TestParamInfo<SavedPage> &info) {
                             QString name = info.param.folder + u'_' + info.param.name();
                             name.removeIf([](QChar unit) { return !unit.isLetterOrNumber(); });
                             return name.toStdString();
                         });

TEST(StarterData, comesWithPagesOfTenEngines)
{
    EXPECT_EQ(savedPages().size(), 11U);
}

TEST(StarterData, defines30EnginesUnderNamesOfTheirOwn)
{
    StarterWorld world;
    ASSERT_TRUE(world.loaded);
    EXPECT_EQ(world.catalogue.DefaultEngineNum(), 30);
    EXPECT_TRUE(world.catalogue.GetEngineNameMarketCol());
}

TEST(StarterData, tellsHowToAskAndReadEachEngine)
{
    StarterWorld world;
    for (qint16 index = 1; index <= world.catalogue.GetEngineCount(); ++index) {
        const EngineRow &row = world.catalogue.row(index);
        SCOPED_TRACE(row.EngineName.toStdString());
        EXPECT_TRUE(row.EngineURL.startsWith(u"https://"_s) ||
                    row.EngineURL.startsWith(u"http://localhost:"_s));
        EXPECT_TRUE(row.LoginURL.startsWith(u"http"_s));
        for (const QString &text :
             {row.EngineKey, row.QueryKeyword1, row.ResultStartString, row.ResultEndString, row.Sectionstart,
              row.SectionEnd, row.beginTitle, row.endTitle, row.beginURL, row.endURL})
            EXPECT_FALSE(text.isEmpty());
        EXPECT_EQ(row.SubmitMethod == u"POST"_s, !row.PostString.isEmpty());
    }
}

TEST(StarterData, readsCountryVariantsAsTheirEngine)
{
    StarterWorld world;
    const auto form = [&](const QString &engine) {
        const EngineRow &row = world.catalogue.row(world.catalogue.GetEngineIndex(engine));
        return QStringList{row.EngineKey,  row.ResultStartString, row.ResultEndString, row.Sectionstart,
                           row.SectionEnd, row.beginTitle,        row.endTitle,        row.beginURL,
                           row.endURL,     row.beginMatches,      row.endMatches};
    };
    for (const auto &[engine, variants] :
         {std::pair{u"DuckDuckGo"_s, QStringList{u"UK"_s, u"AU"_s, u"NZ"_s, u"India"_s}},
          std::pair{u"Bing"_s, QStringList{u"UK"_s, u"AU"_s}},
          std::pair{u"Yahoo"_s,
                    QStringList{u"UK"_s, u"Germany"_s, u"AU"_s, u"NZ"_s, u"India"_s, u"Singapore"_s}},
          std::pair{u"Mojeek"_s, QStringList{u"UK"_s}}}) {
        for (const QString &variant : variants)
            EXPECT_EQ(form(engine + u' ' + variant), form(engine)) << variant.toStdString();
    }
}

TEST(StarterData, isPlainTextOfLinesThatAreReadWhole)
{
    const QByteArray bytes = starterData();
    EXPECT_EQ(bytes.count('\n'), bytes.count("\r\n"));
    for (const QByteArray &line : bytes.split('\n')) {
        EXPECT_LT(line.size(), 559);
        for (const char unit : line)
            EXPECT_TRUE(unit == '\r' || (unit >= ' ' && unit <= '~')) << line.constData();
    }
}

TEST(StarterData, listsItsEnginesOnce)
{
    StarterWorld world;
    const ProfileFile file(world.app.codePage(), starterData());
    QSet<QString> names;
    for (int number = 1; !file.read(u"Engines"_s, QString::number(number)).isEmpty(); ++number)
        names.insert(file.read(u"Engines"_s, QString::number(number)));
    EXPECT_EQ(names.size(), 30);
    for (const QString &name : names)
        EXPECT_GT(world.catalogue.GetEngineIndex(name), 0) << name.toStdString();
}

TEST(StarterData, tellsHowToReadEachSuggestionService)
{
    const World world;
    const ProfileFile file(world.app.codePage(), starterData());
    const QStringList engines = suggestionEngines(file);
    EXPECT_EQ(engines.size(), 9);
    for (const QString &engine : engines) {
        const EngineRow row = readEngineRow(file, engine);
        SCOPED_TRACE(engine.toStdString());
        EXPECT_TRUE(row.QuerySuggest1.startsWith(u"https://"_s));
        for (const QString &text : {row.SuggestSectionStart, row.SuggestSectionEnd, row.beginCountSection,
                                    row.endCountSection, row.begineKeywordSection, row.endKeywordSection})
            EXPECT_FALSE(text.isEmpty());
    }
}

namespace {

class StarterSuggestions : public testing::TestWithParam<const char *>
{
};

} // namespace

TEST_P(StarterSuggestions, areReadFromASavedAnswer)
{
    World world;
    const ProfileFile file(world.app.codePage(), starterData());
    const QString path = u"tests/engines/pages/suggest/"_s + QString::fromLatin1(GetParam());
    const QJsonObject expected = QJsonDocument::fromJson(readSource(path + u".json"_s)).object();
    QJsonArray rows;
    readSuggestions(world.app, readEngineRow(file, expected[u"engine"_s].toString()),
                    world.app.fromBytes(readSource(path)), [&](const QString &keyword, const QString &count) {
                        rows.append(QJsonObject{{u"keyword"_s, keyword}, {u"count"_s, count}});
                    });
    EXPECT_FALSE(rows.isEmpty());
    EXPECT_EQ(rows, expected[u"rows"_s].toArray());
}

INSTANTIATE_TEST_SUITE_P(Answers, StarterSuggestions,
                         testing::Values("duckduckgo-ac.txt", "google-toolbar.txt"),
                         [](const testing::TestParamInfo<const char *> &info) {
                             QString name = QString::fromLatin1(info.param);
                             name.removeIf([](QChar unit) { return !unit.isLetterOrNumber(); });
                             return name.toStdString();
                         });
