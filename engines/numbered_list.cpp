#include "engines/numbered_list.h"

namespace sondrel {

QStringList unbrokenList(const ProfileFile &file, const QString &section)
{
    QStringList values;
    for (int number = 1;; ++number) {
        const QString value = file.read(section, QString::number(number));
        if (value.isEmpty())
            return values;
        values.append(value);
    }
}

} // namespace sondrel
