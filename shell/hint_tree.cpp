#include "shell/hint_tree.h"

#include "shell/box_delegate.h"
#include "shell/ground_colours.h"
#include "shell/plain_tip.h"

#include <QKeyEvent>
#include <QPainter>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

HintTree::HintTree(const QString &name, const QStringList &columns, QWidget *parent) : QTreeWidget(parent)
{
    setObjectName(name);
    setColumnCount(static_cast<int>(columns.size()));
    setHeaderLabels(columns);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    setItemDelegate(new BoxDelegate(this));
}

void HintTree::setHint(const QString &hint)
{
    m_hint = hint;
    setAccessibleDescription(hint);
    viewport()->update();
}

QTreeWidgetItem *HintTree::addRow(const QStringList &texts)
{
    auto *row = new QTreeWidgetItem(this, texts);
    for (int column = 0; column < columnCount(); ++column)
        row->setToolTip(column, plainTip(texts.value(column)));
    return row;
}

void HintTree::selectRow(int row)
{
    clearSelection();
    if (QTreeWidgetItem *item = topLevelItem(row)) {
        setCurrentItem(item);
        item->setSelected(true);
    }
}

void HintTree::keyPressEvent(QKeyEvent *event)
{
    if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Delete)
        Q_EMIT deletePressed();
    else
        QTreeWidget::keyPressEvent(event);
}

void HintTree::paintEvent(QPaintEvent *event)
{
    QTreeWidget::paintEvent(event);
    if (topLevelItemCount() > 0 || m_hint.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(quietColour(palette()));
    const int margin = fontMetrics().height() / 2;
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignCenter | Qt::TextWordWrap, m_hint);
}

} // namespace sondrel
