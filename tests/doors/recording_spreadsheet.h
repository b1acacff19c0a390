// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "reports/spreadsheet.h"

#include <QFile>

#include <functional>
#include <map>

namespace sondrel {

/// What a recording spreadsheet was asked for: one step as a line, such as "merge Report C4:H4".
struct SpreadsheetRecord
{
    QStringList steps;
    /// Texts of cells by sheet and place, "Report!3,4" for row 3 and column 4; numbers as "#12".
    std::map<QString, QString> cells;
    QStringList sheets{QStringLiteral("Report"), QStringLiteral("Sheet2"), QStringLiteral("Sheet3")};
    QByteArray opened; // what the workbook held
    int closed = 0;
    /// Called with each step before it is done; what it throws is what the step throws.
    std::function<void(const QString &step)> onStep;
};

/// A spreadsheet program that does nothing but keep the record.
class RecordingSpreadsheet final : public Spreadsheet
{
public:
    explicit RecordingSpreadsheet(SpreadsheetRecord &record) : m_record(record) {}

    void open(const QString &path) override
    {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            m_record.opened = file.readAll();
        step({QStringLiteral("open")});
    }
    void saveAs(const QString &path) override
    {
        step({QStringLiteral("save")});
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write("a workbook");
    }
    void close() noexcept override { ++m_record.closed; }

    QStringList sheets() override { return m_record.sheets; }
    void setActiveSheet(const QString &sheet) override { step({QStringLiteral("activate"), sheet}); }
    void renameSheet(const QString &name, const QString &newName) override
    {
        step({QStringLiteral("rename"), name, newName});
        m_record.sheets.replaceInStrings(name, newName);
    }
    void pasteSheet(const QString &sheet) override { step({QStringLiteral("paste"), sheet}); }

    void write(const QString &sheet, int row, int column, const SpreadsheetBlock &block) override
    {
        step({QStringLiteral("write"), sheet, place(row, column), QString::number(block.size()),
              QString::number(block.front().size())});
        for (const auto &line : block) {
            int at = column;
            for (const SpreadsheetCell &cell : line) {
                const auto *number = std::get_if<double>(&cell);
                m_record.cells[sheet + u'!' + place(row, at++)] =
                    number ? u'#' + QString::number(*number) : std::get<QString>(cell);
            }
            ++row;
        }
    }
    void writeFormula(const QString &sheet, int row, int column, const QString &formula) override
    {
        step({QStringLiteral("formula"), sheet, place(row, column), formula});
    }
    void writeLink(const QString &sheet, int row, int column, const QString &target,
                   const QString &text) override
    {
        step({QStringLiteral("link"), sheet, place(row, column), target});
        m_record.cells[sheet + u'!' + place(row, column)] = text;
    }
    void clear(const QString &sheet, const QString &range) override
    {
        step({QStringLiteral("clear"), sheet, range});
    }
    void remove(const QString &sheet, const QString &range) override
    {
        step({QStringLiteral("remove"), sheet, range});
    }
    void copy(const QString &sheet, const QString &source, const QString &target) override
    {
        step({QStringLiteral("copy"), sheet, source, target});
    }

    void merge(const QString &sheet, const QString &range) override
    {
        step({QStringLiteral("merge"), sheet, range});
    }
    void autoFitColumns(const QString &sheet, const QString &columns) override
    {
        step({QStringLiteral("fit"), sheet, columns});
    }
    void shrinkToFit(const QString &sheet, const QString &range) override
    {
        step({QStringLiteral("shrink"), sheet, range});
    }
    void addPageBreak(const QString &sheet, const QString &cell) override
    {
        step({QStringLiteral("break"), sheet, cell});
    }
    void setRowHeight(const QString &sheet, const QString &rows, double points) override
    {
        step({QStringLiteral("height"), sheet, rows, QString::number(points)});
    }
    void setColumnWidth(const QString &sheet, const QString &columns, double characters) override
    {
        step({QStringLiteral("width"), sheet, columns, QString::number(characters)});
    }
    void setHAlignment(const QString &sheet, const QString &range, int alignment) override
    {
        step({QStringLiteral("align"), sheet, range, QString::number(alignment)});
    }
    void setVAlignment(const QString &sheet, const QString &range, int alignment) override
    {
        step({QStringLiteral("valign"), sheet, range, QString::number(alignment)});
    }
    void setBorder(const QString &sheet, const QString &range, std::optional<int> edge, int style) override
    {
        step({QStringLiteral("border"), sheet, range, QString::number(edge.value_or(0)),
              QString::number(style)});
    }
    void setBorderColour(const QString &sheet, const QString &range, std::optional<int> edge,
                         int colour) override
    {
        step({QStringLiteral("borderColour"), sheet, range, QString::number(edge.value_or(0)),
              QString::number(colour, 16)});
    }
    void setBackground(const QString &sheet, const QString &range, int colour) override
    {
        step({QStringLiteral("colour"), sheet, range, QString::number(colour, 16)});
    }
    void setFont(const QString &sheet, const QString &range, const SpreadsheetFont &font) override
    {
        QStringList words{QStringLiteral("font"), sheet, range};
        if (font.name)
            words.append(*font.name);
        if (font.size)
            words.append(QString::number(*font.size));
        if (font.italic)
            words.append(*font.italic ? QStringLiteral("italic") : QStringLiteral("upright"));
        if (font.bold)
            words.append(*font.bold ? QStringLiteral("bold") : QStringLiteral("plain"));
        if (font.colour)
            words.append(QString::number(*font.colour, 16));
        if (font.underline)
            words.append(QStringLiteral("underline ") + QString::number(*font.underline));
        step(words);
    }

    void copyShape(const QString &sheet, const QString &shape, const QString &range) override
    {
        step({QStringLiteral("copyShape"), sheet, shape, range});
    }
    void setShapeText(const QString &sheet, const QString &shape, const QString &text) override
    {
        step({QStringLiteral("shapeText"), sheet, shape, text});
    }
    void addPicture(const QString &sheet, const QString &path, const SpreadsheetPlace &place) override
    {
        step({QStringLiteral("picture"), sheet, path, QString::number(place.width)});
    }
    void print(const QString &sheet, int copies) override
    {
        step({QStringLiteral("print"), sheet, QString::number(copies)});
    }

private:
    static QString place(int row, int column)
    {
        return QString::number(row) + u',' + QString::number(column);
    }
    void step(const QStringList &words)
    {
        const QString line = words.join(u' ');
        if (m_record.onStep)
            m_record.onStep(line);
        m_record.steps.append(line);
    }

    SpreadsheetRecord &m_record;
};

class RecordingSpreadsheets final : public SpreadsheetFactory
{
public:
    SpreadsheetRecord record;

    std::unique_ptr<Spreadsheet> create() override { return std::make_unique<RecordingSpreadsheet>(record); }
};

} // namespace sondrel
