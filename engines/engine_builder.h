// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/collection.h"
#include "engines/clsEngine.h"
#include "engines/clsEngineData.h"

#include <QStringList>

#include <optional>

namespace sondrel {

/// The user's own engines while they are edited: read from Engines.dat, changed in memory, and written back
/// as a whole. A record keeps the key under which it came, whatever it is renamed to.
class EngineBuilder
{
public:
    explicit EngineBuilder(ApplicationContext &app) : m_app(app) {}

    /// What a market and a method of sending can be.
    static const QStringList &markets();
    static const QStringList &submitMethods();

    const Collection<clsEngineData> &Engines() const { return m_engines; }
    /// The keys of the records, in order: what a list of them shows.
    const QStringList &names() const { return m_names; }

    /// Adds the engines of the file. What stands before a failure stays; a message and the log tell of it.
    void LoadEngines();
    /// Whether a new engine must not have that name.
    bool IsEngineNameUsed(const QString &name) const;
    /// Asks for the name of a new engine and adds it. Nothing when the person gave up or it failed.
    std::optional<QString> AddNew();
    /// Takes over what has been entered for the record of that key; nothing for an empty or unknown one.
    /// QueryKeyword2 stays.
    void SaveObject(const QString &name, clsEngineData entered);
    /// Removes the record of that key. Throws Failure when there is none.
    void remove(const QString &name);

    /// One line for each engine of the market, as its section has them.
    QString GetMarketEngines(const QString &market) const;
    /// The sections of all engines.
    QString CovertEngineDataColToString() const;
    /// The file.
    QString fileText() const;
    /// Writes the file. What it held before stays in a copy beside it.
    void SaveFile();

    /// The record as the catalogue will read it back: without blanks and quotation marks round a text.
    EngineRow asCatalogued(const clsEngineData &engine) const;

private:
    QString enginesFile() const { return m_app.appFile({QStringLiteral("Engines.dat")}); }
    void add(const clsEngineData &engine);

    ApplicationContext &m_app;
    Collection<clsEngineData> m_engines;
    QStringList m_names;
    bool m_stopped = false; // the load did, so that the file holds more than is known here
};

/// What is filled in for an engine from an address that it shows for a search.
struct SearchAddress
{
    QString EngineURL;
    QString EngineKey;
    QString QueryKeyword1;

    bool operator==(const SearchAddress &) const = default;
};
SearchAddress dividedSearchAddress(ApplicationContext &app, const QString &url);

} // namespace sondrel
