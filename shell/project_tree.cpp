#include "shell/project_tree.h"

#include "core/modCommon.h"
#include "core/text_fold.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto MarketPrefix = "Root"_L1;
constexpr auto EnginePrefix = "Engine"_L1;

} // namespace

std::vector<MarketNode> projectTree(ApplicationContext &app, const std::optional<Collection<QString>> &names,
                                    const Collection<QString> *engines)
{
    std::vector<MarketNode> tree;
    if (!names || !engines)
        return tree;
    for (const QString &name : *names) {
        const qsizetype cut = name.indexOf(u'|');
        if (cut < 0)
            continue;
        const QString engine = name.sliced(cut + 1);
        if (!IsCollectionItem(app, engine, engines))
            continue;
        const QString market = name.first(cut);
        if (tree.empty() || tree.back().Market != market)
            tree.push_back({market, {}});
        tree.back().Engines.append(engine);
    }
    return tree;
}

QString marketKey(const QString &market)
{
    return MarketPrefix + market;
}

QString engineKey(const QString &engine)
{
    return EnginePrefix + engine;
}

bool isEngineKey(const QString &key)
{
    return containsIgnoringCase(key, u"Engine");
}

std::optional<QString> enginePageAddress(const QString &address, bool login)
{
    QString target = address;
    if (login && containsIgnoringCase(target, u"overture"))
        target = replacedIgnoringCase(target, u"://a-", u"://");
    // The first "." before position 9, or "://" before position 4, counted from 1: nothing to open.
    if (target.indexOf(u'.') + 1 < 9 || target.indexOf("://"_L1) + 1 < 4)
        return std::nullopt;
    return target;
}

} // namespace sondrel
