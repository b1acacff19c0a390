// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "engines/clsEngine.h"

#include <QStringList>

#include <functional>

namespace sondrel {

class ProfileFile;

/// The engines that have a suggestion service.
QStringList suggestionEngines(const ProfileFile &engineData);

/// The address that asks for suggestions. Blanks within the keyword become "+"; nothing else is escaped.
QString suggestionAddress(const EngineRow &engine, const QString &keyword);

/// Hands over each suggestion of a page with its count, in order, until one lacks a part. Searches mind the
/// case. What take throws ends the reading too, and is passed on.
void readSuggestions(ApplicationContext &app, const EngineRow &engine, QStringView page,
                     const std::function<void(const QString &keyword, const QString &count)> &take);

} // namespace sondrel
