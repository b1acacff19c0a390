// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/http_control.h"
#include "tests/doors/manual_clock.h"
#include "tests/doors/memory_settings.h"
#include "tests/doors/recording_desktop.h"

#include <QTemporaryDir>

namespace sondrel {

/// A transport that has no connections to give.
class NoHttp final : public HttpTransport
{
public:
    std::unique_ptr<HttpPool> createPool() override { return nullptr; }
};

/// A program without a network on a folder that is there, its system directory being the same: for benchmarks
/// and fuzz targets.
struct OfflineProgram
{
    explicit OfflineProgram(const QString &folder)
        : app(folder, folder, Doors{clock, desktop, settings, http},
              QLocale(QLocale::English, QLocale::UnitedStates))
    {
    }

    ManualClock clock{QDateTime(QDate(2026, 11, 15), QTime(10, 0))};
    RecordingDesktop desktop;
    MemorySettings settings;
    NoHttp http;
    ApplicationContext app;
};

/// The same in an empty folder of its own.
struct TemporaryProgram : QTemporaryDir, OfflineProgram
{
    TemporaryProgram() : OfflineProgram(path()) {}
};

} // namespace sondrel
