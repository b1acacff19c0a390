#include "engines/numbered_list.h"

namespace sondrel {

QStringList unbrokenList(const ProfileFile &file, const QString &section)
{
    QStringList values;
    const auto numbered = file.section(section);
    for (int number = 1;; ++number) {
        const QString value = numbered.read(QString::number(number));
        if (value.isEmpty())
            return values;
        values.append(value);
    }
}

} // namespace sondrel
