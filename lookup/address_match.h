// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/collection.h"
#include "project/clsURL.h"

#include <vector>

namespace sondrel {

/// An address without scheme and "www.", its case folded.
class ShortAddress
{
public:
    explicit ShortAddress(QStringView url);

    QStringView text() const { return m_text; }
    QStringView host() const { return QStringView(m_text).first(m_hostSize); }
    /// Whether it names nothing below its host.
    bool isRoot() const { return m_text.size() <= m_hostSize + 1; }

private:
    QString m_text;
    qsizetype m_hostSize;
};

/// Whether a listing belongs to a tracked address: the hosts are the same, and one address occurs in the
/// other. An empty one holds nothing, not even another. A listing at the root of a host does not belong to a
/// tracked address with a path.
bool belongsTo(const ShortAddress &listing, const ShortAddress &tracked);

/// The same for addresses as they are; the reports compare by another rule (CompareURL).
bool SearchKeywordCompareURL(ApplicationContext &app, const QString &listingURL, const QString &trackedURL);

/// The tracked addresses of a project, shortened once for many listings.
class TrackedAddresses
{
public:
    /// urls may be null; empty addresses are left out.
    TrackedAddresses(ApplicationContext &app, const Collection<clsURL> *urls);

    /// How many of them a listing belongs to.
    int countOf(const QString &listingURL) const;

private:
    ApplicationContext &m_app;
    std::vector<ShortAddress> m_addresses;
};

} // namespace sondrel
