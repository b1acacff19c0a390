#include "core/application_context.h"

#include "core/places.h"
#include "core/values.h"

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto RegRoot = "Software\\Kestrune\\Marovia Sondrel V4"_L1;

QString withoutSeparator(QString folder)
{
    while (folder.size() > 1 && (folder.endsWith(u'\\') || folder.endsWith(u'/')))
        folder.chop(1);
    return folder;
}

QStringList rootsOf(const QString &appPath, const QString &systemDirectory)
{
    QStringList roots{withoutSeparator(appPath)};
    if (!systemDirectory.isEmpty())
        roots.append(withoutSeparator(systemDirectory));
    return roots;
}

// The pages that can hold text files; the UTF-16 pages cannot.
std::shared_ptr<const CodePage> systemCodePage(const std::optional<QVariant> &setting)
{
    constexpr auto pages =
        std::to_array({874, 932, 936, 949, 950, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258, 65001});
    bool isNumber = false;
    const int number = setting ? setting->toString().trimmed().toInt(&isNumber) : 0;
    const bool known = isNumber && std::find(pages.begin(), pages.end(), number) != pages.end();
    const auto page = known ? CodePage::find(number) : nullptr;
    return page ? page : CodePage::western();
}

std::shared_ptr<const CodePage> chosenCodePage(SettingsStore &settings, const QString &key)
{
    try {
        return systemCodePage(settings.value(key, u"CodePage"_s));
    } catch (const Failure &) {
        // Settings that cannot be read are reported by those who read them; text still needs a page.
        return CodePage::western();
    }
}

} // namespace

ApplicationContext::ApplicationContext(const QString &appPath, const QString &systemDirectory,
                                       const Doors &doors, const QLocale &locale)
    : AppPath(withoutSeparator(appPath)),
      SystemDirectory(GetSystemDirectoryPath(withoutSeparator(systemDirectory))),
      EngineDataFile(SystemDirectory + u"qlteng4.dat"_s),
      RegPreference(RegRoot + u"\\Preference"_s),
      RegScheduler(RegRoot + u"\\Scheduler"_s),
      RegVersion(RegRoot + u"\\Version"_s),
      RegEngine(RegRoot + u"\\Engine"_s),
      deployment(Deployment::builtIn()),
      clock(doors.clock),
      desktop(doors.desktop),
      settings(doors.settings),
      http(doors.http),
      smtp(doors.smtp),
      locale(locale),
      files(rootsOf(appPath, systemDirectory)),
      m_log(files.find(AppPath + u"\\Error.log"_s).value_or(AppPath + u"/Error.log"_s))
{
}

const CodePage &ApplicationContext::codePage() const
{
    if (!m_codePage || m_codePageRevision != settings.revision()) {
        m_codePage = chosenCodePage(settings, RegPreference);
        m_codePageRevision = settings.revision(); // reading may have found a change
    }
    return *m_codePage;
}

const QString &ApplicationContext::today()
{
    const QDate today = clock.today();
    if (today != m_today) {
        m_todayText = shortDate(locale, today);
        m_today = today;
    }
    return m_todayText;
}

QString ApplicationContext::appFile(std::initializer_list<QString> components) const
{
    return HostPath::compose(AppPath, components);
}

void ApplicationContext::WriteErrorLog(const QString &text) noexcept
{
    try {
        m_log.write(toBytes(text));
    } catch (const std::exception &) {
        // A log write may never raise.
        return;
    }
}

} // namespace sondrel
