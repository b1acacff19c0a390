#include "shell/dialog_controls.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStyle>
#include <QTabWidget>

namespace sondrel {

namespace {

// As large as its content wishes, and small enough for any screen.
class Page final : public QScrollArea
{
public:
    QSize sizeHint() const override
    {
        if (!widget())
            return QScrollArea::sizeHint();
        // On a screen that is not high enough, a bar beside the content must not take of its width.
        return widget()->sizeHint() + QSize(style()->pixelMetric(QStyle::PM_ScrollBarExtent), 0);
    }
};

} // namespace

QScrollArea *newPage(QWidget *content)
{
    auto *page = new Page;
    page->setWidget(content);
    page->setWidgetResizable(true);
    page->setFrameShape(QFrame::NoFrame);
    page->setFocusPolicy(Qt::NoFocus);
    // The tab's own background shows through.
    page->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    return page;
}

QFormLayout *newForm()
{
    auto *form = new QFormLayout;
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    return form;
}

QLabel *newCaption(const QString &text, QWidget *field)
{
    auto *caption = new QLabel(text);
    caption->setTextFormat(Qt::PlainText);
    caption->setBuddy(field);
    if (field->accessibleName().isEmpty())
        field->setAccessibleName(QString(text).remove(u'&').simplified());
    return caption;
}

void addField(QFormLayout &form, const QString &caption, QWidget *field)
{
    form.addRow(newCaption(caption, field), field);
}

QLineEdit *newLineEdit(const QString &name, const QString &tip)
{
    auto *field = new QLineEdit;
    field->setObjectName(name);
    field->setToolTip(tip);
    return field;
}

QCheckBox *newCheckBox(const QString &name, const QString &caption, const QString &tip)
{
    auto *box = new QCheckBox(caption);
    box->setObjectName(name);
    box->setToolTip(tip);
    return box;
}

QPushButton *newButton(const QString &name, const QString &caption, const QString &tip)
{
    auto *button = new QPushButton(caption);
    button->setObjectName(name);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    return button;
}

void bringToFront(QTabWidget &tabs, int tab, QWidget &field)
{
    tabs.setCurrentIndex(tab);
    if (auto *page = qobject_cast<QScrollArea *>(tabs.widget(tab)))
        page->ensureWidgetVisible(&field);
    if (field.isEnabled())
        field.setFocus(Qt::OtherFocusReason);
}

} // namespace sondrel
