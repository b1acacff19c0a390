#include "optimizer/indexing_reasons.h"

#include "core/text_fold.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString usesJavaScript()
{
    return u"<li><b><font face=arial COLOR=#ff0000>JavaScript has been used in your web "
           "page.</font></b> If your web site URLs are embedded in JavaScript, most of the search "
           "engines will not recognize and index these pages. If you're serious about getting "
           "your web sites to be indexed by the search engines, please consider changing your web "
           "site style, either by putting your links in simple HTML format or making alternative "
           "TEXT links at the bottom of your page just for the search engines.</li>"_s;
}

QString hasLittleText()
{
    return u"<li><b><font face=arial COLOR=#ff0000>There is not enough TEXT content on your web "
           "pages.</font></b> TEXT contents on your web page is less than 300 words. If your web "
           "site was designed for \"Nice looking\" which means that contains only the Image, "
           "Flash, Java, Image map etc, and there is no actual text information (or just little "
           "text) on your web pages, your web pages will be ignored by the search engines because "
           "search engines will index the web sites, which contain valuable information. Please "
           "put any real useful information in text format to your web pages.</li>"_s;
}

QString hasNoLinks()
{
    return u"<li><b><font face=arial COLOR=#ff0000>Your page is not Cross-Linked or there is no "
           "TEXT-LINK in your page.</font></b> Not all search engine spiders visit your website "
           "from your main index page (index.html). If you have not linked each of your pages "
           "with all your other pages, you stand the risk of having engines indexing only one or "
           "two of your pages. Just add text links at the bottom of your pages to all your other "
           "pages.</li>"_s;
}

QString isFrameset()
{
    return u"<li><b><font face=arial COLOR=#ff0000>Your web site is a Frame style.</font></b> \r\n"
           "Most major search engines do not support Frame style of the web sites. If you wish "
           "your web sites to be indexed by the search engines and get good results, please "
           "consider changing your web sites to a non-frame style.</li>"_s;
}

QString isMadeByScript()
{
    return u"<li><b><font face=arial COLOR=#ff0000>Your web site URL is NOT in normal .html or "
           ".htm format.</font></b> If the contents of your web pages are generated at real time "
           "by using a script such as .cgi, .asp etc rather than a normal .html (or .htm) file, "
           "you are taking the risk that your web sites may be ignored by the search engines, "
           "because search engines want to index the web pages where they knew what the "
           "information is.</li>"_s;
}

QString redirects(const QString &exampleURL)
{
    return u"<li><b><font face=arial COLOR=#ff0000>Your web page RE-DIRECTS to other web "
           "site.</font></b> Check your codes for the following tags between the <head> and "
           "</head>.<meta http-equiv=\"Refresh\" content=\"0; URL="_s +
           exampleURL +
           u"\">his tag redirects your page to another web site. If you have this tag in your "
           "code, the robots will usually completely ignore your website altogether.</li>"_s;
}

} // namespace

QString indexingReasons(const PageMarks &page, const QString &siteURL, qint32 words,
                        const QString &exampleURL)
{
    QString reasons;
    if (page.javaScriptTag)
        reasons += usesJavaScript();
    if (words < 300)
        reasons += hasLittleText();
    if (!page.linkTag || !page.http)
        reasons += hasNoLinks();
    if (page.framesetTag)
        reasons += isFrameset();
    if (containsIgnoringCase(siteURL, u".php") || siteURL.contains(u'?') ||
        containsIgnoringCase(siteURL, u".asp"))
        reasons += isMadeByScript();
    if (page.refresh)
        reasons += redirects(exampleURL);
    return reasons;
}

} // namespace sondrel
