#include "probe/operations.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

void addCatalogueOperations(Operations &operations)
{
    Q_UNUSED(operations);
}

} // namespace sondrel::probe
