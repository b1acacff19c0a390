#include "lookup/listing_file.h"

#include "core/modUtilit.h"
#include "core/uucode.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

std::vector<Listing> loadListings(ApplicationContext &app, const QString &engineName, const QString &keyword)
{
    std::vector<Listing> listings;
    if (engineName.isEmpty()) {
        app.WriteErrorLog(u"Invalid Engine selection - engine name is empty."_s);
        return listings;
    }
    QString term = keyword;
    StripRowSuffix(term);
    const QString file = app.appFile({u"Results"_s, engineName, EncodedString(app, term) + u".dat"_s});
    if (!app.files.fileExists(file))
        return listings;
    const QString text = app.fromBytes(app.files.readAll(file));
    for (QStringView line : QStringView(text).split(u'\n')) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        if (line.isEmpty())
            break;
        const auto fields = line.split(u";#"_s);
        if (fields.size() == 3)
            listings.push_back({fields[0].toString(), fields[1].toString()});
    }
    return listings;
}

} // namespace sondrel
