#include "shell/keyword_model.h"

#include "core/text_fold.h"
#include "shell/keyword_entry.h"
#include "shell/plain_tip.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

bool holdsNumbers(GridField field)
{
    return field == GridField::Counts || field == GridField::Positions || field == GridField::Page ||
           field == GridField::LastPosition || field == GridField::Change;
}

Qt::Alignment alignmentOf(GridField field)
{
    if (field == GridField::Show)
        return Qt::AlignCenter;
    return Qt::AlignVCenter | (holdsNumbers(field) ? Qt::AlignRight : Qt::AlignLeft);
}

QString headerTip(GridField field)
{
    switch (field) {
    case GridField::Show:
        return u"Check this box for the keywords you want to optimize"_s;
    case GridField::Keyword:
        return u"Search term"_s;
    case GridField::Positions:
        return u"Current position"_s;
    case GridField::LastPosition:
        return u"Last Position"_s;
    case GridField::Change:
        return u"Change"_s;
    case GridField::URL:
        return u"URL of your web site"_s;
    default:
        return {};
    }
}

} // namespace

KeywordModel::KeywordModel(ApplicationContext &app, QObject *parent) : QAbstractTableModel(parent), m_app(app)
{
    FormatGridFixRow();
}

void KeywordModel::FormatGridFixRow()
{
    reportFailure(m_app, u"frmSondrel_FormatGridFixRow error   "_s, [&] {
        QStringList headers;
        for (int field = 0; field < GridFieldCount; ++field)
            headers.append(gridHeader(static_cast<GridField>(field)));
        m_headers = headers;
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, GridFieldCount - 1);
    });
}

void KeywordModel::setKeywords(clsKeywords *keywords)
{
    beginResetModel();
    m_keywords = keywords;
    m_rows.clear();
    endResetModel();
}

int KeywordModel::PopulateKeywords(const QString &remembered)
{
    int noted = 0;
    beginResetModel();
    m_rows.clear();
    reportFailure(m_app, u"frmSondrel_PopulateKeywords error:  "_s, [&] {
        int number = 0;
        if (!m_keywords)
            return;
        m_rows.reserve(static_cast<std::size_t>(m_keywords->Count()));
        for (const clsKeyword &keyword : std::as_const(m_keywords->Keywords)) {
            ++number;
            if (equalsIgnoringCase(keyword.Keyword, remembered))
                noted = number;
            if (keyword.Optimize || filter == ViewFilter::All)
                m_rows.push_back(keyword);
        }
    });
    endResetModel();
    return noted > 0 && noted <= rowCount() ? noted - 1 : -1;
}

void KeywordModel::AddNewRow(const clsKeyword &keyword)
{
    reportFailure(m_app, u"frmSondrel_AddNewRow error: "_s, [&] { appendRows({keyword}); });
}

void KeywordModel::appendRows(std::vector<clsKeyword> rows)
{
    if (rows.empty())
        return;
    m_rows.reserve(m_rows.size() + rows.size()); // nothing may fail between begin and end
    beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(rows.size()) - 1);
    std::move(rows.begin(), rows.end(), std::back_inserter(m_rows));
    endInsertRows();
}

void KeywordModel::AddKeywordColToGrid(const QStringList &texts)
{
    qsizetype cleaned = 0;
    reportFailure(m_app, u"frmSondrel_AddKeywordColToGrid error: "_s, [&] {
        if (!m_keywords)
            return;
        std::vector<clsKeyword> rows; // told to the view in one piece: there may be 100,000
        for (const QString &text : texts) {
            clsKeyword keyword;
            keyword.Keyword = storableKeyword(m_app, text);
            if (trimBlanks(keyword.Keyword).isEmpty() || m_keywords->Keywords.HasKey(keyword.Keyword))
                continue;
            cleaned += keyword.Keyword != text;
            m_keywords->AddKeyword(keyword, -1);
            rows.push_back(std::move(keyword));
        }
        appendRows(std::move(rows));
    });
    if (cleaned > 0)
        Q_EMIT keywordsCleaned(cleaned);
}

void KeywordModel::removeKeywords(std::vector<int> rows)
{
    reportFailure(m_app, u"frmSondrel_DeleteSelectedKeywords error :  "_s, [&] {
        std::sort(rows.begin(), rows.end());
        rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
        QSet<QString> names;
        for (const int row : rows)
            names.insert(folded(cell(row, GridField::Keyword)));
        if (m_keywords)
            m_keywords->Keywords.removeIf(
                [&](const clsKeyword &keyword) { return names.contains(folded(keyword.Keyword)); });
        // From the end, in runs, so that a view is told as seldom as can be.
        while (!rows.empty()) {
            const int last = rows.back();
            int first = last;
            for (rows.pop_back(); !rows.empty() && rows.back() == first - 1; rows.pop_back())
                --first;
            beginRemoveRows({}, first, last);
            m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
            endRemoveRows();
        }
    });
}

QString KeywordModel::cell(int row, GridField field) const
{
    const clsKeyword &keyword = m_rows.at(static_cast<std::size_t>(row));
    switch (field) {
    case GridField::Show:
        return keyword.Optimize ? u"-1"_s : u"0"_s;
    case GridField::Keyword:
        return keyword.Keyword;
    case GridField::Counts:
        return keyword.Count;
    case GridField::Positions:
        return keyword.CurPos;
    case GridField::Page:
        return keyword.Page;
    case GridField::LastPosition:
        return keyword.LastPosition;
    case GridField::Change:
        return keyword.Change;
    case GridField::URL:
        return keyword.URL;
    case GridField::Status:
        return keyword.Status;
    }
    return {};
}

bool KeywordModel::shown(int row) const
{
    return m_rows.at(static_cast<std::size_t>(row)).Optimize;
}

int KeywordModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int KeywordModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : GridFieldCount;
}

KeywordModel::Trend KeywordModel::trendOf(const QString &change)
{
    if (change.startsWith(u'+'))
        return Trend::Up;
    if (change.startsWith(u'-'))
        return Trend::Down;
    return change.endsWith(u'+') ? Trend::New : Trend::None;
}

QVariant KeywordModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const auto field = static_cast<GridField>(index.column());
    const clsKeyword &keyword = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return field == GridField::Show ? QVariant() : QVariant(cell(index.row(), field));
    case Qt::EditRole:
        return cell(index.row(), field);
    case Qt::CheckStateRole:
        if (field == GridField::Show)
            return keyword.Optimize ? Qt::Checked : Qt::Unchecked;
        return {};
    case Qt::ToolTipRole:
        return field == GridField::URL || field == GridField::Keyword
                   ? QVariant(plainTip(cell(index.row(), field)))
                   : QVariant();
    case Qt::AccessibleTextRole:
        return gridHeader(field) + u": "_s +
               (field == GridField::Show ? (keyword.Optimize ? u"on"_s : u"off"_s)
                                         : cell(index.row(), field));
    case Qt::TextAlignmentRole:
        return static_cast<int>(alignmentOf(field));
    case RankedRole:
        return field == GridField::Show ? QVariant(!keyword.CurPos.isEmpty()) : QVariant();
    case ChangeRole:
        return field == GridField::Change ? QVariant::fromValue(trendOf(keyword.Change)) : QVariant();
    case NumberRole:
        return holdsNumbers(field);
    default:
        return {};
    }
}

QVariant KeywordModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= GridFieldCount)
        return {};
    const auto field = static_cast<GridField>(section);
    if (role == Qt::DisplayRole)
        return m_headers.value(section);
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>(alignmentOf(field));
    if (role == Qt::ToolTipRole && !headerTip(field).isEmpty())
        return headerTip(field);
    return {};
}

Qt::ItemFlags KeywordModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.isValid() && static_cast<GridField>(index.column()) == GridField::Show)
        flags |= Qt::ItemIsUserCheckable;
    if (index.isValid() && static_cast<GridField>(index.column()) == GridField::Keyword)
        flags |= Qt::ItemIsEditable;
    return flags;
}

// A name that is there already would cost one of both when the list is loaded again.
bool KeywordModel::isTaken(int row, const QString &name) const
{
    if (equalsIgnoringCase(name, cell(row, GridField::Keyword)))
        return false;
    return std::any_of(m_keywords->Keywords.begin(), m_keywords->Keywords.end(),
                       [&](const clsKeyword &other) { return equalsIgnoringCase(other.Keyword, name); });
}

bool KeywordModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!m_keywords || !checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return false;
    const auto field = static_cast<GridField>(index.column());
    if (field == GridField::Show && role == Qt::CheckStateRole)
        return setShown({index.row()}, value.toInt() == Qt::Checked);
    if (field == GridField::Keyword && role == Qt::EditRole)
        return rename(index.row(), value.toString());
    return false;
}

// The collection keeps the old text of a renamed row as its key until the project is loaded again, so a
// further change of that row finds no keyword and is refused.
bool KeywordModel::rename(int row, const QString &name)
{
    const QString storable = storableKeyword(m_app, name);
    if (trimBlanks(storable).isEmpty())
        return false;
    if (isTaken(row, storable)) {
        Q_EMIT nameTaken(storable);
        return false;
    }
    const bool renamed = reportFailure(m_app, u"frmSondrel_grdBidsManage_AfterEdit error: "_s, [&] {
        clsKeyword &changed = m_rows[static_cast<std::size_t>(row)];
        m_keywords->Keywords.at(changed.Keyword).Keyword = storable;
        changed.Keyword = storable;
        const QModelIndex place = index(row, static_cast<int>(GridField::Keyword));
        Q_EMIT dataChanged(place, place);
        m_keywords->SaveKeywords();
    });
    if (renamed && storable != name)
        Q_EMIT keywordsCleaned(1);
    return renamed;
}

bool KeywordModel::setShown(const std::vector<int> &rows, bool shown)
{
    if (!m_keywords || rows.empty())
        return false;
    return reportFailure(m_app, u"frmSondrel_grdBidsManage_AfterEdit error: "_s, [&] {
        for (const int row : rows) {
            clsKeyword &changed = m_rows.at(static_cast<std::size_t>(row));
            m_keywords->Keywords.at(changed.Keyword).Optimize = shown;
            changed.Optimize = shown;
        }
        const int column = static_cast<int>(GridField::Show);
        Q_EMIT dataChanged(index(rows.front(), column), index(rows.back(), column));
        m_keywords->SaveKeywords();
    });
}

} // namespace sondrel
