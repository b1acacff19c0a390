// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QTreeWidget>

namespace sondrel {

/// A list of plain rows that says something in its middle while it is empty. The Delete key is told to its
/// owner.
class HintTree : public QTreeWidget
{
    Q_OBJECT

public:
    HintTree(const QString &name, const QStringList &columns, QWidget *parent = nullptr);

    /// What the empty list says.
    void setHint(const QString &hint);
    /// Texts for a new row at the end.
    QTreeWidgetItem *addRow(const QStringList &texts);
    /// Makes one row the current and the only selected one; nothing when there is no such row.
    void selectRow(int row);

Q_SIGNALS:
    void deletePressed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_hint;
};

} // namespace sondrel
