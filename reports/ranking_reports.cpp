#include "reports/ranking_reports.h"

#include "core/modUtilit.h"
#include "core/uucode.h"
#include "reports/report_table.h"

#include <QStringBuilder>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto Head = "<tr bgcolor=#0080C0>"
                      "<th width=35%><font face=arial size=2 color=#FFFFFF>Search Term</font></th>\r\n"
                      "<th width=6%><font face=arial size=2 color=#FFFFFF>Position</font></th>\r\n"
                      "<th width=6%><font face=arial size=2 color=#FFFFFF>Page</font></th>\r\n"
                      "<th width=6%><font face=arial size=2 color=#FFFFFF>Last Position</font></th>\r\n"
                      "<th width=6%><font face=arial size=2 color=#FFFFFF>Change</font></th>\r\n"
                      "<th><font face=arial size=2 color=#FFFFFF>URL</font></th>\r\n"
                      "<th width=6%><font face=arial size=2 color=#FFFFFF>Status</font></th>\r\n"
                      "</tr>"_L1;

// Lengths beside the variable texts, to reserve the report's memory in one piece.
constexpr qsizetype Frame = 2 * Head.size() + 500;
constexpr qsizetype RowFrame = 520;
// The name by which the lookup has stored a row's page.
QString linkName(ApplicationContext &app, QString keyword)
{
    StripRowSuffix(keyword);
    return EncodedString(app, keyword.replace(u' ', u'_'));
}

bool isShown(const clsKeyword &row, bool excludeUnranking)
{
    return !excludeUnranking || !row.CurPos.isEmpty() || !row.LastPosition.isEmpty();
}

void addChange(QString &text, const QString &change)
{
    if (change.startsWith(u'-'))
        text += CentredCell % "<font color=#FF0000>"_L1 % change % "</font>"_L1 % CellEnd % LineEnd;
    else
        text += CentredCell % change % CellEnd % LineEnd;
}

void addSummaryRow(QString &text, const clsKeyword &row, const QString &link)
{
    text += "<td><a href = \""_L1 % link % ".html\"><font face=arial size=2>"_L1 % row.Keyword %
            "</font></a></td>"_L1;
    text += CentredCell % row.CurPos % CellEnd % LineEnd;
    text += CentredCell % row.Page % CellEnd % LineEnd;
    text += CentredCell % row.LastPosition % CellEnd % LineEnd;
    addChange(text, row.Change);
    text += "<td align=left><font face=arial size=2>"_L1 % row.URL % CellEnd % LineEnd;
    text += CentredCell % row.Status % CellEnd % LineEnd % "</tr>"_L1;
}

qsizetype summarySize(const Collection<clsKeyword> &keywords, qsizetype linkFolder)
{
    qsizetype size = Frame + keywords.Count() * (RowFrame + linkFolder);
    for (const clsKeyword &row : keywords)
        size += 2 * row.Keyword.size() + row.URL.size();
    return size;
}

QString summary(ApplicationContext &app, const clsAccount &account, const QString &engineName,
                const Collection<clsKeyword> &keywords)
{
    const QString linkFolder = app.AppPath % "\\Reports\\"_L1 % account.Name % u'\\' % engineName % u'_';
    QString text;
    text.reserve(summarySize(keywords, linkFolder.size()));
    text +=
        "<table border=0 width=100%><tr bgcolor=#C12457><td><font color=#ffffff face=arial size=2><b>"_L1 %
        engineName % "</b></font></td></tr></table>"_L1 % LineEnd;
    text += "<!-- begin report section -->"
            "<table border = 0 cellpadding = 0 cellspacing = 1 width = 100%>"_L1 %
            Head;
    RowColours colours;
    for (const clsKeyword &row : keywords) {
        if (!isShown(row, account.ExcludeUnRanking))
            continue;
        text += colours.next();
        addSummaryRow(text, row, linkFolder + linkName(app, row.Keyword));
    }
    text += "<br>"_L1 % Head % "</table><br><!--end report section -->"_L1;
    return text;
}

} // namespace

QString SummaryReport(ApplicationContext &app, const clsAccount &account, const QString &engineName,
                      const Collection<clsKeyword> &keywords)
{
    QString text;
    if (!reportFailure(app, u"frmSondrel_SummaryReport error:  "_s,
                       [&] { text = summary(app, account, engineName, keywords); }))
        app.desktop.resetPointer();
    return text;
}

} // namespace sondrel
