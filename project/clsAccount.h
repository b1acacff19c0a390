// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/collection.h"
#include "project/clsURL.h"

#include <QDate>

#include <optional>

namespace sondrel {

class clsEngine;
class ProfileFile;

/// One project and its settings file Projects\<Name>\<Name>.dat. Dates that were never set are the zero date,
/// December 30 1899.
class clsAccount
{
public:
    explicit clsAccount(ApplicationContext &app) : m_app(app) {}

    qint32 ReportFormat = 0; // 0 text, 1 HTML
    qint32 Frequency = 0;    // 0 weekly, 1 fortnight, 2 monthly, 3 quarterly
    QString Name;
    bool SchedulerEnable = false;
    QDate LastLookup = ZeroDate;
    QDate NextLookup = ZeroDate;
    QDate StartDate = ZeroDate;
    QString StartTime;
    bool SentReport = false;
    QString ReportTo;
    qint16 LinksNum = 0; // result links to scan per keyword
    std::optional<Collection<QString>> Engine;
    std::optional<Collection<clsURL>> URLs;
    QString Subject;
    QString CC;
    bool EngineSummaryReport = false;
    bool KeywordURL = false;
    bool KeywordSummaryReport = false;
    bool RankingDetailReport = false;
    bool ExcludeUnRanking = false;
    bool TopPosOnly = false;

    static constexpr QDate ZeroDate = QDate::fromJulianDay(2415019); // 1899-12-30

    void GetSettings();
    void SaveSettings();
    /// Has no effect.
    void SaveLastLookupTime();
    std::optional<Collection<QString>> GetURLCollectionX(const QString &name);
    void SaveURLs();
    void SaveEngine();
    std::optional<Collection<clsURL>> LoadURLs();
    std::optional<Collection<QString>> LoadEngines();
    /// Drops the engines that the catalogue no longer knows.
    void DeleteInvalidEngine();
    /// Deletes the settings file; keywords and results stay.
    void DeleteFile();
    /// Moves NextLookup on from the base date by Frequency and writes that key at once.
    void SetNextLookupDate(QDate baseDate);

private:
    std::optional<QString> fileToRead() const;
    QString fileToWrite() const;
    const clsEngine &catalogue() const;

    void readSchedule(ProfileFile &file);
    std::optional<Collection<clsURL>> readURLs(const ProfileFile &file) const;
    std::optional<Collection<QString>> readEngines(const ProfileFile &file) const;
    void moveNextLookup(QDate baseDate);
    void writeNextLookup(ProfileFile &file) const;
    void writeSchedule(ProfileFile &file) const;
    void writeURLs(ProfileFile &file) const;
    void writeEngine(ProfileFile &file) const;

    ApplicationContext &m_app;
};

} // namespace sondrel
