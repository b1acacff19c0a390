// What the keyword grid does when it is told to.
#include "shell/frmSondrel.h"

#include "core/clsFileController.h"
#include "core/modCommon.h"
#include "core/text_fold.h"
#include "shell/keyword_entry.h"
#include "shell/row_table.h"

#include <QItemSelectionModel>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

void frmSondrel::mnuKeywordsItemClick(int number)
{
    switch (number) {
    case 1:
        AddKeywords();
        break;
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
    case 7:
        BuildKeyword();
        break;
    case 8:
        Exportkeywords();
        return;
    default:
        break; // a command that only saves
    }
    Keywords().SaveKeywordResults();
    Keywords().SaveKeywords();
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
    for (const int row : m_grid->selectedRows())
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
    const WaitCursor wait(m_app.desktop);
    const int before = m_model->rowCount();
    m_model->AddKeywordColToGrid(texts);
    showHints();
    if (m_model->rowCount() > before)
        m_grid->scrollToTop(m_model->index(before, static_cast<int>(GridField::Keyword)));
    Q_EMIT factsChanged();
}

void frmSondrel::tellOfCleaning(qsizetype count)
{
    m_app.desktop.showMessage(
        {u"Keywords"_s, cleanedKeywordsText(count), MessageIcon::Information, MessageButtons::Ok});
}

void frmSondrel::tellOfTakenName(const QString &name)
{
    m_app.desktop.showMessage({u"Keywords"_s, u"The list holds the keyword \""_s + name + u"\" already."_s,
                               MessageIcon::Exclamation, MessageButtons::Ok});
}

void frmSondrel::DeleteSelectedKeywords()
{
    reportFailure(m_app, u"frmSondrel_DeleteSelectedKeywords error :  "_s, [&] {
        const std::vector<int> rows = m_grid->selectedRows();
        if (rows.empty())
            return;
        const MessageAnswer answer = m_app.desktop.showMessage(
            {u"Delete Keyword"_s, u"Are you sure you want to delete selected Keyword(s)?"_s,
             MessageIcon::Question, MessageButtons::YesNo});
        if (answer == MessageAnswer::Yes)
            removeRows(rows);
    });
}

void frmSondrel::removeRows(const std::vector<int> &rows)
{
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
        const std::vector<int> rows = m_grid->selectedRows();
        if (rows.empty())
            return;
        QStringList copied;
        for (const int row : rows)
            copied.append(m_model->cell(row, GridField::Keyword));
        m_copied = copied;
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

// All chosen rows get what the current one does not have.
void frmSondrel::toggleShown()
{
    const QModelIndex current = m_grid->currentIndex();
    if (!current.isValid())
        return;
    std::vector<int> rows = m_grid->selectedRows();
    if (rows.empty())
        rows.push_back(current.row());
    m_model->setShown(rows, !m_model->shown(current.row()));
}

void frmSondrel::startRename()
{
    reportFailure(m_app, u"frmSondrel_grdBidsManage_BeforeEdit error: "_s, [&] {
        const QModelIndex current = m_grid->currentIndex();
        if (!current.isValid())
            return;
        const QModelIndex name = m_model->index(current.row(), static_cast<int>(GridField::Keyword));
        m_grid->selectionModel()->setCurrentIndex(name, QItemSelectionModel::NoUpdate);
        m_grid->edit(name);
    });
}

} // namespace sondrel
