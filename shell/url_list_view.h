// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "shell/hint_tree.h"

#include <vector>

namespace sondrel {

/// A list of URLs in one column, of which several rows can be selected. Space is told to its owner too.
class UrlListView final : public HintTree
{
    Q_OBJECT

public:
    explicit UrlListView(QWidget *parent = nullptr);

    std::vector<bool> selectedRows() const;
    bool hasSelection() const { return !selectedItems().isEmpty(); }
    /// Removes the selected rows, last one first, and selects the first one left.
    void removeSelectedRows();

Q_SIGNALS:
    void spacePressed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

} // namespace sondrel
