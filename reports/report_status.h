// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

#include <functional>

namespace sondrel {

/// What a window shows while a report is made. What is not set is not shown.
struct ReportStatus
{
    /// The first panel of the status bar.
    std::function<void(const QString &text)> panel;
    std::function<void(int value, int maximum)> progress;

    void setPanel(const QString &text) const
    {
        if (panel)
            panel(text);
    }
    void setProgress(qsizetype value, qsizetype maximum) const
    {
        if (progress)
            progress(static_cast<int>(value), static_cast<int>(maximum));
    }
};

} // namespace sondrel
