// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "reports/clsMaroviaExcel.h"
#include "reports/clsReporter.h"
#include "reports/excel_report.h"

namespace sondrel {

/// Fills the three sheets of a workbook that has come from the template.
struct ExcelSheets
{
    ApplicationContext &app;
    clsMaroviaExcel &excel;
    const ExcelSubject &subject;
    clsReporter reporter;

    /// The grid as it is. A step that fails is passed over.
    void ExcelKeywordSummaryReport() const;
    /// The matrix of keywords and tracked URLs.
    void writeKeywordUrls() const;
    /// What EngineSummary.dat holds.
    void writeEngineSummary() const;

private:
    QString date() const;
    void rename(const QString &templateSheet, const QString &sheet) const;
    void bar(const QString &sheet, int row, const QString &lastColumn) const;
    void title(const QString &sheet, int row, const QString &lastColumn, const QString &text) const;
    void signature(const QString &sheet, int row) const;
    int summaryHead() const;
    int keywordUrlHead() const;
    int engineSummaryHead() const;
    int engineTables(const QStringList &lines, int row) const;
    void engineSignature(int row) const;
};

} // namespace sondrel
