// The controls of the Keyword Builder, and where they stand.
#include "keywords/frmKeywordBuilder.h"

#include "shell/dialog_controls.h"
#include "shell/hint_tree.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int Steps = 3;

QComboBox *newList(const QString &name)
{
    auto *list = new QComboBox;
    list->setObjectName(name);
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(24);
    return list;
}

} // namespace

void frmKeywordBuilder::build()
{
    setWindowTitle(tr("Keyword Builder"));
    m_engine = newList(u"cboEngine"_s);
    m_engine->setToolTip(tr("Whose suggestions are fetched"));
    m_keyword = newList(u"cboKeyword"_s);
    m_keyword->setEditable(true);
    m_keyword->setInsertPolicy(QComboBox::NoInsert);
    m_keyword->setToolTip(tr("A word to get suggestions for; those looked up before are in the list"));
    m_get = newButton(u"cmdGet"_s, tr("&Get..."), tr("Fetch the suggestions"));
    m_get->setDefault(true);
    m_rows = new HintTree(u"lvwKeywords"_s, {tr("Keyword"), tr("Count")});
    m_rows->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_rows->setHint(tr("No suggestions yet. Enter a keyword, choose an engine and press Get."));
    m_rows->setAccessibleName(tr("Suggestions"));
    m_rows->header()->setStretchLastSection(false);
    m_rows->headerItem()->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    m_rows->setMinimumHeight(fontMetrics().lineSpacing() * 14);
    m_add =
        newButton(u"cmdAddToList"_s, tr("&Add to List"), tr("Add the selected suggestions to the project"));
    m_delete = newButton(u"cmdDelete"_s, tr("&Delete"), tr("Remove the selected suggestions from this list"));
    m_close = newButton(u"cmdClose"_s, tr("&Close"), {});
    m_progress = new QProgressBar;
    m_progress->setObjectName(u"pbrSearch"_s);
    m_progress->setAccessibleName(tr("Progress of the fetch"));
    m_progress->setRange(0, Steps);
    m_progress->setValue(0);
    m_progress->setTextVisible(false);
    m_progress->setMaximumWidth(fontMetrics().averageCharWidth() * 24);
    QSizePolicy kept = m_progress->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    m_progress->setSizePolicy(kept);
    m_progress->hide();
    m_status = new QLabel;
    m_status->setObjectName(u"stbStatus"_s);
    m_status->setTextFormat(Qt::PlainText);

    auto *fields = new QGridLayout;
    fields->addWidget(newCaption(tr("&Keyword:"), m_keyword), 0, 0);
    fields->addWidget(m_keyword, 0, 1);
    fields->addWidget(m_get, 0, 2);
    fields->addWidget(newCaption(tr("Search &Engine:"), m_engine), 1, 0);
    fields->addWidget(m_engine, 1, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_add);
    buttons->addWidget(m_delete);
    buttons->addStretch();
    buttons->addWidget(m_close);
    auto *status = new QHBoxLayout;
    status->addWidget(m_status, 1);
    status->addWidget(m_progress);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addWidget(m_rows, 1);
    layout->addLayout(buttons);
    layout->addLayout(status);
    updateRowButtons();
}

} // namespace sondrel
