#include "shell/url_list_view.h"

#include <QHeaderView>
#include <QKeyEvent>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

UrlListView::UrlListView(QWidget *parent) : HintTree(u"lvwURLs"_s, {tr("URLs")}, parent)
{
    header()->setStretchLastSection(true);
    setTextElideMode(Qt::ElideMiddle);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
}

std::vector<bool> UrlListView::selectedRows() const
{
    std::vector<bool> selected;
    selected.reserve(static_cast<std::size_t>(topLevelItemCount()));
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
    selectRow(0);
}

void UrlListView::keyPressEvent(QKeyEvent *event)
{
    if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Space)
        Q_EMIT spacePressed();
    else
        HintTree::keyPressEvent(event);
}

} // namespace sondrel
