#include "shell/frmSondrel.h"

#include "core/text_fold.h"
#include "shell/hint_page.h"
#include "shell/row_table.h"

#include <QSplitter>
#include <QStackedLayout>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

frmSondrel::frmSondrel(ApplicationContext &app, const OfferedCommands &offered, QWidget *parent)
    : QWidget(parent),
      m_app(app),
      m_offered(offered),
      m_session(std::make_unique<LookupSession>(app)),
      m_model(new KeywordModel(app, this)),
      m_listingModel(new ListingModel(app, this)),
      m_splitter(new QSplitter(Qt::Vertical, this))
{
    setObjectName(u"frmSondrel"_s);
    m_splitter->setChildrenCollapsible(false);
    buildGrid();
    buildListings();
    connectGrid();
    m_splitter->setStretchFactor(0, 3);
    m_splitter->setStretchFactor(1, 2);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_splitter);
    connect(m_session.get(), &LookupSession::rowsChanged, this,
            [this] { showRowOf(m_session->FirstKeyword()); });
    connect(m_session.get(), &LookupSession::stateChanged, this, &frmSondrel::followRun);
    restoreColumns();
    showHints();
}

frmSondrel::~frmSondrel()
{
    m_session->disconnect(this);
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
    });
    PopulateKeywords();
}

void frmSondrel::PopulateKeywords()
{
    showRowOf(m_shownKeyword);
}

void frmSondrel::showRowOf(const QString &keyword)
{
    m_listingModel->setListings({});
    m_filling = true;
    const int row = m_model->PopulateKeywords(keyword);
    if (row >= 0)
        m_grid->selectRow(row);
    m_filling = false;
    m_shownRow = -1;
    showCurrentRow();
    Q_EMIT factsChanged();
}

// A run over all keywords begins without the further hits of the last one.
void frmSondrel::followRun()
{
    if (Online() && m_session->lookupKind() == LookupSession::LookupKind::All)
        PopulateKeywords();
    else
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
        if (current.isValid())
            m_shownKeyword = m_model->cell(m_shownRow, GridField::Keyword);
        ShowKeywordResults();
    });
    showHints();
}

void frmSondrel::ShowKeywordResults()
{
    m_listingModel->setListings({});
    if (m_shownRow < 0)
        return;
    try {
        m_listingModel->setListings(loadListings(m_app, EngineName(), m_shownKeyword), EngineName());
    } catch (const std::exception &) {
        if (Online()) // whose files are being written
            m_app.desktop.showMessage(
                {m_app.deployment.Title,
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
void frmSondrel::showHints()
{
    const bool anyRow = m_model->rowCount() > 0;
    const qsizetype keywords = m_session->Keywords->Count();
    if (keywords == 1)
        m_gridHint->setHint(tr("The box of the only keyword is unchecked, so it is not shown."),
                            m_offered.showAll);
    else if (keywords > 1)
        m_gridHint->setHint(tr("The boxes of all %1 keywords are unchecked, so none is shown.").arg(keywords),
                            m_offered.showAll);
    else
        m_gridHint->setHint(tr("This project has no keywords yet."), m_offered.addKeywords);
    QWidget *shown = anyRow ? static_cast<QWidget *>(m_grid) : m_gridHint;
    m_gridStack->setCurrentWidget(shown);
    setFocusProxy(shown);

    if (m_shownRow < 0)
        m_listingHint->setHint(anyRow ? tr("Select a keyword to see the listings of its last lookup.")
                                      : QString());
    else
        m_listingHint->setHint(tr("There are no listings of this keyword on %1 yet.").arg(EngineName()),
                               m_offered.lookupSelected);
    const bool anyListing = m_listingModel->rowCount() > 0;
    m_listingStack->setCurrentWidget(anyListing ? static_cast<QWidget *>(m_listings) : m_listingHint);
}

void frmSondrel::ShowURLPosition(const QString &url)
{
    const std::vector<Listing> listings = m_listingModel->listings(); // a copy: events run in between
    if (listings.empty())
        return;
    m_listings->clearSelection();
    for (std::size_t i = 0; i < listings.size(); ++i) {
        const int row = static_cast<int>(i);
        const QStringView found = trimBlanks(listings[i].URL);
        if (row < m_listingModel->rowCount() &&
            (containsIgnoringCase(found, url) || containsIgnoringCase(url, found))) {
            const QModelIndex first = m_listingModel->index(row, 0);
            if (!m_listings->selectionModel()->hasSelection())
                m_listings->setCurrentIndex(first);
            m_listings->selectionModel()->select(first,
                                                 QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
        m_app.desktop.runPendingEvents();
    }
    m_listings->setFocus();
}

void frmSondrel::addFacts(CommandFacts &facts) const
{
    facts.hasGrid = true;
    facts.lookupRuns = Online();
    facts.hasListings = m_listingModel->rowCount() > 0;
    facts.hasCopied = !m_copied.isEmpty();
    facts.dataRows = m_model->rowCount();
    facts.selectedRows = m_grid->selectedRowCount();
}

void frmSondrel::unload()
{
    m_session->unload();
    storeColumns();
}

} // namespace sondrel
