#include "shell/unwritten_bar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// Paths have no blanks to break a line at.
QString breakable(const QString &text)
{
    constexpr int LongestWord = 24;
    QString result;
    int sinceBreak = 0;
    for (const QChar unit : text) {
        result += unit;
        sinceBreak = unit.isSpace() ? 0 : sinceBreak + 1;
        if ((!unit.isLetterOrNumber() || sinceBreak >= LongestWord) && !unit.isSurrogate()) {
            result += QChar(0x200B);
            sinceBreak = 0;
        }
    }
    return result;
}

} // namespace

UnwrittenBar::UnwrittenBar(QWidget *parent) : QFrame(parent), m_text(new QLabel)
{
    setObjectName(u"picUnwritten"_s);
    setFrameShape(QFrame::StyledPanel);
    setBackgroundRole(QPalette::ToolTipBase);
    setAutoFillBackground(true);
    m_text->setObjectName(u"lblUnwritten"_s);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setForegroundRole(QPalette::ToolTipText);
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    auto *sign = new QLabel;
    sign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(size));
    auto *close = new QToolButton;
    close->setObjectName(u"cmdUnwritten"_s);
    close->setText(tr("Close"));
    close->setToolTip(tr("Close this message"));
    close->setAccessibleName(close->toolTip());
    close->setAutoRaise(true);
    close->setForegroundRole(QPalette::ToolTipText);
    close->setFocusPolicy(Qt::TabFocus);
    connect(close, &QToolButton::clicked, this, &QWidget::hide);
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(sign);
    layout->addWidget(m_text, 1);
    layout->addWidget(close);
    hide();
}

void UnwrittenBar::tell(const QString &problem)
{
    const QString told =
        problem + tr(". The change is not stored, and what was stored before is as it was. Make room on the "
                     "disk, or see why nothing can be changed there, and do it again.");
    setAccessibleName(told);
    m_text->setText(breakable(told));
    show();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

} // namespace sondrel
