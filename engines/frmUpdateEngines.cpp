#include "engines/frmUpdateEngines.h"

#include "engines/engine_update.h"
#include "shell/dialog_controls.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int Steps = 3;
constexpr int MessageLines = 6; // room for the longest message at the width the dialog comes up in

QLabel *newText(const QString &name)
{
    auto *label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    return label;
}

} // namespace

frmUpdateEngines::frmUpdateEngines(ApplicationContext &app, QWidget *parent)
    : ProgramDialog(app, u"frmUpdateEngines"_s, parent),
      m_progress(new QProgressBar),
      m_message(newText(u"lblMessage"_s)),
      m_status(newText(u"lblStatus"_s)),
      m_start(newButton(u"cmdStart"_s, tr("Start"), tr("Download the engine data file"))),
      m_close(newButton(u"cmdClose"_s, tr("Close"), {}))
{
    setWindowTitle(tr("Update Engine Data"));
    m_progress->setObjectName(u"pbrUpdate"_s);
    m_progress->setAccessibleName(tr("Progress of the download"));
    m_progress->setRange(0, Steps);
    m_progress->setValue(0);
    m_progress->setTextVisible(false);
    m_message->setMinimumSize(fontMetrics().averageCharWidth() * 64,
                              fontMetrics().lineSpacing() * MessageLines);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_start->setDefault(true);
    // The line keeps its place while it is hidden.
    QSizePolicy kept = m_status->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    m_status->setSizePolicy(kept);
    m_status->setText(u" "_s);
    m_status->hide();

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_start);
    buttons->addWidget(m_close);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_message, 1);
    layout->addWidget(m_progress);
    layout->addWidget(m_status);
    layout->addLayout(buttons);

    connect(m_start, &QPushButton::clicked, this, &frmUpdateEngines::startOrStop);
    connect(m_close, &QPushButton::clicked, this, &QDialog::accept);
}

frmUpdateEngines::~frmUpdateEngines()
{
    if (m_http)
        m_http->Object = nullptr;
}

void frmUpdateEngines::load()
{
    if (!m_running)
        showMessage(
            tr("Search engines change their pages. Click Start to download the latest definitions of them; "
               "the file before is kept beside the new one."),
            false);
    reportFailure(app(), u"StatsUpdate_Error: "_s, [this] {
        if (!m_http)
            m_http = std::make_unique<frmHTTP>(app());
    });
}

void frmUpdateEngines::startOrStop()
{
    try {
        if (m_running)
            stop();
        else
            DoStart();
    } catch (const std::exception &error) {
        app().WriteErrorLog(u"StatsUpdate_Error: "_s + errorText(error));
        app().desktop.showMessage(
            {windowTitle(), u"Error occur while update Engine Data file. Please report this error to '"_s +
                                app().deployment.SupportEmail + u"' for help."_s});
        finish();
    }
}

void frmUpdateEngines::stop()
{
    app().desktop.beginWait();
    if (m_http)
        m_http->Disconnect();
    // A transfer that never began has no end that could be told.
    if (m_running && (!m_http || m_http->isIdle()))
        setDisconnected(true);
}

void frmUpdateEngines::DoStart()
{
    m_running = true;
    m_start->setText(tr("Stop"));
    m_progress->setValue(1);
    showMessage(u"Please wait while updating your engine data. It will take a few minutes depending on your "
                "Internet connection ......."_s,
                false);
    m_status->setText(u"Connecting to web server ....."_s);
    m_status->show();
    m_close->setEnabled(false);
    app().desktop.runPendingEvents();
    if (!m_running)
        return; // stopped already
    m_http.reset();
    m_http = std::make_unique<frmHTTP>(app());
    m_http->Object = this;
    m_http->Connect1(engineDataAddress(app()));
}

void frmUpdateEngines::AutoUpdate()
{
    m_automatic = true;
    DoStart();
}

void frmUpdateEngines::ProcessData(int, const QByteArray &body)
{
    try {
        if (isEngineData(app(), body)) {
            m_progress->setValue(2);
            replaceEngineData(app(), body);
            showSuccess();
        } else {
            showMessage(
                u"Error occur when update engine data. If you are connected to the internet through a "
                "proxy server, please enter your correct 'Proxy Server' address in the "
                "'File/Configuration' window then try again. "_s,
                true);
        }
    } catch (const std::exception &error) {
        const QString problem = errorText(error);
        app().WriteErrorLog(u"frmUpdateEngines_ProcessData:  "_s + problem);
        showMessage(tr("The Engine data file could not be written, so the old one stays in use.") +
                        u"\n\n"_s + problem,
                    true);
    }
    finish();
}

void frmUpdateEngines::showSuccess()
{
    m_progress->setValue(Steps);
    m_start->setEnabled(false);
    showMessage(
        u"The Engine data file has been downloaded successfully.\n\nPlease make sure to update your "
        "engine data file frequently at least once per month by clicking the 'File/Update Engine Data' "
        "menu item from the menu bar."_s,
        false);
}

void frmUpdateEngines::setDisconnected(bool disconnected)
{
    if (disconnected)
        finish();
}

void frmUpdateEngines::finish()
{
    m_running = false;
    app().desktop.resetPointer();
    if (m_automatic) {
        accept();
        return;
    }
    m_start->setText(tr("Start"));
    m_status->hide();
    m_close->setEnabled(true);
    m_close->setText(tr("Finish"));
    m_close->setDefault(!m_start->isEnabled());
    app().desktop.runPendingEvents();
    app().desktop.beep();
}

void frmUpdateEngines::reject()
{
    if (!m_running)
        ProgramDialog::reject();
}

void frmUpdateEngines::showMessage(const QString &text, bool failure)
{
    m_failed = failure;
    m_message->setText(text);
    colourMessage();
}

void frmUpdateEngines::colourMessage()
{
    QPalette colours = palette();
    const bool dark = colours.color(QPalette::Window).lightness() < 128;
    if (m_failed)
        colours.setColor(QPalette::WindowText, dark ? QColor(255, 128, 128) : QColor(Qt::red));
    m_message->setPalette(colours);
}

void frmUpdateEngines::changeEvent(QEvent *event)
{
    ProgramDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        colourMessage();
}

} // namespace sondrel
