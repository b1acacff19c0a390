// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "tests/doors/manual_clock.h"
#include "tests/doors/memory_settings.h"
#include "tests/doors/recording_desktop.h"
#include "tests/doors/recording_smtp.h"
#include "tests/doors/scripted_http.h"
#include "tests/support/printing.h"

#include <QTemporaryDir>

namespace sondrel {

/// A program to act in: temporary folders, a clock that stands at 2026-11-15 10:00, empty settings, recording
/// doors. Everything is gone with it.
class World
{
public:
    World();

    QTemporaryDir folder;
    ManualClock clock;
    RecordingDesktop desktop;
    MemorySettings settings;
    ScriptedHttp http;
    RecordingSmtp smtp;
    ApplicationContext app;

    /// Bytes of a file below the application folder, given with "/"; empty when there is none.
    QByteArray read(const QString &relative) const;
    /// Writes a file below the application folder, making its folders.
    void write(const QString &relative, const QByteArray &bytes) const;
    bool has(const QString &relative) const;
    /// The file's path in the system's spelling.
    QString path(const QString &relative) const;
    /// Writes qlteng4.dat into the system directory.
    void writeEngineData(const QByteArray &bytes) const;

    /// Error.log without the CR LF in front of its first record; takes it, so that the next call gives news
    /// only.
    QString takeLog();
    /// A value under RegPreference, with the key made first.
    void setPreference(const QString &name, const QString &value);

private:
    qsizetype m_logRead = 0;
};

} // namespace sondrel
