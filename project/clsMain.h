// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QStringList>

namespace sondrel {

/// The list of project names and its file project.dat.
class clsMain
{
public:
    explicit clsMain(ApplicationContext &app);

    /// Appends the names in the file to the list. False when it failed.
    bool loadAccount(QStringList &projects);
    /// Writes the whole list.
    void SaveAccount(const QStringList &projects);

private:
    ApplicationContext &m_app;
    QString m_file;
    // False once the list could not be read: saving what is known of it would lose the rest.
    bool m_loaded = true;
};

} // namespace sondrel
