// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "tests/support/source_tree.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>

namespace sondrel {

/// Runs a program to its end; its standard output.
inline QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    const bool finished = process.waitForFinished(120000);
    EXPECT_TRUE(finished && process.exitCode() == 0)
        << qPrintable(program) << ": " << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

enum class Reader { Xlrd, Gnumeric };

/// A saved workbook as another program reads it.
class ReadWorkbook
{
public:
    explicit ReadWorkbook(const QString &path, Reader reader = Reader::Xlrd)
        : m_json(QJsonDocument::fromJson(
                     outputOf(
                         QStringLiteral("/usr/bin/python3"),
                         {sourceFile(reader == Reader::Xlrd ? QStringLiteral("tests/calc/read_workbook.py")
                                                            : QStringLiteral("tests/calc/read_gnumeric.py")),
                          path}))
                     .object())
    {
    }

    int biff() const { return m_json.value(QStringLiteral("biff")).toInt(); }
    QStringList sheets() const { return m_json.value(QStringLiteral("sheets")).toVariant().toStringList(); }
    QJsonObject sheet(const QString &name) const
    {
        return m_json.value(QStringLiteral("content")).toObject().value(name).toObject();
    }
    QJsonObject cell(const QString &sheetName, const QString &place) const
    {
        return sheet(sheetName).value(QStringLiteral("cells")).toObject().value(place).toObject();
    }
    QJsonValue value(const QString &sheetName, const QString &place) const
    {
        return cell(sheetName, place).value(QStringLiteral("value"));
    }
    QString text(const QString &sheetName, const QString &place) const
    {
        return value(sheetName, place).toString();
    }
    QStringList merged(const QString &sheetName) const
    {
        return sheet(sheetName).value(QStringLiteral("merged")).toVariant().toStringList();
    }

private:
    QJsonObject m_json;
};

/// One sheet of a saved workbook as Gnumeric reads it, in lines of comma separated values without quotation
/// marks.
inline QStringList gnumericLines(const QString &path, int sheet)
{
    const QString folder = QFileInfo(path).path();
    outputOf(QStringLiteral("ssconvert"),
             {QStringLiteral("-S"), path, folder + QStringLiteral("/gnumeric-%n.csv")});
    QFile file(folder + QStringLiteral("/gnumeric-%1.csv").arg(sheet));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
    return QString::fromUtf8(file.readAll()).remove(u'"').split(u'\n');
}

} // namespace sondrel
