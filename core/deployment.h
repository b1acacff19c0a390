// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QString>

namespace sondrel {

/// What a build is given by whoever publishes it: its title and the vendor's addresses. Addresses of sites
/// have their scheme and no "/" at the end, so that a path can be put behind them.
struct Deployment
{
    QString Title;
    QString SupportEmail;
    QString SalesMailbox;
    QString VendorHost;
    QString KnowledgeBase;
    QString EngineDataHost;
    QString TutorialSite;
    QString StatisticsSite;
    /// Some address of a foreign site, for advice on links.
    QString ExampleURL;

    bool operator==(const Deployment &) const = default;

    /// The values of the deployment.ini that this program was built with.
    static const Deployment &builtIn();
    /// The values of a file of that form; what it lacks is built in.
    static Deployment read(const QByteArray &bytes);
    /// The values of deployment.ini in the given folder; built-in ones when there is none. Throws Failure
    /// when it cannot be read.
    static Deployment load(const QString &folder);
};

} // namespace sondrel
