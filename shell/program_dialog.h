// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QDialog>

#include <functional>

class QDialogButtonBox;

namespace sondrel {

/// A dialog that fills itself when it is first shown, comes up centred and in the size it last had.
class ProgramDialog : public QDialog
{
    Q_OBJECT

public:
    /// The object name is that of the class; the size is kept under it.
    ProgramDialog(ApplicationContext &app, const QString &name, QWidget *parent);

    /// True until the dialog has been closed by its OK.
    bool Cancelled() const { return m_cancelled; }

    void done(int result) override;

protected:
    /// Fills the controls; runs once, before the dialog is first seen.
    virtual void load() = 0;
    void showEvent(QShowEvent *event) override;

    /// The row of OK and Cancel; OK calls the given step, Cancel closes.
    QDialogButtonBox *newButtons(const std::function<void()> &onOk);

    ApplicationContext &app() const { return m_app; }

private:
    void restoreSize();
    void rememberSize() const;

    ApplicationContext &m_app;
    bool m_loaded = false;
    QSize m_firstSize; // in which it came up
    bool m_cancelled = true;
};

} // namespace sondrel
