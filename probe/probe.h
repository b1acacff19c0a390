// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <functional>

namespace sondrel::probe {

/// One request: its arguments, further members of the line, and the program that it acts in.
struct Call
{
    ApplicationContext &app;
    QJsonArray args;
    QJsonObject request;

    QString text(int index) const { return args.at(index).toString(); }
    int number(int index) const { return args.at(index).toInt(); }
    /// The argument, with null and a missing one told apart from an empty text.
    std::optional<QString> optionalText(int index) const;
};

/// An operation fills the answer: "result" and what else it gives back.
using Operation = std::function<QJsonObject(const Call &)>;
using Operations = QHash<QString, Operation>;

/// {"result": value}
QJsonObject answer(const QJsonValue &value);

QByteArray fromHex(const QString &hex);
QString toHex(const QByteArray &bytes);

/// Writes a file by its composed path ("\" between folders), making the folders, as a fixture.
void writeFixture(ApplicationContext &app, const QString &path, const QByteArray &bytes);
/// Removes a file by its composed path, if it is there.
void removeFixture(ApplicationContext &app, const QString &path);
/// Every file below the application folder (symbolic links passed over): relative path with "/" to its text.
QJsonObject filesBelow(const ApplicationContext &app);

} // namespace sondrel::probe
