#include "probe/probe.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

std::optional<QString> Call::optionalText(int index) const
{
    const QJsonValue value = args.at(index);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

QJsonObject answer(const QJsonValue &value)
{
    return {{u"result"_s, value}};
}

QByteArray fromHex(const QString &hex)
{
    return QByteArray::fromHex(hex.toLatin1());
}

QString toHex(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex());
}

void writeFixture(ApplicationContext &app, const QString &path, const QByteArray &bytes)
{
    const qsizetype cut = path.lastIndexOf(u'\\');
    if (cut > app.AppPath.size())
        app.files.makeFolder(path.first(cut));
    app.files.writeAll(path, bytes);
}

void removeFixture(ApplicationContext &app, const QString &path)
{
    app.files.remove(path);
}

QJsonObject filesBelow(const ApplicationContext &app)
{
    QJsonObject files;
    const QDir root(app.AppPath);
    QDirIterator it(app.AppPath, QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        if (file.open(QIODevice::ReadOnly))
            files.insert(root.relativeFilePath(it.filePath()), app.fromBytes(file.readAll()));
    }
    return files;
}

} // namespace sondrel::probe
