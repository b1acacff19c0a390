#include "core/report_folder.h"

#include <QFile>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

int hexDigit(char byte)
{
    if (byte >= '0' && byte <= '9')
        return byte - '0';
    if (byte >= 'A' && byte <= 'F')
        return byte - 'A' + 10;
    if (byte >= 'a' && byte <= 'f')
        return byte - 'a' + 10;
    return -1;
}

// Escapes of two hexadecimal digits decoded; a "%" before anything else stays, as in a browser.
QByteArray decodedEscapes(const QByteArray &name)
{
    QByteArray result;
    for (qsizetype i = 0; i < name.size(); ++i) {
        const int high = name[i] == '%' && i + 2 < name.size() ? hexDigit(name[i + 1]) : -1;
        const int low = high >= 0 ? hexDigit(name[i + 2]) : -1;
        result += low >= 0 ? static_cast<char>(high * 16 + low) : name[i];
        i += low >= 0 ? 2 : 0;
    }
    return result;
}

// What a browser makes of a name that is not ASCII. The titles that stand in the same page are UTF-8 as a
// rule; without them western pages can look Central European or Baltic.
QStringList guessedReadings(const ApplicationContext &app, const QString &name)
{
    const QByteArray bytes = app.toBytes(name);
    if (std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte >= 0; }))
        return {};
    QStringList readings{QString::fromUtf8(bytes)};
    if (readings.first() == name) // nobody mistakes UTF-8
        return {};
    for (const int number : {1250, 1257})
        readings.append(CodePage::find(number)->fromBytes(bytes));
    readings.removeAll(name);
    readings.removeDuplicates();
    return readings;
}

// What a browser looks for in place of the name; empty where no file can bear that.
QString decodedName(const QString &name)
{
    if (!name.contains(u'%'))
        return name;
    const QByteArray decoded = decodedEscapes(QFile::encodeName(name));
    const QString result = QFile::decodeName(decoded);
    return QFile::encodeName(result) == decoded ? result : QString();
}

} // namespace

void ensureReportsFolder(ApplicationContext &app)
{
    const QString folder = app.appFile({u"Reports"_s});
    app.files.makeFolder(folder);
    app.files.linkBeside(folder, u"Reports"_s);
    app.files.linkBeside(folder, u"reports"_s);
}

void linkBrowserNames(ApplicationContext &app, const QString &path)
{
    const QString name = path.sliced(path.lastIndexOf(u'\\') + 1);
    if (const QString decoded = decodedName(name); decoded != name)
        app.files.linkBeside(path, decoded);
    for (const QString &reading : guessedReadings(app, name))
        app.files.linkVaguely(path, decodedName(reading));
}

} // namespace sondrel
