#include "shell/keyword_entry.h"

#include "core/text_fold.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

bool breaksAField(QChar unit)
{
    return unit == u';' || unit == u'\r' || unit == u'\n';
}

} // namespace

QString storableKeyword(const ApplicationContext &app, const QString &text)
{
    QString storable = app.fromBytes(app.toBytes(text));
    if (std::none_of(storable.cbegin(), storable.cend(), breaksAField))
        return storable;
    std::replace_if(storable.begin(), storable.end(), breaksAField, QChar(u' '));
    return trimBlanks(storable).toString();
}

QString cleanedKeywordsText(qsizetype count)
{
    return count == 1
               ? u"A keyword can hold neither \";\" nor a line end, nor letters of a foreign script. "
                 "Blanks and \"?\" stand in their place now."_s
               : u"Keywords can hold neither \";\" nor line ends, nor letters of a foreign script. Blanks "
                 "and \"?\" stand in their place now in %1 keywords."_s.arg(count);
}

} // namespace sondrel
