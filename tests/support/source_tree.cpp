#include "tests/support/source_tree.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

QString sourceFile(const QString &path)
{
    return QStringLiteral(SONDREL_SOURCE_DIR "/") + path;
}

} // namespace sondrel
