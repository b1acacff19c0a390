// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/collection.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace sondrel {

class ApplicationContext;

/// One market of the engine tree, with those of its engines that a project uses.
struct MarketNode
{
    QString Market;
    QStringList Engines;

    bool operator==(const MarketNode &) const = default;
};

/// The tree of a project's engines in the catalogue's order: a market node wherever the market differs from
/// that of the engine before. names are the catalogue's "Market|Engine" items, nothing when it has none;
/// engines the project's, null for none.
std::vector<MarketNode> projectTree(ApplicationContext &app, const std::optional<Collection<QString>> &names,
                                    const Collection<QString> *engines);

/// Keys of nodes in trees of markets and engines.
QString marketKey(const QString &market);
QString engineKey(const QString &engine);
/// True when a node's key is one of an engine.
bool isEngineKey(const QString &key);

/// The address that "Go to Engine" opens; nothing when it is no valid address.
std::optional<QString> enginePageAddress(const QString &address, bool login);

} // namespace sondrel
