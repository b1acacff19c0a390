// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/collection.h"
#include "core/profile_file.h"

#include <QHash>
#include <QSet>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace sondrel {

/// One row of the catalogue: an engine in one market, with the templates and delimiters of its section.
struct EngineRow
{
    QString Market;
    QString EngineName;
    QString EngineKey;
    QString EngineURL;
    QString LoginURL;
    QString DTCURL;
    QString QueryKeyword1;
    QString QueryKeyword2;
    QString PostString;
    QString SubmitMethod;
    QString NextPage1;
    QString NextPage2;
    QString NextPage3;
    QString NextPage4;
    QString ResultStartString;
    QString ResultEndString;
    QString Sectionstart;
    QString SectionEnd;
    QString NoFoundString;
    QString FilterKeyword1;
    QString FilterKeyword2;
    QString HREF_KEYWORD1;
    QString HREF_KEYWORD2;
    QString LinkType;
    qint16 Start = 0;
    qint16 PerPage = 0;
    QString beginTitle;
    QString endTitle;
    QString beginURL;
    QString endURL;
    QString beginMatches;
    QString endMatches;
    QString QuerySuggest1;
    QString QuerySuggest2;
    QString SuggestStartString;
    QString SuggestEndString;
    QString SuggestSectionStart;
    QString SuggestSectionEnd;
    QString beginCountSection;
    QString endCountSection;
    QString begineKeywordSection;
    QString endKeywordSection;
};

/// What a file's section of that name defines; an empty row when there is none. Market and EngineName stay
/// empty.
EngineRow readEngineRow(const ProfileFile &file, const QString &name);

/// The engine catalogue: the definitions of all search engines, from the shared engine data file and the
/// user's Engines.dat. Rows count from 1. A getter throws Failure for an index outside the table.
class clsEngine
{
public:
    explicit clsEngine(ApplicationContext &app) : m_app(app) {}

    /// Loads both files anew. False when the shared one is missing (which a message tells) or holds no
    /// engine.
    bool loadEngineData();
    /// Whether the last loadEngineData succeeded; a catalogue that did not load says nothing about what an
    /// engine is.
    bool isLoaded() const { return m_loaded; }
    /// Why the last loadEngineData failed; empty when it succeeded or a message has told.
    const QString &loadError() const { return m_loadError; }
    /// Told before the message about a missing file comes up, so that a splash window can go.
    std::function<void()> beforeMissingMessage;

    qint16 DefaultEngineNum() const { return m_defaultEngineNum; }
    qint16 GetEngineCount() const;
    /// Index of the first row of that name, 0 when there is none.
    qint16 GetEngineIndex(const QString &name) const;
    /// "Market|EngineName" of every row; nothing when a name stands twice.
    std::optional<Collection<QString>> GetEngineNameMarketCol() const;
    bool IsEngineExist(const QString &market, const QString &name) const;
    /// The query address of the first row of that name; empty when there is none.
    QString GetURL(const QString &engineName, const QString &keyword) const;
    QString EngineURL(const QString &engineName) const;
    QString GetPostString(qint16 index, const QString &keyword) const;

    /// The row of an index; throws Failure outside the table.
    const EngineRow &row(qint16 index) const;

    QString GetSubmitMethod(qint16 index) const { return row(index).SubmitMethod; }
    QString GetEngineURL(qint16 index) const { return row(index).EngineURL; }
    QString GetLoginURL(qint16 index) const { return row(index).LoginURL; }
    QString GetDTCURL(qint16 index) const { return row(index).DTCURL; }
    QString GetEnginName(qint16 index) const { return row(index).EngineName; }
    QString GetEngineKey(qint16 index) const { return row(index).EngineKey; }
    QString GetResultStartString(qint16 index) const { return row(index).ResultStartString; }
    QString GetResultEndString(qint16 index) const { return row(index).ResultEndString; }
    QString GetBeginTitle(qint16 index) const { return row(index).beginTitle; }
    QString GetEndTitle(qint16 index) const { return row(index).endTitle; }
    QString GetBeginURL(qint16 index) const { return row(index).beginURL; }
    QString GetEndURL(qint16 index) const { return row(index).endURL; }
    QString GetbeginMatches(qint16 index) const { return row(index).beginMatches; }
    QString GetendMatches(qint16 index) const { return row(index).endMatches; }
    QString GetQuerySuggest1(qint16 index) const { return row(index).QuerySuggest1; }
    QString GetQuerySuggest2(qint16 index) const { return row(index).QuerySuggest2; }
    QString GetSuggestStartString(qint16 index) const { return row(index).SuggestStartString; }
    QString GetSuggestEndString(qint16 index) const { return row(index).SuggestEndString; }
    QString GetSuggestSectionStart(qint16 index) const { return row(index).SuggestSectionStart; }
    QString GetSuggestSectionEnd(qint16 index) const { return row(index).SuggestSectionEnd; }
    QString GetBeginCountSection(qint16 index) const { return row(index).beginCountSection; }
    QString GetEndCountSection(qint16 index) const { return row(index).endCountSection; }
    QString GetBegineKeywordSection(qint16 index) const { return row(index).begineKeywordSection; }
    QString GetEndKeywordSection(qint16 index) const { return row(index).endKeywordSection; }
    QString GetSectionStart(qint16 index) const { return row(index).Sectionstart; }
    QString GetSectionEnd(qint16 index) const { return row(index).SectionEnd; }
    QString GetNextPage1(qint16 index) const { return row(index).NextPage1; }
    QString GetNextPage2(qint16 index) const { return row(index).NextPage2; }
    QString GetNextPage3(qint16 index) const { return row(index).NextPage3; }
    QString GetNextPage4(qint16 index) const { return row(index).NextPage4; }

private:
    void LoadEngineFile(const QByteArray &bytes);
    void addRow(const QString &market, const QString &foldedMarket, const QString &name,
                const ProfileFile &file);
    const EngineRow *firstOf(const QString &name) const;

    ApplicationContext &m_app;
    struct Entry
    {
        EngineRow row;                       // market and name alone at first
        const ProfileFile *unread = nullptr; // whose section holds the rest
    };

    std::vector<std::unique_ptr<ProfileFile>> m_files;
    mutable std::deque<Entry> m_rows;     // few engines of a large catalogue are ever asked for
    QHash<QString, qint16> m_firstByName; // folded names
    QSet<QString> m_marketNames;          // folded market, NUL, folded name
    qint16 m_defaultEngineNum = 0;
    bool m_loaded = false;
    QString m_loadError;
};

} // namespace sondrel
