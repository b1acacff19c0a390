#include "reports/spreadsheet_plugin.h"

#include <QPluginLoader>

namespace sondrel {

namespace {

constexpr int NotInstalled = 429; // what automation has always said of a program that is not there

} // namespace

PluginSpreadsheets::PluginSpreadsheets(const QString &plugin) : m_plugin(plugin) {}

PluginSpreadsheets::~PluginSpreadsheets() = default;

std::unique_ptr<Spreadsheet> PluginSpreadsheets::create()
{
    if (!m_factory) {
        QPluginLoader loader(m_plugin);
        m_factory.reset(loader.instance());
        if (!m_factory)
            throw SpreadsheetError(NotInstalled, loader.errorString());
    }
    auto *factory = qobject_cast<SpreadsheetFactory *>(m_factory.get());
    if (!factory)
        throw SpreadsheetError(NotInstalled, m_plugin);
    return factory->create();
}

} // namespace sondrel
