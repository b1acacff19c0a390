#include "shell/program_dialog.h"

#include "core/registry.h"
#include "shell/center_form.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QScreen>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString sizeText(QSize size)
{
    return QString::number(size.width()) + u',' + QString::number(size.height());
}

// A size that was written by hand may be anything.
QSize sizeOf(const QString &text)
{
    const qsizetype comma = text.indexOf(u',');
    return comma < 0 ? QSize() : QSize(text.first(comma).toInt(), text.sliced(comma + 1).toInt());
}

} // namespace

ProgramDialog::ProgramDialog(ApplicationContext &app, const QString &name, QWidget *parent)
    : QDialog(parent), m_app(app)
{
    setObjectName(name);
    setSizeGripEnabled(true);
}

void ProgramDialog::showEvent(QShowEvent *event)
{
    if (!m_loaded) {
        m_loaded = true;
        load();
        restoreSize();
        CenterForm(*this);
    }
    QDialog::showEvent(event);
}

void ProgramDialog::done(int result)
{
    m_cancelled = result != Accepted;
    rememberSize();
    QDialog::done(result);
}

void ProgramDialog::restoreSize()
{
    const QSize room = screen()->availableSize();
    const QSize last =
        sizeOf(GetRegistryText(m_app, m_app.RegPreference, objectName() + u"Size"_s, QString()));
    const QSize wish = last.isValid() && !last.isEmpty() ? last : sizeHint();
    resize(wish.expandedTo(minimumSizeHint()).boundedTo(room));
    m_firstSize = size();
}

void ProgramDialog::rememberSize() const
{
    if (!m_loaded || isMaximized() || size() == m_firstSize)
        return;
    CreateRegistryKey(m_app, m_app.RegPreference);
    SetRegistryValue(m_app, m_app.RegPreference, objectName() + u"Size"_s, RegistryString, sizeText(size()));
}

QDialogButtonBox *ProgramDialog::newButtons(const std::function<void()> &onOk)
{
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *ok = buttons->addButton(tr("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(u"cmdOK"_s);
    ok->setDefault(true);
    QPushButton *cancel = buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(u"cmdCancel"_s);
    cancel->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, onOk);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    return buttons;
}

} // namespace sondrel
