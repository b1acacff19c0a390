// The controls of the dialog that adds keywords, and where they stand.
#include "keywords/frmAddkeywords.h"

#include "shell/dialog_controls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QComboBox *newEditableList(const QString &name)
{
    auto *list = new QComboBox;
    list->setObjectName(name);
    list->setEditable(true);
    list->setInsertPolicy(QComboBox::NoInsert);
    return list;
}

QLabel *newText(const QString &text, QWidget *field)
{
    QLabel *label = newCaption(text, field);
    label->setWordWrap(true);
    return label;
}

} // namespace

frmAddkeywords::frmAddkeywords(ApplicationContext &app, QWidget *parent)
    : ProgramDialog(app, u"frmAddkeywords"_s, parent)
{
    setWindowTitle(tr("Add Keywords"));
    m_tabs = new QTabWidget;
    m_tabs->setObjectName(u"SSTab1"_s);
    m_tabs->addTab(newPage(buildTyped()), tr("Type"));
    m_tabs->addTab(newPage(buildFile()), tr("Import"));
    m_tabs->addTab(newPage(buildPage()), tr("Web Site"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    QDialogButtonBox *buttons = newButtons([this] { acceptKeywords(); }); // last, in the order of Tab too
    m_ok = buttons->findChild<QPushButton *>(u"cmdOK"_s);
    m_ok->setAutoDefault(false); // it is the default one, or Enter makes a line
    layout->addWidget(buttons);
    updateButtons();

    m_keywords->installEventFilter(this);
    m_list->installEventFilter(this);
    connect(m_keywords, &QPlainTextEdit::textChanged, this, &frmAddkeywords::updateButtons);
    connect(m_import, &QPushButton::clicked, this, &frmAddkeywords::importFile);
    connect(m_get, &QPushButton::clicked, this, &frmAddkeywords::getOrCancel);
}

QWidget *frmAddkeywords::buildTyped()
{
    m_keywords = new QPlainTextEdit;
    m_keywords->setObjectName(u"txtKeywords"_s);
    m_keywords->setTabChangesFocus(true);
    m_keywords->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_keywords->setToolTip(tr("One keyword per line; what is pasted here may have many"));
    m_keywords->setMinimumHeight(fontMetrics().height() * 10);
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(newText(u"Please type your keywords below with one keyword per line:"_s, m_keywords));
    layout->addWidget(m_keywords, 1);
    return page;
}

QWidget *frmAddkeywords::buildFile()
{
    m_separetor = newEditableList(u"cboSeparetor"_s);
    m_separetor->setToolTip(tr("What stands between two keywords in the file"));
    m_import = newButton(u"cmdImport"_s, tr("Import"), tr("Import keywords from a file"));
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    QLabel *text =
        newText(u"Please select or enter a delimited character from the list box below and click the "
                "'Import\" button:"_s,
                m_import);
    layout->addWidget(text);
    auto *row = new QHBoxLayout;
    row->addWidget(newCaption(tr("Delimited Character:"), m_separetor));
    row->addWidget(m_separetor, 1);
    layout->addLayout(row);
    // In a row of its own, so that a narrow screen leaves the list its width.
    layout->addWidget(m_import, 0, Qt::AlignRight);
    layout->addStretch();
    m_import->setAccessibleName(tr("Import"));
    return page;
}

QWidget *frmAddkeywords::buildPage()
{
    m_url = newEditableList(u"cboURL"_s);
    m_url->setToolTip(tr("The page whose keywords are wanted"));
    constexpr int WidthInLetters = 34;
    m_url->setMinimumContentsLength(WidthInLetters);
    m_url->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_get = newButton(u"cmdGetWebSite"_s, tr("&Get"), tr("Fetch the page and list its keywords"));
    m_append = newCheckBox(u"chkAppend"_s, tr("Append"), tr("Keep what the list holds already"));
    m_list = new QListWidget;
    m_list->setObjectName(u"lstKeywords"_s);
    m_list->setAccessibleName(tr("Keywords of the page"));
    m_list->setToolTip(tr("The Delete key removes the selected keyword"));
    m_list->setUniformItemSizes(true);
    m_status = new QLabel;
    m_status->setObjectName(u"lblStatus"_s);
    m_status->setTextFormat(Qt::PlainText);

    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(
        newText(u"This will retrieve keywords from the meta tag of your web site. Please enter your "
                "web site URL:"_s,
                m_url));
    auto *row = new QHBoxLayout;
    row->addWidget(m_url, 1);
    row->addWidget(m_get);
    row->addWidget(m_append);
    layout->addLayout(row);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_status);
    return page;
}

} // namespace sondrel
