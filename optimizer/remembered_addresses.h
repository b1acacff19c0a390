// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QStringList>

// The addresses that the optimizer remembers, in dmlist.dat beside its folder.

namespace sondrel {

inline constexpr int MostAddresses = 30;

/// Adds the values of keys "1" up to the maximum, as far as there is one.
void loadDomains(ApplicationContext &app, QStringList &list, const QString &section, int maximum);
/// Writes the entries under keys "1", "2", ...; keys behind the last one stay as they are.
void saveListToFile(ApplicationContext &app, const QStringList &list, const QString &section);
/// Puts an address first that the list does not hold in any case of letters; the oldest one makes room.
void addKeywordToList(QStringList &list, const QString &text);

} // namespace sondrel
