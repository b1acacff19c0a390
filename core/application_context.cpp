#include "core/application_context.h"

#include "core/values.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto RegRoot = "Software\\Kestrune\\Marovia Sondrel V4"_L1;

QString withSeparator(const QString &folder)
{
    return folder.isEmpty() || folder.endsWith(u'\\') ? folder : folder + u'\\';
}

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

} // namespace

ApplicationContext::ApplicationContext(const QString &appPath, const QString &systemDirectory,
                                       const Doors &doors, const QLocale &locale)
    : AppPath(withoutSeparator(appPath)),
      SystemDirectory(withSeparator(withoutSeparator(systemDirectory))),
      EngineDataFile(SystemDirectory + u"qlteng4.dat"_s),
      RegPreference(RegRoot + u"\\Preference"_s),
      RegScheduler(RegRoot + u"\\Scheduler"_s),
      RegVersion(RegRoot + u"\\Version"_s),
      RegEngine(RegRoot + u"\\Engine"_s),
      clock(doors.clock),
      desktop(doors.desktop),
      settings(doors.settings),
      http(doors.http),
      locale(locale),
      files(rootsOf(appPath, systemDirectory)),
      m_log(files.find(AppPath + u"\\Error.log"_s).value_or(AppPath + u"/Error.log"_s))
{
}

const CodePage &ApplicationContext::codePage() const
{
    QString setting;
    try {
        setting = settings.value(RegPreference, u"CodePage"_s).value_or(QVariant()).toString();
    } catch (const Failure &) {
        // Settings that cannot be read are reported by those who read them; text still needs a page.
        setting.clear();
    }
    if (!m_codePage || setting != m_codePageSetting) {
        m_codePageSetting = setting;
        m_codePage = isNumeric(setting) ? CodePage::find(static_cast<int>(leadingNumber(setting))) : nullptr;
        if (!m_codePage)
            m_codePage = CodePage::western();
    }
    return *m_codePage;
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
