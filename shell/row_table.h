// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QTableView>

class QFontMetrics;

namespace sondrel {

/// A table of which whole rows are chosen, all of one height: a text line and a little air. Home and End go
/// to the first and the last row.
class RowTable final : public QTableView
{
    Q_OBJECT

public:
    RowTable(const QString &name, const QString &accessibleName, QWidget *parent = nullptr);

    /// What is left free at either side of a text in a font.
    static int air(const QFontMetrics &metrics);

    /// The rows that are chosen, from top to bottom.
    std::vector<int> selectedRows() const;
    int selectedRowCount() const;

    /// Scrolls to a row, so that as many of those behind it are seen as fit. It may have been added just now.
    void scrollToTop(const QModelIndex &row);

Q_SIGNALS:
    /// Return or Enter has been pressed on a row.
    void rowEntered();
    void resized();

protected:
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;

private:
    void setRowHeight();
};

} // namespace sondrel
