#include "shell/frmFileController.h"

#include "shell/center_form.h"
#include "shell/list_file.h"

#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QVBoxLayout>

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int EntriesPerStep = 500; // between two looks at the window

// Steps that end silently: their callers see an empty result.
template <typename Step>
void ignoringFailures(Step &&step)
{
    try {
        step();
    } catch (const std::exception &) {
        return;
    }
}

} // namespace

// Keeps the window on the screen for as long as a list passes.
class frmFileController::Shown
{
public:
    Shown(frmFileController &window, const QString &message, qint64 maximum) : m_window(window)
    {
        m_window.m_message->setText(message);
        m_window.m_progress->setMaximum(
            static_cast<int>(std::min<qint64>(maximum, std::numeric_limits<int>::max())));
        m_window.m_progress->setValue(0);
        m_window.resize(m_window.sizeHint());
        CenterForm(m_window);
        m_window.show();
        m_window.m_app.desktop.runPendingEvents();
    }
    ~Shown() { m_window.hide(); }
    Shown(const Shown &) = delete;
    Shown &operator=(const Shown &) = delete;

private:
    frmFileController &m_window;
};

frmFileController::frmFileController(ApplicationContext &app, QWidget *parent)
    : QWidget(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint), m_app(app)
{
    setObjectName(u"frmFileController"_s);
    setWindowTitle(tr("Open/Save File"));
    // Nobody is to change a list that is half loaded.
    setWindowModality(Qt::ApplicationModal);
    m_message = new QLabel;
    m_message->setObjectName(u"lblMessage"_s);
    m_progress = new QProgressBar;
    m_progress->setObjectName(u"ProgressBar1"_s);
    m_progress->setAccessibleName(tr("Progress"));
    constexpr int WidthInLetters = 40;
    m_progress->setMinimumWidth(fontMetrics().averageCharWidth() * WidthInLetters);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_message);
    layout->addWidget(m_progress);
}

void frmFileController::showProgress(qint64 value)
{
    m_progress->setValue(static_cast<int>(std::min<qint64>(value, m_progress->maximum())));
    m_app.desktop.runPendingEvents();
}

void frmFileController::showWhile(const std::function<void(const Progress &)> &load)
{
    constexpr int Steps = 100;
    const Shown shown(*this, u"Please wait for loading file ......"_s, Steps);
    load([this](qint64 done, qint64 all) { showProgress(all > 0 ? Steps * done / all : Steps); });
}

void frmFileController::openListFile(const QString &path, QListWidget &list)
{
    ignoringFailures([&] {
        ListFileReader file(m_app, path);
        const Shown shown(*this, u"Please wait for loading file ......"_s, file.length());
        QStringList lines;
        const auto add = [&] {
            list.addItems(lines);
            lines.clear();
            showProgress(file.position());
        };
        while (const auto line = file.next()) {
            lines.append(*line);
            const bool full = list.count() + lines.size() > MostListEntries;
            if (full || lines.size() >= EntriesPerStep)
                add();
            if (full)
                break;
        }
        add();
        list.setEnabled(true);
    });
}

void frmFileController::saveListFile(const QString &path, const QListWidget &list)
{
    ignoringFailures([&] {
        const Shown shown(*this, u"Please wait for saving to file ......"_s, list.count());
        QByteArray bytes;
        for (int row = 0; row < list.count(); ++row) {
            bytes += m_app.toBytes(list.item(row)->text()) + "\r\n";
            if ((row + 1) % EntriesPerStep == 0)
                showProgress(row + 1);
        }
        overwriteListFile(m_app, path, bytes);
        showProgress(list.count());
    });
}

QString frmFileController::GetFileName(int mode, const QString &filter, const QString &startName,
                                       int *filterIndex)
{
    constexpr int Saves = 1;
    FileQuestion question;
    question.folder = m_app.AppPath;
    return GetFileNameX(question, mode == Saves, filter, startName, filterIndex);
}

QString frmFileController::GetFileNameX(FileQuestion &question, bool saves, const QString &filter,
                                        const QString &startName, int *filterIndex)
{
    QString chosen;
    ignoringFailures([&] {
        question.kind = saves ? FilePick::Save : FilePick::Open;
        question.filter = filter;
        question.name = saves ? startName : QString();
        chosen = m_app.desktop.pickFile(question);
        if (saves && filterIndex && !chosen.isEmpty())
            *filterIndex = question.filterIndex;
    });
    return chosen;
}

} // namespace sondrel
