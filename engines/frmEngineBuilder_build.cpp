// The controls of the Engine Builder, and where they stand.
#include "engines/frmEngineBuilder.h"

#include "shell/dialog_controls.h"
#include "shell/hint_tree.h"
#include "shell/program_icons.h"

#include <QAction>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QToolBar>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QComboBox *newList(const QString &name, const QString &tip)
{
    auto *list = new QComboBox;
    list->setObjectName(name);
    list->setToolTip(tip);
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    return list;
}

// A caption and its field in one half of a row.
QLabel *addHalf(QGridLayout &grid, int row, int column, const QString &caption, QWidget *field)
{
    QLabel *label = newCaption(caption, field);
    grid.addWidget(label, row, column * 2);
    grid.addWidget(field, row, column * 2 + 1);
    return label;
}

} // namespace

void frmEngineBuilder::build()
{
    setWindowTitle(tr("Engine Builder"));
    m_list = new HintTree(u"lvwEngines"_s, {tr("Engines")});
    m_list->setHint(tr("No engine of your own yet. Press New to make one."));
    m_list->setAccessibleName(tr("Engines"));
    m_status = new QLabel;
    m_status->setObjectName(u"stbStatus"_s);
    m_status->setTextFormat(Qt::PlainText);
    m_status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // addresses can be long
    m_status->setMinimumHeight(fontMetrics().lineSpacing());               // also while it says nothing

    m_fields = buildFields();
    auto *form = new QWidget;
    auto *formLayout = new QVBoxLayout(form);
    formLayout->setContentsMargins({});
    formLayout->addWidget(buildSource());
    formLayout->addWidget(m_fields);
    formLayout->addStretch();
    auto *right = new QSplitter(Qt::Vertical);
    right->addWidget(newPage(form));
    right->addWidget(buildTrial());
    right->setStretchFactor(0, 0);
    right->setStretchFactor(1, 1);
    right->setChildrenCollapsible(false);
    auto *both = new QSplitter(Qt::Horizontal);
    both->addWidget(m_list);
    both->addWidget(right);
    both->setStretchFactor(1, 1);
    both->setChildrenCollapsible(false);
    both->setSizes({fontMetrics().averageCharWidth() * 24, fontMetrics().averageCharWidth() * 110});
    auto *layout = new QVBoxLayout(this);
    layout->setMenuBar(buildToolBar());
    layout->addWidget(both, 1);
    layout->addWidget(m_status);
}

QWidget *frmEngineBuilder::buildToolBar()
{
    auto *bar = new QToolBar(tr("Engine Builder"));
    bar->setObjectName(u"tlbEngines"_s);
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    // The keys are said in the tip, as a tool button shows no access key.
    const auto add = [&](const QString &name, const QString &icon, const QString &text, const QString &tip,
                         const QKeySequence &keys, auto &&act) {
        QAction *action = bar->addAction(programIcon(icon), text);
        action->setObjectName(name);
        action->setShortcut(keys);
        action->setToolTip(keys.isEmpty() ? tip
                                          : u"%1 (%2)"_s.arg(tip, keys.toString(QKeySequence::NativeText)));
        connect(action, &QAction::triggered, this, act);
        return action;
    };
    const auto ctrl = [](Qt::Key key) { return QKeySequence(Qt::ControlModifier | key); };
    add(u"New"_s, u"project-new"_s, tr("&New"), tr("Define a further engine"), ctrl(Qt::Key_N),
        [this] { AddNew(); });
    m_save = add(u"Save"_s, u"save"_s, tr("&Save"), tr("Keep what is entered; closing writes the file"),
                 ctrl(Qt::Key_S), [this] { saveSelected(); });
    // Not the Delete key, which is the list's own: it is needed in the fields.
    m_delete = add(u"Delete"_s, u"project-delete"_s, tr("&Delete"), tr("Delete the selected engine"), {},
                   [this] { DeleteEngine(); });
    bar->addSeparator();
    add(u"Help"_s, u"help"_s, tr("&Help"), tr("Open the tutorial"), Qt::Key_F1, [this] { openHelp(); });
    add(u"Exit"_s, u"exit"_s, tr("E&xit"), tr("Write the file and close"), ctrl(Qt::Key_Q),
        [this] { accept(); });
    return bar;
}

QLineEdit *frmEngineBuilder::addText(QGridLayout &grid, int row, int column, const QString &caption,
                                     const QString &name, QString clsEngineData::*field)
{
    QLineEdit *text = newLineEdit(name);
    text->setMinimumWidth(fontMetrics().averageCharWidth() * 18);
    addHalf(grid, row, column, caption, text);
    m_texts.insert(text, field);
    return text;
}

QWidget *frmEngineBuilder::buildFields()
{
    using E = clsEngineData;
    auto *fields = new QGroupBox(tr("Engine"));
    fields->setObjectName(u"fraEngine"_s);
    auto *grid = new QGridLayout(fields);
    addText(*grid, 0, 0, tr("Engine Name:"), u"txtEngineName"_s, &E::EngineName);
    m_market = newList(u"cboMarket"_s, tr("Under which market the engine stands in the tree"));
    addHalf(*grid, 0, 1, tr("Market:"), m_market);
    m_engineKey = addText(*grid, 1, 0, tr("Engine Key:"), u"txtEngineKey"_s, &E::EngineKey);
    m_engineKey->setToolTip(tr("Part of the engine's own host name; listings that hold it are passed over"));
    m_engineURL = addText(*grid, 1, 1, tr("Engine URL:"), u"txtEngineURL"_s, &E::EngineURL);
    m_method = newList(u"cboSubmitMethod"_s, tr("How a query is sent"));
    addHalf(*grid, 2, 0, tr("SubmitMethod:"), m_method);
    m_query = addText(*grid, 2, 1, tr("Query String:"), u"txtQueryKeyword1"_s, &E::QueryKeyword1);
    m_query->setToolTip(tr("Goes behind the Engine URL; the keyword follows it, or stands in the place of "
                           "<KEYWORD>"));
    m_post = newLineEdit(u"txtPostString"_s, tr("Is sent; the keyword stands in the place of <KEYWORD>"));
    m_texts.insert(m_post, &E::PostString);
    m_postCaption = newCaption(tr("PostString:"), m_post);
    m_queryCaption = qobject_cast<QLabel *>(grid->itemAtPosition(2, 2)->widget());
    grid->addWidget(m_postCaption, 2, 2);
    grid->addWidget(m_post, 2, 3);

    struct Pair
    {
        QString begin, beginName;
        QString E::*beginField;
        QString end, endName;
        QString E::*endField;
    };
    const Pair pairs[] = {
        {tr("Results Start String:"), u"txtResultStartString"_s, &E::ResultStartString,
         tr("Results End String:"), u"txtResultEndString"_s, &E::ResultEndString},
        {tr("Section Start String:"), u"txtSectionstart"_s, &E::Sectionstart, tr("Section End String:"),
         u"txtSectionEnd"_s, &E::SectionEnd},
        {tr("Title Start String:"), u"txtbeginTitle"_s, &E::beginTitle, tr("Title End String:"),
         u"txtendTitle"_s, &E::endTitle},
        {tr("URL Start String:"), u"txtbeginURL"_s, &E::beginURL, tr("URL End String:"), u"txtendURL"_s,
         &E::endURL},
        {tr("Matches Start String"), u"txtbeginMatches"_s, &E::beginMatches, tr("Matches End String:"),
         u"txtendMatches"_s, &E::endMatches},
        {tr("Next Page1:"), u"txtNextPage1"_s, &E::NextPage1, tr("Next Page2:"), u"txtNextPage2"_s,
         &E::NextPage2},
        {tr("Next Page3:"), u"txtNextPage3"_s, &E::NextPage3, tr("Next Page4:"), u"txtNextPage4"_s,
         &E::NextPage4},
    };
    int row = 3;
    for (const Pair &pair : pairs) {
        addText(*grid, row, 0, pair.begin, pair.beginName, pair.beginField);
        addText(*grid, row, 1, pair.end, pair.endName, pair.endField);
        ++row;
    }
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    return fields;
}

QWidget *frmEngineBuilder::buildSource()
{
    auto *box = new QGroupBox(tr("Sample search"));
    auto *layout = new QHBoxLayout(box);
    m_searchURL = newLineEdit(u"txtSearchURL"_s, tr("The address that the browser shows behind a search"));
    m_searchURL->setPlaceholderText(u"http://www.engine.example/search?q=garden"_s);
    m_getSource = newButton(u"cmdGetSource"_s, tr("Get source from submit page"),
                            tr("Fill in the query, fetch the page and show its source"));
    layout->addWidget(newCaption(tr("Search URL:"), m_searchURL));
    layout->addWidget(m_searchURL, 1);
    layout->addWidget(m_getSource);
    return box;
}

QWidget *frmEngineBuilder::buildTrial()
{
    auto *box = new QGroupBox(tr("Try"));
    auto *layout = new QVBoxLayout(box);
    m_try = newButton(u"cmdTry"_s, tr("&Try"), tr("Run the strings over the page"));
    m_tryFile = newButton(u"cmdTryFile"_s, tr("&Page from disk..."), tr("Run the strings over a saved page"));
    m_trialText = new QLabel;
    m_trialText->setObjectName(u"lblTry"_s);
    m_trialText->setTextFormat(Qt::PlainText);
    m_trialText->setWordWrap(true);
    m_trialText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_trialText->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QScrollArea *text = newPage(m_trialText); // addresses can be long
    text->setFixedHeight(fontMetrics().lineSpacing() * 5);
    m_trial = new HintTree(u"lvwTry"_s, {tr("#"), tr("Title"), tr("URL")});
    m_trial->setHint(tr("Here stands what a lookup would find in the page."));
    m_trial->setAccessibleName(tr("Listings found"));
    m_trial->setMinimumHeight(fontMetrics().lineSpacing() * 6);
    m_trial->header()->resizeSection(0, fontMetrics().averageCharWidth() * 6);
    m_trial->header()->resizeSection(1, fontMetrics().averageCharWidth() * 45);
    m_trial->headerItem()->setTextAlignment(0, Qt::AlignRight | Qt::AlignVCenter);
    auto *buttons = new QVBoxLayout;
    buttons->addWidget(m_try);
    buttons->addWidget(m_tryFile);
    buttons->addStretch();
    auto *top = new QHBoxLayout;
    top->addWidget(text, 1);
    top->addLayout(buttons);
    layout->addLayout(top);
    layout->addWidget(m_trial, 1);
    return box;
}

void frmEngineBuilder::connectWidgets()
{
    connect(m_list, &QTreeWidget::currentItemChanged, this, &frmEngineBuilder::showSelected);
    connect(m_list, &HintTree::deletePressed, this, &frmEngineBuilder::DeleteEngine);
    connect(m_method, &QComboBox::currentIndexChanged, this, &frmEngineBuilder::showMethod);
    connect(m_getSource, &QPushButton::clicked, this, &frmEngineBuilder::getSource);
    connect(m_searchURL, &QLineEdit::returnPressed, this, &frmEngineBuilder::getSource);
    connect(m_try, &QPushButton::clicked, this, &frmEngineBuilder::tryOut);
    connect(m_tryFile, &QPushButton::clicked, this, &frmEngineBuilder::pickPage);
}

} // namespace sondrel
