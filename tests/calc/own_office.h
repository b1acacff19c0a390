// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "calc/calc_workbook.h"

namespace sondrel {

/// The real spreadsheet program, in a test's hands.
class OwnOffice final : public SpreadsheetFactory
{
public:
    Office office{std::chrono::seconds(100)};

    std::unique_ptr<Spreadsheet> create() override { return std::make_unique<CalcWorkbook>(office); }
};

} // namespace sondrel
