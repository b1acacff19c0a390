#include "shell/about_text.h"

#include "core/clsDealerProfile.h"
#include "version.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

AboutText aboutText(ApplicationContext &app)
{
    clsDealerProfile dealer;
    dealer.GetSettings(app);
    const QString version =
        u"%1.%2.%3"_s.arg(VersionMajor).arg(VersionMinor).arg(VersionRevision, 2, 10, QChar(u'0'));
    return {u"About "_s + app.deployment.Title,
            u"Version: "_s + version,
            dealer.Dealername,
            u"Email: "_s + dealer.DealerEmail,
            u"Web: "_s + dealer.DealerURL,
            dealer.DealerEmail,
            dealer.DealerURL};
}

} // namespace sondrel
