// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QVariant>

namespace sondrel {

/// Type numbers of settings values; any other number is unsupported.
enum RegistryType : int { RegistryString = 1, RegistryBytes = 3, RegistryInteger = 4 };

/// Makes the key with its parents; true when it was there already. Failures are logged and give false.
bool CreateRegistryKey(ApplicationContext &app, const QString &path);

/// A value: a string of at most 1024 bytes, raw bytes (QByteArray, at most 4096) or a 32-bit integer. A
/// missing key or value, or an empty string, gives the default; so does a failure, which is logged.
QVariant GetRegistryValue(ApplicationContext &app, const QString &path, const QString &name, int type,
                          const QVariant &fallback);

/// The string value of that name, or the default.
QString GetRegistryText(ApplicationContext &app, const QString &path, const QString &name,
                        const QString &fallback);

/// Converts the value to the type and writes it. Does nothing when the key does not exist or the type is
/// unsupported. Failures are logged.
void SetRegistryValue(ApplicationContext &app, const QString &path, const QString &name, int type,
                      const QVariant &value);

} // namespace sondrel
