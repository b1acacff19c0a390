#include "project/clsAccount.h"

#include "core/existing_file.h"
#include "core/modCommon.h"
#include "core/profile_file.h"
#include "core/text_fold.h"
#include "core/values.h"
#include "engines/clsEngine.h"
#include "project/settings_date.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// Spelled as in every project file there is.
constexpr auto Schedule = "Schedler"_L1;
constexpr auto NextLookupKey = "NextLookup"_L1;
constexpr auto ScheduleEnableKey = "SchedlerEnable"_L1;

constexpr auto Projects = "Projects"_L1;

} // namespace

// Nothing when the name cannot be one of a file: then there is no file to be read.
std::optional<QString> clsAccount::fileToRead() const
{
    const QString file = Name + u".dat"_s;
    if (!HostPath::isFileName(Name) || !HostPath::isFileName(file))
        return std::nullopt;
    return m_app.appFile({Projects, Name, file});
}

// Makes the folders that are missing.
QString clsAccount::fileToWrite() const
{
    m_app.files.makeFolder(m_app.appFile({Projects, Name}));
    return m_app.appFile({Projects, Name, Name + u".dat"_s});
}

const clsEngine &clsAccount::catalogue() const
{
    if (!m_app.EngineCatalogue || !m_app.EngineCatalogue->isLoaded())
        throw Failure(u"The engine catalogue is not loaded"_s);
    return *m_app.EngineCatalogue;
}

void clsAccount::GetSettings()
{
    const WaitCursor wait(m_app.desktop);
    reportFailure(m_app, u"clsAccount_Getsettings error: "_s, [this] {
        const auto path = fileToRead();
        const auto bytes = path ? readIfThere(m_app.files, *path) : std::nullopt;
        if (!bytes)
            return;
        ProfileFile file(m_app.codePage(), *bytes);
        readSchedule(file);
        URLs = readURLs(file);
        Engine = readEngines(file);
    });
}

void clsAccount::readSchedule(ProfileFile &file)
{
    const auto text = [&](const QString &key) { return file.read(Schedule, key); };
    const auto flag = [&](const QString &key) { return IsTrueText(text(key)); };
    const auto date = [&](const QString &key) { return readSettingsDate(m_app.locale, text(key)); };
    const QDate today = m_app.clock.today();

    SchedulerEnable = toBoolean(text(ScheduleEnableKey));
    Frequency = roundToInt32(leadingNumber(text(u"Frequency"_s)));
    LastLookup = date(u"LastLookup"_s).value_or(today);
    StartDate = date(u"StartDate"_s).value_or(today);
    const auto time = readSettingsTime(text(u"StartTime"_s));
    StartTime = time ? settingsTime(*time) : u"12:00:00"_s;
    if (const auto next = date(NextLookupKey)) {
        NextLookup = *next;
    } else {
        moveNextLookup(LastLookup);
        writeNextLookup(file);
    }
    SentReport = flag(u"SentReport"_s);
    ExcludeUnRanking = flag(u"ExcludeUnRanking"_s);
    KeywordSummaryReport = flag(u"KeywordSummary"_s);
    TopPosOnly = flag(u"TopPosOnly"_s);
    RankingDetailReport = flag(u"RankingDetail"_s);
    EngineSummaryReport = flag(u"EngineSummary"_s);
    KeywordURL = flag(u"KeywordURL"_s);
    ReportFormat = roundToInt32(leadingNumber(text(u"Reportformat"_s)));
    ReportTo = text(u"ReportTo"_s);
    CC = text(u"CC"_s);
    Subject = text(u"Subject"_s);
    LinksNum = roundToInt16(leadingNumber(text(u"NumLink"_s)));
}

void clsAccount::SaveSettings()
{
    reportFailure(m_app, u"clsAccount_SaveSettings: "_s, [this] {
        const QString path = fileToWrite();
        ProfileFile file = ProfileFile::load(m_app, path);
        writeSchedule(file);
        // Each list reports for itself, so that one that is missing keeps neither the other nor the rest
        // back.
        reportFailure(m_app, u"clsAccount_SaveURLs error: "_s, [&] { writeURLs(file); });
        reportFailure(m_app, u"clsAccount_SaveEngine error: "_s, [&] { writeEngine(file); });
        file.save(m_app, path);
    });
}

void clsAccount::writeSchedule(ProfileFile &file) const
{
    const auto write = [&](const QString &key, const QString &value) { file.write(Schedule, key, value); };
    write(ScheduleEnableKey, booleanText(SchedulerEnable));
    write(u"Frequency"_s, QString::number(Frequency));
    write(u"LastLookup"_s, settingsDate(m_app, LastLookup));
    write(u"StartDate"_s, settingsDate(m_app, StartDate));
    write(u"StartTime"_s, StartTime);
    write(NextLookupKey, settingsDate(m_app, NextLookup));
    write(u"SentReport"_s, booleanText(SentReport));
    write(u"ExcludeUnRanking"_s, booleanText(ExcludeUnRanking));
    write(u"KeywordSummary"_s, booleanText(KeywordSummaryReport));
    write(u"TopPosOnly"_s, booleanText(TopPosOnly));
    write(u"RankingDetail"_s, booleanText(RankingDetailReport));
    write(u"EngineSummary"_s, booleanText(EngineSummaryReport));
    write(u"KeywordURL"_s, booleanText(KeywordURL));
    write(u"Reportformat"_s, QString::number(ReportFormat));
    write(u"ReportTo"_s, ReportTo);
    write(u"Subject"_s, Subject);
    write(u"CC"_s, CC);
    write(u"NumLink"_s, QString::number(LinksNum));
}

void clsAccount::SaveLastLookupTime() {}

std::optional<Collection<QString>> clsAccount::GetURLCollectionX(const QString &name)
{
    std::optional<Collection<QString>> urls;
    reportFailure(m_app, u"modCommon_GetURLCollectionX: "_s, [&] {
        if (HostPath::isFileName(name))
            urls = LoadFileAsCollection(m_app, m_app.appFile({Projects, name, u"URLs.dat"_s}));
    });
    return urls;
}

void clsAccount::SaveURLs()
{
    reportFailure(m_app, u"clsAccount_SaveURLs error: "_s, [this] {
        const QString path = fileToWrite();
        ProfileFile file = ProfileFile::load(m_app, path);
        writeURLs(file);
        file.save(m_app, path);
    });
}

void clsAccount::writeURLs(ProfileFile &file) const
{
    if (!URLs)
        throw Failure(u"The project has no list of URLs"_s);
    qsizetype number = 0;
    for (const clsURL &url : *URLs)
        file.write(u"URL"_s, QString::number(++number), url.URL + u'|' + booleanText(url.IsCompetitor));
    file.write(u"URL"_s, u"NumURL"_s, QString::number(number));
}

void clsAccount::SaveEngine()
{
    reportFailure(m_app, u"clsAccount_SaveEngine error: "_s, [this] {
        const QString path = fileToWrite();
        ProfileFile file = ProfileFile::load(m_app, path);
        writeEngine(file);
        file.save(m_app, path);
    });
}

void clsAccount::writeEngine(ProfileFile &file) const
{
    if (!Engine)
        throw Failure(u"The project has no list of engines"_s);
    qsizetype number = 0;
    for (const QString &name : *Engine)
        file.write(u"Engine"_s, QString::number(++number), name);
    file.write(u"Engine"_s, u"NumEngine"_s, QString::number(number));
}

std::optional<Collection<clsURL>> clsAccount::LoadURLs()
{
    std::optional<Collection<clsURL>> urls;
    reportFailure(m_app, u"clsAccount_LoadURLs error: "_s, [&] {
        const auto path = fileToRead();
        if (const auto bytes = path ? readIfThere(m_app.files, *path) : std::nullopt)
            urls = readURLs(ProfileFile(m_app.codePage(), *bytes));
    });
    return urls;
}

std::optional<Collection<clsURL>> clsAccount::readURLs(const ProfileFile &file) const
{
    std::optional<Collection<clsURL>> result;
    reportFailure(m_app, u"clsAccount_LoadURLs error: "_s, [&] {
        Collection<clsURL> urls;
        for (const qint64 number :
             file.numberedKeys(u"URL"_s, leadingNumber(file.read(u"URL"_s, u"NumURL"_s)))) {
            const QString value = file.read(u"URL"_s, QString::number(number));
            if (value.isEmpty())
                continue;
            const qsizetype bar = value.indexOf(u'|');
            if (bar < 0)
                throw Failure(u"No \"|\" in the URL entry: "_s + value);
            const QString url = value.first(bar);
            urls.Add({url, toBoolean(QStringView(value).sliced(bar + 1))}, url);
        }
        result = std::move(urls);
    });
    return result;
}

std::optional<Collection<QString>> clsAccount::LoadEngines()
{
    std::optional<Collection<QString>> engines;
    reportFailure(m_app, u"clsAccount_LoadEngines error: "_s, [&] {
        const auto path = fileToRead();
        if (const auto bytes = path ? readIfThere(m_app.files, *path) : std::nullopt)
            engines = readEngines(ProfileFile(m_app.codePage(), *bytes));
    });
    return engines;
}

std::optional<Collection<QString>> clsAccount::readEngines(const ProfileFile &file) const
{
    std::optional<Collection<QString>> result;
    reportFailure(m_app, u"clsAccount_LoadEngines error: "_s, [&] {
        Collection<QString> engines;
        const double count = leadingNumber(file.read(u"Engine"_s, u"NumEngine"_s));
        for (const qint64 number : file.numberedKeys(u"Engine"_s, count)) {
            const QString name = trimBlanks(file.read(u"Engine"_s, QString::number(number))).toString();
            if (!name.isEmpty() && catalogue().GetEngineIndex(name) > 0)
                engines.Add(name, name);
        }
        result = std::move(engines);
    });
    return result;
}

void clsAccount::DeleteInvalidEngine()
{
    reportFailure(m_app, u"clsAccount_DeleteInvalidEngine: "_s, [this] {
        if (!Engine)
            throw Failure(u"The project has no list of engines"_s);
        const clsEngine &engines = catalogue();
        Engine->removeIf([&](const QString &name) { return engines.GetEngineIndex(name) <= 0; });
    });
}

void clsAccount::DeleteFile()
{
    reportFailure(m_app, u"clsAccount_DeleteFile: "_s, [this] {
        if (const auto path = fileToRead())
            m_app.files.remove(*path);
    });
}

void clsAccount::moveNextLookup(QDate baseDate)
{
    constexpr qint64 DaysOfWeek = 7;
    switch (Frequency) {
    case 0:
        NextLookup = baseDate.addDays(DaysOfWeek);
        break;
    case 1:
        NextLookup = baseDate.addDays(2 * DaysOfWeek);
        break;
    case 2:
        NextLookup = baseDate.addMonths(1);
        break;
    case 3:
        NextLookup = baseDate.addMonths(3);
        break;
    default:
        NextLookup = ZeroDate;
    }
    if (!NextLookup.isValid())
        NextLookup = ZeroDate;
}

// A date that cannot be written ends no load: the project is as good as it was.
void clsAccount::writeNextLookup(ProfileFile &file) const
{
    reportFailure(m_app, u"clsAccount_SetNextLookupDate: "_s, [&] {
        file.write(Schedule, NextLookupKey, settingsDate(m_app, NextLookup));
        file.save(m_app, m_app.appFile({Projects, Name, Name + u".dat"_s}));
    });
}

void clsAccount::SetNextLookupDate(QDate baseDate)
{
    moveNextLookup(baseDate);
    reportFailure(m_app, u"clsAccount_SetNextLookupDate: "_s, [this] {
        ProfileFile file = ProfileFile::load(m_app, m_app.appFile({Projects, Name, Name + u".dat"_s}));
        writeNextLookup(file);
    });
}

} // namespace sondrel
