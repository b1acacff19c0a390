// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "lookup/frmHTTP.h"
#include "optimizer/optimizer_form.h"
#include "optimizer/optimizer_run.h"
#include "shell/program_dialog.h"

#include <memory>

class QComboBox;
class QProgressBar;
class QPushButton;
class QStatusBar;

namespace sondrel {

/// Takes the address of a page, or a local file, and has the advice report written and opened. It works
/// without blocking the main window; closed during a run it hides, and unloads itself at its end.
class frmOptimizer final : public ProgramDialog, private HttpClient, private OptimizerView
{
    Q_OBJECT

public:
    explicit frmOptimizer(ApplicationContext &app, QWidget *parent = nullptr);
    ~frmOptimizer() override;

    /// Fetches the page of the address box.
    void Connect();
    /// The text of a file through the system code page; empty, behind a message, when it cannot be read.
    QString getFileData(const QString &path);

    void done(int result) override;

Q_SIGNALS:
    /// The dialog is done with and can go.
    void Unloaded();
    /// The main window's status speaks of this dialog no more.
    void statusCleared();

protected:
    void load() override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void ProcessData(int status, const QByteArray &body) override;
    void setDisconnected(bool) override {}
    void showProgress(int value) override;
    void showStatus(const QString &text) override;

    void build();
    /// What is to be judged, without what was pasted around it.
    QString siteURL() const;
    void press();
    void act(OptimizerPress press, const QString &text);
    void remember(const QString &address);
    void process(const QString &pageText);
    void pickFile();
    void showForm(const OptimizerForm &form);
    void unload();
    QStringList addresses() const;

    std::unique_ptr<frmHTTP> m_http; // from load to unload
    OptimizerForm m_form;
    bool m_analysing = false;
    QComboBox *m_site = nullptr;
    QPushButton *m_fileLocation = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_renovator = nullptr;
    QPushButton *m_close = nullptr;
    QStatusBar *m_status = nullptr;
};

} // namespace sondrel
