// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QObject>
#include <QString>

class QLabel;
class QProgressBar;
class QStatusBar;

namespace sondrel {

/// The panels of the status bar: a message, what a lookup does, its progress, the number of keywords, and the
/// state of the scheduler.
class StatusPanels final : public QObject
{
    Q_OBJECT

public:
    explicit StatusPanels(QStatusBar *bar);

    void setFirst(const QString &text);
    void setDescription(const QString &text);
    void setKeywordCount(int rows);
    void hideKeywordCount();
    void setAutoRun(const QString &text);
    QString first() const;
    QString description() const;
    QString autoRun() const;

    /// The bar, and beside it "37 of 120"; a maximum of 0 hides both.
    void setProgress(int value, int maximum);
    void hideProgress();
    /// Gives the panels of fixed width their share of the window's.
    void fitTo(int windowWidth);

private:
    QStatusBar *m_bar;
    QLabel *m_first;
    QLabel *m_description;
    QLabel *m_progressText;
    QProgressBar *m_progress;
    QLabel *m_keywordCount;
    QLabel *m_autoRun;
};

} // namespace sondrel
