// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QLatin1StringView>

// What the tables of one engine's reports have in common.

namespace sondrel {

constexpr auto LineEnd = QLatin1StringView("\r\n");
constexpr auto CentredCell = QLatin1StringView("<td align=center><font face=arial size=2>");
constexpr auto CellEnd = QLatin1StringView("</font></td>");

/// White and grey in turn over the rows that are shown.
class RowColours
{
public:
    /// The opening of the next row.
    QLatin1StringView next()
    {
        m_white = !m_white;
        return QLatin1StringView(m_white ? "<tr bgcolor=#FFFFFF valign=top>"
                                         : "<tr bgcolor=#E8E8E8 valign=top>");
    }

private:
    bool m_white = false;
};

} // namespace sondrel
