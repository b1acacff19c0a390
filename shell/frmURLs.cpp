#include "shell/frmURLs.h"

#include "shell/dialog_controls.h"
#include "shell/plain_tip.h"
#include "shell/tree_nodes.h"
#include "shell/url_list_view.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// Sorts without regard to case.
class UrlRow final : public QTreeWidgetItem
{
public:
    using QTreeWidgetItem::QTreeWidgetItem;
    bool operator<(const QTreeWidgetItem &other) const override
    {
        return folded(text(0)) < folded(other.text(0));
    }
};

} // namespace

bool askToRemoveURLs(ApplicationContext &app)
{
    return app.desktop.showMessage({u"URLs"_s, u"Are you sure you want to remove selected URLs?"_s,
                                    MessageIcon::None, MessageButtons::YesNo}) == MessageAnswer::Yes;
}

frmURLs::frmURLs(ApplicationContext &app, QWidget *parent) : ProgramDialog(app, u"frmURLs"_s, parent)
{
    setWindowTitle(tr("Add Web Site"));
    m_typed = newLineEdit(u"txtURLs"_s);
    m_typed->setPlaceholderText(u"www.site.example"_s);
    m_typed->setClearButtonEnabled(true);
    m_add = newButton(u"cmdAdd"_s, tr("&Add"), tr("Add the URL to the list"));
    m_urls = new UrlListView;
    m_urls->header()->setSectionsClickable(true);
    m_urls->setHint(tr("No URL is known yet. Type one above and add it."));
    m_urls->setToolTip(tr("The checked URLs are those of the project"));
    m_urls->setAccessibleName(tr("Known URLs"));
    m_delete = newButton(u"cmdDelete"_s, tr("&Delete"),
                         tr("Remove the selected URLs from the list, for all projects"));

    auto *layout = new QVBoxLayout(this);
    auto *typedRow = new QHBoxLayout;
    typedRow->addWidget(newCaption(tr("Web site:"), m_typed));
    typedRow->addWidget(m_typed, 1);
    typedRow->addWidget(m_add);
    auto *side = new QVBoxLayout;
    side->addWidget(m_delete);
    side->addStretch();
    auto *listRow = new QHBoxLayout;
    listRow->addWidget(m_urls, 1);
    listRow->addLayout(side);
    layout->addLayout(typedRow);
    layout->addLayout(listRow, 1);
    QDialogButtonBox *buttons = newButtons([this] { acceptForm(); }); // last, in the order of Tab too
    m_ok = buttons->findChild<QPushButton *>(u"cmdOK"_s);
    layout->addWidget(buttons);

    connect(m_typed, &QLineEdit::textChanged, this, &frmURLs::UpdateUI);
    connect(m_urls, &QTreeWidget::itemSelectionChanged, this, &frmURLs::UpdateUI);
    connect(m_urls, &UrlListView::deletePressed, this, [this] {
        if (m_delete->isEnabled())
            DeleteURL();
    });
    connect(m_urls, &UrlListView::spacePressed, this, &frmURLs::toggleChecks);
    connect(m_urls->header(), &QHeaderView::sectionClicked, this, &frmURLs::sortRows);
    connect(m_add, &QPushButton::clicked, this, &frmURLs::addTyped);
    connect(m_delete, &QPushButton::clicked, this, &frmURLs::DeleteURL);
}

void frmURLs::load()
{
    reportFailure(app(), u"frmURL_Prepare error:  "_s, [&] {
        for (const KnownURL &row : loadKnownURLs(app(), &m_collection))
            addRow(row);
        m_known = true;
    });
    UpdateUI();
    m_typed->setFocus();
}

QTreeWidgetItem *frmURLs::addRow(const KnownURL &row)
{
    auto *item = new UrlRow(m_urls, {row.URL});
    setNodeKey(*item, row.URL);
    item->setCheckState(0, row.Checked ? Qt::Checked : Qt::Unchecked);
    item->setToolTip(0, plainTip(row.URL));
    return item;
}

std::vector<KnownURL> frmURLs::rows() const
{
    std::vector<KnownURL> rows;
    for (int row = 0; row < m_urls->topLevelItemCount(); ++row) {
        const QTreeWidgetItem &item = *m_urls->topLevelItem(row);
        rows.push_back({item.text(0), item.checkState(0) == Qt::Checked});
    }
    return rows;
}

void frmURLs::addTyped()
{
    reportFailure(app(), u"frmURLs_cmdAdd_Click error: "_s, [&] {
        const auto url = typedURL(app(), m_typed->text());
        if (!url) {
            app().desktop.showMessage({windowTitle(), u"Invalid URL."_s, MessageIcon::Critical});
            m_typed->selectAll();
        } else {
            QTreeWidgetItem *known = findNode(*m_urls, *url);
            QTreeWidgetItem *row = known ? known : addRow({*url, true});
            row->setCheckState(0, Qt::Checked);
            m_urls->scrollToItem(row);
            m_typed->clear();
        }
        m_typed->setFocus();
    });
}

void frmURLs::DeleteURL()
{
    reportFailure(app(), u"frmURLs_DeleteURL error:  "_s, [&] {
        if (askToRemoveURLs(app()))
            m_urls->removeSelectedRows();
    });
    UpdateUI();
}

// All selected rows get what the one in the focus changes to.
void frmURLs::toggleChecks()
{
    const QTreeWidgetItem *current = m_urls->currentItem();
    if (!current)
        return;
    const Qt::CheckState state = current->checkState(0) == Qt::Checked ? Qt::Unchecked : Qt::Checked;
    for (QTreeWidgetItem *row : m_urls->selectedItems())
        row->setCheckState(0, state);
}

void frmURLs::sortRows()
{
    m_order = m_order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    m_urls->header()->setSortIndicatorShown(true);
    m_urls->header()->setSortIndicator(0, m_order);
    m_urls->sortItems(0, m_order);
}

void frmURLs::UpdateUI()
{
    const bool typed = !m_typed->text().isEmpty();
    m_add->setEnabled(typed);
    m_delete->setEnabled(m_urls->hasSelection());
    // Enter adds what has been typed; with nothing typed it closes the dialog.
    m_add->setAutoDefault(typed);
    m_add->setDefault(typed);
    m_ok->setDefault(!typed);
}

void frmURLs::SaveForm()
{
    reportFailure(app(), u"frmURLs_SaveForm error:  "_s, [&] {
        const std::vector<KnownURL> all = rows();
        m_collection = checkedURLs(all);
        if (m_known)
            saveKnownURLs(app(), all);
    });
}

void frmURLs::acceptForm()
{
    reportFailure(app(), u"frmURLs_cmdOK_Click: "_s, [&] {
        SaveForm();
        accept();
    });
}

} // namespace sondrel
