// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

#include <functional>

namespace sondrel {

/// Runs a step in a process of its own that is not root, since root may read and write everything: what the
/// step finds must come back as its answer. Folders that it is to reach are given to that user first.
bool asOrdinaryUser(const QString &folder, const std::function<bool()> &step);

} // namespace sondrel
