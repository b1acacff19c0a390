#include "shell/frmSondrel.h"

#include "core/clsFileController.h"
#include "core/modCommon.h"
#include "core/registry.h"
#include "core/text_fold.h"
#include "shell/grid_delegates.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QLabel>
#include <QShortcut>
#include <QSplitter>
#include <QStackedLayout>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString ColumnOrderValue = u"ColumOrder"_s;

QTableView *newTable(QWidget *parent, const QString &name, const QString &accessibleName)
{
    auto *table = new QTableView(parent);
    table->setObjectName(name);
    table->setAccessibleName(accessibleName);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setAlternatingRowColors(true);
    table->setShowGrid(false);
    table->setWordWrap(false);
    table->setTabKeyNavigation(false);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->verticalHeader()->hide();
    // One height for all rows, a line and a little air: a view of 50,000 rows must not measure each.
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(QFontMetrics(table->font()).height() * 3 / 2);
    table->horizontalHeader()->setHighlightSections(false);
    return table;
}

QLabel *newHint(QWidget *parent, const QString &name)
{
    auto *label = new QLabel(parent);
    label->setObjectName(name);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setMargin(24);
    label->setForegroundRole(QPalette::PlaceholderText);
    label->setBackgroundRole(QPalette::Base);
    label->setAutoFillBackground(true);
    return label;
}

// Widths in characters, so that they follow the font.
int widthOf(const QFontMetrics &metrics, GridField field)
{
    static const std::array<int, GridFieldCount> characters{8, 30, 11, 11, 8, 15, 11, 44, 14};
    return metrics.averageCharWidth() * characters[static_cast<std::size_t>(field)];
}

} // namespace

frmSondrel::frmSondrel(ApplicationContext &app, QWidget *parent)
    : QWidget(parent),
      m_app(app),
      m_session(std::make_unique<LookupSession>(app)),
      m_model(new KeywordModel(app, this)),
      m_listingModel(new ListingModel(app, this))
{
    setObjectName(u"frmSondrel"_s);
    m_splitter = new QSplitter(Qt::Vertical, this);
    m_splitter->setChildrenCollapsible(false);
    buildGrid();
    buildListings();
    m_splitter->setStretchFactor(0, 3);
    m_splitter->setStretchFactor(1, 2);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_splitter);
    connect(m_session.get(), &LookupSession::rowsChanged, this, &frmSondrel::PopulateKeywords);
    connect(m_session.get(), &LookupSession::stateChanged, this, &frmSondrel::factsChanged);
    restoreColumns();
    showHint();
}

frmSondrel::~frmSondrel() = default;

void frmSondrel::buildGrid()
{
    auto *place = new QWidget(m_splitter);
    m_gridStack = new QStackedLayout(place);
    m_grid = newTable(place, u"grdBidsManage"_s, tr("Keywords"));
    m_grid->setModel(m_model);
    m_grid->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_grid->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked);
    m_grid->setItemDelegate(new CellDelegate(m_grid));
    m_grid->setItemDelegateForColumn(static_cast<int>(GridField::Show), new ShowDelegate(m_grid));
    m_grid->setItemDelegateForColumn(static_cast<int>(GridField::Change), new ChangeDelegate(m_grid));
    m_grid->setItemDelegateForColumn(static_cast<int>(GridField::URL), new MiddleElidingDelegate(m_grid));
    m_grid->horizontalHeader()->setSectionsMovable(true);
    m_grid->horizontalHeader()->setFirstSectionMovable(true);
    m_grid->horizontalHeader()->setAccessibleName(tr("Columns of the keywords"));
    m_gridHint = newHint(place, u"lblGridHint"_s);
    m_gridStack->addWidget(m_grid);
    m_gridStack->addWidget(m_gridHint);
    m_splitter->addWidget(place);
    connect(m_grid->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!m_filling)
            Q_EMIT factsChanged();
    });
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &frmSondrel::showCurrentRow);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *open = new QShortcut(QKeySequence(key), m_grid, nullptr, nullptr, Qt::WidgetShortcut);
        connect(open, &QShortcut::activated, this, [this] {
            if (m_listingModel->rowCount() > 0) {
                m_listings->setFocus();
                if (!m_listings->currentIndex().isValid())
                    m_listings->selectRow(0);
            }
        });
    }
}

void frmSondrel::buildListings()
{
    auto *place = new QWidget(m_splitter);
    m_listingStack = new QStackedLayout(place);
    m_listings = newTable(place, u"lvwRanking"_s, tr("Listings of the keyword"));
    m_listings->setModel(m_listingModel);
    m_listings->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_listings->setItemDelegate(new ListingDelegate(m_listings));
    m_listings->setToolTip(u"Red color indicates your URL, Green color indicates your competitor's URL."_s);
    m_listings->horizontalHeader()->setAccessibleName(tr("Columns of the listings"));
    m_listings->horizontalHeader()->setSectionResizeMode(ListingModel::Url, QHeaderView::Stretch);
    m_listings->setColumnWidth(ListingModel::Number, QFontMetrics(font()).averageCharWidth() * 9);
    m_listings->setColumnWidth(ListingModel::Title, QFontMetrics(font()).averageCharWidth() * 60);
    m_listingHint = newHint(place, u"lblListingHint"_s);
    m_listingStack->addWidget(m_listings);
    m_listingStack->addWidget(m_listingHint);
    m_splitter->addWidget(place);
    connect(m_listings, &QTableView::doubleClicked, this, &frmSondrel::openListing);
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *open = new QShortcut(QKeySequence(key), m_listings, nullptr, nullptr, Qt::WidgetShortcut);
        connect(open, &QShortcut::activated, this, [this] { openListing(m_listings->currentIndex()); });
    }
}

void frmSondrel::setAccount(std::shared_ptr<clsAccount> account)
{
    m_session->Account = std::move(account);
}

void frmSondrel::setEngineName(const QString &engineName)
{
    m_session->EngineName = engineName;
}

bool frmSondrel::KeywordsCount() const
{
    return m_model->rowCount() > 0;
}

void frmSondrel::ResetForm()
{
    reportFailure(m_app, u"frmSondrel_ResetForm error: "_s, [&] {
        const WaitCursor wait(m_app.desktop);
        setWindowTitle(AccountName() + u" - "_s + EngineName());
        m_model->setKeywords(nullptr);
        m_session->open();
        m_model->setKeywords(m_session->Keywords.get());
        m_shownRow = -1;
        PopulateKeywords();
    });
}

void frmSondrel::PopulateKeywords()
{
    const QString remembered = m_session->Online() || !m_session->FirstKeyword().isEmpty()
                                   ? m_session->FirstKeyword()
                                   : m_shownKeyword;
    m_listingModel->setListings({});
    m_filling = true;
    const int row = m_model->PopulateKeywords(remembered);
    m_shownRow = -1;
    if (row >= 0)
        m_grid->selectRow(row);
    m_filling = false;
    showCurrentRow();
    Q_EMIT factsChanged();
}

void frmSondrel::showCurrentRow()
{
    if (m_filling)
        return;
    reportFailure(m_app, u"frmSondrel_grdBidsManage_AfterSelChange:  "_s, [&] {
        const QModelIndex current = m_grid->currentIndex();
        if (current.isValid() && current.row() == m_shownRow)
            return;
        m_shownRow = current.isValid() ? current.row() : -1;
        m_shownKeyword = current.isValid() ? m_model->cell(m_shownRow, GridField::Keyword) : QString();
        ShowKeywordResults();
    });
    showHint();
}

void frmSondrel::ShowKeywordResults()
{
    m_listingModel->setListings({});
    if (m_shownRow < 0)
        return;
    try {
        m_listingModel->setListings(loadListings(m_app, EngineName(), m_shownKeyword));
    } catch (const std::exception &) {
        if (Online())
            m_app.desktop.showMessage(
                {windowTitle(),
                 u"The program is retrieving data from the internet. Please try again later."_s,
                 MessageIcon::Exclamation, MessageButtons::Ok});
        m_app.WriteErrorLog(u"Error occured while loading ranking results."_s);
        return;
    }
    if (m_listingModel->rowCount() > 0)
        HightLightResultURL();
}

void frmSondrel::HightLightResultURL()
{
    m_listingModel->HightLightResultURL(Account() && Account()->URLs ? &*Account()->URLs : nullptr);
}

// An empty area says what to do next.
void frmSondrel::showHint()
{
    const bool anyRow = m_model->rowCount() > 0;
    const bool anyKeyword = m_session->Keywords->Count() > 0;
    m_gridHint->setText(
        anyKeyword ? tr("No keyword has its box checked. Choose Show > Show All Keywords to see all %n.",
                        nullptr, static_cast<int>(m_session->Keywords->Count()))
                   : tr("This project has no keywords yet. Choose Keywords > Add Keywords to add some."));
    m_gridStack->setCurrentWidget(anyRow ? static_cast<QWidget *>(m_grid) : m_gridHint);
    const bool anyListing = m_listingModel->rowCount() > 0;
    m_listingHint->setText(m_shownRow < 0
                               ? tr("Select a keyword to see the listings of its last lookup.")
                               : tr("This keyword has not been looked up on %1 yet.").arg(EngineName()));
    m_listingStack->setCurrentWidget(anyListing ? static_cast<QWidget *>(m_listings) : m_listingHint);
}

void frmSondrel::ShowURLPosition(const QString &url)
{
    if (m_listingModel->rowCount() == 0)
        return;
    m_listings->clearSelection();
    const QString wanted = trimBlanks(url).toString();
    const auto &listings = m_listingModel->listings();
    QItemSelection selection;
    for (std::size_t i = 0; i < listings.size(); ++i) {
        const QString found = trimBlanks(listings[i].URL).toString();
        if (containsIgnoringCase(found, wanted) || containsIgnoringCase(wanted, found)) {
            const int row = static_cast<int>(i);
            selection.select(m_listingModel->index(row, 0), m_listingModel->index(row, ListingModel::Url));
        }
    }
    m_listings->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (!selection.isEmpty())
        m_listings->scrollTo(selection.indexes().first());
    m_app.desktop.runPendingEvents();
    m_listings->setFocus();
}

std::vector<int> frmSondrel::selectedRows() const
{
    std::vector<int> rows;
    for (const QModelIndex &index : m_grid->selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void frmSondrel::addFacts(CommandFacts &facts) const
{
    facts.hasGrid = true;
    facts.lookupRuns = Online();
    facts.hasListings = m_listingModel->rowCount() > 0;
    facts.hasCopied = !m_copied.isEmpty();
    facts.dataRows = m_model->rowCount();
    int selected = 0;
    for (const QItemSelectionRange &range : m_grid->selectionModel()->selection())
        selected += range.height();
    facts.selectedRows = selected;
}

void frmSondrel::mnuKeywordsItemClick(int number)
{
    switch (number) {
    case 2:
        DeleteSelectedKeywords();
        break;
    case 4:
        CopyKeywords();
        return;
    case 5:
        if (!m_copied.isEmpty())
            AddKeywordColToGrid(m_copied);
        break;
    case 8:
        Exportkeywords();
        return;
    default:
        break; // a command that only saves
    }
    m_session->Keywords->SaveKeywordResults();
    m_session->Keywords->SaveKeywords();
}

void frmSondrel::mnuRunMenuBidsItemsClick(int number)
{
    if (number == 1)
        LookUpSelectedKeyword();
    else if (number == 2)
        m_session->LookupALLKeyword();
    else if (number == 5)
        m_session->Disconnect();
}

void frmSondrel::LookUpSelectedKeyword()
{
    std::vector<SelectedRow> selection;
    for (const int row : selectedRows())
        selection.push_back({m_model->cell(row, GridField::Keyword), m_model->shown(row)});
    m_session->LookUpSelectedKeyword(KeywordsCount(), selection);
}

void frmSondrel::ShowButtonItemsClick(int number)
{
    m_model->filter = number == 1 ? ViewFilter::All : ViewFilter::Optimized;
    PopulateKeywords();
}

void frmSondrel::AddKeywordColToGrid(const QStringList &texts)
{
    m_model->AddKeywordColToGrid(texts);
    showHint();
    Q_EMIT factsChanged();
}

void frmSondrel::DeleteSelectedKeywords()
{
    const std::vector<int> rows = selectedRows();
    if (rows.empty())
        return;
    const MessageAnswer answer = m_app.desktop.showMessage(
        {u"Delete Keyword"_s, u"Are you sure you want to delete selected Keyword(s)?"_s,
         MessageIcon::Question, MessageButtons::YesNo});
    if (answer != MessageAnswer::Yes)
        return;
    m_filling = true;
    m_model->removeKeywords(rows);
    m_filling = false;
    m_shownRow = -1;
    if (const int left = m_model->rowCount(); left > 0)
        m_grid->selectRow(std::min(rows.front(), left - 1));
    showCurrentRow();
    Q_EMIT factsChanged();
}

void frmSondrel::CopyKeywords()
{
    reportFailure(m_app, u"frmAuto_CopyKeywords error :  "_s, [&] {
        const std::vector<int> rows = selectedRows();
        if (rows.empty())
            return;
        m_copied.clear();
        for (const int row : rows)
            m_copied.append(m_model->cell(row, GridField::Keyword));
        Q_EMIT factsChanged();
    });
}

void frmSondrel::Exportkeywords()
{
    reportFailure(m_app, u"frmSondrel_Exportkeywords error:  "_s, [&] {
        if (!KeywordsCount())
            return;
        FileQuestion question{
            FilePick::Save, u"Text files (*.txt)|*.txt|All Files (*.*)|*.*"_s, m_app.AppPath, {}};
        const QString file = m_app.desktop.pickFile(question);
        if (file.isEmpty())
            return;
        QString text = gridHeader(GridField::Keyword) + u"\r\n"_s;
        for (int row = 0; row < m_model->rowCount(); ++row)
            text += m_model->cell(row, GridField::Keyword) + u"\r\n"_s;
        clsFileController(m_app).saveTextFile(file, text);
    });
}

void frmSondrel::openListing(const QModelIndex &index)
{
    reportFailure(m_app, u"frmSondrel_lvwRanking_DblClick error :  "_s, [&] {
        if (!index.isValid())
            return;
        QString url = m_listingModel->listings().at(static_cast<std::size_t>(index.row())).URL;
        if (!containsIgnoringCase(url, u"http://"))
            url.prepend(u"http://"_s);
        ShellOpenDocument(m_app, url, ShowMode::Normal);
    });
}

ColumnOrder frmSondrel::columnOrder() const
{
    QStringList headers;
    const QHeaderView *header = m_grid->horizontalHeader();
    for (int column = 0; column < GridFieldCount; ++column)
        headers.append(gridHeader(static_cast<GridField>(header->logicalIndex(column))));
    return ColumnOrder::fromHeaders(headers);
}

void frmSondrel::restoreColumns()
{
    reportFailure(m_app, u"frmSondrel_FormLoad error:  "_s, [&] {
        const ColumnOrder order =
            ColumnOrder::parse(GetRegistryText(m_app, m_app.RegPreference, ColumnOrderValue, {}));
        QHeaderView *header = m_grid->horizontalHeader();
        for (int column = 0; column < GridFieldCount; ++column) {
            const int field = static_cast<int>(order.fieldAt(column));
            header->moveSection(header->visualIndex(field), column);
        }
        const QFontMetrics metrics(m_grid->font());
        for (int field = 0; field < GridFieldCount; ++field)
            m_grid->setColumnWidth(field, widthOf(metrics, static_cast<GridField>(field)));
    });
}

void frmSondrel::storeColumns()
{
    CreateRegistryKey(m_app, m_app.RegPreference);
    SetRegistryValue(m_app, m_app.RegPreference, ColumnOrderValue, RegistryString, columnOrder().stored());
}

void frmSondrel::unload()
{
    m_session->unload();
    storeColumns();
}

} // namespace sondrel
