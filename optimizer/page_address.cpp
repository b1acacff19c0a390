#include "optimizer/page_address.h"

#include "core/modCommon.h"
#include "core/text_fold.h"

#include <QDir>
#include <QUrl>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// As many bytes as a transfer takes of a page.
constexpr qint64 LargestPage = qint64(32) << 20;

QString lastElement(const QString &path)
{
    return path.sliced(std::max(path.lastIndexOf(u'\\'), path.lastIndexOf(u'/')) + 1);
}

QString httpReportName(ApplicationContext &app, const QString &address)
{
    QString path = GetPathAfterHost(address);
    for (const char16_t unit : {u'/', u'?', u'='})
        path.replace(unit, u'_');
    return GetHostFromURL(app, address) + u'_' + path + u".html"_s;
}

} // namespace

std::optional<QString> localPage(const QString &text)
{
    if (startsWithIgnoringCase(text, u"file://"))
        return QUrl(text).toLocalFile();
    if (text.startsWith("~/"_L1))
        return QDir::homePath() + text.sliced(1);
    if (text.startsWith(u'/') || text.contains(":\\"_L1))
        return text;
    return std::nullopt;
}

QString pageAddress(const QString &text)
{
    if (startsWithIgnoringCase(text, u"http") || text.contains("\\\\"_L1) || localPage(text))
        return text;
    return u"http://"_s + text;
}

QString reportFileName(ApplicationContext &app, const QString &text)
{
    const QString address = pageAddress(text);
    if (startsWithIgnoringCase(address, u"http"))
        return httpReportName(app, address);
    return lastElement(localPage(text).value_or(address)) + u".html"_s;
}

QString localPageText(ApplicationContext &app, const QString &path)
{
    if (app.files.size(path) > LargestPage)
        throw Failure(u"The file "_s + path + u" is larger than 32 MiB, too large for a web page"_s);
    return app.fromBytes(app.files.readAll(path));
}

} // namespace sondrel
