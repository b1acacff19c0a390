// sondrel-stores OPERATION FOLDER [STATE]: writes or loads everything that the program keeps, in a folder.
//
// save, small, report, update and lookup write one of two states, 0 or 1, or without STATE both in turn for
// ever, until the process is killed. load prints what the program makes of the folder: a line of JSON for
// each store.
#include "core/clsPreference.h"
#include "core/file_settings_store.h"
#include "core/places.h"
#include "engines/clsEngine.h"
#include "engines/engine_builder.h"
#include "engines/engine_update.h"
#include "keywords/suggestion_list.h"
#include "lookup/curl_http_control.h"
#include "lookup/lookup_session.h"
#include "project/clsMain.h"
#include "reports/html_report.h"
#include "reports/report_set.h"
#include "tests/crash/step.h"
#include "tests/doors/manual_clock.h"
#include "tests/doors/recording_desktop.h"
#include "tests/support/failing_disk.h"
#include "tests/support/loopback_server.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

#include <iostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const QString Shop = u"Shop"_s;
const QString Finder = u"Finder"_s;

QByteArray engineSection(const QByteArray &name, const QByteArray &address)
{
    return "[" + name + "]\r\nEngineKey=finder\r\nEngineURL=" + address +
           "\r\nQueryKeyword1=?q=\r\nSubmitMethod=GET\r\nResultStartString=<ol>\r\nResultEndString=</ol>\r\n"
           "Sectionstart=<li>\r\nSectionEnd=</li>\r\nbeginTitle=<b>\r\nendTitle=</b>\r\nbeginURL=href=\"\r\n"
           "endURL=\"\r\nbeginMatches=Results\r\nendMatches=</p>\r\n"
           "NextPage1=Next page\r\n";
}

/// The program on a folder.
struct Program
{
    explicit Program(const QString &folder)
        : clock(QDateTime(QDate(2026, 11, 15), QTime(10, 0))),
          settings(folder + u"/settings.ini"_s),
          http([this](QStringView text) { return app.toBytes(text); }),
          app(folder + u"/app"_s, folder + u"/system"_s, Doors{clock, desktop, settings, http},
              QLocale(QLocale::English, QLocale::UnitedStates)),
          engines(app)
    {
        QDir().mkpath(app.AppPath);
        QDir().mkpath(folder + u"/system"_s);
    }

    void loadEngines()
    {
        engines.loadEngineData();
        app.EngineCatalogue = &engines;
    }

    ManualClock clock;
    RecordingDesktop desktop;
    FileSettingsStore settings;
    CurlTransport http;
    ApplicationContext app;
    clsEngine engines;
};

// The engine data of a state; the address counts for lookups alone.
QByteArray engineData(int state, const QByteArray &address = "http://finder.example/find")
{
    QByteArray data("[Markets]\r\n1=Global\r\n[Global]\r\n1=Finder\r\n");
    QByteArray sections = engineSection("Finder", address);
    for (int i = 0; i < 200 + 150 * state; ++i) {
        const QByteArray name = "Engine" + QByteArray::number(i) + (state == 0 ? "a" : "b");
        data += QByteArray::number(i + 2) + "=" + name + "\r\n";
        sections += engineSection(name, "http://engine.example/" + name);
    }
    return data + sections;
}

clsAccount project(ApplicationContext &app, int state)
{
    clsAccount account(app);
    account.Name = Shop;
    account.LinksNum = 1; // the first page is enough
    account.SchedulerEnable = state == 1;
    account.NextLookup = QDate(2026, 12, 1).addDays(state);
    account.StartTime = u"09:00:00 AM"_s;
    account.Subject = u"Subject %1"_s.arg(state).repeated(20);
    account.URLs.emplace();
    for (int i = 0; i < 20 + 30 * state; ++i) {
        const QString url = u"site%1-%2.example"_s.arg(state).arg(i);
        account.URLs->Add({url, i % 2 == 1}, url);
    }
    account.URLs->Add({u"site.example"_s, false}, u"site.example"_s);
    account.Engine.emplace();
    account.Engine->Add(Finder, Finder);
    return account;
}

Collection<clsKeyword> rows(int state)
{
    Collection<clsKeyword> rows;
    for (int i = 0; i < 500 + 1500 * state; ++i) {
        clsKeyword row;
        row.Keyword = u"keyword %1 of state %2"_s.arg(i).arg(state);
        row.CurPos = QString::number(i % 90 + 1);
        row.Page = QString::number(state + 1);
        row.LastPosition = QString::number(i % 80 + 1);
        row.Change = u"+1"_s;
        row.Count = u"1,240,000"_s;
        row.Status = u"11/15/2026"_s;
        row.URL = u"http://site.example/page%1.html"_s.arg(i);
        rows.Add(row, row.Keyword);
    }
    return rows;
}

clsKeywords keywords(ApplicationContext &app, int state)
{
    clsKeywords result(app);
    result.AccountName = Shop;
    result.Engine = Finder;
    result.Keywords = rows(state);
    return result;
}

clsEngineData newEngine(const QString &name)
{
    clsEngineData engine;
    engine.EngineName = name;
    engine.Market = EngineBuilder::markets().first();
    engine.EngineURL = u"http://own.example/"_s;
    return engine;
}

void saveOwnEngines(Program &program, int state)
{
    // Names that the catalogue knows are refused, and it knows those of the state before.
    clsEngine *catalogue = std::exchange(program.app.EngineCatalogue, nullptr);
    EngineBuilder builder(program.app);
    builder.LoadEngines();
    const QStringList names = builder.names();
    for (const QString &name : names)
        builder.remove(name);
    for (int i = 0; i < 3 + 5 * state; ++i) {
        program.desktop.texts.push_back(u"Own %1 of %2"_s.arg(i).arg(state));
        const auto name = builder.AddNew();
        const clsEngineData engine = newEngine(name.value_or(QString()));
        builder.SaveObject(engine.EngineName, engine);
    }
    builder.SaveFile();
    program.app.EngineCatalogue = catalogue;
}

void saveSuggestionsOf(ApplicationContext &app, int state)
{
    Collection<Suggestion> suggestions;
    for (int i = 0; i < 100 + 100 * state; ++i)
        suggestions.Add({u"suggestion %1 of %2"_s.arg(i).arg(state), QString::number(i)}, QString::number(i));
    saveSuggestions(app, Finder, u"shoes"_s, suggestions);
}

void saveSettings(ApplicationContext &app, int state)
{
    clsPreference preference;
    preference.GetSettings(app);
    preference.SMTPServer = u"mail%1.example"_s.arg(state);
    preference.Email = u"ann%1@sender.example"_s.arg(state);
    preference.CompanyName = u"Company %1 "_s.arg(state).repeated(state == 0 ? 5 : 25);
    preference.SaveSettings(app);
}

std::vector<Step> savingSteps(Program &program)
{
    ApplicationContext &app = program.app;
    return {
        {u"project list"_s,
         [&app](int state) {
             clsMain list(app);
             list.SaveAccount(state == 0 ? QStringList{Shop} : QStringList{Shop, u"Garden"_s, u"Office"_s});
         }},
        {u"project"_s, [&app](int state) { project(app, state).SaveSettings(); }},
        {u"keywords"_s, [&app](int state) { keywords(app, state).SaveKeywords(); }},
        {u"results"_s, [&app](int state) { keywords(app, state).SaveKeywordResults(); }},
        {u"settings"_s, [&app](int state) { saveSettings(app, state); }},
        {u"own engines"_s, [&program](int state) { saveOwnEngines(program, state); }},
        {u"suggestions"_s, [&app](int state) { saveSuggestionsOf(app, state); }},
        {u"suggestion keywords"_s,
         [&app](int state) {
             QStringList looked;
             for (int i = 0; i < 100 + 100 * state; ++i)
                 looked.append(u"looked %1 of %2"_s.arg(i).arg(state));
             saveSuggestionKeywords(app, looked);
         }},
    };
}

void writeReports(Program &program, int state)
{
    ApplicationContext &app = program.app;
    const clsAccount account = project(app, state);
    clsKeywords stored = keywords(app, state);
    stored.SaveKeywordResults();
    CreateHTMLReport(app, account, Finder, stored.Keywords, {});
    ReportSet set(app);
    set.ResetReporter();
    set.writePages(account, stored.Keywords);
    set.CreateHTMLReportIndex(Shop);
}

// Lookups on a server of this process.
class Lookups
{
public:
    explicit Lookups(Program &program) : m_program(program)
    {
        m_server.handler = [this](const LoopbackServer::Request &, const LoopbackServer::Peer &peer) {
            peer.send(LoopbackServer::response(page()));
        };
        ApplicationContext &app = m_program.app;
        app.files.writeAll(app.EngineDataFile, engineData(0, m_server.url(u"/find"_s).toLatin1()));
        m_program.loadEngines();
        project(app, 0).SaveSettings();
        clsKeywords terms(app);
        terms.AccountName = Shop;
        for (int i = 0; i < 40; ++i)
            terms.Add(u"shoe %1"_s.arg(i), u"shoe %1"_s.arg(i), -1);
        terms.SaveKeywords();
    }

    void run(int state)
    {
        m_state = state;
        LookupSession session(m_program.app);
        session.Account = std::make_shared<clsAccount>(m_program.app);
        session.Account->Name = Shop;
        session.Account->GetSettings();
        session.EngineName = Finder;
        session.open();
        session.LookupALLKeyword();
        QTimer time; // the program's clock
        QObject::connect(&time, &QTimer::timeout, [this] { m_program.clock.advance(1); });
        time.start(1);
        waitUntil([&] { return !session.Online(); });
        session.unload();
        m_server.requests.clear();
    }

private:
    // The tracked site is third or seventh.
    QByteArray page() const
    {
        QByteArray text("<html><p>Results 1 - 10 of 2,340</p><ol>");
        for (int i = 1; i <= 10; ++i) {
            const QByteArray host =
                i == 3 + 4 * m_state ? "site.example" : "filler" + QByteArray::number(i) + ".example";
            text += "<li><b>State " + QByteArray::number(m_state) + "</b> <a href=\"http://" + host +
                    "/\">go</a></li>";
        }
        return text + QByteArray("<p>").repeated(m_state * 5000) + "</ol></html>";
    }

    Program &m_program;
    LoopbackServer m_server;
    int m_state = 0;
};

QString digest(const QString &text)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha1).toHex().first(12));
}

QString accountText(const clsAccount &account)
{
    QStringList parts{account.Name,
                      QString::number(account.LinksNum),
                      QString::number(int{account.SchedulerEnable}),
                      account.NextLookup.toString(Qt::ISODate),
                      account.StartTime,
                      account.Subject};
    if (account.URLs) {
        for (const clsURL &url : *account.URLs)
            parts.append(url.URL + QString::number(int{url.IsCompetitor}));
    }
    if (account.Engine) {
        for (const QString &engine : *account.Engine)
            parts.append(engine);
    }
    return parts.join(u'\n');
}

// What a lookup changes each time, the last position and the change, stays out of it.
QString rowsText(const Collection<clsKeyword> &rows)
{
    QString text;
    for (const clsKeyword &row : rows)
        text += row.Keyword + u';' + row.Count + u';' + row.CurPos + u';' + row.Page + u';' + row.URL + u'\n';
    return text;
}

QJsonObject loadEverything(Program &program)
{
    ApplicationContext &app = program.app;
    QJsonObject stores;
    program.loadEngines();
    const qint16 last = program.engines.DefaultEngineNum(); // one more than the vendor's engines
    QString engineNames;
    for (qint16 i = 1; i < last; ++i)
        engineNames += program.engines.GetEnginName(i) + program.engines.GetEngineKey(i) + u'\n';
    stores[u"engine data"_s] = digest(engineNames);
    QStringList names;
    clsMain list(app);
    if (!list.loadAccount(names))
        names = QStringList{u"not loaded"_s};
    stores[u"project list"_s] = digest(names.join(u'\n'));
    clsAccount account(app);
    account.Name = Shop;
    account.GetSettings();
    stores[u"project"_s] = digest(accountText(account));
    clsKeywords terms(app);
    terms.AccountName = Shop;
    terms.Engine = Finder;
    terms.LoadKeywords();
    QStringList texts;
    for (const clsKeyword &row : terms.Keywords)
        texts.append(row.Keyword);
    stores[u"keywords"_s] = digest(texts.join(u'\n'));
    clsKeywords results(app);
    results.AccountName = Shop;
    results.Engine = Finder;
    for (const int state : {0, 1}) {
        for (const clsKeyword &row : rows(state))
            results.Add(row.Keyword, row.Keyword, -1);
    }
    for (const QString &text : texts)
        results.Add(text, text, -1);
    results.FillKeywordsLookupValue();
    stores[u"results"_s] = digest(rowsText(results.Keywords));
    clsPreference preference;
    preference.GetSettings(app);
    stores[u"settings"_s] =
        digest(preference.SMTPServer + u'\n' + preference.Email + u'\n' + preference.CompanyName);
    EngineBuilder builder(app);
    builder.LoadEngines();
    stores[u"own engines"_s] = digest(builder.names().join(u'\n'));
    QString suggested;
    for (const Suggestion &row : loadSuggestions(app, Finder, u"shoes"_s))
        suggested += row.Keyword + u';' + row.Count + u'\n';
    stores[u"suggestions"_s] = digest(suggested);
    stores[u"suggestion keywords"_s] = digest(loadSuggestionKeywords(app).join(u'\n'));
    return stores;
}

QString logPath(const ApplicationContext &app)
{
    return app.AppPath + u"/Error.log"_s;
}

QString readLog(const ApplicationContext &app, const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? app.fromBytes(file.readAll()) : QString();
}

int load(Program &program)
{
    QFile::remove(logPath(program.app));
    removeLeftovers(program.app); // as at each start
    QJsonObject answer{{u"stores"_s, loadEverything(program)}};
    answer[u"log"_s] = readLog(program.app, logPath(program.app));
    answer[u"boxes"_s] = static_cast<int>(program.desktop.boxes.size());
    std::cout << QJsonDocument(answer).toJson(QJsonDocument::Compact).toStdString() << '\n';
    return 0;
}

void useEngineData(Program &program)
{
    program.app.files.writeAll(program.app.EngineDataFile, engineData(0));
    program.loadEngines();
}

std::vector<Step> steps(Program &program, const QString &operation, const QString &folder)
{
    if (operation == "save"_L1) {
        useEngineData(program);
        return savingSteps(program);
    }
    if (operation == "small"_L1) {
        useEngineData(program);
        return smallSteps(program.app, folder + u"/list.txt"_s);
    }
    if (operation == "update"_L1)
        return {
            {u"engine data"_s, [&program](int state) { replaceEngineData(program.app, engineData(state)); }}};
    if (operation == "report"_L1) {
        useEngineData(program);
        program.app.files.writeAll(program.app.appFile({u"menutemplate.html"_s}),
                                   "<a href=enginesummary.html>[AccountName]</a>");
        return {{u"reports"_s, [&program](int state) { writeReports(program, state); }}};
    }
    if (operation == "lookup"_L1) {
        auto lookups = std::make_shared<Lookups>(program);
        return {{u"results"_s, [lookups](int state) { lookups->run(state); }}};
    }
    return {};
}

/// Tells what a step has said: to the log, in boxes, to its caller.
class Witness
{
public:
    explicit Witness(Program &program)
        : m_program(program), m_log(QFileInfo(logPath(program.app)).canonicalFilePath())
    {
        program.app.WriteErrorLog(u"ready"_s); // it stays open, wherever its folder goes
        m_read = readLog(program.app, m_log).size();
    }

    QJsonObject told(const Step &step, int state)
    {
        QString thrown;
        m_program.desktop.boxes.clear();
        try {
            step.write(state);
        } catch (const std::exception &error) {
            thrown = errorText(error);
        }
        const QString log = readLog(m_program.app, m_log);
        QStringList texts;
        for (const MessageBox &box : m_program.desktop.boxes)
            texts.append(box.text);
        return {{u"store"_s, step.name},
                {u"log"_s, log.mid(std::exchange(m_read, log.size()))},
                {u"boxes"_s, QJsonArray::fromStringList(texts)},
                {u"thrown"_s, thrown}};
    }

private:
    Program &m_program;
    const QString m_log;
    qsizetype m_read = 0;
};

// Each line is a state to write, and behind it the call whose failing is wanted, its error, and whether every
// later call is to fail as well: "1", "1 17 28 0".
void followInput(Program &program, const std::vector<Step> &steps, const QString &folder)
{
    Witness witness(program);
    std::cout << "ready" << std::endl;
    for (std::string line; std::getline(std::cin, line);) {
        std::istringstream words(line);
        int state = 0;
        int call = 0;
        int error = 0;
        bool lasts = false;
        words >> state >> call >> error >> lasts;
        const FailingDisk disk(folder, call - 1, error,
                               lasts ? FailingDisk::Lasts::UntilTheEnd : FailingDisk::Lasts::OneCall);
        QJsonArray answers;
        for (const Step &step : steps)
            answers.append(witness.told(step, state));
        const QJsonObject told{{u"answers"_s, answers},
                               {u"calls"_s, disk.calls()},
                               {u"unflushed"_s, QJsonArray::fromStringList(disk.renamedUnflushed())}};
        std::cout << QJsonDocument(told).toJson(QJsonDocument::Compact).toStdString() << std::endl;
    }
}

void write(const std::vector<Step> &steps, int state)
{
    for (const Step &step : steps)
        step.write(state);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 3) {
        std::cerr << "usage: sondrel-stores save|small|report|update|lookup|load FOLDER [STATE]\n";
        return 2;
    }
    const QString folder = QDir(arguments[2]).absolutePath();
    Program program(folder);
    if (arguments[1] == "load"_L1)
        return load(program);
    const std::vector<Step> all = steps(program, arguments[1], folder);
    if (all.empty())
        return 2;
    if (arguments.value(3) == "-"_L1) {
        followInput(program, all, QFileInfo(arguments[2]).canonicalFilePath());
        return 0;
    }
    if (arguments.size() > 3) {
        write(all, arguments[3].toInt());
        return 0;
    }
    std::cout << "ready" << std::endl;
    for (int state = 0;; state = 1 - state)
        write(all, state);
}
