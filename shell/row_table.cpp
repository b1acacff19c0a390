#include "shell/row_table.h"

#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>

namespace sondrel {

RowTable::RowTable(const QString &name, const QString &accessibleName, QWidget *parent) : QTableView(parent)
{
    setObjectName(name);
    setAccessibleName(accessibleName);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->hide();
    setRowHeight();
}

// One height for all rows: a view of 50,000 rows must not measure each.
void RowTable::setRowHeight()
{
    const int height = fontMetrics().height() * 3 / 2;
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
}

std::vector<int> RowTable::selectedRows() const
{
    std::vector<int> rows;
    for (const QItemSelectionRange &range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

int RowTable::selectedRowCount() const
{
    int count = 0;
    for (const QItemSelectionRange &range : selectionModel()->selection())
        count += range.height();
    return count;
}

void RowTable::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && state() != EditingState && !(event->modifiers() & ~Qt::KeypadModifier)) {
        Q_EMIT rowEntered();
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

void RowTable::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    Q_EMIT resized();
}

void RowTable::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        setRowHeight();
}

QModelIndex RowTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const int rows = model() ? model()->rowCount() : 0;
    if (rows == 0 || (action != MoveHome && action != MoveEnd))
        return QTableView::moveCursor(action, modifiers);
    const int column = currentIndex().isValid() ? currentIndex().column() : 0;
    return model()->index(action == MoveHome ? 0 : rows - 1, column);
}

} // namespace sondrel
