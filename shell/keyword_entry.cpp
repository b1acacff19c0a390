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

QString storableKeyword(const QString &text)
{
    if (std::none_of(text.begin(), text.end(), breaksAField))
        return text;
    QString storable = text;
    std::replace_if(storable.begin(), storable.end(), breaksAField, QChar(u' '));
    return trimBlanks(storable).toString();
}

QString cleanedKeywordsText(qsizetype count)
{
    return count == 1
               ? u"A keyword can hold neither \";\" nor a line end. Blanks stand in their place now."_s
               : u"Keywords can hold neither \";\" nor line ends. Blanks stand in their place now in %1 "
                 "keywords."_s.arg(count);
}

} // namespace sondrel
