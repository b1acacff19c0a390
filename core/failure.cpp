#include "core/failure.h"

#include <new>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

Failure::Failure(QString text) : m_text(std::move(text)), m_utf8(m_text.toUtf8()) {}

QString errorText(const std::exception &error)
{
    if (const auto *failure = dynamic_cast<const Failure *>(&error))
        return failure->text();
    if (dynamic_cast<const std::bad_alloc *>(&error))
        return u"Out of memory"_s;
    return QString::fromUtf8(error.what());
}

} // namespace sondrel
