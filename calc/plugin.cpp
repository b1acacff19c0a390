#include "calc/calc_workbook.h"

namespace sondrel {

/// Workbooks in LibreOffice Calc, all in one office program.
class CalcSpreadsheets final : public QObject, public SpreadsheetFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID SondrelSpreadsheetFactory_iid)
    Q_INTERFACES(sondrel::SpreadsheetFactory)

public:
    std::unique_ptr<Spreadsheet> create() override { return std::make_unique<CalcWorkbook>(m_office); }

private:
    Office m_office{std::chrono::seconds(60)};
};

} // namespace sondrel

#include "plugin.moc"
