#include "keywords/frmAddkeywords.h"

#include "core/entered_text.h"
#include "shell/frmFileController.h"

#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

frmAddkeywords::~frmAddkeywords()
{
    if (m_http)
        m_http->Object = nullptr;
}

void frmAddkeywords::load()
{
    reportFailure(app(), u"frmAddLeyword_Error: "_s, [this] {
        m_http = std::make_unique<frmHTTP>(app());
        m_url->addItems(accountAddresses(Account.get()));
        m_url->setCurrentIndex(m_url->count() > 0 ? 0 : -1);
    });
    m_keywords->setFocus();
}

void frmAddkeywords::Prepare()
{
    m_keywords->setPlainText(NewKeywords);
    m_separetor->clear();
    m_separetor->addItems(delimiterChoices());
    m_separetor->setCurrentIndex(0);
    updateButtons();
}

QString frmAddkeywords::Separetor() const
{
    return m_separetor->currentText();
}

QString frmAddkeywords::typedText() const
{
    return m_keywords->toPlainText().replace(u'\n', "\r\n"_L1);
}

QStringList frmAddkeywords::listed() const
{
    QStringList entries;
    for (int row = 0; row < m_list->count(); ++row)
        entries.append(m_list->item(row)->text());
    return entries;
}

void frmAddkeywords::updateButtons()
{
    const AddKeywordsButtons buttons = addKeywordsButtons(UpdateStatus, m_keywords->toPlainText());
    m_ok->setEnabled(buttons.ok);
    m_import->setEnabled(buttons.import);
}

void frmAddkeywords::acceptKeywords()
{
    NewKeywords = joinedKeywords(typedText(), listed());
    ActionType = AddKeywordsAction::Ok;
    accept();
}

void frmAddkeywords::importFile()
{
    reportFailure(app(), u"frmAddKeywords_cmdImport_Click error:  "_s, [this] {
        constexpr int Opens = 0;
        frmFileController files(app(), this);
        const QString file =
            files.GetFileName(Opens, u"Text files (*.txt)|*.txt|All Files (*.*)|*.*"_s, QString());
        if (file.isEmpty())
            return;
        ImportFileName = file;
        ActionType = AddKeywordsAction::Import;
        accept();
    });
}

QString frmAddkeywords::pageURL() const
{
    return enteredLine(m_url->currentText());
}

void frmAddkeywords::getOrCancel()
{
    if (m_fetching) {
        m_http->Disconnect();
        m_status->clear();
        setFetching(false);
        return;
    }
    if (!isFetchable(pageURL())) {
        app().desktop.showMessage({u"Get Keywords"_s,
                                   u"Invalid web site URL. Please check your web site URL and try again."_s,
                                   MessageIcon::Information});
        m_url->lineEdit()->selectAll();
        m_url->setFocus();
        return;
    }
    if (!m_http)
        return; // the failure is in the log since the dialog came up
    setFetching(true);
    getWebSite();
}

void frmAddkeywords::getWebSite()
{
    m_http->Object = this;
    app().desktop.beginWait();
    m_status->setText(u"Please wait while retrieving web site ..."_s);
    m_http->Connect1(pageURL());
}

void frmAddkeywords::setFetching(bool fetching)
{
    m_fetching = fetching;
    m_get->setText(fetching ? tr("&Cancel") : tr("&Get"));
    if (!fetching)
        app().desktop.resetPointer();
}

void frmAddkeywords::ProcessData(int, const QByteArray &body)
{
    reportFailure(app(), u"ProcessData_Error: "_s, [&] {
        const QStringList keywords = pageKeywords(app(), body);
        if (!m_append->isChecked())
            m_list->clear();
        m_list->addItems(keywords);
        m_status->clear();
        setFetching(false);
        m_ok->setEnabled(true);
    });
}

void frmAddkeywords::removeSelected()
{
    if (m_list->currentItem() && m_list->currentItem()->isSelected())
        delete m_list->takeItem(m_list->currentRow());
}

bool frmAddkeywords::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_keywords && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut))
        m_ok->setDefault(event->type() == QEvent::FocusOut);
    if (watched == m_list && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Delete) {
        removeSelected();
        return true;
    }
    return ProgramDialog::eventFilter(watched, event);
}

void frmAddkeywords::done(int result)
{
    if (result != Accepted)
        ActionType = AddKeywordsAction::Cancelled;
    if (m_fetching) {
        m_http->Disconnect();
        setFetching(false);
    }
    ProgramDialog::done(result);
}

} // namespace sondrel
