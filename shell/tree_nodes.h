// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

class QTreeWidget;
class QTreeWidgetItem;

namespace sondrel {

/// The key of a tree's node; no two nodes of a tree have the same.
QString nodeKey(const QTreeWidgetItem *node);
void setNodeKey(QTreeWidgetItem &node, const QString &key);

/// The node of that key, without regard to case; null when there is none.
QTreeWidgetItem *findNode(const QTreeWidget &tree, const QString &key);

/// Adds a top-level node with the key "Root" + text, labelled with the text; null when there is one of that
/// key.
QTreeWidgetItem *AddRootNode(const QString &text, QTreeWidget &tree);

} // namespace sondrel
