// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

// What is told at the start when something that the program keeps cannot be used; empty when all is well.
// Nothing is lost: a damaged file is kept under a name of its own.

/// The settings file, in the system's spelling, before anything reads it. A damaged one is moved aside, so
/// that the program starts with its usual settings; one that cannot be read is left alone.
QString putAsideDamagedSettings(const QString &settingsFile);

/// The project list. A damaged one is copied, and replaced by a list of the names that can be read in it.
QString repairProjectList(ApplicationContext &app);

/// The application folder, when nothing can be written there.
QString unwritableFolder(const ApplicationContext &app);

} // namespace sondrel
