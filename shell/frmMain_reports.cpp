// The main window's report commands.
#include "shell/frmMain.h"

#include "reports/html_report.h"
#include "shell/frmSondrel.h"
#include "shell/status_panels.h"

namespace sondrel {

ReportStatus frmMain::reportStatus()
{
    return {[this](const QString &text) { m_panels->setFirst(text); },
            [this](int value, int maximum) { showReportProgress(value, maximum); }};
}

// Reports count rows by the ten thousand; a hundred steps are as many as the eye tells apart.
void frmMain::showReportProgress(int value, int maximum)
{
    const int step = maximum / 100;
    if (step > 0 && value % step != 0 && value != maximum)
        return;
    // The panel takes the first step for the start.
    m_panels->setProgress(value + 1, maximum + 1);
}

// The cells of the grid as they stand, whichever columns they have been dragged to.
std::vector<GridCells> frmMain::gridCells() const
{
    constexpr std::array fields{GridField::Keyword,      GridField::Positions, GridField::Page,
                                GridField::LastPosition, GridField::Change,    GridField::URL,
                                GridField::Status};
    const KeywordModel &model = m_child->model();
    std::vector<GridCells> rows(static_cast<std::size_t>(model.rowCount()));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t i = 0; i < fields.size(); ++i)
            rows[row][i] = model.cell(static_cast<int>(row), fields[i]);
    }
    return rows;
}

void frmMain::Report(ReportFormat format)
{
    if (!m_child || m_reporting)
        return;
    m_reporting = true;
    const ReportStatus status = reportStatus();
    showReportProgress(0, 1);
    announceReports(m_app, status);
    if (m_child && m_child->Account())
        giveReport(m_app, m_reports, format,
                   {*m_child->Account(), m_child->EngineName(), m_child->Keywords().Keywords, gridCells()},
                   status);
    m_panels->setFirst({});
    m_panels->hideProgress();
    m_reporting = false;
}

void frmMain::writeEngineReport()
{
    CreateHTMLReport(m_app, *m_child->Account(), m_child->EngineName(), m_child->Keywords().Keywords,
                     reportStatus());
}

} // namespace sondrel
