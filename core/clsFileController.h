// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// Reads and writes whole text files in the system code page, under the wait cursor. Failures end silently
/// with an empty result.
class clsFileController
{
public:
    explicit clsFileController(ApplicationContext &app) : m_app(app) {}

    /// The whole text, empty when the file is missing.
    QString openTextFile(const QString &path) const;
    /// Replaces the file by the text and CR LF, after a question when asked to and the file exists. An empty
    /// path does nothing. True when the file was written.
    bool saveTextFile(const QString &path, const QString &text, bool ask = false) const;

private:
    ApplicationContext &m_app;
};

} // namespace sondrel
