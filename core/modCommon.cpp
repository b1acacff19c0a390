#include "core/modCommon.h"

#include "core/clsFileController.h"
#include "core/registry.h"
#include "core/text_fold.h"
#include "core/values.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto NotInProjectNames = "\\/:*?\"<>|"_L1;

void addPiece(Collection<QString> &collection, QStringView piece)
{
    if (piece.isEmpty())
        return;
    const QString text = trimBlanks(piece).toString();
    if (!collection.HasKey(text))
        collection.Add(text, text);
}

} // namespace

bool IsCollectionItem(ApplicationContext &app, const QString &text, const Collection<QString> *collection)
{
    bool found = false;
    reportFailure(app, u"modCommon_IsCollectionItem error:  "_s, [&] {
        if (!collection || collection->isEmpty())
            return;
        const QString wanted = folded(text);
        found = std::any_of(collection->begin(), collection->end(), [&](const QString &item) {
            return equalsIgnoringCase(trimBlanks(item), wanted);
        });
    });
    return found;
}

Collection<QString> StringToCollection(const QString &text, const QString &delimiter)
{
    Collection<QString> collection;
    qsizetype begin = 0;
    while (!delimiter.isEmpty()) {
        const qsizetype end = indexOfIgnoringCase(text, delimiter, begin);
        if (end < 0)
            break;
        addPiece(collection, QStringView(text).sliced(begin, end - begin));
        begin = end + delimiter.size();
    }
    addPiece(collection, QStringView(text).sliced(begin));
    return collection;
}

std::optional<Collection<QString>> LoadFileAsCollection(ApplicationContext &app, const QString &path)
{
    const QString text = clsFileController(app).openTextFile(path);
    if (text.isEmpty())
        return std::nullopt;
    return StringToCollection(text, u"\r\n"_s);
}

QString TrimNull(ApplicationContext &app, const QString &text)
{
    QString result;
    try {
        const qsizetype null = text.indexOf(QChar(0));
        result = null < 0 ? text : text.first(null);
    } catch (const std::exception &) {
        app.desktop.showMessage({u"Error"_s,
                                 u"Some error occured for this program !\r\n"
                                 "Please report this error to the vendor !"_s,
                                 MessageIcon::Critical});
    }
    return result;
}

bool IsTrueText(const QString &text)
{
    return text == "-1"_L1 || equalsIgnoringCase(text, u"True");
}

bool IsNumberText(const QString &text)
{
    QString digits = text;
    digits.removeIf([](QChar unit) { return unit == u',' || unit == u'.' || unit == u' '; });
    return isNumeric(digits);
}

bool IsValidProjectName(const QString &text)
{
    for (const QChar unit : text) {
        if (NotInProjectNames.contains(unit))
            return false;
    }
    return true;
}

bool ShellOpenDocument(ApplicationContext &app, const QString &target, ShowMode mode)
{
    const WaitCursor wait(app.desktop);
    return app.desktop.open(target, mode);
}

bool GetEngineFlag(ApplicationContext &app, const QString &valueName)
{
    try {
        return toBoolean(GetRegistryText(app, app.RegEngine, valueName, u"1"_s));
    } catch (const Failure &) {
        // A value that is neither yes nor no does not switch an engine on.
        return false;
    }
}

} // namespace sondrel
