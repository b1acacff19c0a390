// The building of the keyword grid, its columns, and the list under it.
#include "shell/frmSondrel.h"

#include "core/registry.h"
#include "shell/grid_delegates.h"
#include "shell/hint_page.h"
#include "shell/row_table.h"

#include <QAction>
#include <QFontMetrics>
#include <QHeaderView>
#include <QShortcut>
#include <QSplitter>
#include <QStackedLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString ColumnOrderValue = u"ColumOrder"_s;
const QString ColumnWidthsValue = u"ColumnWidths"_s;
const QString ListHeightsValue = u"ListHeights"_s;
constexpr int LeastWidth = 8; // of a column, in units of the screen
constexpr int MostWidth = 4000;

// Numbers joined by ","; what is none, written by hand perhaps, gives no list.
QList<int> numbersOf(const QString &text)
{
    QList<int> numbers;
    for (const QString &part : text.split(u',')) {
        bool isNumber = false;
        numbers.append(part.toInt(&isNumber));
        if (!isNumber)
            return {};
    }
    return numbers;
}

QString textOf(const QList<int> &numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts.append(QString::number(number));
    return texts.join(u',');
}

// Widths in characters, so that they follow the font.
int widthOf(const QFontMetrics &metrics, GridField field)
{
    static const std::array<int, GridFieldCount> characters{8, 28, 12, 12, 9, 16, 12, 24, 15};
    return metrics.averageCharWidth() * characters[static_cast<std::size_t>(field)];
}

} // namespace

void frmSondrel::buildGrid()
{
    auto *place = new QWidget(m_splitter);
    m_gridStack = new QStackedLayout(place);
    m_grid = new RowTable(u"grdBidsManage"_s, tr("Keywords"), place);
    m_grid->setModel(m_model);
    m_grid->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_grid->setEditTriggers(QAbstractItemView::DoubleClicked);
    m_grid->setItemDelegate(new CellDelegate(m_grid));
    m_grid->setItemDelegateForColumn(static_cast<int>(GridField::Show), new ShowDelegate(m_grid));
    m_grid->setItemDelegateForColumn(static_cast<int>(GridField::Change), new ChangeDelegate(m_grid));
    m_grid->setItemDelegateForColumn(static_cast<int>(GridField::URL), new MiddleElidingDelegate(m_grid));
    QHeaderView *header = m_grid->horizontalHeader();
    header->setSectionsMovable(true);
    header->setFirstSectionMovable(true);
    header->setAccessibleName(tr("Columns of the keywords"));
    m_gridHint = new HintPage(u"lblGridHint"_s, u"cmdGridHint"_s, place);
    m_gridStack->addWidget(m_grid);
    m_gridStack->addWidget(m_gridHint);
    m_splitter->addWidget(place);
}

void frmSondrel::connectGrid()
{
    connect(m_grid->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!m_filling)
            Q_EMIT factsChanged();
    });
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &frmSondrel::showCurrentRow);
    connect(m_grid, &RowTable::resized, this, &frmSondrel::fitUrlColumn);
    connect(m_grid->horizontalHeader(), &QHeaderView::sectionResized, this,
            [this] { m_widthsKept |= !m_fitting && isVisible(); });
    connect(m_splitter, &QSplitter::splitterMoved, this, [this] { m_heightsKept = true; });
    connect(m_grid, &RowTable::rowEntered, this, [this] {
        if (m_listingModel->rowCount() == 0)
            return;
        m_listings->setFocus();
        if (!m_listings->currentIndex().isValid())
            m_listings->selectRow(0);
    });
    const auto key = [this](Qt::Key key, void (frmSondrel::*slot)()) {
        auto *shortcut = new QShortcut(QKeySequence(key), m_grid, nullptr, nullptr, Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, slot);
    };
    key(Qt::Key_Space, &frmSondrel::toggleShown);
    key(Qt::Key_F2, &frmSondrel::startRename);
    // From the event loop: an edit is still in the middle of its own end.
    connect(m_model, &KeywordModel::keywordsCleaned, this, &frmSondrel::tellOfCleaning, Qt::QueuedConnection);
    connect(m_model, &KeywordModel::nameTaken, this, &frmSondrel::tellOfTakenName, Qt::QueuedConnection);
}

void frmSondrel::buildListings()
{
    auto *place = new QWidget(m_splitter);
    m_listingStack = new QStackedLayout(place);
    m_listings = new RowTable(u"lvwRanking"_s, tr("Listings of the keyword"), place);
    m_listings->setModel(m_listingModel);
    m_listings->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_listings->setItemDelegate(new ListingDelegate(m_listings));
    m_listings->setToolTip(u"Red color indicates your URL, Green color indicates your competitor's URL."_s);
    m_listings->horizontalHeader()->setAccessibleName(tr("Columns of the listings"));
    m_listings->horizontalHeader()->setSectionResizeMode(ListingModel::Url, QHeaderView::Stretch);
    m_listings->setColumnWidth(ListingModel::Number, QFontMetrics(font()).averageCharWidth() * 9);
    m_listingHint = new HintPage(u"lblListingHint"_s, u"cmdListingHint"_s, place);
    m_listingStack->addWidget(m_listings);
    m_listingStack->addWidget(m_listingHint);
    m_splitter->addWidget(place);
    connect(m_listings, &RowTable::resized, this, &frmSondrel::shareWidth);
    connect(m_listings, &QTableView::doubleClicked, this, &frmSondrel::openListing);
    connect(m_listings, &RowTable::rowEntered, this, [this] { openListing(m_listings->currentIndex()); });
}

// The title takes three fifths of what the number leaves, the URL the rest.
void frmSondrel::shareWidth()
{
    const int rest = m_listings->viewport()->width() - m_listings->columnWidth(ListingModel::Number);
    m_listings->setColumnWidth(ListingModel::Title, rest * 3 / 5);
}

// Until the user has dragged a width, the URL column takes what the others leave, but not less than its own.
void frmSondrel::fitUrlColumn()
{
    if (m_widthsKept)
        return;
    int others = 0;
    for (int field = 0; field < GridFieldCount; ++field)
        others += field == static_cast<int>(GridField::URL) ? 0 : m_grid->columnWidth(field);
    m_fitting = true;
    m_grid->setColumnWidth(
        static_cast<int>(GridField::URL),
        std::max(widthOf(m_grid->fontMetrics(), GridField::URL), m_grid->viewport()->width() - others));
    m_fitting = false;
}

void frmSondrel::addGridAction(QAction *action)
{
    action->setShortcutContext(Qt::WidgetShortcut);
    m_grid->addAction(action);
}

ColumnOrder frmSondrel::columnOrder() const
{
    QStringList headers;
    const QHeaderView *header = m_grid->horizontalHeader();
    for (int column = 0; column < GridFieldCount; ++column)
        headers.append(gridHeader(static_cast<GridField>(header->logicalIndex(column))));
    return ColumnOrder::fromHeaders(headers);
}

// In characters, so that the widths follow the font, unless the user has dragged them.
void frmSondrel::FormatColum()
{
    reportFailure(m_app, u"frmSondrel_FormatColum error   "_s, [&] {
        const QFontMetrics metrics(m_grid->font());
        const QList<int> kept = numbersOf(GetRegistryText(m_app, m_app.RegPreference, ColumnWidthsValue, {}));
        m_widthsKept = kept.size() == GridFieldCount;
        for (int field = 0; field < GridFieldCount; ++field)
            m_grid->setColumnWidth(field, m_widthsKept ? std::clamp(kept[field], LeastWidth, MostWidth)
                                                       : widthOf(metrics, static_cast<GridField>(field)));
    });
}

void frmSondrel::restoreColumns()
{
    FormatColum();
    reportFailure(m_app, u"frmSondrel_FormLoad error:  "_s, [&] {
        const ColumnOrder order =
            ColumnOrder::parse(GetRegistryText(m_app, m_app.RegPreference, ColumnOrderValue, {}));
        QHeaderView *header = m_grid->horizontalHeader();
        for (int column = 0; column < GridFieldCount; ++column)
            header->moveSection(header->visualIndex(static_cast<int>(order.fieldAt(column))), column);
        const QList<int> heights =
            numbersOf(GetRegistryText(m_app, m_app.RegPreference, ListHeightsValue, u"300,200"_s));
        if (heights.size() == 2)
            m_splitter->setSizes(heights);
    });
}

void frmSondrel::storeColumns()
{
    const auto store = [this](const QString &name, const QString &value) {
        SetRegistryValue(m_app, m_app.RegPreference, name, RegistryString, value);
    };
    CreateRegistryKey(m_app, m_app.RegPreference);
    store(ColumnOrderValue, columnOrder().stored());
    if (m_widthsKept) {
        QList<int> widths;
        for (int field = 0; field < GridFieldCount; ++field)
            widths.append(m_grid->columnWidth(field));
        store(ColumnWidthsValue, textOf(widths));
    }
    if (m_heightsKept)
        store(ListHeightsValue, textOf(m_splitter->sizes()));
}

} // namespace sondrel
