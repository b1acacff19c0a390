#include "shell/column_order.h"

#include "core/text_fold.h"

#include <algorithm>
#include <numeric>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

QString gridHeader(GridField field)
{
    static const std::array<QString, GridFieldCount> headers{
        u"Show"_s,          u"Keyword"_s, u"Counts"_s, u"Positions"_s, u"Page"_s,
        u"Last Position"_s, u"Change"_s,  u"URL"_s,    u"Status"_s,
    };
    return headers[static_cast<std::size_t>(field)];
}

ColumnOrder::ColumnOrder()
{
    std::iota(m_columns.begin(), m_columns.end(), 0);
}

bool ColumnOrder::isComplete() const
{
    const ColumnOrder first;
    return std::is_permutation(m_columns.begin(), m_columns.end(), first.m_columns.begin());
}

ColumnOrder ColumnOrder::parse(const QString &stored)
{
    const auto numbers = QStringView(stored).split(u',');
    if (numbers.size() != GridFieldCount)
        return {};
    ColumnOrder order;
    for (qsizetype field = 0; field < numbers.size(); ++field) {
        bool isNumber = false;
        order.m_columns[static_cast<std::size_t>(field)] = numbers[field].trimmed().toInt(&isNumber);
        if (!isNumber)
            return {};
    }
    return order.isComplete() ? order : ColumnOrder();
}

ColumnOrder ColumnOrder::fromHeaders(const QStringList &headers)
{
    ColumnOrder order;
    for (int column = 0; column < headers.size(); ++column) {
        for (int field = 0; field < GridFieldCount; ++field) {
            if (equalsIgnoringCase(headers[column], gridHeader(static_cast<GridField>(field))))
                order.m_columns[static_cast<std::size_t>(field)] = column;
        }
    }
    return order.isComplete() ? order : ColumnOrder();
}

GridField ColumnOrder::fieldAt(int column) const
{
    const auto place = std::find(m_columns.begin(), m_columns.end(), column);
    return static_cast<GridField>(place - m_columns.begin());
}

QString ColumnOrder::stored() const
{
    QStringList numbers;
    for (const int column : m_columns)
        numbers.append(QString::number(column));
    return numbers.join(u',');
}

} // namespace sondrel
