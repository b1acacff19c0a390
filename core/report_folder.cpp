#include "core/report_folder.h"

#include <QFile>

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

} // namespace

void ensureReportsFolder(ApplicationContext &app)
{
    const QString folder = app.appFile({u"Reports"_s});
    app.files.makeFolder(folder);
    app.files.linkBeside(folder, u"Reports"_s);
    app.files.linkBeside(folder, u"reports"_s);
}

void linkDecodedName(ApplicationContext &app, const QString &path)
{
    const QString name = path.sliced(path.lastIndexOf(u'\\') + 1);
    if (!name.contains(u'%'))
        return;
    const QByteArray decoded = decodedEscapes(QFile::encodeName(name));
    const QString linkName = QFile::decodeName(decoded);
    if (linkName != name && QFile::encodeName(linkName) == decoded)
        app.files.linkBeside(path, linkName);
}

} // namespace sondrel
