// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// Where the vendor publishes the engine data file.
QString engineDataAddress(const ApplicationContext &app);
/// Whether a fetched body is an engine data file; an error page is not.
bool isEngineData(const ApplicationContext &app, QByteArrayView body);
/// Replaces the engine data file by the body and a line end. The old one stays in a copy beside it. Throws
/// Failure, with the old file in place.
void replaceEngineData(ApplicationContext &app, QByteArrayView body);

} // namespace sondrel
