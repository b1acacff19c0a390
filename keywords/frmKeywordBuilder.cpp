#include "keywords/frmKeywordBuilder.h"

#include "core/entered_text.h"
#include "core/profile_file.h"
#include "core/shown_text.h"
#include "core/text_fold.h"
#include "keywords/suggestions.h"
#include "shell/hint_tree.h"

#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int DisconnectInterval = 100;
constexpr int Margin = 22; // pixels that the columns leave to the scroll bar

const QString Title = u"Keyword Builder"_s;

} // namespace

frmKeywordBuilder::frmKeywordBuilder(ApplicationContext &app, QWidget *parent)
    : ProgramDialog(app, u"frmKeywordBuilder"_s, parent),
      m_tmrDisconnect(app.clock.createTimer(DisconnectInterval, [this] { onDisconnectTick(); }))
{
    build();
    connect(m_engine, &QComboBox::currentIndexChanged, this, &frmKeywordBuilder::PopulateListView);
    connect(m_keyword, &QComboBox::currentIndexChanged, this, &frmKeywordBuilder::PopulateListView);
    connect(m_get, &QPushButton::clicked, this, &frmKeywordBuilder::getOrStop);
    connect(m_add, &QPushButton::clicked, this, &frmKeywordBuilder::DoADDToList);
    connect(m_delete, &QPushButton::clicked, this, &frmKeywordBuilder::DoDelete);
    connect(m_close, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_rows, &HintTree::deletePressed, this, [this] {
        if (m_delete->isEnabled())
            DoDelete();
    });
    m_keyword->installEventFilter(this);
    m_keyword->lineEdit()->installEventFilter(this);
    m_rows->viewport()->installEventFilter(this);
}

frmKeywordBuilder::~frmKeywordBuilder() = default;

QString frmKeywordBuilder::engine() const
{
    return m_engine->currentText();
}

QString frmKeywordBuilder::keyword() const
{
    return enteredLine(m_keyword->currentText());
}

void frmKeywordBuilder::Prepare()
{
    PopulateEngine();
    PopulateKeywordComBo();
    PopulateListView();
}

void frmKeywordBuilder::PopulateEngine()
{
    reportFailure(app(), u"frmKeywordBulider_PopulateEngine: "_s, [this] {
        const QString file = app().EngineDataFile;
        if (!app().files.fileExists(file))
            throw Failure(u"The engine data file is missing - "_s + file);
        const QSignalBlocker silent(m_engine);
        m_engine->clear();
        m_engine->addItems(suggestionEngines(ProfileFile::load(app(), file)));
        m_engine->setCurrentIndex(m_engine->count() > 0 ? 0 : -1);
    });
}

void frmKeywordBuilder::PopulateKeywordComBo()
{
    reportFailure(app(), u"frmKeywordBulider_PopulateKeywordComBo: "_s, [this] {
        const QStringList keywords = loadSuggestionKeywords(app());
        m_keywordsKnown = true;
        const QSignalBlocker silent(m_keyword);
        m_keyword->clear();
        m_keyword->addItems(keywords);
        m_keyword->setCurrentIndex(keywords.isEmpty() ? -1 : 0);
    });
}

void frmKeywordBuilder::PopulateListView()
{
    reportFailure(app(), u"frmKeywordBuilder_PopulateListView: "_s, [this] {
        clearRows();
        for (const Suggestion &row : loadSuggestions(app(), engine(), keyword()))
            addListItem(row.Keyword, row.Count);
    });
    updateRowButtons();
}

void frmKeywordBuilder::clearRows()
{
    m_rows->clear();
    m_list.clear();
}

void frmKeywordBuilder::addSuggestion(const QString &keyword, const QString &count)
{
    m_list.add(keyword, count);
    m_rows->addRow({shownText(app(), keyword), shownText(app(), count)})
        ->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
}

void frmKeywordBuilder::addListItem(const QString &keyword, const QString &count)
{
    reportFailure(app(), u"addListItem_Error: "_s, [&] { addSuggestion(keyword, count); });
}

void frmKeywordBuilder::showProgress(int step)
{
    m_progress->setValue(step);
}

void frmKeywordBuilder::showStatus(const QString &text)
{
    m_status->setText(text);
}

void frmKeywordBuilder::getOrStop()
{
    reportFailure(app(), u"frmKeywordBuilder_cmdGet_Click error:  "_s, [this] {
        if (!m_fetching) {
            DoGet();
            return;
        }
        m_tmrDisconnect->setEnabled(true);
        if (m_builder)
            m_builder->Disconnect();
    });
}

void frmKeywordBuilder::DoGet()
{
    const auto refuse = [this](const QString &text, QWidget *field) {
        app().desktop.showMessage({Title, text, MessageIcon::Exclamation});
        field->setFocus();
    };
    reportFailure(app(), u"frmKeywordBuilder_DoGet: "_s, [&] {
        const QString wanted = keyword();
        if (wanted.isEmpty()) {
            refuse(u"Please enter a Keyword."_s, m_keyword);
            return;
        }
        if (engine().isEmpty()) {
            refuse(u"Please select a Search Engine."_s, m_engine);
            return;
        }
        setFetching(true);
        app().desktop.runPendingEvents();
        {
            const QSignalBlocker silent(m_keyword);
            if (m_keyword->findText(wanted, Qt::MatchFixedString) < 0)
                m_keyword->addItem(wanted);
            m_keyword->setCurrentIndex(m_keyword->findText(wanted, Qt::MatchFixedString));
        }
        clearRows();
        m_builder.reset();
        m_builder = std::make_unique<clsKeywordBuilder>(app());
        m_builder->EngineName = engine();
        m_builder->Keyword = wanted;
        m_builder->FormKeywordBuilder = this;
        m_builder->Connect();
    });
}

void frmKeywordBuilder::setFetching(bool fetching)
{
    m_fetching = fetching;
    for (QWidget *idle :
         {static_cast<QWidget *>(m_add), static_cast<QWidget *>(m_delete), static_cast<QWidget *>(m_close)})
        idle->setEnabled(!fetching);
    // The answer is kept under what they say.
    m_engine->setEnabled(!fetching);
    m_keyword->setEnabled(!fetching);
    m_progress->setVisible(fetching);
    m_get->setText(fetching ? tr("S&top") : tr("&Get..."));
}

void frmKeywordBuilder::onDisconnectTick()
{
    // Without a builder the fetch never began.
    if (m_builder && !m_builder->Disconnected)
        return;
    m_tmrDisconnect->setEnabled(false);
    setIdle(u"Stop."_s);
    PopulateListView();
}

void frmKeywordBuilder::DownLoadCompleted()
{
    m_tmrDisconnect->setEnabled(false);
    setIdle({});
    SaveListView();
    PopulateListView();
}

void frmKeywordBuilder::setIdle(const QString &text)
{
    setFetching(false);
    m_progress->setValue(0);
    if (m_status->text() == u"Download data from server..."_s)
        m_status->setText(text.isEmpty() ? u" Download completed."_s : text);
    else
        m_status->clear();
}

void frmKeywordBuilder::updateRowButtons()
{
    const bool hasRows = m_list.count() > 0 && !m_fetching;
    m_add->setEnabled(hasRows);
    m_delete->setEnabled(hasRows);
}

QList<int> frmKeywordBuilder::selectedRows() const
{
    QList<int> rows;
    for (int row = 0; row < m_rows->topLevelItemCount(); ++row) {
        if (m_rows->topLevelItem(row)->isSelected())
            rows.append(row);
    }
    return rows;
}

void frmKeywordBuilder::DoADDToList()
{
    reportFailure(app(), u"frmKeywordBuilder_DoADDToList error:  "_s, [this] {
        if (!keywordsObject)
            throw Failure(u"There is no project to add the keywords to"_s);
        std::vector<Suggestion> chosen;
        for (const int row : selectedRows())
            chosen.push_back(m_list.row(row));
        const int count = addSuggestions(app(), chosen, *keywordsObject);
        AddToList = true;
        app().desktop.showMessage(
            {Title,
             count == 0 ? QString()
                        : QString::number(count) + u" selected Keywords have been added to the Account."_s,
             MessageIcon::Exclamation});
    });
}

void frmKeywordBuilder::DoDelete()
{
    reportFailure(app(), u"frmKeywordBuilder_DoDelete error:  "_s, [this] {
        if (app().desktop.showMessage({Title, u"Are you sure you want to remove selected Keywords?"_s,
                                       MessageIcon::Question, MessageButtons::YesNo}) == MessageAnswer::Yes) {
            const QList<int> rows = selectedRows();
            m_list.remove(rows);
            for (auto row = rows.crbegin(); row != rows.crend(); ++row)
                delete m_rows->takeTopLevelItem(*row);
            if (!rows.isEmpty()) {
                const int next = rows.last() - static_cast<int>(rows.size()) + 1;
                m_rows->selectRow(next < m_list.count() ? next : 0);
            }
            updateRowButtons();
        }
        SaveListView();
    });
}

void frmKeywordBuilder::removeKeyword()
{
    const int chosen = m_keyword->currentIndex();
    if (chosen >= 0 && m_keyword->itemText(chosen) == m_keyword->currentText())
        m_keyword->removeItem(chosen);
    else
        m_keyword->clearEditText();
}

void frmKeywordBuilder::SaveListView()
{
    reportFailure(app(), u"frmKeywordBuilder_SaveListView error:  "_s,
                  [this] { saveSuggestions(app(), engine(), keyword(), m_list.rows()); });
}

void frmKeywordBuilder::SaveComboBox()
{
    reportFailure(app(), u"frmKeywordBuilder_SaveComboBox:  "_s, [this] {
        if (!m_keywordsKnown)
            throw Failure(
                u"The keywords that were looked up could not be read, so they are left as they are"_s);
        QStringList keywords;
        for (int entry = 0; entry < m_keyword->count(); ++entry)
            keywords.append(m_keyword->itemText(entry));
        saveSuggestionKeywords(app(), keywords);
    });
}

void frmKeywordBuilder::done(int result)
{
    reportFailure(app(), u"frmKeywordBuilder_DoOK: "_s, [this] {
        const WaitCursor wait(app().desktop);
        m_tmrDisconnect->setEnabled(false);
        m_builder.reset();
        SaveComboBox();
    });
    ProgramDialog::done(result);
}

bool frmKeywordBuilder::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_rows->viewport() && event->type() == QEvent::Resize)
        shareWidth();
    if (event->type() == QEvent::KeyPress && watched != m_rows->viewport()) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Delete && key->modifiers() == Qt::NoModifier) {
            removeKeyword();
            return true;
        }
    }
    return ProgramDialog::eventFilter(watched, event);
}

void frmKeywordBuilder::shareWidth()
{
    const int room = std::max(0, m_rows->width() - Margin);
    m_rows->header()->resizeSection(0, room * 3 / 4);
    m_rows->header()->resizeSection(1, room / 4);
}

} // namespace sondrel
