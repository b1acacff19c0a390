// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <vector>

namespace sondrel {

/// An INI-form file in memory, read and changed key by key: sections in square brackets, "key=value" lines, in the
/// system code page. Names ignore case and blanks round them; the first of equal sections and keys wins; a value
/// wholly in quotation marks loses them. It is parsed once; lines that are not changed stay as they are.
class ProfileFile
{
public:
    /// A file without a line.
    explicit ProfileFile(const CodePage &codePage);
    ProfileFile(const CodePage &codePage, QByteArrayView bytes);
    /// Reads the file; a missing one is empty. Throws Failure when it is there and cannot be read.
    static ProfileFile load(ApplicationContext &app, const QString &path);

    /// At most 559 characters, cut at a NUL, trimmed on the right; empty when there is no such section or key.
    QString read(const QString &section, const QString &key) const;
    /// Replaces the value in its line, or adds the key at the end of its section, or the section at the end of the
    /// file.
    void write(const QString &section, const QString &key, const QString &value);

    QByteArray bytes() const;
    /// Replaces the file on disk, atomically. Throws Failure.
    void save(ApplicationContext &app, const QString &path) const;
};

} // namespace sondrel
