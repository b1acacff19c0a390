// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QTreeWidget>

namespace sondrel {

/// A list of URLs in one column, of which several rows can be selected. Delete and Space are told to its
/// owner.
class UrlListView final : public QTreeWidget
{
    Q_OBJECT

public:
    explicit UrlListView(QWidget *parent = nullptr);

    /// What an empty list says in its middle.
    void setHint(const QString &hint);

    std::vector<bool> selectedRows() const;
    bool hasSelection() const { return !selectedItems().isEmpty(); }
    /// Removes the selected rows, last one first, and selects the first one left.
    void removeSelectedRows();

Q_SIGNALS:
    void deletePressed();
    void spacePressed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_hint;
};

} // namespace sondrel
