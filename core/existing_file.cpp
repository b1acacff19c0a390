#include "core/existing_file.h"

namespace sondrel {

std::optional<QByteArray> readIfThere(const HostPath &files, const QString &path)
{
    if (!files.fileExists(path) && !files.folderExists(path))
        return std::nullopt;
    return files.readAll(path);
}

} // namespace sondrel
