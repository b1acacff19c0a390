#include "shell/url_list_view.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

UrlListView::UrlListView(QWidget *parent) : QTreeWidget(parent)
{
    setObjectName(u"lvwURLs"_s);
    setColumnCount(1);
    setHeaderLabels({tr("URLs")});
    header()->setStretchLastSection(true);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setTextElideMode(Qt::ElideMiddle);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setTabKeyNavigation(false);
}

void UrlListView::setHint(const QString &hint)
{
    m_hint = hint;
    setAccessibleDescription(hint);
    viewport()->update();
}

std::vector<bool> UrlListView::selectedRows() const
{
    std::vector<bool> selected;
    for (int row = 0; row < topLevelItemCount(); ++row)
        selected.push_back(topLevelItem(row)->isSelected());
    return selected;
}

void UrlListView::removeSelectedRows()
{
    for (int row = topLevelItemCount() - 1; row >= 0; --row) {
        if (topLevelItem(row)->isSelected())
            delete takeTopLevelItem(row);
    }
    clearSelection();
    if (QTreeWidgetItem *first = topLevelItem(0)) {
        setCurrentItem(first);
        first->setSelected(true);
    }
}

void UrlListView::keyPressEvent(QKeyEvent *event)
{
    const bool plain = event->modifiers() == Qt::NoModifier;
    if (plain && event->key() == Qt::Key_Delete)
        Q_EMIT deletePressed();
    else if (plain && event->key() == Qt::Key_Space)
        Q_EMIT spacePressed();
    else
        QTreeWidget::keyPressEvent(event);
}

void UrlListView::paintEvent(QPaintEvent *event)
{
    QTreeWidget::paintEvent(event);
    if (topLevelItemCount() > 0 || m_hint.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int margin = fontMetrics().height();
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                     Qt::AlignCenter | Qt::TextWordWrap, m_hint);
}

} // namespace sondrel
