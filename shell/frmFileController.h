// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QWidget>

#include <functional>

class QLabel;
class QListWidget;
class QProgressBar;

namespace sondrel {

/// Loads and saves list boxes, and asks for files. The window itself is seen while a list passes, with how
/// far it is. Failures end silently with an empty result.
class frmFileController final : public QWidget
{
    Q_OBJECT

public:
    explicit frmFileController(ApplicationContext &app, QWidget *parent = nullptr);

    /// Adds the lines of a file to the list, up to 32001 entries, and enables the list.
    void openListFile(const QString &path, QListWidget &list);
    /// Writes every entry and CR LF over the beginning of the file.
    void saveListFile(const QString &path, const QListWidget &list);

    /// Shows the window while the given step loads a file; the step tells how much of it has been done.
    using Progress = std::function<void(qint64 done, qint64 all)>;
    void showWhile(const std::function<void(const Progress &)> &load);

    /// Asks for a file in the application folder: 0 to open one, 1 to save under a name. The filter has the
    /// form "Text Files (*.txt)|*.txt|All Files (*.*)|*.*"; which pair was chosen for saving comes back by
    /// filterIndex.
    QString GetFileName(int mode, const QString &filter, const QString &startName,
                        int *filterIndex = nullptr);
    /// The same with a question of the caller's, which says where to start.
    QString GetFileNameX(FileQuestion &question, bool saves, const QString &filter, const QString &startName,
                         int *filterIndex = nullptr);

private:
    class Shown;

    void showProgress(qint64 value);

    ApplicationContext &m_app;
    QLabel *m_message = nullptr;
    QProgressBar *m_progress = nullptr;
};

} // namespace sondrel
