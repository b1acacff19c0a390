#include "reports/engine_summary.h"

#include "core/text_fold.h"
#include "engines/clsEngine.h"
#include "project/clsKeywords.h"

#include <QStringTokenizer>

#include <algorithm>
#include <array>
#include <iterator>
#include <list>
#include <optional>
#include <unordered_map>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto LineEnd = "\r\n"_L1;
constexpr char16_t FieldMark = u';';
constexpr auto Suppliers = std::to_array({"bay9"_L1, "AskJeevs"_L1, "dmoz"_L1, "Fast"_L1});

// The markets of the project's engines, in order of their first engine.
Collection<QString> marketsOf(const Collection<QString> &engines, const Collection<QString> &markets)
{
    Collection<QString> found;
    for (const QString &engine : engines) {
        if (const QString *market = markets.find(engine); market && !found.HasKey(*market))
            found.Add(*market, *market);
    }
    return found;
}

bool isInMarket(const QString &engine, const QString &market, const Collection<QString> &markets)
{
    const QString *own = markets.find(engine);
    return own && equalsIgnoringCase(*own, market);
}

// The rows of one market while engines are added. Rows move to the top in constant time: every keyword that
// engines share does, once for each of them.
class TableBuilder
{
public:
    explicit TableBuilder(int engines) : m_cells(engines + 1) {}

    void addEngine(const QString &name)
    {
        ++m_column;
        const auto header = find(EnginesKeyword);
        if (header == m_rows.end()) {
            QStringList cells(m_cells);
            cells[0] = EnginesKeyword;
            cells[m_column] = name;
            append(std::move(cells));
            return;
        }
        (*header)[m_column] = name;
        m_rows.splice(m_rows.begin(), m_rows, header);
    }

    void setPosition(const QString &keyword, const QString &position)
    {
        const auto row = find(keyword);
        if (row == m_rows.end()) {
            QStringList cells(m_cells);
            cells[0] = keyword;
            cells[m_column] = position;
            append(std::move(cells));
            return;
        }
        (*row)[m_column] = position;
        moveBehindFirst(row);
    }

    std::vector<QStringList> take()
    {
        return {std::make_move_iterator(m_rows.begin()), std::make_move_iterator(m_rows.end())};
    }

private:
    using Rows = std::list<QStringList>;

    Rows::iterator find(const QString &keyword)
    {
        const auto place = m_places.find(folded(keyword));
        return place == m_places.end() ? m_rows.end() : place->second;
    }

    void append(QStringList cells)
    {
        const QString key = folded(cells[0]);
        m_places.emplace(key, m_rows.insert(m_rows.end(), std::move(cells)));
    }

    // Behind the first of the other rows.
    void moveBehindFirst(Rows::iterator row)
    {
        Rows moved;
        moved.splice(moved.begin(), m_rows, row);
        m_rows.splice(m_rows.empty() ? m_rows.end() : std::next(m_rows.begin()), moved);
    }

    qsizetype m_cells;
    qsizetype m_column = 0; // of the engine being added
    Rows m_rows;
    std::unordered_map<QString, Rows::iterator> m_places; // by folded keyword
};

// The text of an engine's results; nothing when there is none to read.
std::optional<QString> storedResults(ApplicationContext &app, const QString &project, const QString &engine)
{
    const QString name = clsKeywords::resultFileName(engine);
    if (!HostPath::isFileName(project) || !HostPath::isFileName(name))
        return std::nullopt;
    const QString path = app.appFile({u"Projects"_s, project, name});
    if (!app.files.fileExists(path))
        return std::nullopt;
    try {
        return app.fromBytes(app.files.readAll(path));
    } catch (const Failure &) {
        // The summary goes on without an engine whose results cannot be read, as without any that has none.
        return std::nullopt;
    }
}

void addResults(TableBuilder &table, const QString &results)
{
    for (const QStringView line : QStringTokenizer(results, LineEnd)) {
        const qsizetype first = line.indexOf(FieldMark);
        const qsizetype second = first < 0 ? -1 : line.indexOf(FieldMark, first + 1);
        if (second < 0)
            continue;
        const qsizetype third = line.indexOf(FieldMark, second + 1);
        table.setPosition(line.first(first).toString(),
                          line.sliced(second + 1, (third < 0 ? line.size() : third) - second - 1).toString());
    }
}

MarketTable marketTable(ApplicationContext &app, const clsAccount &account, const QString &market,
                        const Collection<QString> &markets, const ReportStatus &status)
{
    TableBuilder table(GetEnginesCount(markets, *account.Engine, market));
    int position = 0;
    for (const QString &engine : *account.Engine) {
        ++position;
        if (!isInMarket(engine, market, markets))
            continue;
        status.setProgress(position, account.Engine->Count());
        table.addEngine(engine);
        if (const auto results = storedResults(app, account.Name, engine))
            addResults(table, *results);
    }
    return {market, table.take()};
}

} // namespace

Collection<QString> GetMarketArray(const ApplicationContext &app)
{
    Collection<QString> markets;
    const auto entries = app.EngineCatalogue ? app.EngineCatalogue->GetEngineNameMarketCol() : std::nullopt;
    if (!entries)
        return markets;
    for (const QString &entry : *entries) {
        const QStringList parts = trimBlanks(entry).toString().split(u'|');
        if (parts.size() < 2)
            break;
        if (!markets.HasKey(parts[1]))
            markets.Add(parts[0], parts[1]);
    }
    return markets;
}

int GetEnginesCount(const Collection<QString> &markets, const Collection<QString> &engines,
                    const QString &market)
{
    int count = 0;
    for (const QString &engine : engines)
        count += isInMarket(engine, market, markets) ? 1 : 0;
    return count;
}

QString TrimBracketString(const QString &text)
{
    const qsizetype open = text.indexOf(u'(');
    const qsizetype close = text.indexOf(u')');
    if (open < 0 || close < open)
        return text;
    const QStringView inside = trimBlanks(QStringView(text).sliced(open + 1, close - open - 1));
    const bool isSupplier = std::any_of(Suppliers.begin(), Suppliers.end(), [&](QLatin1StringView supplier) {
        return containsIgnoringCase(inside, QString(supplier));
    });
    return isSupplier ? replacedIgnoringCase(text, QString(u'(' + inside.toString() + u')'), u"") : text;
}

EngineSummary GetEngineSummaryReport(ApplicationContext &app, const clsAccount &account,
                                     const ReportStatus &status)
{
    EngineSummary summary;
    if (!reportFailure(app, u"frmMain_GetEnginesummaryRepoet error: "_s, [&] {
            if (!account.Engine)
                return;
            status.setProgress(0, account.Engine->Count());
            const Collection<QString> markets = GetMarketArray(app);
            EngineSummary tables;
            for (const QString &market : marketsOf(*account.Engine, markets))
                tables.push_back(marketTable(app, account, market, markets, status));
            status.setProgress(0, account.Engine->Count());
            summary = std::move(tables);
        }))
        app.desktop.resetPointer();
    return summary;
}

QString headingOf(const MarketTable &table, const Collection<QString> &markets)
{
    // A keyword can take the place of the engines' names; the table then still has its market.
    const QString *market = table.Rows.empty() ? nullptr : markets.find(table.Rows.front().constLast());
    return market ? *market : table.Market;
}

QString engineSummaryData(const EngineSummary &summary, const Collection<QString> &markets,
                          const ReportStatus &status)
{
    QString text;
    for (const MarketTable &table : summary) {
        const auto maximum = static_cast<qsizetype>(table.Rows.size()) + 1;
        qsizetype value = 0;
        status.setProgress(value, maximum);
        text += u'[' + headingOf(table, markets) + u']' + LineEnd;
        for (const QStringList &row : table.Rows) {
            status.setProgress(++value, maximum);
            text += row.constFirst();
            for (qsizetype i = 1; i < row.size(); ++i)
                text += FieldMark + TrimBracketString(row[i]);
            text += LineEnd;
        }
    }
    return text;
}

} // namespace sondrel
