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

QString columnLetters(int number)
{
    QString letters;
    for (int rest = number; rest > 0; rest = (rest - 1) / Letters)
        letters.prepend(letter((rest - 1) % Letters));
    return letters;
}

QString getColumn(int number)
{
    return number > LastColumn ? QString() : columnLetters(number);
}

} // namespace sondrel
