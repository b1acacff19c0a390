#include "demo/screenshots/windows.h"

#include "engines/clsEngine.h"
#include "engines/frmEngineBuilder.h"
#include "engines/frmUpdateEngines.h"
#include "keywords/frmKeywordBuilder.h"
#include "tests/doors/manual_clock.h"
#include "tests/doors/memory_settings.h"
#include "tests/doors/recording_desktop.h"
#include "tests/doors/scripted_http.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace sondrel::screenshots {

namespace {

// Of the source, where the pictures are taken.
QByteArray readSource(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(name));
    return file.readAll();
}

// A program of its own with the engines that come with it, whose every request gets the same answer.
struct StarterProgram
{
    explicit StarterProgram(const QString &answer)
    {
        app.files.writeAll(app.EngineDataFile, readSource(u"data/qlteng4.dat"_s));
        catalogue.loadEngineData();
        app.EngineCatalogue = &catalogue;
        http.autoAnswer = [body = readSource(answer)](const ScriptedHttp::Request &) { return body; };
    }

    QTemporaryDir folder;
    ManualClock clock{QDateTime(QDate(2026, 11, 15), QTime(10, 0))};
    RecordingDesktop desktop;
    MemorySettings settings;
    ScriptedHttp http;
    ApplicationContext app{folder.path(), folder.path(), Doors{clock, desktop, settings, http},
                           QLocale(QLocale::English, QLocale::UnitedStates)};
    clsEngine catalogue{app};
};

void enter(QWidget &dialog, const QString &name, const QString &text)
{
    dialog.findChild<QLineEdit *>(name)->setText(text);
}

// Presses a button and waits for the answer, where it asks for one.
void press(StarterProgram &program, QWidget &dialog, const QString &name)
{
    dialog.findChild<QPushButton *>(name)->click();
    while (program.http.pending() > 0)
        QApplication::processEvents();
}

void takeEngineBuilder(const Take &take)
{
    StarterProgram program(u"tests/engines/pages/mojeek/javascript-2026-04-first-half.html"_s);
    frmEngineBuilder dialog(program.app);
    dialog.show();
    dialog.resize(dialog.sizeHint()); // whatever the screen
    program.desktop.texts = {u"My Mojeek"_s};
    dialog.findChild<QAction *>(u"New"_s)->trigger();
    take(u"engine-builder-new"_s, dialog);

    enter(dialog, u"txtSearchURL"_s, u"https://www.mojeek.com/search?q=javascript+tutorial"_s);
    press(program, dialog, u"cmdGetSource"_s);
    take(u"engine-builder-source"_s, dialog);

    const std::pair<const char *, const char *> strings[] = {
        {"txtEngineURL", "https://www.mojeek.com"},
        {"txtQueryKeyword1", "/search?q="},
        {"txtResultStartString", "<ul class=\"results-standard\""},
        {"txtResultEndString", "class=\"pagination\""},
        {"txtSectionstart", "<li class=\"r"},
        {"txtSectionEnd", "</li>"},
        {"txtbeginTitle", "<h2>"},
        {"txtendTitle", "</h2>"},
        {"txtbeginURL", "href=\""},
        {"txtendURL", "\""},
        {"txtbeginMatches", "Results 1 to 10 from"},
        {"txtendMatches", "in"},
        {"txtNextPage1", "\">Next<"},
    };
    for (const auto &[name, text] : strings)
        enter(dialog, QString::fromLatin1(name), QString::fromLatin1(text));
    press(program, dialog, u"cmdTry"_s);
    take(u"engine-builder"_s, dialog);
}

void takeEngineUpdate(const Take &take)
{
    StarterProgram program(u"README.md"_s); // no engine data
    frmUpdateEngines dialog(program.app);
    dialog.show();
    take(u"engine-update"_s, dialog);
    press(program, dialog, u"cmdStart"_s);
    take(u"engine-update-refused"_s, dialog);
}

void takeKeywordBuilder(const Take &take)
{
    StarterProgram program(u"tests/engines/pages/suggest/google-toolbar.txt"_s);
    frmKeywordBuilder dialog(program.app);
    dialog.Prepare();
    dialog.show();
    dialog.findChild<QComboBox *>(u"cboKeyword"_s)->setEditText(u"garden tools"_s);
    press(program, dialog, u"cmdGet"_s);
    take(u"keyword-builder"_s, dialog);
}

} // namespace

void showEngineWindows(const Take &take)
{
    takeEngineBuilder(take);
    takeEngineUpdate(take);
    takeKeywordBuilder(take);
}

} // namespace sondrel::screenshots
