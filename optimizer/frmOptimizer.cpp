#include "optimizer/frmOptimizer.h"

#include "core/entered_text.h"
#include "optimizer/page_address.h"
#include "optimizer/remembered_addresses.h"
#include "shell/dialog_controls.h"
#include "shell/frmFileController.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStatusBar>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString listSection()
{
    return u"Optimizer"_s;
}

} // namespace

frmOptimizer::frmOptimizer(ApplicationContext &app, QWidget *parent)
    : ProgramDialog(app, u"frmOptimizer"_s, parent)
{
    build();
    m_renovator->installEventFilter(this);
    connect(m_site, &QComboBox::editTextChanged, this, [this] {
        m_form.renovatorEnabled = true;
        showForm(m_form);
    });
    connect(m_renovator, &QPushButton::clicked, this, &frmOptimizer::press);
    connect(m_close, &QPushButton::clicked, this, &QDialog::close);
    connect(m_fileLocation, &QPushButton::clicked, this, &frmOptimizer::pickFile);
}

frmOptimizer::~frmOptimizer()
{
    if (m_http)
        m_http->Object = nullptr;
}

void frmOptimizer::build()
{
    setWindowTitle(tr("Optimizer"));
    m_site = new QComboBox;
    m_site->setObjectName(u"cboSiteURL"_s);
    m_site->setEditable(true);
    m_site->setInsertPolicy(QComboBox::NoInsert);
    m_site->setCompleter(nullptr); // Enter takes what has been typed
    m_site->setToolTip(tr("Address of a web page, or the path of a local HTML file"));
    constexpr int WidthInLetters = 46;
    m_site->setMinimumContentsLength(WidthInLetters);
    m_site->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_fileLocation = newButton(u"cmdFileLocation"_s, tr("&Browse..."), tr("Choose a local HTML file"));
    m_progress = new QProgressBar;
    m_progress->setObjectName(u"prgProgress"_s);
    m_progress->setAccessibleName(tr("Progress"));
    m_progress->setTextVisible(false);
    m_progress->setRange(0, OptimizerMaximum);
    m_progress->setValue(0);
    m_renovator = newButton(u"cmdRenovator"_s, tr("&Optimizer"), tr("Judge the page and open the report"));
    m_renovator->setDefault(true);
    m_renovator->setMouseTracking(true);
    m_close = newButton(u"cmdClose"_s, tr("&Close"), {});
    m_status = new QStatusBar;
    m_status->setObjectName(u"StatusBar1"_s);
    m_status->setSizeGripEnabled(false); // the dialog has one

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(newCaption(tr("&Web site URL or local HTML file:"), m_site));
    auto *site = new QHBoxLayout;
    site->addWidget(m_site, 1);
    site->addWidget(m_fileLocation);
    layout->addLayout(site);
    layout->addWidget(m_progress);
    layout->addStretch();
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_renovator);
    buttons->addWidget(m_close);
    layout->addLayout(buttons);
    layout->addWidget(m_status);
}

void frmOptimizer::load()
{
    reportFailure(app(), u"frmOptimizer_Connect Error:  "_s,
                  [this] { m_http = std::make_unique<frmHTTP>(app()); });
    QStringList known;
    loadDomains(app(), known, listSection(), MostAddresses);
    m_site->addItems(known);
    m_site->setCurrentIndex(-1);
    m_site->clearEditText();
    m_site->setFocus();
}

QStringList frmOptimizer::addresses() const
{
    QStringList list;
    for (int entry = 0; entry < m_site->count(); ++entry)
        list.append(m_site->itemText(entry));
    return list;
}

void frmOptimizer::remember(const QString &address)
{
    QStringList list = addresses();
    addKeywordToList(list, address);
    const QSignalBlocker quiet(m_site); // the text in the box stays
    m_site->clear();
    m_site->addItems(list);
    m_site->setCurrentIndex(-1);
    m_site->setEditText(address);
}

void frmOptimizer::showForm(const OptimizerForm &form)
{
    m_form = form;
    m_renovator->setText(form.fetching ? tr("&Cancel") : tr("&Optimizer"));
    m_renovator->setEnabled(form.renovatorEnabled);
    m_close->setEnabled(form.closeEnabled);
}

QString frmOptimizer::siteURL() const
{
    return enteredLine(m_site->currentText());
}

void frmOptimizer::press()
{
    try {
        if (m_analysing)
            return; // the run has its text already
        const QString text = siteURL();
        act(optimizerPress(app(), m_form, text), text);
    } catch (const std::exception &error) {
        const QString text = u"Optimizer_Error: "_s + errorText(error);
        reportFailure(app(), text + u' ', [&] {
            app().desktop.showMessage({u"Optimizer"_s, text, MessageIcon::Critical});
        });
    }
}

void frmOptimizer::act(OptimizerPress press, const QString &text)
{
    const auto tell = [this](const QString &message) {
        app().desktop.showMessage({u"Optimizer"_s, message, MessageIcon::Information});
    };
    m_status->clearMessage(); // it spoke of the run before
    if (press == OptimizerPress::Fetch)
        remember(text);
    showForm(afterPress(m_form, press));
    switch (press) {
    case OptimizerPress::Cancel:
        if (m_http)
            m_http->Disconnect();
        break;
    case OptimizerPress::AskForAddress:
        tell(
            u"Please enter your web site URL or a valid local HTML file you want to process and try again."_s);
        m_site->setFocus();
        break;
    case OptimizerPress::Fetch:
        Connect();
        break;
    case OptimizerPress::RefuseFile:
        tell(
            u"Invalid path or file name for your local HTML file, please open a valid HTML file and try again."_s);
        m_site->setFocus();
        break;
    case OptimizerPress::ReadFile:
        app().desktop.beginWait();
        process(getFileData(localPage(text).value_or(text)));
        break;
    }
}

void frmOptimizer::Connect()
{
    reportFailure(app(), u"frmOptimizer_Connect Error:  "_s, [this] {
        if (!m_http)
            throw Failure(u"There is no connection"_s);
        m_http->Object = this;
        app().desktop.beginWait();
        const QString address = siteURL();
        showStatus(u"Please wait while connecting to : "_s + address + u" ...."_s);
        m_http->Connect1(address);
    });
}

QString frmOptimizer::getFileData(const QString &path)
{
    try {
        return localPageText(app(), path);
    } catch (const std::exception &error) {
        app().desktop.showMessage({u"Error"_s, u"getFileData_Error: "_s + errorText(error)});
        return {};
    }
}

void frmOptimizer::ProcessData(int, const QByteArray &body)
{
    process(app().fromBytes(body));
}

void frmOptimizer::process(const QString &pageText)
{
    OptimizerRun run{siteURL(), pageText, {}, {}, {}};
    if (!pageText.isEmpty())
        app().desktop.beginWait();
    m_analysing = true;
    const OptimizerOutcome outcome = processPage(app(), run, *this);
    m_analysing = false;
    if (outcome == OptimizerOutcome::NoDocument)
        return; // as it is: busy, behind a local file, until its window is closed
    m_progress->setValue(0);
    app().desktop.resetPointer();
    showForm(afterRun());
    if (outcome == OptimizerOutcome::Failed || !isVisible())
        Q_EMIT statusCleared();
    if (!isVisible())
        unload();
}

void frmOptimizer::showProgress(int value)
{
    m_progress->setValue(value);
}

void frmOptimizer::showStatus(const QString &text)
{
    m_status->showMessage(text);
}

void frmOptimizer::pickFile()
{
    setEnabled(false);
    constexpr int Opens = 0;
    const QString file = frmFileController(app(), this)
                             .GetFileName(Opens,
                                          u"HTML Files (*.html;*.htm)|*.htm;*.html|Text Files (*.txt)|*.txt|"
                                          "All Files (*.*)|*.*"_s,
                                          QString());
    if (!file.isEmpty())
        m_site->setEditText(file);
    setEnabled(true);
}

bool frmOptimizer::eventFilter(QObject *watched, QEvent *event)
{
    // The way out is not to look busy.
    if (watched == m_renovator && m_form.fetching &&
        (event->type() == QEvent::Enter || event->type() == QEvent::MouseMove))
        app().desktop.resetPointer();
    return ProgramDialog::eventFilter(watched, event);
}

void frmOptimizer::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape || m_form.closeEnabled)
        ProgramDialog::keyPressEvent(event);
    else if (m_form.fetching)
        press();
}

void frmOptimizer::done(int result)
{
    ProgramDialog::done(result);
    if (!m_analysing)
        unload();
}

void frmOptimizer::unload()
{
    if (m_http) {
        saveListToFile(app(), addresses(), listSection());
        m_http->Object = nullptr;
        m_http.reset();
        app().desktop.resetPointer();
    }
    Q_EMIT Unloaded();
}

} // namespace sondrel
