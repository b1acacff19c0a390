#include "shell/plain_tip.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

QString plainTip(const QString &text)
{
    return text.contains(u'<') ? u"<qt>"_s + text.toHtmlEscaped() + u"</qt>"_s : text;
}

} // namespace sondrel
