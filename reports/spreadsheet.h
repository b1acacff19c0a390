// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>
#include <QStringList>
#include <QtPlugin>

#include <exception>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace sondrel {

/// What a cell holds: a text, which is never taken for a formula, or a number.
using SpreadsheetCell = std::variant<QString, double>;
using SpreadsheetBlock = std::vector<std::vector<SpreadsheetCell>>;

/// What the spreadsheet program answered to a step that failed. It carries its own text, since it crosses
/// from a plug-in.
class SpreadsheetError : public std::exception
{
public:
    /// The number of an error when the file held no workbook.
    static constexpr int NoWorkbook = 432;

    SpreadsheetError(int number, const QString &text) : m_number(number), m_text(text), m_utf8(text.toUtf8())
    {
    }

    int number() const { return m_number; }
    const QString &text() const { return m_text; }
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    int m_number;
    QString m_text;
    QByteArray m_utf8;
};

/// A font's properties; what is absent stays.
struct SpreadsheetFont
{
    std::optional<QString> name;
    std::optional<double> size; // points
    std::optional<bool> italic;
    std::optional<bool> bold;
    std::optional<int> colour; // 0xRRGGBB
    std::optional<int> underline;
};

struct SpreadsheetPlace // in points
{
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

/// The door to a spreadsheet program, with one workbook open in it at most. Rows and columns count from 1,
/// ranges are in the notation "A3:H200", alignments, edges, line styles and underlines are the numbers that
/// spreadsheet automation has always used. A step that fails throws SpreadsheetError. While a step runs, the
/// program's events do too.
class Spreadsheet
{
public:
    virtual ~Spreadsheet() = default;

    /// Opens the workbook, an Excel 97 file, in the system's spelling.
    virtual void open(const QString &path) = 0;
    virtual void saveAs(const QString &path) = 0;
    /// Lets go of the workbook without saving. Never throws.
    virtual void close() noexcept = 0;

    virtual QStringList sheets() = 0;
    virtual void setActiveSheet(const QString &sheet) = 0;
    virtual void renameSheet(const QString &name, const QString &newName) = 0;
    virtual void pasteSheet(const QString &sheet) = 0;

    virtual void write(const QString &sheet, int row, int column, const SpreadsheetBlock &block) = 0;
    virtual void writeFormula(const QString &sheet, int row, int column, const QString &formula) = 0;
    virtual void writeLink(const QString &sheet, int row, int column, const QString &target,
                           const QString &text) = 0;
    virtual void clear(const QString &sheet, const QString &range) = 0;
    virtual void remove(const QString &sheet, const QString &range) = 0;
    virtual void copy(const QString &sheet, const QString &source, const QString &target) = 0;

    virtual void merge(const QString &sheet, const QString &range) = 0;
    virtual void autoFitColumns(const QString &sheet, const QString &columns) = 0;
    virtual void shrinkToFit(const QString &sheet, const QString &range) = 0;
    virtual void addPageBreak(const QString &sheet, const QString &cell) = 0;
    virtual void setRowHeight(const QString &sheet, const QString &rows, double points) = 0;
    virtual void setColumnWidth(const QString &sheet, const QString &columns, double characters) = 0;
    virtual void setHAlignment(const QString &sheet, const QString &range, int alignment) = 0;
    virtual void setVAlignment(const QString &sheet, const QString &range, int alignment) = 0;
    /// Without an edge: all of the range's cells.
    virtual void setBorder(const QString &sheet, const QString &range, std::optional<int> edge,
                           int style) = 0;
    virtual void setBorderColour(const QString &sheet, const QString &range, std::optional<int> edge,
                                 int colour) = 0;
    virtual void setBackground(const QString &sheet, const QString &range, int colour) = 0;
    virtual void setFont(const QString &sheet, const QString &range, const SpreadsheetFont &font) = 0;

    virtual void copyShape(const QString &sheet, const QString &shape, const QString &range) = 0;
    virtual void setShapeText(const QString &sheet, const QString &shape, const QString &text) = 0;
    virtual void addPicture(const QString &sheet, const QString &path, const SpreadsheetPlace &place) = 0;
    /// Fits the sheet to one page's width and prints it.
    virtual void print(const QString &sheet, int copies) = 0;
};

/// Makes the doors; what it shares between them, such as the program that it has started, ends with it.
class SpreadsheetFactory
{
public:
    virtual ~SpreadsheetFactory() = default;
    virtual std::unique_ptr<Spreadsheet> create() = 0;
};

} // namespace sondrel

#define SondrelSpreadsheetFactory_iid "marovia-sondrel.SpreadsheetFactory/1"
Q_DECLARE_INTERFACE(sondrel::SpreadsheetFactory, SondrelSpreadsheetFactory_iid)
