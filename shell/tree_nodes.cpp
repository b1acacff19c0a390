#include "shell/tree_nodes.h"

#include "core/text_fold.h"
#include "shell/project_tree.h"

#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <memory>

namespace sondrel {

namespace {

constexpr int KeyRole = Qt::UserRole;

} // namespace

QString nodeKey(const QTreeWidgetItem *node)
{
    return node ? node->data(0, KeyRole).toString() : QString();
}

void setNodeKey(QTreeWidgetItem &node, const QString &key)
{
    node.setData(0, KeyRole, key);
}

QTreeWidgetItem *findNode(const QTreeWidget &tree, const QString &key)
{
    // The iterator wants a tree that it could change.
    for (QTreeWidgetItemIterator it(const_cast<QTreeWidget *>(&tree)); *it; ++it) {
        if (equalsIgnoringCase(nodeKey(*it), key))
            return *it; // cppcheck-suppress identicalInnerCondition; not a condition but the node
    }
    return nullptr;
}

QTreeWidgetItem *AddRootNode(const QString &text, QTreeWidget &tree)
{
    const QString key = marketKey(text);
    if (findNode(tree, key))
        return nullptr;
    auto node = std::make_unique<QTreeWidgetItem>(QStringList{text});
    setNodeKey(*node, key);
    tree.addTopLevelItem(node.get());
    return node.release();
}

} // namespace sondrel
