// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "reports/spreadsheet.h"

namespace sondrel {

/// The spreadsheet program behind the plug-in that lies beside the program, loaded when it is first needed:
/// the program runs without either.
class PluginSpreadsheets final : public SpreadsheetFactory
{
public:
    /// The plug-in's path, without what libraries are called by on this system.
    explicit PluginSpreadsheets(const QString &plugin);
    ~PluginSpreadsheets() override;

    std::unique_ptr<Spreadsheet> create() override;

private:
    QString m_plugin;
    std::unique_ptr<QObject> m_factory;
};

} // namespace sondrel
