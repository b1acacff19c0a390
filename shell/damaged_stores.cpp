#include "shell/damaged_stores.h"

#include "core/existing_file.h"
#include "core/profile_file.h"
#include "core/settings_file.h"
#include "core/text_fold.h"
#include "core/values.h"
#include "project/clsMain.h"

#include <QFile>
#include <QFileInfo>

#include <unistd.h>

#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString ParagraphEnd = u"\r\n\r\n"_s;

// A name beside the file that nothing has yet: FILE.damaged, FILE.damaged2, ...
template <typename IsTaken>
QString freeName(const QString &file, const IsTaken &isTaken)
{
    QString name = file + u".damaged"_s;
    for (int number = 2; isTaken(name); ++number)
        name = file + u".damaged"_s + QString::number(number);
    return name;
}

QString moveAside(const QString &file)
{
    const QString kept = freeName(
        file, [](const QString &name) { return QFileInfo(name).isSymLink() || QFileInfo::exists(name); });
    QFile damaged(file);
    if (!damaged.rename(kept))
        return u"It could not be moved aside ("_s + damaged.errorString() +
               u"). The program starts with its usual settings and keeps no changes to them."_s;
    // It holds passwords.
    QFile::setPermissions(kept, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return u"The damaged file has been kept as '"_s + kept +
           u"', and the program starts with its usual settings."_s;
}

// What is wrong with the list, empty when nothing is.
QString damageOf(const QByteArray &bytes, const ProfileFile &file)
{
    const auto isControl = [](char byte) {
        constexpr std::array<char, 4> Usual{'\t', '\n', '\r', '\x1A'};
        return static_cast<unsigned char>(byte) < 0x20 &&
               std::find(Usual.begin(), Usual.end(), byte) == Usual.end();
    };
    if (std::any_of(bytes.begin(), bytes.end(), isControl))
        return u"it holds bytes that are no text"_s;
    const auto section = file.section(u"Accounts"_s);
    if (!section.exists())
        return u"its section 'Accounts' is missing"_s;
    // What stands behind a number harms nobody.
    if (const QString last = section.read(u"Last"_s); leadingNumber(last) == 0 && !isNumeric(last))
        return u"the number of its projects is missing"_s;
    return {};
}

QStringList readableNames(const ProfileFile &file)
{
    constexpr double Every = 1e9;
    QStringList names;
    for (const qint64 number : file.numberedKeys(u"Accounts"_s, Every)) {
        const QString name = trimBlanks(file.read(u"Accounts"_s, QString::number(number))).toString();
        if (HostPath::isFileName(name) && !names.contains(name, Qt::CaseInsensitive))
            names.append(name);
    }
    return names;
}

// The file's name as the desktop has it.
QString shownName(const ApplicationContext &app, const QString &file)
{
    return app.files.find(file).value_or(file);
}

QString keepAndReplace(ApplicationContext &app, const QString &list, const QByteArray &bytes,
                       const QStringList &names)
{
    const QString kept = freeName(list, [&app](const QString &name) { return isThere(app.files, name); });
    app.files.writeAll(kept, bytes);
    app.files.remove(list);
    if (!names.isEmpty())
        clsMain(app).SaveAccount(names);
    return u"The damaged file has been kept as '"_s + shownName(app, kept) +
           u"', and the program starts with "_s +
           (names.isEmpty() ? u"an empty list."_s : u"the projects that can be read in it."_s) +
           u" The files of the projects are as they were."_s;
}

} // namespace

QString putAsideDamagedSettings(const QString &settingsFile)
{
    QFile file(settingsFile);
    if (!file.exists())
        return {};
    if (!file.open(QIODevice::ReadOnly))
        return u"The settings file '"_s + settingsFile + u"' cannot be read: "_s + file.errorString() +
               u"."_s + ParagraphEnd +
               u"The program starts with its usual settings and keeps no changes to them."_s;
    const QByteArray bytes = file.readAll();
    file.close();
    try {
        readSettings(bytes);
        return {};
    } catch (const std::exception &error) {
        return u"The settings file '"_s + settingsFile + u"' is damaged: "_s + errorText(error) + u"."_s +
               ParagraphEnd + moveAside(settingsFile);
    }
}

QString repairProjectList(ApplicationContext &app)
{
    const QString list = app.appFile({u"project.dat"_s});
    QString problem;
    try {
        const auto bytes = readIfThere(app.files, list);
        if (!bytes || bytes->trimmed().isEmpty())
            return {};
        const ProfileFile file(app.codePage(), *bytes);
        const QString damage = damageOf(*bytes, file);
        if (damage.isEmpty())
            return {};
        problem = u"The project list '"_s + shownName(app, list) + u"' is damaged: "_s + damage + u"."_s;
        return problem + ParagraphEnd + keepAndReplace(app, list, *bytes, readableNames(file));
    } catch (const std::exception &error) {
        const QString why = problem.isEmpty()
                                ? u"The project list '"_s + shownName(app, list) + u"' cannot be used."_s
                                : problem;
        return why + ParagraphEnd + errorText(error);
    }
}

QString unwritableFolder(const ApplicationContext &app)
{
    if (QFileInfo(app.AppPath).isDir() && ::access(QFile::encodeName(app.AppPath).constData(), W_OK) == 0)
        return {};
    return u"Nothing can be written to the program's folder '"_s + app.AppPath + u"'."_s + ParagraphEnd +
           u"Projects, results and reports will not be kept until that has changed."_s;
}

} // namespace sondrel
