#include "core/clsDealerProfile.h"

#include "core/profile_file.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

clsDealerProfile builtIn(const Deployment &deployment)
{
    clsDealerProfile vendor;
    vendor.Dealername = u"Kestrune Pty Ltd"_s;
    vendor.DealerEmail = deployment.SalesMailbox;
    vendor.OrderWebSite = deployment.VendorHost + u"/order.html"_s;
    vendor.DealerURL = deployment.VendorHost + u"/index.html"_s;
    vendor.UpdateURL = deployment.VendorHost + u"/upgrade.html"_s;
    vendor.SupportURL = deployment.VendorHost + u"/support.html"_s;
    vendor.TipsURL = deployment.TutorialSite + u'/';
    vendor.TutorialURL = deployment.TutorialSite + u'/';
    vendor.SiteStatsURL = deployment.StatisticsSite + u'/';
    return vendor;
}

clsDealerProfile fromFile(const ProfileFile &file)
{
    const auto read = [&](const QString &key) { return file.read(u"Dealer"_s, key); };
    clsDealerProfile dealer;
    dealer.Dealername = read(u"Name"_s);
    dealer.DealerEmail = read(u"Email"_s);
    dealer.OrderWebSite = read(u"WebSite"_s);
    dealer.DealerURL = read(u"Home"_s);
    dealer.UpdateURL = read(u"UpdateURL"_s);
    dealer.SupportURL = read(u"SupportURL"_s);
    dealer.TipsURL = read(u"TipsPage"_s);
    dealer.TutorialURL = read(u"TutorialPage"_s);
    dealer.SiteStatsURL = read(u"SiteStatsURL"_s);
    return dealer;
}

clsDealerProfile fromFile(ApplicationContext &app)
{
    try {
        return fromFile(ProfileFile::load(app, app.SystemDirectory + u"orbelsoft.ini"_s));
    } catch (const std::exception &) {
        return {}; // a file that cannot be read names no dealer
    }
}

void fill(QString &gap, const QString &value)
{
    if (gap.isEmpty())
        gap = value;
}

} // namespace

void clsDealerProfile::GetSettings(ApplicationContext &app)
{
    const clsDealerProfile vendor = builtIn(app.deployment);
    *this = fromFile(app);
    if (Dealername.isEmpty() || OrderWebSite.isEmpty()) {
        *this = vendor;
        return;
    }
    fill(DealerURL, vendor.OrderWebSite);
    fill(UpdateURL, vendor.UpdateURL);
    fill(SupportURL, vendor.SupportURL);
    fill(TipsURL, vendor.TipsURL);
    fill(SiteStatsURL, vendor.SiteStatsURL);
    if (TutorialURL.isEmpty())
        TipsURL = vendor.TutorialURL; // dealers' files rely on this crossing
}

} // namespace sondrel
