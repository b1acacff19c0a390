#include "shell/status_panels.h"

#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QLabel *newPanel(QStatusBar *bar, const QString &name, const QString &accessibleName)
{
    auto *label = new QLabel(bar);
    label->setObjectName(name);
    label->setAccessibleName(accessibleName);
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(6, 0, 6, 0);
    return label;
}

} // namespace

StatusPanels::StatusPanels(QStatusBar *bar) : QObject(bar), m_bar(bar)
{
    bar->setObjectName(u"stbStatus"_s);
    m_first = newPanel(bar, u"panelFirst"_s, tr("Message"));
    m_description = newPanel(bar, u"panelDescription"_s, tr("Lookup"));
    m_progressText = newPanel(bar, u"panelProgressText"_s, tr("Keywords done"));
    m_progress = new QProgressBar(bar);
    m_progress->setObjectName(u"pbrSearch"_s);
    m_progress->setAccessibleName(tr("Lookup progress"));
    m_progress->setTextVisible(false);
    m_keywordCount = newPanel(bar, u"panelKeywordCount"_s, tr("Number of keywords"));
    m_autoRun = newPanel(bar, u"panelAutoRun"_s, tr("Scheduler"));
    // A long message must not widen the window.
    m_description->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    bar->addWidget(m_first);
    bar->addWidget(m_description, 1);
    bar->addPermanentWidget(m_progressText);
    bar->addPermanentWidget(m_progress);
    bar->addPermanentWidget(m_keywordCount);
    bar->addPermanentWidget(m_autoRun);
    setFirst({});
    hideProgress();
    hideKeywordCount();
}

void StatusPanels::setFirst(const QString &text)
{
    m_first->setText(text);
    m_first->setVisible(!text.isEmpty());
}

void StatusPanels::setDescription(const QString &text)
{
    m_description->setText(text);
}

void StatusPanels::setKeywordCount(int rows)
{
    m_keywordCount->setText(QString::number(rows) + u" keywords"_s);
    m_keywordCount->show();
}

void StatusPanels::hideKeywordCount()
{
    m_keywordCount->hide();
}

void StatusPanels::setAutoRun(const QString &text)
{
    m_autoRun->setText(text);
}

QString StatusPanels::first() const
{
    return m_first->text();
}

QString StatusPanels::description() const
{
    return m_description->text();
}

QString StatusPanels::autoRun() const
{
    return m_autoRun->text();
}

void StatusPanels::setProgress(int value, int maximum)
{
    m_progress->setRange(0, maximum);
    m_progress->setValue(value);
    // The first step is the start of the run, so one less keyword is done.
    m_progressText->setText(tr("%1 of %2").arg(std::max(0, value - 1)).arg(maximum - 1));
    m_progress->show();
    m_progressText->show();
}

void StatusPanels::fitTo(int windowWidth)
{
    const int unit = m_progress->fontMetrics().averageCharWidth();
    m_progress->setFixedWidth(std::clamp(windowWidth / 8, unit * 12, unit * 30));
}

void StatusPanels::hideProgress()
{
    m_progress->hide();
    m_progressText->hide();
}

} // namespace sondrel
