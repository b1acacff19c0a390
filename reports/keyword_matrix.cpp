#include "core/modCommon.h"
#include "core/values.h"
#include "reports/ranking_reports.h"
#include "reports/report_table.h"

#include <QStringBuilder>

#include <unordered_map>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// Lengths beside the variable texts, to reserve the report's memory in one piece.
constexpr qsizetype Frame = 1000;
constexpr qsizetype UrlFrame = 200;
constexpr qsizetype RowFrame = 60;
constexpr qsizetype CellFrame = 60;

const Collection<clsURL> &urlsOf(const clsAccount &account)
{
    static const Collection<clsURL> none;
    return account.URLs ? *account.URLs : none;
}

// The keyword that a row belongs to: a bracket is cut only where what stands before it is a keyword too.
QString reportKeyword(const QString &rowKeyword, const Collection<clsKeyword> &keywords)
{
    const qsizetype open = rowKeyword.indexOf(u'(');
    const qsizetype close = rowKeyword.indexOf(u')');
    if (open < 0 || close < open)
        return rowKeyword;
    const QString shorter = trimBlanks(QStringView(rowKeyword).first(open)).toString();
    return HasCollectionKey(&keywords, shorter) ? shorter : rowKeyword;
}

// Which of the tracked URLs a listing belongs to, counted from 0; -1 for none of them.
qsizetype trackedUrl(ApplicationContext &app, const QString &listing, const Collection<clsURL> &urls)
{
    qsizetype index = 0;
    for (const clsURL &url : urls) {
        if (CompareURL(app, listing, url.URL))
            return index;
        ++index;
    }
    return -1;
}

bool replacesPosition(const QString &stored, const QString &position)
{
    if (!isNumeric(stored))
        return true;
    return isNumeric(position) && toInt16(stored) > toInt16(position);
}

class Matrix
{
public:
    Matrix(ApplicationContext &app, const Collection<clsURL> &urls) : m_app(app), m_urls(urls) {}

    void add(const clsKeyword &row, const QString &keyword)
    {
        const qsizetype url = row.URL.isEmpty() ? -1 : trackedUrl(m_app, row.URL, m_urls);
        const QString key = folded(keyword);
        const auto known = m_places.find(key);
        if (known == m_places.end())
            m_places.emplace(key, append(newColumn(row, keyword, url)));
        else if (url >= 0 && replacesPosition(position(known->second, url), row.CurPos))
            known->second = moveToEnd(known->second, url, row.CurPos);
    }

    std::vector<ReportColumn> take()
    {
        std::vector<ReportColumn> columns;
        columns.reserve(m_places.size());
        for (std::optional<ReportColumn> &entry : m_entries) {
            if (entry)
                columns.push_back(*std::move(entry));
        }
        return columns;
    }

private:
    ReportColumn newColumn(const clsKeyword &row, const QString &keyword, qsizetype url) const
    {
        ReportColumn column;
        column.Keyword = keyword;
        if (isNumeric(row.Count))
            column.Count = row.Count;
        column.Positions.resize(static_cast<std::size_t>(m_urls.Count()));
        if (url >= 0)
            column.Positions[static_cast<std::size_t>(url)] = row.CurPos;
        return column;
    }

    std::size_t append(ReportColumn column)
    {
        m_entries.emplace_back(std::move(column));
        return m_entries.size() - 1;
    }

    const QString &position(std::size_t place, qsizetype url) const
    {
        return m_entries[place]->Positions[static_cast<std::size_t>(url)];
    }

    std::size_t moveToEnd(std::size_t place, qsizetype url, const QString &position)
    {
        ReportColumn column = *std::move(m_entries[place]);
        m_entries[place].reset();
        column.Positions[static_cast<std::size_t>(url)] = position;
        return append(std::move(column));
    }

    ApplicationContext &m_app;
    const Collection<clsURL> &m_urls;
    std::vector<std::optional<ReportColumn>> m_entries; // in order, empty where one has moved to the end
    std::unordered_map<QString, std::size_t> m_places;  // by folded keyword
};

void addLegend(QString &text, const QString &engineName, const Collection<clsURL> &urls)
{
    text +=
        "<table border=0 width=100%><tr bgcolor=#C12457><td><font color=#ffffff face=arial size=2><b>"_L1 %
        engineName % "</b></font></td></tr>"_L1;
    text += "<tr bgcolor=#CCD8EA><td  width= 420><font face=arial size=2>"_L1;
    int number = 0;
    for (const clsURL &url : urls)
        text += QString::number(++number) % u'=' % url.URL % "<br>"_L1 % LineEnd;
    text += CellEnd % "</tr>"_L1 % LineEnd % "</table>"_L1 % LineEnd;
}

QString headCell(const QString &title)
{
    return "<th align=center ><font face=arial size=2 color=#FFFFFF>"_L1 % title % "</font></th>"_L1 %
           LineEnd;
}

QString matrixHead(qsizetype urls)
{
    QString head =
        u"<tr bgcolor=#0080C0><th width=35%><font face=arial size=2 color=#FFFFFF>Search Term</font>"
        "</th>\r\n"_s;
    head += headCell(u"Counts"_s);
    if (urls == 1)
        return head + headCell(u"Ranking"_s);
    for (qsizetype i = 1; i <= urls; ++i)
        head += headCell(u"URL"_s + QString::number(i));
    return head;
}

void addMatrixRow(QString &text, const ReportColumn &column)
{
    text += "<td><font face=arial size=2>"_L1 % column.Keyword % CellEnd % LineEnd;
    text += CentredCell % column.Count % CellEnd % LineEnd;
    for (const QString &position : column.Positions)
        text += CentredCell % position % CellEnd % LineEnd;
    text += "</tr>  "_L1;
}

qsizetype matrixSize(const std::vector<ReportColumn> &columns, const Collection<clsURL> &urls)
{
    const auto rows = static_cast<qsizetype>(columns.size());
    qsizetype size = Frame + urls.Count() * UrlFrame + rows * (RowFrame + (urls.Count() + 2) * CellFrame);
    for (const ReportColumn &column : columns)
        size += column.Keyword.size();
    return size;
}

QString matrix(const std::vector<ReportColumn> &columns, const QString &engineName,
               const Collection<clsURL> &urls)
{
    QString text;
    text.reserve(matrixSize(columns, urls));
    addLegend(text, engineName, urls);
    const QString head = matrixHead(urls.Count()) + "</tr>"_L1;
    text += LineEnd % "<table border = 0 cellpadding = 0 cellspacing = 1 width = 100%>"_L1 % LineEnd % head;
    RowColours colours;
    for (const ReportColumn &column : columns) {
        text += colours.next();
        addMatrixRow(text, column);
    }
    text += head % LineEnd % "</table><br>"_L1;
    return text;
}

} // namespace

std::optional<std::vector<ReportColumn>> GetReportcol(ApplicationContext &app, const clsAccount &account,
                                                      const Collection<clsKeyword> &keywords)
{
    std::optional<std::vector<ReportColumn>> columns;
    if (!reportFailure(app, u"frmSondrel_GetReportcol error: "_s, [&] {
            Matrix gathered(app, urlsOf(account));
            for (const clsKeyword &row : keywords)
                gathered.add(row, reportKeyword(row.Keyword, keywords));
            columns = gathered.take();
        }))
        app.desktop.resetPointer();
    return columns;
}

QString KeywordURLReport(ApplicationContext &app, const clsAccount &account, const QString &engineName,
                         const Collection<clsKeyword> &keywords)
{
    const Collection<clsURL> &urls = urlsOf(account);
    if (urls.isEmpty() || keywords.isEmpty())
        return {};
    const auto columns = GetReportcol(app, account, keywords);
    if (!columns)
        return {};
    QString text;
    if (!reportFailure(app, u"frmSondrel_KeywordURLReport errror: "_s,
                       [&] { text = matrix(*columns, engineName, urls); }))
        app.desktop.resetPointer();
    return text;
}

} // namespace sondrel
