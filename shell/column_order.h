// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>
#include <QStringList>

#include <array>

namespace sondrel {

/// The fields of a row of the keyword grid.
enum class GridField { Show, Keyword, Counts, Positions, Page, LastPosition, Change, URL, Status };
inline constexpr int GridFieldCount = 9;

/// What stands in the header over a field; also how a dragged column is recognised.
QString gridHeader(GridField field);

/// Which column of the grid shows which field. Columns count from 0.
class ColumnOrder
{
public:
    /// Every field in its first place.
    ColumnOrder();
    /// The stored form: the column of each field, in field order, joined by ",". Anything that is not every
    /// column once gives the first order.
    static ColumnOrder parse(const QString &stored);
    /// The order that a row of header texts shows, after columns have been dragged.
    static ColumnOrder fromHeaders(const QStringList &headers);

    int columnOf(GridField field) const { return m_columns[static_cast<std::size_t>(field)]; }
    GridField fieldAt(int column) const;
    QString stored() const;

    bool operator==(const ColumnOrder &) const = default;

private:
    bool isComplete() const;

    std::array<int, GridFieldCount> m_columns;
};

} // namespace sondrel
