#include "engines/frmEngineBuilder.h"

#include "core/entered_text.h"
#include "core/modCommon.h"
#include "shell/hint_tree.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString Title = u"Engine Builder"_s;

// An entry of a fixed list, the first one for what is not in it.
void choose(QComboBox &list, const QString &text)
{
    list.setCurrentIndex(std::max(0, list.findText(text, Qt::MatchFixedString)));
}

} // namespace

frmEngineBuilder::frmEngineBuilder(ApplicationContext &app, QWidget *parent)
    : ProgramDialog(app, u"frmEngineBuilder"_s, parent), m_builder(app)
{
    build();
    connectWidgets();
}

frmEngineBuilder::~frmEngineBuilder() = default;

void frmEngineBuilder::load()
{
    m_market->addItems(EngineBuilder::markets());
    m_method->addItems(EngineBuilder::submitMethods());
    LoadEngines();
    m_list->selectRow(0);
    updateButtons();
    tryOut();
}

void frmEngineBuilder::LoadEngines()
{
    m_list->clear();
    m_builder.LoadEngines();
    for (const QString &name : m_builder.names())
        m_list->addRow({name});
}

void frmEngineBuilder::AddNew()
{
    const auto name = m_builder.AddNew();
    if (!name)
        return;
    m_list->addRow({*name});
    m_list->selectRow(m_list->topLevelItemCount() - 1);
    m_searchURL->setFocus();
}

void frmEngineBuilder::saveSelected()
{
    if (const QTreeWidgetItem *row = m_list->currentItem())
        SaveObject(row->text(0));
}

void frmEngineBuilder::SaveObject(const QString &name)
{
    m_builder.SaveObject(name, entered());
}

void frmEngineBuilder::DeleteEngine()
{
    reportFailure(app(), u"frmEngineBuilder_DeleteEngine error: "_s, [this] {
        const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
        if (row < 0)
            return;
        m_builder.remove(m_list->topLevelItem(row)->text(0));
        m_shown.clear();
        {
            const QSignalBlocker silent(m_list);
            delete m_list->takeTopLevelItem(row);
            m_list->setCurrentItem(nullptr);
        }
        if (m_list->topLevelItemCount() > 0)
            m_list->selectRow(0);
        else
            ClearFields();
    });
    updateButtons();
}

void frmEngineBuilder::ClearFields()
{
    reportFailure(app(), u"frmEngineBuilder_ClearFields error: "_s, [this] {
        for (QLineEdit *field : findChildren<QLineEdit *>())
            field->clear();
    });
}

void frmEngineBuilder::openHelp()
{
    ShellOpenDocument(
        app(), app().deployment.KnowledgeBase + u"/knowledgebase/tutorial/sondrel/enginebuilder.html"_s,
        ShowMode::Normal);
}

void frmEngineBuilder::showSelected()
{
    reportFailure(app(), u"frmEngineBuilder_lvwEngines_ItemClick error: "_s, [this] {
        const QTreeWidgetItem *row = m_list->currentItem();
        if (!row)
            return;
        SaveObject(m_shown);
        m_shown = row->text(0);
        showRecord(m_builder.Engines().at(m_shown));
    });
    updateButtons();
}

void frmEngineBuilder::showRecord(const clsEngineData &engine)
{
    for (auto text = m_texts.cbegin(); text != m_texts.cend(); ++text)
        text.key()->setText(engine.*text.value());
    for (QLineEdit *field : m_texts.keys())
        field->setCursorPosition(0);
    choose(*m_market, engine.Market);
    choose(*m_method, engine.SubmitMethod);
    showMethod();
}

clsEngineData frmEngineBuilder::entered() const
{
    clsEngineData engine;
    for (auto text = m_texts.cbegin(); text != m_texts.cend(); ++text)
        engine.*text.value() = enteredExactly(text.key()->text());
    // In these no blank at an end can mean anything; in the strings to be found it may.
    for (const auto field :
         {&clsEngineData::EngineName, &clsEngineData::EngineKey, &clsEngineData::EngineURL})
        engine.*field = enteredLine(engine.*field);
    engine.Market = m_market->currentText();
    engine.SubmitMethod = m_method->currentText();
    return engine;
}

void frmEngineBuilder::showMethod()
{
    const bool posts = m_method->currentIndex() == 1;
    m_query->setVisible(!posts);
    m_queryCaption->setVisible(!posts);
    m_post->setVisible(posts);
    m_postCaption->setVisible(posts);
}

void frmEngineBuilder::updateButtons()
{
    const bool hasRow = m_list->currentItem() != nullptr;
    m_save->setEnabled(hasRow);
    m_delete->setEnabled(hasRow);
    m_fields->setEnabled(hasRow);
}

void frmEngineBuilder::SaveFile()
{
    m_status->setText(u"Save file please wait... "_s);
    m_status->repaint();
    SaveObject(m_shown);
    m_builder.SaveFile();
    m_status->clear();
}

QSize frmEngineBuilder::sizeHint() const
{
    constexpr int Letters = 150; // of which the strings get as many as they mostly have
    return ProgramDialog::sizeHint().expandedTo({fontMetrics().averageCharWidth() * Letters, 0});
}

void frmEngineBuilder::done(int result)
{
    SaveFile();
    m_http.reset();
    app().desktop.resetPointer(); // a page may still have been waited for
    ProgramDialog::done(result);
}

void frmEngineBuilder::getSource()
{
    const QString url = enteredLine(m_searchURL->text());
    if (url.isEmpty()) {
        app().desktop.showMessage({Title, u"Please specify the full URL of the keyword search string."_s});
        m_searchURL->setFocus();
        return;
    }
    m_status->setText(u"Please wait while retrieving data from "_s + url + u" ...."_s);
    app().desktop.beginWait();
    const SearchAddress address = dividedSearchAddress(app(), url);
    m_engineURL->setText(address.EngineURL);
    m_engineKey->setText(address.EngineKey);
    m_query->setText(address.QueryKeyword1);
    m_query->setCursorPosition(0);
    choose(*m_method, u"Get"_s);
    m_sourceUrl = url;
    m_http = std::make_unique<frmRanking>(app());
    connect(m_http.get(), &frmRanking::Completed, this,
            [this](int, int errorCode, const QByteArray &body) { sourceCompleted(errorCode, body); });
    m_http->Connections = 1;
    m_http->load();
    m_http->Connect(1, url, u"GET"_s);
}

void frmEngineBuilder::sourceCompleted(int errorCode, const QByteArray &body)
{
    reportFailure(app(), u"frmEngineBuilder_m_frmHttp_Completed error: "_s, [&] {
        if (errorCode != 0 || body.isEmpty()) {
            app().desktop.showMessage(
                {Title, u"Unable to connect to URL. Please check the search URL and try again."_s});
            return;
        }
        setPage(body, m_sourceUrl, m_sourceUrl);
        const QString file = app().appFile({u"temp.txt"_s});
        app().files.writeAll(file, body);
        ShellOpenDocument(app(), app().files.find(file).value_or(file), ShowMode::Normal);
    });
    m_status->clear();
    app().desktop.resetPointer();
}

} // namespace sondrel
