// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/collection.h"
#include "project/clsURL.h"

#include <optional>
#include <vector>

// The list of all URLs known on this machine, qltULs.dat in the system directory, from which a project picks.

namespace sondrel {

/// A row of the list.
struct KnownURL
{
    QString URL;
    bool Checked = false; // the project has it

    bool operator==(const KnownURL &) const = default;
};

/// The known URLs, those of the project (null for none) checked; the spelling decides. Throws Failure when
/// the file is there and cannot be read.
std::vector<KnownURL> loadKnownURLs(ApplicationContext &app, const Collection<clsURL> *chosen);
/// Writes the whole list; throws Failure when it cannot be written.
void saveKnownURLs(ApplicationContext &app, const std::vector<KnownURL> &rows);

/// The row that a typed text makes: the text behind "://". Nothing when it is no URL, or one that the files
/// cannot hold.
std::optional<QString> typedURL(const ApplicationContext &app, const QString &text);

/// The checked rows as a project's URLs, none of them a competitor's.
Collection<clsURL> checkedURLs(const std::vector<KnownURL> &rows);

} // namespace sondrel
