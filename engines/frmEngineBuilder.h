// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "engines/engine_builder.h"
#include "lookup/frmRanking.h"
#include "shell/program_dialog.h"

#include <QHash>

#include <memory>

class QAction;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidgetItem;

namespace sondrel {

class HintTree;

/// Edits the search engines of the user's own. Nothing but its closing writes the file. A pane tries an
/// engine's strings out on a page before a lookup does.
class frmEngineBuilder final : public ProgramDialog
{
    Q_OBJECT

public:
    explicit frmEngineBuilder(ApplicationContext &app, QWidget *parent = nullptr);
    ~frmEngineBuilder() override;

    void LoadEngines();
    /// Empties every text box.
    void ClearFields();
    /// Stores the screen in the record of that key; nothing when there is none.
    void SaveObject(const QString &name);
    void SaveFile();

    void done(int result) override;
    QSize sizeHint() const override;

protected:
    void load() override;

private:
    void build();
    QWidget *buildToolBar();
    QWidget *buildFields();
    QWidget *buildSource();
    QWidget *buildTrial();
    QLineEdit *addText(QGridLayout &grid, int row, int column, const QString &caption, const QString &name,
                       QString clsEngineData::*field);
    void connectWidgets();

    void AddNew();
    void saveSelected();
    void DeleteEngine();
    void openHelp();
    void showSelected();
    void showRecord(const clsEngineData &engine);
    clsEngineData entered() const;
    void showMethod();
    void updateButtons();

    void getSource();
    void sourceCompleted(int errorCode, const QByteArray &body);
    void pickPage();
    void setPage(const QByteArray &bytes, const QString &name, const QString &url);
    void tryOut();

    EngineBuilder m_builder;
    QString m_shown; // key of the record on screen
    std::unique_ptr<frmRanking> m_http;
    QString m_sourceUrl; // being fetched

    QByteArray m_page; // to try the strings out on
    QString m_pageName;
    QString m_pageUrl;

    QHash<QLineEdit *, QString clsEngineData::*> m_texts;
    QAction *m_save = nullptr;
    QAction *m_delete = nullptr;
    HintTree *m_list = nullptr;
    QWidget *m_fields = nullptr;
    QComboBox *m_market = nullptr;
    QComboBox *m_method = nullptr;
    QLineEdit *m_engineKey = nullptr;
    QLineEdit *m_engineURL = nullptr;
    QLineEdit *m_query = nullptr;
    QLineEdit *m_post = nullptr;
    QLabel *m_queryCaption = nullptr;
    QLabel *m_postCaption = nullptr;
    QLineEdit *m_searchURL = nullptr;
    QPushButton *m_getSource = nullptr;
    QPushButton *m_try = nullptr;
    QPushButton *m_tryFile = nullptr;
    QLabel *m_trialText = nullptr;
    HintTree *m_trial = nullptr;
    QLabel *m_status = nullptr;
};

} // namespace sondrel
