#include "shell/hint_page.h"

#include "shell/ground_colours.h"

#include <QAction>
#include <QEvent>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace sondrel {

HintPage::HintPage(const QString &label, const QString &button, QWidget *parent)
    : QWidget(parent), m_line(new QLabel), m_button(new QToolButton)
{
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    m_line->setObjectName(label);
    m_line->setTextFormat(Qt::PlainText);
    m_line->setAlignment(Qt::AlignCenter);
    m_line->setWordWrap(true);
    m_button->setObjectName(button);
    m_button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_button->setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(m_button);
    auto *layout = new QVBoxLayout(this);
    const int margin = fontMetrics().height();
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(margin / 2);
    layout->addStretch();
    layout->addWidget(m_line);
    layout->addWidget(m_button, 0, Qt::AlignCenter);
    layout->addStretch();
    greyLine();
}

void HintPage::setHint(const QString &text, QAction *command)
{
    m_line->setText(text);
    m_button->setVisible(command);
    if (command && m_button->defaultAction() != command) {
        if (QAction *former = m_button->defaultAction())
            m_button->removeAction(former); // a second one would make a menu of the button
        m_button->setDefaultAction(command);
        m_button->setAccessibleName(command->text().remove(u'&'));
    }
}

QString HintPage::text() const
{
    return m_line->text();
}

void HintPage::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        greyLine();
}

void HintPage::greyLine()
{
    QPalette grey = m_line->palette();
    grey.setColor(m_line->foregroundRole(), quietColour(palette()));
    m_line->setPalette(grey);
}

} // namespace sondrel
