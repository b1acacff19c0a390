#include "core/existing_file.h"

namespace sondrel {

bool isThere(const HostPath &files, const QString &path)
{
    return files.fileExists(path) || files.folderExists(path);
}

std::optional<QByteArray> readIfThere(const HostPath &files, const QString &path)
{
    if (!isThere(files, path))
        return std::nullopt;
    return files.readAll(path);
}

} // namespace sondrel
