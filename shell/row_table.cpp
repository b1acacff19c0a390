#include "shell/row_table.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionHeader>

#include <algorithm>

namespace sondrel {

int RowTable::air(const QFontMetrics &metrics)
{
    return metrics.height() / 5;
}

namespace {

// Captions stand above the texts of their columns, with the same air at their sides: those of a right-aligned
// and a left-aligned column would nearly touch.
class AiryHeader final : public QHeaderView
{
public:
    explicit AiryHeader(QWidget *parent) : QHeaderView(Qt::Horizontal, parent)
    {
        setSectionsClickable(true);
        setHighlightSections(false);
    }

protected:
    void paintSection(QPainter *painter, const QRect &rect, int section) const override
    {
        painter->save(); // styles leave a clip behind
        m_bare = true;
        QHeaderView::paintSection(painter, rect, section);
        m_bare = false;
        painter->restore();
        QStyleOptionHeaderV2 caption;
        initStyleOption(&caption);
        initStyleOptionForIndex(&caption, section);
        const int air = RowTable::air(fontMetrics());
        caption.rect = rect;
        caption.rect =
            style()->subElementRect(QStyle::SE_HeaderLabel, &caption, this).adjusted(air, 0, -air, 0);
        style()->drawControl(QStyle::CE_HeaderLabel, &caption, painter, this);
    }

    void initStyleOptionForIndex(QStyleOptionHeader *option, int section) const override
    {
        QHeaderView::initStyleOptionForIndex(option, section);
        if (m_bare)
            option->text.clear();
    }

    QSize sectionSizeFromContents(int section) const override
    {
        return QHeaderView::sectionSizeFromContents(section) + QSize(2 * RowTable::air(fontMetrics()), 0);
    }

private:
    mutable bool m_bare = false; // while a section is painted without its caption
};

} // namespace

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
    setHorizontalHeader(new AiryHeader(this));
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

void RowTable::scrollToTop(const QModelIndex &row)
{
    updateGeometries(); // else the scroll bar ends where the rows ended before
    scrollTo(row, PositionAtTop);
}

// The toolkit makes the first row the current one without choosing it. The first arrow key would pass over
// it, and who shows what belongs to a row would show that of one nobody has chosen.
void RowTable::focusInEvent(QFocusEvent *event)
{
    const bool hadRow = currentIndex().isValid();
    const QSignalBlocker quiet(selectionModel());
    QTableView::focusInEvent(event);
    if (!hadRow && selectionModel())
        selectionModel()->clearCurrentIndex();
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

// What chooses a row without an event is the program. The toolkit would take the keys of a shortcut that are
// still held for those of a selection.
QItemSelectionModel::SelectionFlags RowTable::selectionCommand(const QModelIndex &index,
                                                               const QEvent *event) const
{
    if (event)
        return QTableView::selectionCommand(index, event);
    return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}

} // namespace sondrel
