// Pictures of the windows for engines and suggestions, for the manual: engine_pictures FOLDER [dark]
#include "engines/frmEngineBuilder.h"
#include "engines/frmUpdateEngines.h"
#include "keywords/frmKeywordBuilder.h"
#include "project/clsKeywords.h"
#include "tests/support/source_tree.h"
#include "tests/support/world.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QStandardPaths>
#include <QStyleFactory>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class Pictures
{
public:
    explicit Pictures(const QString &folder) : m_folder(folder)
    {
        QDir().mkpath(folder);
        world.writeEngineData(source(u"data/qlteng4.dat"_s));
        clsEngine catalogue(world.app);
        catalogue.loadEngineData();
    }

    void take()
    {
        engineBuilder();
        engineUpdate();
        keywordBuilder();
    }

private:
    static QByteArray source(const QString &path)
    {
        QFile file(sourceFile(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void click(const QWidget &window, const QString &name)
    {
        window.findChild<QAbstractButton *>(name)->click();
    }
    void save(QWidget &window, const QString &name)
    {
        QApplication::processEvents();
        window.grab().save(m_folder + u'/' + name + u".png"_s);
    }

    void engineBuilder()
    {
        world.desktop.texts = {u"My Mojeek"_s, u"Shop Search"_s};
        EngineBuilder file(world.app);
        for (const QString &name : {u"My Mojeek"_s, u"Shop Search"_s}) {
            file.AddNew();
            clsEngineData engine;
            engine.EngineName = name;
            engine.Market = u"US/Global"_s;
            engine.SubmitMethod = u"Get"_s;
            file.SaveObject(name, engine);
        }
        file.SaveFile();

        frmEngineBuilder dialog(world.app);
        dialog.show();
        save(dialog, u"engine-builder-new"_s);
        const QString url = u"https://www.mojeek.com/search?q=javascript+tutorial"_s;
        dialog.findChild<QLineEdit *>(u"txtSearchURL"_s)->setText(url);
        click(dialog, u"cmdGetSource"_s);
        world.http.answer(world.http.requests.size() - 1,
                          source(u"tests/engines/pages/mojeek/javascript-2026-04-first-half.html"_s));
        save(dialog, u"engine-builder-source"_s);
        for (const auto &[field, text] : std::initializer_list<std::pair<QString, QString>>{
                 {u"txtEngineURL"_s, u"https://www.mojeek.com"_s},
                 {u"txtEngineKey"_s, u"mojeek."_s},
                 {u"txtQueryKeyword1"_s, u"/search?q="_s},
                 {u"txtResultStartString"_s, u"<ul class=\"results-standard\""_s},
                 {u"txtResultEndString"_s, u"class=\"pagination\""_s},
                 {u"txtSectionstart"_s, u"<li class=\"r"_s},
                 {u"txtSectionEnd"_s, u"</li>"_s},
                 {u"txtbeginTitle"_s, u"<h2>"_s},
                 {u"txtendTitle"_s, u"</h2>"_s},
                 {u"txtbeginURL"_s, u"href=\""_s},
                 {u"txtendURL"_s, u"\""_s},
                 {u"txtbeginMatches"_s, u"Results 1 to 10 from"_s},
                 {u"txtendMatches"_s, u"in"_s},
                 {u"txtNextPage1"_s, u"\">Next<"_s}})
            dialog.findChild<QLineEdit *>(field)->setText(text);
        for (QLineEdit *field : dialog.findChildren<QLineEdit *>())
            field->setCursorPosition(0);
        click(dialog, u"cmdTry"_s);
        save(dialog, u"engine-builder"_s);
    }

    void engineUpdate()
    {
        frmUpdateEngines dialog(world.app);
        dialog.show();
        save(dialog, u"engine-update-start"_s);
        click(dialog, u"cmdStart"_s);
        save(dialog, u"engine-update-running"_s);
        world.http.answer(world.http.requests.size() - 1, "<html>");
        save(dialog, u"engine-update-refused"_s);
        click(dialog, u"cmdStart"_s);
        world.http.answer(world.http.requests.size() - 1, source(u"data/qlteng4.dat"_s));
        save(dialog, u"engine-update"_s);
    }

    void keywordBuilder()
    {
        clsKeywords keywords(world.app);
        frmKeywordBuilder dialog(world.app);
        dialog.keywordsObject = &keywords;
        dialog.Prepare();
        dialog.show();
        save(dialog, u"keyword-builder-empty"_s);
        dialog.findChild<QComboBox *>(u"cboKeyword"_s)->setEditText(u"garden tools"_s);
        click(dialog, u"cmdGet"_s);
        save(dialog, u"keyword-builder-running"_s);
        world.http.answer(world.http.requests.size() - 1,
                          source(u"tests/engines/pages/suggest/google-toolbar.txt"_s));
        save(dialog, u"keyword-builder"_s);
    }

    World world;
    QString m_folder;
};

QPalette darkColours()
{
    QPalette dark(QColor(45, 45, 48));
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::AlternateBase, QColor(38, 38, 40));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(role, QColor(230, 230, 230));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(QPalette::Disabled, role, QColor(130, 130, 130));
    dark.setColor(QPalette::PlaceholderText, QColor(150, 150, 150));
    return dark;
}

} // namespace

int main(int argc, char **argv)
{
    QStandardPaths::setTestModeEnabled(true);
    const QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2)
        return 2;
    if (arguments.contains(u"dark"_s))
        QApplication::setPalette(darkColours());
    Pictures(arguments[1]).take();
    return 0;
}
