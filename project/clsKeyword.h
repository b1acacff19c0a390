// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// One search term, or a further hit of one (term + "(" + number + ")"), and what the last lookup found for
/// it on one engine. Positions, pages, changes and counts are texts; an empty one is "no value".
class clsKeyword
{
public:
    QString Keyword;
    bool Optimize = true;
    QString CurPos;
    QString Page;
    QString LastPosition;
    QString Change;
    QString Count;  // as the engine wrote it
    QString Status; // short date of the last lookup, or "Failed"
    QString URL;

    bool operator==(const clsKeyword &) const = default;

    /// Derives the position from the saved listing when the tracked URL has changed.
    void ChangeURL(ApplicationContext &app, const QString &url, const QString &account);
};

} // namespace sondrel
