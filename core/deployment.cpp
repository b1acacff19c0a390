#include "core/deployment.h"

#include "core/code_page.h"
#include "core/existing_file.h"
#include "core/host_path.h"
#include "core/profile_file.h"
#include "deployment_defaults.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

struct Field
{
    QString Deployment::*value;
    QString key;
};

const auto &fields()
{
    static const std::array list{
        Field{&Deployment::Title, u"Title"_s},
        Field{&Deployment::SupportEmail, u"SupportEmail"_s},
        Field{&Deployment::SalesMailbox, u"SalesMailbox"_s},
        Field{&Deployment::VendorHost, u"VendorHost"_s},
        Field{&Deployment::KnowledgeBase, u"KnowledgeBase"_s},
        Field{&Deployment::EngineDataHost, u"EngineDataHost"_s},
        Field{&Deployment::TutorialSite, u"TutorialSite"_s},
        Field{&Deployment::StatisticsSite, u"StatisticsSite"_s},
        Field{&Deployment::ExampleURL, u"ExampleURL"_s},
    };
    return list;
}

// Puts the file's values in the place of those there.
Deployment replaced(Deployment values, const QByteArray &bytes)
{
    const auto page = CodePage::western();
    const ProfileFile file(*page, bytes);
    for (const auto &[value, key] : fields()) {
        const QString given = file.read(u"Deployment"_s, key);
        if (!given.isEmpty())
            values.*value = given;
    }
    return values;
}

} // namespace

const Deployment &Deployment::builtIn()
{
    static const Deployment values = replaced({}, QByteArray(DeploymentDefaults));
    return values;
}

Deployment Deployment::read(const QByteArray &bytes)
{
    return replaced(builtIn(), bytes);
}

Deployment Deployment::load(const QString &folder)
{
    const HostPath files({folder});
    const auto bytes = readIfThere(files, HostPath::compose(folder, {u"deployment.ini"_s}));
    return bytes ? read(*bytes) : builtIn();
}

} // namespace sondrel
