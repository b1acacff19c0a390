#include "reports/column_letters.h"

namespace sondrel {

namespace {

constexpr int Letters = 26;
constexpr int LastColumn = 6 * Letters; // "EZ"

QChar letter(int index)
{
    return QChar(static_cast<char16_t>(u'A' + index));
}

} // namespace

QString getColumn(int number)
{
    if (number < 1 || number > LastColumn)
        return {};
    const int index = number - 1;
    const QString last(letter(index % Letters));
    return index < Letters ? last : letter(index / Letters - 1) + last;
}

} // namespace sondrel
