// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <functional>

class QWidget;

namespace sondrel::screenshots {

using Take = std::function<void(const QString &name, QWidget &window)>;

/// Shows every window of the program in turn, on the project "Demo", and has its picture taken.
void showWindows(ApplicationContext &app, const Take &take);
/// Those about search engines and suggestions, on the engines that come with the program; part of the former.
/// The source is the working directory.
void showEngineWindows(const Take &take);

} // namespace sondrel::screenshots
