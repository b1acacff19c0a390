// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/collection.h"

#include <optional>

// The program's free helpers for URLs, collections, texts and the platform. Searches ignore case.

namespace sondrel {

/// Whether a listing's URL belongs to a tracked URL: same host behind "www.", and one address inside the
/// other; or the tracked URL inside the path of the found one. Two empty addresses do not. The reports
/// compare with this.
bool CompareURL(ApplicationContext &app, const QString &found, const QString &tracked);
/// Trimmed, with "http://" in front unless it begins with "http".
QString AddHTTPToURL(ApplicationContext &app, const QString &url);
/// What stands behind the first "//" and before the next "/": port, user and "www." stay.
QString GetHostFromURL(ApplicationContext &app, const QString &url);
/// What stands behind the first "/" after the host, query included.
QString GetPathAfterHost(const QString &url);
/// Host and folders of a URL without scheme, file name and closing "/".
QString GetHostAndFolder(const QString &url);
bool IsValidDomainName(const QString &text);
bool IsValidEmailAddress(const QString &text);

/// True when an element, trimmed, equals the text. An absent collection is null.
bool IsCollectionItem(ApplicationContext &app, const QString &text, const Collection<QString> *collection);

/// True when the collection has an element with that key. An absent collection is null.
template <typename Item>
bool HasCollectionKey(const Collection<Item> *collection, const QString &key)
{
    return collection && collection->HasKey(key);
}

/// The non-empty pieces, trimmed, each once (first spelling kept).
Collection<QString> StringToCollection(const QString &text, const QString &delimiter);
/// The lines of a file; nothing when it is missing or empty.
std::optional<Collection<QString>> LoadFileAsCollection(ApplicationContext &app, const QString &path);

/// The text up to its first NUL.
QString TrimNull(ApplicationContext &app, const QString &text);
/// True for exactly "-1" or "True".
bool IsTrueText(const QString &text);
/// True when the text without ",", "." and blanks is a number.
bool IsNumberText(const QString &text);
/// False when the text holds a character that a project name must not have.
bool IsValidProjectName(const QString &text);

/// One key of an INI-form file (see ProfileFile): at most 559 characters, cut at a NUL, trimmed on the right.
/// A missing file, section or key gives an empty text.
QString ReadProfileString(ApplicationContext &app, const QString &file, const QString &section,
                          const QString &key);
/// Writes or replaces one key, making file and section when needed, but no folder. "1" when it was written,
/// "0" when not.
QString WriteProfileString(ApplicationContext &app, const QString &file, const QString &section,
                           const QString &key, const QString &value);

/// Opens a document or address in the desktop's default program, under the wait cursor.
bool ShellOpenDocument(ApplicationContext &app, const QString &target, ShowMode mode);
/// Whether the settings leave the engine of that value name switched on.
bool GetEngineFlag(ApplicationContext &app, const QString &valueName);

} // namespace sondrel
