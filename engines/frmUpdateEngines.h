// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "lookup/frmHTTP.h"
#include "shell/program_dialog.h"

#include <memory>

class QLabel;
class QProgressBar;
class QPushButton;

namespace sondrel {

/// Fetches the engine data file from the vendor and puts it in the place of the old one.
class frmUpdateEngines final : public ProgramDialog, private HttpClient
{
    Q_OBJECT

public:
    explicit frmUpdateEngines(ApplicationContext &app, QWidget *parent = nullptr);
    ~frmUpdateEngines() override;

    /// Begins the download.
    void DoStart();
    /// The same, and closes the dialog at the end.
    void AutoUpdate();
    bool isRunning() const { return m_running; }

    /// Refused while a download runs.
    void reject() override;

protected:
    void load() override;
    void changeEvent(QEvent *event) override;

private:
    void ProcessData(int code, const QByteArray &body) override;
    /// The connection has ended without data to pass on.
    void setDisconnected(bool disconnected) override;

    void startOrStop();
    void stop();
    void finish();
    void showSuccess();
    void showMessage(const QString &text, bool failure);
    void colourMessage();

    std::unique_ptr<frmHTTP> m_http;
    bool m_running = false;
    bool m_automatic = false;
    bool m_failed = false; // which the message tells

    QProgressBar *m_progress;
    QLabel *m_message;
    QLabel *m_status;
    QPushButton *m_start;
    QPushButton *m_close;
};

} // namespace sondrel
