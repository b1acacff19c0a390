#include "lookup/address_match.h"

#include "core/text_fold.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString compareTag()
{
    return u" clsSearchKeyword_CompareURL: "_s;
}

QStringView shortened(QStringView url)
{
    url = trimBlanks(url);
    if (const qsizetype scheme = url.indexOf(u"//"_s); scheme >= 0)
        url = url.sliced(scheme + 2);
    return startsWithIgnoringCase(url, u"www.") ? url.sliced(4) : url;
}

} // namespace

ShortAddress::ShortAddress(QStringView url) : m_text(folded(shortened(url))), m_hostSize(m_text.indexOf(u'/'))
{
    if (m_hostSize < 0)
        m_hostSize = m_text.size();
}

bool belongsTo(const ShortAddress &listing, const ShortAddress &tracked)
{
    if (listing.host() != tracked.host() || (listing.isRoot() && !tracked.isRoot()))
        return false;
    if (listing.text().isEmpty() && tracked.text().isEmpty())
        return false; // an empty text holds nothing, not even an empty one
    return indexOfExactly(listing.text(), tracked.text()) >= 0 ||
           indexOfExactly(tracked.text(), listing.text()) >= 0;
}

bool SearchKeywordCompareURL(ApplicationContext &app, const QString &listingURL, const QString &trackedURL)
{
    bool result = false;
    reportFailure(app, compareTag(),
                  [&] { result = belongsTo(ShortAddress(listingURL), ShortAddress(trackedURL)); });
    return result;
}

TrackedAddresses::TrackedAddresses(ApplicationContext &app, const Collection<clsURL> *urls) : m_app(app)
{
    if (!urls)
        return;
    m_addresses.reserve(static_cast<std::size_t>(urls->Count()));
    for (const clsURL &url : *urls) {
        if (!url.URL.isEmpty())
            m_addresses.emplace_back(url.URL);
    }
}

int TrackedAddresses::countOf(const QString &listingURL) const
{
    std::ptrdiff_t count = 0;
    reportFailure(m_app, compareTag(), [&] {
        const ShortAddress listing(listingURL);
        count = std::count_if(m_addresses.begin(), m_addresses.end(),
                              [&](const ShortAddress &tracked) { return belongsTo(listing, tracked); });
    });
    return static_cast<int>(count);
}

} // namespace sondrel
