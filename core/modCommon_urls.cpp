#include "core/modCommon.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QStringView behindScheme(QStringView url)
{
    const qsizetype slashes = url.indexOf("//"_L1);
    return slashes < 0 ? url : url.sliced(slashes + 2);
}

QStringView hostOf(QStringView address)
{
    const qsizetype slash = address.indexOf(u'/');
    return slash < 0 ? address : address.first(slash);
}

// A URL as it is compared: trimmed, without scheme and "www.".
QStringView comparable(QStringView url)
{
    const QStringView address = behindScheme(trimBlanks(url));
    return startsWithIgnoringCase(address, u"www.") ? address.sliced(4) : address;
}

bool carriesInPath(QStringView path, QStringView address)
{
    // Followed by a dot it is only the head of a longer host name.
    return !path.isEmpty() && containsIgnoringCase(path, address) &&
           !containsIgnoringCase(path, address.toString() + u'.');
}

} // namespace

bool CompareURL(ApplicationContext &app, const QString &found, const QString &tracked)
{
    bool same = false;
    reportFailure(app, u" clsSearchKeyword_CompareURL: "_s, [&] {
        const QStringView a = comparable(found);
        const QStringView b = comparable(tracked);
        if (a.isEmpty() && b.isEmpty())
            return; // an empty text holds nothing, not even an empty one
        if (!containsIgnoringCase(a, b) && !containsIgnoringCase(b, a))
            return;
        const QStringView hostA = hostOf(a);
        same = equalsIgnoringCase(hostA, hostOf(b)) || carriesInPath(a.sliced(hostA.size()), b);
    });
    return same;
}

QString AddHTTPToURL(ApplicationContext &app, const QString &url)
{
    QString result;
    try {
        const QStringView trimmed = trimBlanks(url);
        result = startsWithIgnoringCase(trimmed, u"http") ? trimmed.toString() : u"http://"_s.append(trimmed);
    } catch (const std::exception &error) {
        app.WriteErrorLog(u"AddHTTPToURL_Error: "_s + errorText(error) + u"URL: "_s + url);
    }
    return result;
}

QString GetHostFromURL(ApplicationContext &app, const QString &url)
{
    QString host;
    reportFailure(app, u" frmHTTP_GetHostFromURL: "_s, [&] { host = hostOf(behindScheme(url)).toString(); });
    return host;
}

QString GetPathAfterHost(const QString &url)
{
    const QStringView address = behindScheme(url);
    const qsizetype slash = address.indexOf(u'/');
    return slash < 0 ? QString() : address.sliced(slash + 1).toString();
}

QString GetHostAndFolder(const QString &url)
{
    // The dot makes the last segment in front of a query look like a file.
    const qsizetype query = url.indexOf(u'?');
    const QString page = query < 0 ? url : url.first(query) + u'.';
    const QStringView address = behindScheme(page);
    const qsizetype lastSlash = address.lastIndexOf(u'/');
    if (lastSlash < 0)
        return address.toString();
    const bool endsInFile = address.sliced(lastSlash + 1).contains(u'.');
    QStringView folder = endsInFile ? address.first(lastSlash + 1) : address;
    if (folder.endsWith(u'/'))
        folder.chop(1);
    return folder.toString();
}

bool IsValidDomainName(const QString &text)
{
    const qsizetype lastDot = text.lastIndexOf(u'.');
    return lastDot >= 0 && !text.contains(".."_L1) && text.size() - lastDot >= 3;
}

bool IsValidEmailAddress(const QString &text)
{
    const qsizetype at = text.indexOf(u'@');
    if (at < 2 || text.indexOf(u'.', at + 1) - (at + 1) < 2)
        return false;
    return !text.contains(".."_L1) && !text.contains("@@"_L1) && !text.contains(u'\\') &&
           !text.contains(u'%') && !text.contains(u'/');
}

} // namespace sondrel
