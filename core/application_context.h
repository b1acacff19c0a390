// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/clock.h"
#include "core/code_page.h"
#include "core/deployment.h"
#include "core/desktop.h"
#include "core/error_log.h"
#include "core/failure.h"
#include "core/host_path.h"
#include "core/settings_store.h"

#include <QDate>
#include <QLocale>
#include <QString>

#include <memory>

namespace sondrel {

class clsEngine;
class HttpTransport;
class SpreadsheetFactory;
class SmtpTransport;

/// The doors that the context hands on. They outlive it.
struct Doors
{
    Clock &clock;
    Desktop &desktop;
    SettingsStore &settings;
    HttpTransport &http;
    /// Absent where no mail goes out.
    SmtpTransport *smtp = nullptr;
};

/// Process-wide values, set once at start and handed on: folders, settings paths, doors, the error log and
/// the one engine catalogue.
class ApplicationContext
{
public:
    /// appPath is the folder of the program's data, systemDirectory that of the engine data file, empty when
    /// there is none; both in the system's spelling.
    ApplicationContext(const QString &appPath, const QString &systemDirectory, const Doors &doors,
                       const QLocale &locale);

    const QString AppPath;
    /// With one trailing "\"; empty when there is none.
    const QString SystemDirectory;
    const QString EngineDataFile;
    const QString RegPreference;
    const QString RegScheduler;
    const QString RegVersion;
    const QString RegEngine;
    /// Owned by whoever made it; absent until the program has loaded its main window.
    clsEngine *EngineCatalogue = nullptr;
    /// The spreadsheet program's door; set by whoever made it, absent where there is none.
    SpreadsheetFactory *Spreadsheets = nullptr;
    /// The first page of the manual that lies beside the program, in the system's spelling; empty for none.
    QString Manual;
    bool LookupRequested = false;
    /// True when the settings name no version that has run before.
    bool FirstRun = false;
    Deployment deployment;

    Clock &clock;
    Desktop &desktop;
    SettingsStore &settings;
    HttpTransport &http;
    SmtpTransport *const smtp;
    const QLocale locale;
    HostPath files;

    /// The system code page: 8-bit text on disk and fetched pages are read through it. It follows the
    /// settings value "CodePage".
    const CodePage &codePage() const;
    QByteArray toBytes(QStringView text) const { return codePage().toBytes(text); }
    QString fromBytes(QByteArrayView bytes) const { return codePage().fromBytes(bytes); }

    /// Today's date as the locale writes it, made once a day: rows get it by the thousand.
    const QString &today();

    /// AppPath + "\" + components; throws Failure when one cannot be a file name.
    QString appFile(std::initializer_list<QString> components) const;

    /// The one writer of Error.log: CR LF and the text. Never raises.
    void WriteErrorLog(const QString &text) noexcept;

private:
    ErrorLog m_log;
    QDate m_today;
    QString m_todayText;
    mutable std::shared_ptr<const CodePage> m_codePage;
    mutable quint64 m_codePageRevision = 0; // of the settings, when the page was chosen
};

/// Runs a step and writes what it throws to the error log behind the tag. True when nothing was thrown.
template <typename Step>
bool reportFailure(ApplicationContext &app, const QString &tag, Step &&step)
{
    try {
        step();
        return true;
    } catch (const std::exception &error) {
        app.WriteErrorLog(tag + errorText(error));
        return false;
    }
}

} // namespace sondrel
