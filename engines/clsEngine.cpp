#include "engines/clsEngine.h"

#include "core/existing_file.h"
#include "core/text_fold.h"
#include "core/values.h"
#include "engines/numbered_list.h"

#include <array>
#include <limits>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto Markets = "Markets"_L1;
constexpr auto KeywordMark = u"<keyword>";

// The keys of an engine's section.
struct TextKey
{
    QString EngineRow::*field;
    QString key;
};

const auto &textKeys()
{
    static const std::array keys{
        TextKey{&EngineRow::EngineKey, u"EngineKey"_s},
        TextKey{&EngineRow::EngineURL, u"EngineURL"_s},
        TextKey{&EngineRow::LoginURL, u"LoginURL"_s},
        TextKey{&EngineRow::QueryKeyword1, u"QueryKeyword1"_s},
        TextKey{&EngineRow::QueryKeyword2, u"QueryKeyword2"_s},
        TextKey{&EngineRow::PostString, u"PostString"_s},
        TextKey{&EngineRow::SubmitMethod, u"SubmitMethod"_s},
        TextKey{&EngineRow::NextPage1, u"NextPage1"_s},
        TextKey{&EngineRow::NextPage2, u"NextPage2"_s},
        TextKey{&EngineRow::NextPage3, u"NextPage3"_s},
        TextKey{&EngineRow::NextPage4, u"NextPage4"_s},
        TextKey{&EngineRow::ResultStartString, u"ResultStartString"_s},
        TextKey{&EngineRow::ResultEndString, u"ResultEndString"_s},
        TextKey{&EngineRow::Sectionstart, u"Sectionstart"_s},
        TextKey{&EngineRow::SectionEnd, u"SectionEnd"_s},
        TextKey{&EngineRow::NoFoundString, u"NoFoundString"_s},
        TextKey{&EngineRow::FilterKeyword1, u"FilterKeyword1"_s},
        TextKey{&EngineRow::FilterKeyword2, u"FilterKeyword2"_s},
        TextKey{&EngineRow::HREF_KEYWORD1, u"HREF_KEYWORD1"_s},
        TextKey{&EngineRow::HREF_KEYWORD2, u"HREF_KEYWORD2"_s},
        TextKey{&EngineRow::LinkType, u"LinkType"_s},
        TextKey{&EngineRow::beginTitle, u"beginTitle"_s},
        TextKey{&EngineRow::endTitle, u"endTitle"_s},
        TextKey{&EngineRow::beginURL, u"beginURL"_s},
        TextKey{&EngineRow::endURL, u"endURL"_s},
        TextKey{&EngineRow::beginMatches, u"beginMatches"_s},
        TextKey{&EngineRow::endMatches, u"endMatches"_s},
        TextKey{&EngineRow::QuerySuggest1, u"QuerySuggest1"_s},
        TextKey{&EngineRow::QuerySuggest2, u"QuerySuggest2"_s},
        TextKey{&EngineRow::SuggestStartString, u"SuggestStartString"_s},
        TextKey{&EngineRow::SuggestEndString, u"SuggestEndString"_s},
        TextKey{&EngineRow::SuggestSectionStart, u"SuggestSectionStart"_s},
        TextKey{&EngineRow::SuggestSectionEnd, u"SuggestSectionEnd"_s},
        TextKey{&EngineRow::beginCountSection, u"beginCountSection"_s},
        TextKey{&EngineRow::endCountSection, u"endCountSection"_s},
        TextKey{&EngineRow::begineKeywordSection, u"begineKeywordSection"_s},
        TextKey{&EngineRow::endKeywordSection, u"endKeywordSection"_s},
    };
    return keys;
}

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\t';
}

QByteArrayView behindBlanks(QByteArrayView bytes)
{
    while (!bytes.isEmpty() && isBlank(bytes.front()))
        bytes = bytes.sliced(1);
    return bytes;
}

// Whether only blanks stand between these bytes and the begin of the line behind them.
bool endInLineBegin(QByteArrayView bytes)
{
    while (!bytes.isEmpty() && isBlank(bytes.back()))
        bytes.chop(1);
    return bytes.isEmpty() || bytes.back() == '\n' || bytes.back() == '\r';
}

bool isPlainNumber(QByteArrayView bytes)
{
    constexpr qsizetype MostDigits = 4; // all such numbers fit
    qsizetype digits = 0;
    while (digits < bytes.size() && bytes[digits] >= '0' && bytes[digits] <= '9')
        ++digits;
    return digits <= MostDigits && (digits == bytes.size() || bytes[digits] == '\r' || bytes[digits] == '\n');
}

// Whether a number of that key, in small letters, may be too big for its engine.
bool holdsOddNumber(QByteArrayView file, QByteArrayView key)
{
    for (qsizetype at = indexOfAscii(file, key); at >= 0; at = indexOfAscii(file, key, at + 1)) {
        const QByteArrayView rest = behindBlanks(file.sliced(at + key.size()));
        if (rest.startsWith('=') && endInLineBegin(file.first(at)) && !isPlainNumber(rest.sliced(1)))
            return true;
    }
    return false;
}

// The load has to tell of those. Nearly every file is cleared of them by this one look, so that no engine
// needs to be read before somebody asks for it.
bool holdsOddNumbers(QByteArrayView file)
{
    return holdsOddNumber(file, "start") || holdsOddNumber(file, "perpage");
}

void readTexts(EngineRow &row, const ProfileFile::SectionView &section)
{
    for (const auto &[field, key] : textKeys()) {
        QString text = section.read(key);
        const QStringView trimmed = trimBlanks(text);
        row.*field = trimmed.size() == text.size() ? std::move(text) : trimmed.toString();
    }
}

// Throws Failure where a number does not fit.
void readNumbers(EngineRow &row, const ProfileFile::SectionView &section)
{
    row.Start = roundToInt16(leadingNumber(section.read(u"Start"_s)));
    row.PerPage = roundToInt16(leadingNumber(section.read(u"PerPage"_s)));
}

// Of folded names.
QString pairKey(const QString &market, const QString &name)
{
    return market + QChar() + name;
}

} // namespace

EngineRow readEngineRow(const ProfileFile &file, const QString &name)
{
    EngineRow row;
    const auto section = file.section(name); // may be none: a market can name what nobody has defined
    readTexts(row, section);
    readNumbers(row, section);
    return row;
}

bool clsEngine::loadEngineData()
{
    m_rows.clear();
    m_files.clear();
    m_firstByName.clear();
    m_marketNames.clear();
    m_defaultEngineNum = 0;
    m_loaded = false;
    m_loadError.clear();
    if (!m_app.files.fileExists(m_app.EngineDataFile)) {
        if (beforeMissingMessage)
            beforeMissingMessage();
        m_app.desktop.showMessage({u"Error"_s,
                                   u"Engine data file is corrupted or missing, you need to download the new "
                                   u"engine data file from our "
                                   "web site by click on the 'File/Update Engine Data' menu item from the "
                                   "main menu bar and following "
                                   "the instruction on the screen."_s,
                                   MessageIcon::Information, MessageButtons::Ok});
        return false;
    }
    try {
        LoadEngineFile(m_app.files.readAll(m_app.EngineDataFile));
        if (m_rows.empty())
            throw Failure(u"The engine data file holds no engine"_s);
        m_defaultEngineNum = GetEngineCount();
        // A user's file that is there and cannot be read fails the load: without its engines the projects
        // would lose them at their next save.
        if (const auto bytes = readIfThere(m_app.files, m_app.appFile({u"Engines.dat"_s})))
            LoadEngineFile(*bytes);
        m_loaded = true;
    } catch (const std::exception &error) {
        // The one who asked for the load reports it, in its own words.
        m_loadError = errorText(error);
    }
    return m_loaded;
}

void clsEngine::LoadEngineFile(const QByteArray &bytes)
{
    const ProfileFile &file = *m_files.emplace_back(std::make_unique<ProfileFile>(m_app.codePage(), bytes));
    const bool odd = holdsOddNumbers(bytes);
    QSet<QString> marketsRead;
    for (const QString &market : unbrokenList(file, Markets)) {
        const QString foldedMarket = folded(market);
        if (marketsRead.contains(foldedMarket))
            continue;         // all its engines are in the table
        bool trimmed = false; // a name that was is not found when its market comes again
        for (const QString &engine : unbrokenList(file, market)) {
            if (m_rows.empty())
                IsEngineExist(market, engine); // logs that there is none to ask for
            if (m_marketNames.contains(pairKey(foldedMarket, folded(engine))))
                continue;
            const QString name = trimBlanks(engine).toString();
            trimmed = trimmed || name != engine;
            addRow(market, foldedMarket, name, file);
            if (odd)
                row(GetEngineCount()); // throws where a number does not fit
        }
        if (!trimmed)
            marketsRead.insert(foldedMarket);
    }
}

void clsEngine::addRow(const QString &market, const QString &foldedMarket, const QString &name,
                       const ProfileFile &file)
{
    if (m_rows.size() >= static_cast<std::size_t>(std::numeric_limits<qint16>::max()))
        throw Failure(u"Overflow: the catalogue holds more engines than can be counted"_s);
    const QString foldedName = folded(name);
    m_marketNames.insert(pairKey(foldedMarket, foldedName));
    Entry &added = m_rows.emplace_back();
    added.row.Market = market;
    added.row.EngineName = name;
    added.unread = &file;
    if (!m_firstByName.contains(foldedName))
        m_firstByName.insert(foldedName, GetEngineCount());
}

qint16 clsEngine::GetEngineCount() const
{
    return static_cast<qint16>(m_rows.size());
}

qint16 clsEngine::GetEngineIndex(const QString &name) const
{
    return m_firstByName.value(folded(name), 0);
}

const EngineRow *clsEngine::firstOf(const QString &name) const
{
    const qint16 index = GetEngineIndex(name);
    return index > 0 ? &row(index) : nullptr;
}

std::optional<Collection<QString>> clsEngine::GetEngineNameMarketCol() const
{
    if (m_firstByName.size() != GetEngineCount())
        return std::nullopt; // a name comes twice
    Collection<QString> result;
    for (const auto &[row, unread] : m_rows) {
        const QString name = trimBlanks(row.EngineName).toString();
        result.Add(trimBlanks(row.Market).toString() + u'|' + name, name);
    }
    return result;
}

bool clsEngine::IsEngineExist(const QString &market, const QString &name) const
{
    bool found = false;
    reportFailure(m_app, u"IsEngineExist_Error: "_s, [&] {
        if (m_rows.empty())
            throw Failure(u"The table of engines is empty"_s);
        found = m_marketNames.contains(pairKey(folded(market), folded(name)));
    });
    return found;
}

QString clsEngine::GetURL(const QString &engineName, const QString &keyword) const
{
    QString result;
    reportFailure(m_app, u"clsEngine_GetURL error:  "_s, [&] {
        const EngineRow *engine = firstOf(engineName);
        if (!engine)
            return;
        const QString url = engine->EngineURL + engine->QueryKeyword1;
        result = containsIgnoringCase(url, KeywordMark) ? replacedIgnoringCase(url, KeywordMark, keyword)
                                                        : url + keyword + engine->QueryKeyword2;
    });
    return result;
}

QString clsEngine::EngineURL(const QString &engineName) const
{
    QString result;
    reportFailure(m_app, u"clsEngine_GetURL error:  "_s, [&] {
        if (const EngineRow *engine = firstOf(engineName))
            result = engine->EngineURL + engine->QueryKeyword1 + engine->QueryKeyword2;
    });
    return result;
}

QString clsEngine::GetPostString(qint16 index, const QString &keyword) const
{
    return replacedIgnoringCase(row(index).PostString, KeywordMark, keyword).replace(u' ', "%20"_L1);
}

const EngineRow &clsEngine::row(qint16 index) const
{
    if (index < 1 || index > GetEngineCount())
        throw Failure(u"There is no engine %1 in the catalogue"_s.arg(index));
    Entry &entry = m_rows[static_cast<std::size_t>(index - 1)];
    if (entry.unread) {
        const auto section = entry.unread->section(entry.row.EngineName);
        readTexts(entry.row, section);
        entry.unread = nullptr; // what has been read stays when a number does not fit
        readNumbers(entry.row, section);
    }
    return entry.row;
}

} // namespace sondrel
