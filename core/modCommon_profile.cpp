#include "core/modCommon.h"

#include "core/profile_file.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

QString ReadProfileString(ApplicationContext &app, const QString &file, const QString &section,
                          const QString &key)
{
    try {
        return ProfileFile::load(app, file).read(section, key);
    } catch (const std::exception &) {
        // A file that cannot be read has no values; whoever needs one asks for the file first.
        return {};
    }
}

QString WriteProfileString(ApplicationContext &app, const QString &file, const QString &section,
                           const QString &key, const QString &value)
{
    try {
        ProfileFile profile = ProfileFile::load(app, file);
        profile.write(section, key, value);
        profile.save(app, file);
        return u"1"_s;
    } catch (const std::exception &) {
        return u"0"_s;
    }
}

} // namespace sondrel
