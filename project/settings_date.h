// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QDate>
#include <QTime>

#include <optional>

// Dates and times of day as the project files hold them.

namespace sondrel {

/// "November,15 2026", with the month as the locale names it; in English where the file could not hold that
/// name or it would not read back as the same date.
QString settingsDate(const ApplicationContext &app, QDate date);
/// A date as settingsDate writes it, in the locale or in English; also the short forms that people type, such
/// as "15 Nov 2026", "2026-11-15" and the locale's own order of numbers.
std::optional<QDate> readSettingsDate(const QLocale &locale, QStringView text);

/// "09:30:00 AM"
QString settingsTime(QTime time);
/// A time of day in twelve or twenty-four hours: "9:30", "14:30:00", "9 pm".
std::optional<QTime> readSettingsTime(const QString &text);

} // namespace sondrel
