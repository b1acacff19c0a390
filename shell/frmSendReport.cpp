#include "shell/frmSendReport.h"

#include "core/entered_text.h"
#include "core/modCommon.h"
#include "shell/dialog_controls.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int EndInterval = 100; // ms

// Five lines, and whatever room is left: with more the dialog would be too tall for a small screen.
class Message final : public QPlainTextEdit
{
public:
    Message() { setMinimumHeight(sizeHint().height()); }
    QSize sizeHint() const override
    {
        return {QPlainTextEdit::sizeHint().width(), fontMetrics().lineSpacing() * 5 + 2 * frameWidth()};
    }
};

QRadioButton *newChoice(const QString &name, const QString &caption)
{
    auto *choice = new QRadioButton(caption);
    choice->setObjectName(name);
    return choice;
}

} // namespace

frmSendReport::frmSendReport(ApplicationContext &app, QWidget *parent)
    : ProgramDialog(app, u"frmSendReport"_s, parent),
      m_trmEnd(app.clock.createTimer(EndInterval, [this] { DisplayMessage(); }))
{
    setWindowTitle(tr("Send Report"));
    m_from = newLineEdit(u"txtFrom"_s);
    m_email = newLineEdit(u"txtEmail"_s);
    m_cc = newLineEdit(u"txtCC"_s);
    m_subject = newLineEdit(u"txtSubject"_s);
    m_message = new Message;
    m_message->setObjectName(u"txtMessage"_s);
    m_message->setTabChangesFocus(true);
    m_message->setAccessibleName(tr("Message"));
    m_status = new QLabel;
    m_status->setObjectName(u"lblMessage"_s);
    m_status->setTextFormat(Qt::PlainText);
    m_status->setWordWrap(true);

    auto *buttons = new QDialogButtonBox; // the last ones that the keyboard comes to
    m_send = buttons->addButton(tr("&Send"), QDialogButtonBox::ActionRole);
    m_send->setObjectName(u"cmdSend"_s);
    m_send->setDefault(true);
    m_cancel = buttons->addButton(tr("&Cancel"), QDialogButtonBox::RejectRole);
    m_cancel->setObjectName(u"cmdCancel"_s);
    m_cancel->setAutoDefault(false);
    connect(m_send, &QPushButton::clicked, this, &frmSendReport::send);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *content = new QWidget;
    auto *rows = new QVBoxLayout(content);
    auto *fields = newForm();
    addField(*fields, tr("From:"), m_from);
    addField(*fields, tr("Send  to:"), m_email);
    addField(*fields, tr("CC:"), m_cc);
    addField(*fields, tr("Subject:"), m_subject);
    rows->addLayout(fields);
    rows->addWidget(m_message, 1);
    rows->addWidget(newReportBox());
    rows->addWidget(newFormatRow());
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(newPage(content), 1);
    layout->addWidget(m_status);
    layout->addWidget(buttons);
}

frmSendReport::~frmSendReport()
{
    if (m_sending)
        app().desktop.endWait();
}

QWidget *frmSendReport::newReportBox()
{
    auto *box = new QGroupBox(tr("Select the reports you want to send"));
    m_engineSummary = newCheckBox(u"chkEngineSummary"_s, tr("Engine->Keyword summary report"));
    m_keywordSummary = newCheckBox(u"chkKeywordSummary"_s, tr("Keyword summary report"));
    m_keywordUrl = newCheckBox(u"chkKeywordURLSummary"_s, tr("Keyword URL summary report"));
    m_rankingDetails = newCheckBox(u"chkRankingDetails"_s, tr("Ranking details report"));
    m_removeUnranked =
        newCheckBox(u"chkRemoveUnRanking"_s, tr("Do not include non-ranking keywords in the report"));
    auto *cells = new QGridLayout(box);
    cells->addWidget(m_engineSummary, 0, 0);
    cells->addWidget(m_keywordSummary, 0, 1);
    cells->addWidget(m_keywordUrl, 1, 0);
    cells->addWidget(m_rankingDetails, 1, 1);
    cells->addWidget(m_removeUnranked, 2, 0, 1, 2);
    cells->setColumnStretch(1, 1);
    return box;
}

QWidget *frmSendReport::newFormatRow()
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    auto *html = newChoice(u"optReportFormat0"_s, tr("HTML"));
    auto *text = newChoice(u"optReportFormat1"_s, tr("Text"));
    html->setChecked(true);
    layout->addWidget(newCaption(tr("Email Report Format:"), html));
    layout->addWidget(html);
    layout->addWidget(text);
    layout->addStretch();
    return row;
}

void frmSendReport::load()
{
    m_preference.GetSettings(app());
    if (!m_account)
        return;
    const SendReportForm form = loadSendReport(m_preference, *m_account);
    m_from->setText(form.from);
    m_email->setText(form.email);
    m_subject->setText(form.subject);
    m_cc->setText(form.cc);
    for (QLineEdit *field : {m_from, m_email, m_subject, m_cc})
        field->setCursorPosition(0); // a long text shows its beginning
    m_message->setPlainText(form.message);
    m_engineSummary->setChecked(form.wanted.engineSummary);
    m_keywordSummary->setChecked(form.wanted.keywordSummary);
    m_rankingDetails->setChecked(form.wanted.rankingDetails);
    m_removeUnranked->setChecked(form.removeUnranked);
}

SendReportForm frmSendReport::form() const
{
    SendReportForm form;
    form.from = enteredLine(m_from->text());
    form.email = enteredAddresses(m_email->text());
    form.subject = enteredLine(m_subject->text());
    form.cc = enteredAddresses(m_cc->text());
    form.message = m_message->toPlainText();
    form.wanted = {m_engineSummary->isChecked(), m_keywordUrl->isChecked(), m_keywordSummary->isChecked(),
                   m_rankingDetails->isChecked()};
    form.removeUnranked = m_removeUnranked->isChecked();
    return form;
}

bool frmSendReport::ValidForm()
{
    bool valid = false;
    reportFailure(app(), u"frmSendReport_ValidForm error: "_s, [&] {
        valid = IsValidEmailAddress(form().email);
        if (valid)
            return;
        app().desktop.showMessage({u"Account"_s, u"Please enter a valid email address."_s});
        m_email->setFocus();
    });
    return valid;
}

void frmSendReport::send()
{
    if (m_sending || !m_account || !ValidForm())
        return;
    SentReport();
}

void frmSendReport::SentReport()
{
    const bool sent = reportFailure(app(), u"frmSendReport_SentReport Error: "_s, [&] {
        m_errorText.clear();
        m_oSendMail = std::make_unique<clsSendMail>(app());
        fillReportMail(*m_oSendMail, reportMailOf(app(), *m_account, form()), m_preference);
        connect(m_oSendMail.get(), &clsSendMail::SendMailError, this,
                [this](qint32 number, const QString &text) {
                    if (number != 0)
                        m_errorText = text;
                });
        connect(m_oSendMail.get(), &clsSendMail::Completed, this, &frmSendReport::onCompleted);
        setSending(true);
        m_oSendMail->SendMail();
    });
    if (!sent)
        setSending(false);
}

// The boxes come up from a timer of their own: they must not run inside the mail's event.
void frmSendReport::onCompleted(qint32 number, const QString &text)
{
    if (number != 0)
        m_errorText = text;
    m_trmEnd->setEnabled(true);
}

void frmSendReport::DisplayMessage()
{
    reportFailure(app(), u"DisplayMessage error: "_s, [&] {
        m_trmEnd->setEnabled(false);
        setSending(false);
        if (m_errorText.isEmpty()) {
            app().desktop.showMessage({windowTitle(), u"Report has been sent successfully."_s});
            accept();
            return;
        }
        const MessageAnswer answer = app().desktop.showMessage(
            {windowTitle(),
             u"Error: "_s + m_errorText +
                 u"\r\nReport can not been sent. Do you want to close 'Send Report' screen?"_s,
             MessageIcon::Question, MessageButtons::YesNo});
        if (answer == MessageAnswer::Yes)
            reject();
    });
}

void frmSendReport::setSending(bool sending)
{
    if (m_sending == sending)
        return;
    m_sending = sending;
    if (sending)
        app().desktop.beginWait();
    else
        app().desktop.endWait();
    m_status->setText(sending ? u"Please wait while sending ranking report ..."_s : QString());
    m_send->setEnabled(!sending);
    m_cancel->setEnabled(!sending);
}

// Escape stands for the button, which cannot be used while a mail is under way.
void frmSendReport::reject()
{
    if (!m_sending)
        ProgramDialog::reject();
}

// Closing the window is the way out of a server that does not answer: it stops the mail.
void frmSendReport::closeEvent(QCloseEvent *event)
{
    done(Rejected);
    event->accept();
}

void frmSendReport::done(int result)
{
    m_trmEnd->setEnabled(false);
    m_oSendMail.reset();
    setSending(false);
    ProgramDialog::done(result);
}

} // namespace sondrel
