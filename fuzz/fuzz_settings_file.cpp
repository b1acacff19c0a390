// Bytes of any kind as the settings store and as the file of a deployment, and text of any kind written
// there.
#include "core/deployment.h"
#include "core/failure.h"
#include "core/settings_file.h"
#include "fuzz/target.h"

using namespace sondrel;
using namespace sondrel::fuzz;

namespace {

// What has been read is written so that it is read again as it was.
void checkWritten(const SettingsTree &tree)
{
    const QByteArray bytes = writeSettings(tree);
    const SettingsTree again = readSettings(bytes);
    check(writeSettings(again) == bytes);
    for (const auto &[foldedPath, key] : tree.keys()) {
        check(again.hasKey(key.path));
        for (const auto &[foldedName, value] : key.values)
            check(again.value(key.path, value.name) == value.value);
    }
}

// Any 16 bits are a character here, halves of pairs included.
SettingsTree treeOf(QByteArrayView bytes)
{
    QString text(bytes.size() / 2, Qt::Uninitialized);
    for (qsizetype at = 0; at < text.size(); ++at)
        text[at] =
            QChar(static_cast<unsigned char>(bytes[2 * at]), static_cast<unsigned char>(bytes[2 * at + 1]));
    SettingsTree tree;
    const qsizetype third = text.size() / 3;
    const QString path = text.first(third);
    const QString name = text.sliced(third, third);
    tree.createKey(path);
    tree.setValue(path, name, text.sliced(2 * third));
    tree.setValue(path, name + u'b', bytes.toByteArray());
    tree.setValue(path, name + u'n', static_cast<int>(bytes.size()) - 100);
    return tree;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    Deployment::read(bytes);
    checkWritten(treeOf(bytes));
    try {
        checkWritten(readSettings(bytes));
    } catch (const Failure &failure) {
        check(!failure.text().isEmpty());
    }
    return 0;
}
