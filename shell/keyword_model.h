// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "project/clsKeywords.h"
#include "shell/column_order.h"

#include <QAbstractTableModel>
#include <QSet>

#include <vector>

namespace sondrel {

/// Which keywords the grid shows.
enum class ViewFilter { All, Optimized };

/// The rows of the keyword grid: a copy of the cells of the keywords that the filter lets through. Model
/// columns are the fields in their first order, whatever the user has dragged where. An edit changes the
/// keyword behind the row and saves the list of terms.
class KeywordModel final : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// Roles beside Qt's own.
    enum Role : int {
        RankedRole = Qt::UserRole, // bool, Show column: the row has a position
        ChangeRole,                // Trend, Change column
        NumberRole,                // bool: the column holds numbers
    };
    enum class Trend { None, Up, Down, New };

    explicit KeywordModel(ApplicationContext &app, QObject *parent = nullptr);
    /// Writes the header texts.
    void FormatGridFixRow();

    /// The rows behind the grid; null empties it. They outlive their use here.
    void setKeywords(clsKeywords *keywords);

    ViewFilter filter = ViewFilter::Optimized;
    /// Fills the grid anew. Gives the row to select: the place, among all keywords, of the one of that name,
    /// when the grid has that many rows; -1 otherwise.
    int PopulateKeywords(const QString &remembered);
    void AddNewRow(const clsKeyword &keyword);
    /// Makes a keyword of every text that is not one yet, with a row of its own. Blank texts make none.
    void AddKeywordColToGrid(const QStringList &texts);
    /// Checks or unchecks rows, and saves once.
    bool setShown(const std::vector<int> &rows, bool shown);
    /// Removes the rows and the keywords behind them.
    void removeKeywords(std::vector<int> rows);

    /// The text of a cell, as stored.
    QString cell(int row, GridField field) const;
    bool shown(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

Q_SIGNALS:
    /// So many entered keywords held what a keyword cannot hold, and have been changed.
    void keywordsCleaned(qsizetype count);
    /// A row has not been given this name, because another keyword has it.
    void nameTaken(const QString &name);

private:
    bool rename(int row, const QString &name);
    bool isTaken(int row, const QString &name) const;
    void appendRows(std::vector<clsKeyword> rows);
    static Trend trendOf(const QString &change);

    ApplicationContext &m_app;
    clsKeywords *m_keywords = nullptr;
    QStringList m_headers;
    std::vector<clsKeyword> m_rows;
};

} // namespace sondrel
