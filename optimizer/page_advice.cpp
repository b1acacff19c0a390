#include "optimizer/page_advice.h"

#include "core/failure.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString keywordLengthAdvice(qint16 length)
{
    if (length == 0)
        return u"No <META> keywords tag was found in the <font "
               "COLOR=#0000ff>&lt;HEAD&gt;</font>...<font COLOR=#0000ff>&lt;/HEAD&gt;</font> portion. "
               "Please make sure to add one before submitting your web site. This meta tag will be "
               "used by search engine how to index your web site."_s;
    if (length < 300)
        return u"The keywords are "_s + QString::number(length) +
               u" characters, which is fine. However, they are less than 35% of the permitted length "
               "of 1000 characters. For optimal results we suggest a keyword tag sized between 300 "
               "and 500 characters. Consider adding more keywords to this tag to make the most out of "
               "it. "_s;
    if (length <= 1000)
        return u"The keywords are "_s + QString::number(length) +
               u" characters, which is fine. For optimal results we suggest a tag sized between 300 "
               "and 500 characters. "_s;
    return u"The keywords are "_s + QString::number(length) +
           u" characters, which is more than the permitted length. They should be no longer than "
           "1000 characters. Otherwise, search engines will simply use the words in the first "
           "1000 characters."_s;
}

} // namespace

qint16 shortCount(qsizetype count)
{
    if (count > std::numeric_limits<qint16>::max())
        throw Failure(u"Overflow"_s);
    return static_cast<qint16>(count);
}

QString keywordAdvice(const QString &keywords)
{
    QString advice = keywordLengthAdvice(shortCount(keywords.size()));
    // Told to those who use commas already; the reports have always had it this way round.
    if (keywords.contains(u','))
        advice += u" Note that the keywords should be separated with commas rather than spaces."_s;
    return advice;
}

QString descriptionAdvice(const QString &description)
{
    const qint16 length = shortCount(description.size());
    if (length == 0)
        return u"No <META> description tag was found in the  <font "
               "COLOR=#0000ff>&lt;HEAD&gt;</font>...<font COLOR=#0000ff>&lt;/HEAD&gt;</font>> "
               "portion. Please make sure to add one before submitting your web site. This meta tag "
               "will be used by search engine to index your web site."_s;
    if (length <= 200)
        return u"The description tag is "_s + QString::number(length) +
               u" characters, which is fine. Make sure it is attractive, and well describes your web "
               "site's purpose."_s;
    return u"The description is "_s + QString::number(length) +
           u" characters, which is more than the permitted length. It should be no longer than 200 "
           "characters. Otherwise, search engines will use the first 200 characters in your "
           "description."_s;
}

QString titleAdvice(const QString &title)
{
    const qint16 length = shortCount(title.size());
    if (length == 0)
        return u"No title tag was found in the  <font COLOR=#0000ff>&lt;HEAD&gt;</font>...<font "
               "COLOR=#0000ff>&lt;/HEAD&gt;</font> portion. This meta tag will be used to display "
               "your web site title by search engine when index your web site. Do not submit your "
               "site before it has a title. "_s;
    if (length <= 100)
        return u"The title tag is "_s + QString::number(length) +
               u" characters, which is fine. For best results, make sure it is descriptive, "
               "attractive, containing your important keywords and well describes your web site's "
               "purpose."_s;
    return u"The title is "_s + QString::number(length) +
           u" characters, which is more than the permitted length. It should be no longer than 100 "
           "characters. Otherwise, search engines will use first 100 characters in the title."_s;
}

QString contentsAdvice(qint32 words)
{
    const QString start =
        u"Some search engines use the text near the top of a Web page to index your web site, "
        "so make sure you place the most important stuff at the top. Search engines that do "
        "not support <font COLOR=#ff0000>&lt;META&gt;</font> tags will use the first 200 (or "
        "250) characters for the site's description, so the first paragraph should "
        "describe/sell your service.<br><br>"_s;
    if (words < 300)
        return start + u"<font color=#FF0000>Note: </font>The contents of your web page is "_s +
               QString::number(words) +
               u" words, which is too short. Search engines will not consider your web page important "
               "to be indexed. Please consider to add more text contents to your web page."_s;
    if (words <= 1000)
        return start + u"Note: The contents of your web page is "_s + QString::number(words) +
               u" words, which it is fine. For best results, make sure it is descriptive, attractive, "
               "containing your important keywords and well describes your web site's purpose."_s;
    return start + u"<font color=#FF0000>Note: </font>The contents of your web page is "_s +
           QString::number(words) +
           u" words, which may be too long. For best results, please consider to shorten your "
           "contents between 500 to 800 words  and well describes your web site's purpose."_s;
}

QString frameWarning()
{
    return u"<font face=arial COLOR=#ff0000><blink>Warning:</blink> Your web site is in a Frame "
           "style or there is no text contents in the body of your web page. Search engines do "
           "not like 'Frame' style web site and your web site will not be indexed. If you would "
           "like your web site to be indexed, please consider to change your web site style to a "
           "normal static HTML format.</font>"_s;
}

QString frameAdvice(const QStringList &urls)
{
    QString advice = u"Your web site is in a <font color=#FF0000><b>Frame</b></font> style. The actual "
                     "contents of this web page will be viewed from following URLs. Please use following "
                     "URL to optimize your web site.<br><br><lo>"_s;
    for (const QString &url : urls)
        advice += u"<li>"_s + url + u"</li>"_s;
    return advice + u"</lo>"_s;
}

} // namespace sondrel
