#include "core/places.h"

#include "core/host_path.h"
#include "core/native_file.h"
#include "core/text_fold.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString ProgramFolderName = u"marovia-sondrel"_s;

// What the package brings along for the application folder and for the system directory.
const QStringList AppFiles{u"dmlist.dat"_s, u"menutemplate.html"_s, u"qlt40.chm"_s, u"qlt40.hlp"_s,
                           u"report.xlt"_s};
const QStringList SystemFiles{u"qlteng4.dat"_s};
// Of these nobody has a version of his own, and an older one would tell of an older program.
const QStringList ProgramsOwnFiles{u"qlt40.chm"_s, u"qlt40.hlp"_s};

// A folder or a broken link counts: it is the user's, whatever it is.
bool standsThere(const HostPath &files, const QString &path)
{
    const auto native = files.find(path);
    return native && modeOf(*native) != 0;
}

void copyMissing(ApplicationContext &app, const HostPath &beside, const QString &programFolder,
                 const QStringList &names, const QString &folder)
{
    for (const QString &name : names) {
        const QString source = programFolder + u'\\' + name;
        const QString target = folder + u'\\' + name;
        if (beside.fileExists(source) && !standsThere(app.files, target))
            app.files.writeAll(target, beside.readAll(source));
    }
}

void renewCopies(ApplicationContext &app, const HostPath &beside, const QString &programFolder)
{
    for (const QString &name : ProgramsOwnFiles) {
        const QString source = programFolder + u'\\' + name;
        const QString target = app.appFile({name});
        if (!beside.fileExists(source) || !app.files.fileExists(target))
            continue;
        const QByteArray bytes = beside.readAll(source);
        if (app.files.size(target) != bytes.size() || app.files.readAll(target) != bytes)
            app.files.writeAll(target, bytes);
    }
}

// Engines' and projects' folders lie one below that of their kind.
constexpr int DeepestFolder = 2;

void removeLeftoversIn(const QString &folder, int depth)
{
    TemporaryFile::removeLeftovers(folder);
    if (depth == DeepestFolder)
        return;
    QDirIterator folders(folder, QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks);
    while (folders.hasNext())
        removeLeftoversIn(folders.next(), depth + 1);
}

} // namespace

DesktopFolders desktopFolders()
{
    return {QCoreApplication::applicationDirPath(),
            QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
            QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)};
}

Places placesIn(const DesktopFolders &folders)
{
    const QString ofUser = folders.userData + u'/' + ProgramFolderName;
    const bool ownFolder =
        !QFileInfo::exists(folders.program + u"/installed"_s) && QFileInfo(folders.program).isWritable();
    return {ownFolder ? folders.program : ofUser,
            folders.userData.isEmpty() ? QString() : ofUser + u"/system"_s,
            folders.userConfig + u"/Kestrune/marovia-sondrel-v4.ini"_s};
}

void fillPlaces(ApplicationContext &app, const QString &programFolder)
{
    const HostPath beside({programFolder});
    app.files.makeFolder(app.AppPath);
    if (app.AppPath != programFolder) {
        copyMissing(app, beside, programFolder, AppFiles, app.AppPath);
        // A disk that is full must not keep the program from starting with the older help.
        reportFailure(app, u"modStartUp_Main error:  "_s, [&] { renewCopies(app, beside, programFolder); });
    }
    if (app.SystemDirectory.isEmpty())
        return;
    app.files.makeFolder(app.SystemDirectory.chopped(1));
    copyMissing(app, beside, programFolder, SystemFiles, app.SystemDirectory.chopped(1));
}

void removeLeftovers(const ApplicationContext &app)
{
    removeLeftoversIn(app.AppPath, 0);
    if (!app.SystemDirectory.isEmpty())
        TemporaryFile::removeLeftovers(app.SystemDirectory.chopped(1));
}

QString GetSystemDirectoryPath(const QString &folder)
{
    const qsizetype nul = folder.indexOf(QChar(u'\0'));
    QString path = trimBlanksRight(QStringView(folder).first(nul < 0 ? folder.size() : nul)).toString();
    if (!path.isEmpty() && !path.endsWith(u'\\'))
        path += u'\\';
    return path;
}

} // namespace sondrel
