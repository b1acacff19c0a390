#include "engines/kept_copy.h"

#include "core/existing_file.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

void replaceKeepingCopy(ApplicationContext &app, const QString &path, QByteArrayView bytes)
{
    const auto before = readIfThere(app.files, path);
    if (before && *before != bytes)
        app.files.writeAll(path + u".bak"_s, *before);
    app.files.writeAll(path, bytes);
}

void keepForGood(ApplicationContext &app, const QString &path)
{
    const auto bytes = readIfThere(app.files, path);
    if (!bytes)
        return;
    for (int number = 1;; ++number) {
        const QString copy = path + u".damaged"_s + (number == 1 ? QString() : QString::number(number));
        if (!isThere(app.files, copy)) {
            app.files.writeAll(copy, *bytes);
            return;
        }
        if (app.files.fileExists(copy) && app.files.readAll(copy) == *bytes)
            return;
    }
}

} // namespace sondrel
