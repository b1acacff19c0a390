// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QWidget>

class QAction;
class QLabel;
class QToolButton;

namespace sondrel {

/// What stands in an empty area: one grey line that says what to do next, and the command for it.
class HintPage final : public QWidget
{
    Q_OBJECT

public:
    /// The names of the line and of the button.
    HintPage(const QString &label, const QString &button, QWidget *parent = nullptr);

    /// No button shows without a command.
    void setHint(const QString &text, QAction *command = nullptr);
    QString text() const;

protected:
    void changeEvent(QEvent *event) override;

private:
    void greyLine();

    QLabel *m_line;
    QToolButton *m_button;
};

} // namespace sondrel
