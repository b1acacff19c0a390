#include "reports/clsReporter.h"

#include "core/clsDealerProfile.h"
#include "core/clsPreference.h"
#include "core/modCommon.h"
#include "core/text_fold.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString &firstFilled(const QString &own, const QString &fallback)
{
    return own.isEmpty() ? fallback : own;
}

} // namespace

bool clsReporter::hasLogoAtTop() const
{
    return !LogoURL.isEmpty() && containsIgnoringCase(LogoPosition, u"Top");
}

bool clsReporter::hasLogoAtBottom() const
{
    return !LogoURL.isEmpty() && containsIgnoringCase(LogoPosition, u"Bottom");
}

clsReporter SetReporter(ApplicationContext &app)
{
    clsReporter reporter;
    reportFailure(app, u"SetReporter_Error"_s, [&] {
        clsPreference preference;
        preference.GetSettings(app);
        clsDealerProfile dealer;
        dealer.GetSettings(app);
        reporter.Company = firstFilled(preference.CompanyName, dealer.Dealername);
        reporter.Name = firstFilled(preference.ReporterName, app.deployment.Title);
        reporter.Email = firstFilled(preference.Email, dealer.DealerEmail);
        reporter.URL = AddHTTPToURL(app, firstFilled(preference.WebSite, dealer.DealerURL));
        reporter.LogoPosition = preference.LogoPosition;
        reporter.LogoURL = preference.LogoURL;
        reporter.TutorialPage = AddHTTPToURL(app, dealer.TutorialURL);
    });
    return reporter;
}

} // namespace sondrel
