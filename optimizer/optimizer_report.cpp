#include "optimizer/optimizer_report.h"

#include "core/modUtilit.h"
#include "core/text_fold.h"
#include "core/values.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qsizetype SampleLength = 200;
constexpr qsizetype ContentsLength = 250;

QString sectionHead(const QString &heading)
{
    return u"<table border=0 width=620 bgcolor=#d2dfec cellspacing=1><tr><td>"_s + heading +
           u"\r\n</td></tr><tr bgcolor=#FFFFFF><td>\r\n"_s;
}

QString sectionFoot()
{
    return u"</font>\r\n</font></td></tr></table><p>&nbsp;</p>"_s;
}

// What a meta tag holds, in the colours of its parts.
QString shownTag(const QString &name, const QString &content)
{
    return u"<font FACE=Arial SIZE=2 COLOR=#ff0000>&lt;META NAME=&quot;</font><font FACE=Arial "
           "SIZE=2 COLOR=#0000ff>"_s +
           name +
           u"</font><font FACE=Arial SIZE=2 COLOR=#ff0000>&quot; CONTENT=&quot;</font><font "
           "FACE=Arial SIZE=2 COLOR=#0000ff>"_s +
           content +
           u"</font><font FACE=Arial SIZE=2 COLOR=#ff0000>&quot;&gt;</font><br><br>\r\n"
           "<font FACE=Arial SIZE=2 COLOR=#000000>"_s;
}

QString tableHead(const QString &heading)
{
    return u"<table border=0 width=620 bgcolor=#d2dfec cellspacing=1><tr><td colspan = 4><font "
           "FACE=Arial SIZE=2 COLOR=#000000><b>"_s +
           heading +
           u"</b></font>\r\n"
           "</td></tr>\r\n"
           "<tr align=center bgcolor=#FFFFFF><td width=360><b>Keyword</b></td><td "
           "width=120><b>Matches</b></td><td width=120><b>Density</b></td><td "
           "width=120><b>Results</b></td></tr>\r\n"_s;
}

QString marker(Verdict verdict)
{
    switch (verdict) {
    case Verdict::TooFew:
        return u"<font FACE=Arial SIZE=4 COLOR=#FF0000><b>-</b></font>"_s;
    case Verdict::Good:
        return u"<font FACE=Arial SIZE=2 COLOR=#0000FF><b>OK</b></font>"_s;
    case Verdict::TooMany:
        break;
    }
    return u"<font FACE=Arial SIZE=3 COLOR=#000000><b>+</b></font>"_s;
}

QString tableRows(const std::vector<KeywordUse> &uses)
{
    QString rows;
    for (const KeywordUse &use : uses)
        rows += u"<tr bgcolor=#FFFFFF><td><font FACE=Arial SIZE=2 COLOR=#000000>"_s + use.keyword +
                u"</font></td><td align=center><font FACE=Arial SIZE=2 COLOR=#000000>"_s +
                QString::number(use.matches) + u"</font></td><td align=center>"_s + use.density +
                u"</td>\r\n"
                "<td align=center>"_s +
                marker(use.verdict) + u"</td></tr>\r\n"_s;
    return rows;
}

QString percent(float share)
{
    return QString::number(qRound(share * 100)) + u'%';
}

// Thousands of characters with one decimal, halves rounded up.
QString sizeText(qsizetype characters)
{
    const qsizetype tenths = (characters + 50) / 100;
    return QString::number(tenths / 10) + u'.' + QString::number(tenths % 10);
}

// An address behind its scheme.
QString hostOf(const QString &address)
{
    constexpr qsizetype Scheme = 7; // "http://"
    return address.mid(Scheme);
}

// A date in the words of the locale, or in English where files cannot hold these.
QString dateText(const ApplicationContext &app, QDate date, const QString &format)
{
    QString text = app.locale.toString(date, format);
    return app.fromBytes(app.toBytes(text)) == text ? text : QLocale::c().toString(date, format);
}

} // namespace

ReportOccasion reportOccasion(const ApplicationContext &app, const clsPreference &preference,
                              const clsDealerProfile &dealer)
{
    const QDate today = app.clock.today();
    return {preference,
            dealer,
            app.deployment.KnowledgeBase,
            longDate(app.locale, today),
            dateText(app, today, u"d MMM yyyy"_s),
            dateText(app, today, u"d-MMM-yyyy"_s)};
}

QString OptimizerReport::text(const OptimizerSteps &step) const
{
    const auto reach = [&](int number) {
        if (step)
            step(number);
    };
    QString document = head() + simulation() + keywordSection() + descriptionSection() + titleSection() +
                       contentsSection() + frameSection() + descriptionTable();
    reach(11);
    document += bodyTable();
    reach(12);
    document += reasonsSection() + tips() + footer();
    document += u"</font></td></tr></table>\r\n"
                "</body></html>"_s;
    reach(13);
    return document;
}

QString OptimizerReport::head() const
{
    const QString &address = m_page.address;
    return u"<html><head>\r\n"
           "<title>Web Site Optimizer for: "_s +
           address +
           u"</title>\r\n"
           "</head>\r\n"
           "<body width = 620>\r\n"
           "<table border=0 width=620>\r\n"
           "<tr><td>"_s +
           logo() +
           u"<table border=0 width=620><tr bgcolor=#0099CC><td><center><font face=arial "
           "color=#FFFFFF><b>Web Site Optimizer Report</b></font></center></td></tr></table>\r\n"
           "<p><font face=Arial><b>Report Date: </b>"_s +
           m_occasion.longDate +
           u"<br>\r\n"
           "<b>Website:</b> <a href="_s +
           address + u">"_s + address +
           u"</a><br></p><p><br></p></font>\r\n"
           "</p><font FACE=Arial SIZE=2 COLOR=#000000>"_s;
}

QString OptimizerReport::logo() const
{
    const clsPreference &by = m_occasion.preference;
    // A dot so far behind is one of a whole address.
    const bool whole = by.LogoURL.indexOf(u'.') >= 8;
    return whole && !by.LogoPosition.isEmpty() ? u"<br><img src="_s + by.LogoURL + u"><br>"_s : QString();
}

QString OptimizerReport::simulation() const
{
    const MetaTags &tags = m_page.tags;
    const QString &address = m_page.address;
    const QString title = (tags.title.isEmpty() ? u"NO TITLE"_s : tags.title).left(SampleLength);
    const QString text = (tags.description.isEmpty() ? tags.body : tags.description).left(SampleLength);
    const QString size = sizeText(m_page.pageLength);
    return sectionHead(u"<font FACE=Arial SIZE=2 COLOR=#000000><b>Search Engine Simulation</b></font>"_s) +
           u"<font FACE=Arial SIZE=2>\r\n"
           "The listing below shows two typical samples how your web site will look on the search "
           "engines. How your web site listing appear on the search engines will effect the "
           "click-thru-rate to your web site. Please make sure your web site listing are "
           "attractive.</font><br><br>\r\n"_s +
           u"<font face=\"Times New Roman, Times, serif\" SIZE=3><ul><li><a href="_s + address + u"><b>"_s +
           title + u"</b></a><br>\r\n"_s + text + u"<br><font SIZE=2 COLOR=#999999>98% Date: "_s +
           m_occasion.dateWithBlanks + u", Size "_s + size + u"K, "_s + address +
           u"</font><br><br></li>\r\n"_s + u"<li><a href="_s + address + u"><b>"_s + title +
           u"</b></a><br>\r\n"_s + tags.body.left(SampleLength) +
           u"<br><font SIZE=2 COLOR=#999999>Last Modified "_s + m_occasion.dateWithHyphens +
           u" -page size "_s + size + u"K - URL: "_s + address + u"</font><br><br></li></ul>\r\n"_s +
           u"</font></td></tr></table><p>&nbsp;</p>"_s;
}

QString OptimizerReport::metaTagPage(const QString &place, const QString &caption) const
{
    return u"<a href="_s + m_occasion.knowledgeBase + u"/kb/submission/metatag.html#"_s + place + u'>' +
           caption + u"</a>"_s;
}

QString OptimizerReport::keywordSection() const
{
    return sectionHead(u"<font FACE=Arial SIZE=2 COLOR=#000000><b>"_s +
                       metaTagPage(u"keyword"_s, u"Meta Tag Keywords"_s) + u"</b></font>"_s) +
           shownTag(u"Keywords"_s, m_page.tags.keywords) + m_page.keywordAdvice + sectionFoot();
}

QString OptimizerReport::descriptionSection() const
{
    return sectionHead(u"<font FACE=Arial SIZE=2 COLOR=#000000><b>"_s +
                       metaTagPage(u"description"_s, u"Meta Tag Description"_s) + u"</b></font>"_s) +
           shownTag(u"Description"_s, m_page.tags.description) + m_page.descriptionAdvice + sectionFoot();
}

QString OptimizerReport::titleSection() const
{
    return sectionHead(u"<font FACE=Arial SIZE=2 COLOR=#000000><b>Choose the Right "_s +
                       metaTagPage(u"title"_s, u"Title"_s) + u"</b></font>"_s) +
           u"<font FACE=Arial SIZE=2 COLOR=#ff0000>&lt;TITLE&gt;</font><font FACE=Arial SIZE=2 "
           "COLOR=#0000ff>"_s +
           m_page.tags.title +
           u"</font><font FACE=Arial SIZE=2 COLOR=#ff0000>&lt;/TITLE&gt;</font><br><br>\r\n"
           "<font FACE=Arial SIZE=2 COLOR=#000000>"_s +
           m_page.titleAdvice + sectionFoot();
}

QString OptimizerReport::contentsSection() const
{
    const QString contents = trimBlanks(CollapseSpaces(m_page.tags.body.left(ContentsLength))).toString();
    return sectionHead(u"<font FACE=Arial SIZE=2 COLOR=#000000><b>Web Site Contents</b>(first 250 "
                       "characters)</font>"_s) +
           u"<font FACE=Arial SIZE=2 COLOR=#0000ff>"_s + contents + u" ...</font>"_s + m_page.frameWarning +
           u"<br><br>\r\n"
           "<font FACE=Arial SIZE=2 COLOR=#000000>"_s +
           m_page.contentsAdvice + sectionFoot();
}

QString OptimizerReport::frameSection() const
{
    if (!m_page.isFrameset)
        return {};
    return sectionHead(u"<font FACE=Arial SIZE=2 COLOR=#000000><b><blink>Frame style web "
                       "site</blink></b></font>"_s) +
           u"\r\n"
           "<font FACE=Arial SIZE=2 COLOR=#000000>"_s +
           m_page.frameAdvice +
           u"</font>\r\n"
           "</font><br></td></tr></table><p>&nbsp;</p>"_s;
}

QString OptimizerReport::descriptionTable() const
{
    return tableHead(u"Keyword Utilization on Meta Tag Description"_s) + tableRows(m_page.descriptionRows) +
           u"\r\n"
           "<tr bgcolor=#FFFFFF><td colspan = 4><font FACE=Arial SIZE=2 "
           "COLOR=#000000><b>Results:</b><br>\r\n"
           "<font FACE=Arial SIZE=2 COLOR=#0000FF><b>OK</b></font>: Effective keyword usage in "
           "<b>Meta Tag Description</b>. <br>\r\n"
           "<font FACE=Arial SIZE=4 COLOR=#FF0000><b> - </b></font>: Not enough keyword matches, "
           "may result in lower Search Engine ranking. Please add more keywords to <b>Meta Tag "
           "Description</b>.<br>\r\n"
           "<font FACE=Arial SIZE=3 COLOR=#000000><b> + </b></font>: Too many keyword matches, "
           "may be considered SPAM and dropped from the Search Engines. Please don't repeat the "
           "same keyword more than 5 times in the <b>Meta Tag Description</b>.<br>\r\n"
           "</font></td></tr></table><p><br></p>\r\n"_s;
}

QString OptimizerReport::bodyTable() const
{
    return tableHead(u"Keyword Utilization on Web Page Body"_s) + tableRows(m_page.bodyRows) +
           u"\r\n"
           "<tr bgcolor=#FFFFFF><td colspan = 4><font FACE=Arial SIZE=2 "
           "COLOR=#000000><b>Results:</b><br>\r\n"
           "<font FACE=Arial SIZE=2 COLOR=#0000FF><b>OK</b></font>: Effective keyword usage in "
           "<b>Web Page body</b>. <br>\r\n"
           "<font FACE=Arial SIZE=4 COLOR=#FF0000><b> - </b></font>: Not enough keyword matches, "
           "may result in lower Search Engine ranking. Please add more keywords to your "
           "page.<br>\r\n"
           "<font FACE=Arial SIZE=3 COLOR=#000000><b> + </b></font>: Too many keyword matches, "
           "may be considered SPAM and dropped from the Search Engines. Please don't repeat the "
           "same keyword more than the suggested keyword density in <b>Web Page body</b>.<br>\r\n"
           "<br><b>Suggestion:</b><br>The contents of your web page is "_s +
           QString::number(m_page.bodyWords) +
           u" words, for best results, suggest keyword density should be between "_s +
           percent(m_page.bodyBand.low) + u" - "_s + percent(m_page.bodyBand.high) +
           u".</font></td></tr>\r\n"
           "</table><p>&nbsp;</p>"_s;
}

QString OptimizerReport::reasonsSection() const
{
    if (m_page.reasons.isEmpty())
        return {};
    return sectionHead(u"<font FACE=Arial SIZE=2 COLOR=#000000><b><a href="_s + m_occasion.knowledgeBase +
                       u"/faq/sub3.html>Possible reasons why your web site aren't indexed by search "
                       "engine</a></b></font>"_s) +
           u"<font FACE=Arial SIZE=2><ul>\r\n"_s + m_page.reasons +
           u"</ul></font></td></tr></table><p>&nbsp;</p>"_s;
}

QString OptimizerReport::tips() const
{
    return u"\r\n"
           "<table border=0 width=620 bgcolor=#d2dfec cellspacing=1><tr><td><b><font face=arial "
           "size=2><a href="_s +
           m_occasion.knowledgeBase +
           u"/>Need More Tips</a></font></b></td></tr></table><br>\r\n"
           "Please check our web site promotion knowledge base at: \r\n"
           "<a href="_s +
           m_occasion.knowledgeBase + u"/>"_s + m_occasion.knowledgeBase +
           u"/</a> for more information on how to improve your Sondrel.<br><br><hr size=1><br>\r\n"_s;
}

QString OptimizerReport::footer() const
{
    const clsPreference &by = m_occasion.preference;
    const clsDealerProfile &dealer = m_occasion.dealer;
    const bool dealerHasScheme = startsWithIgnoringCase(dealer.DealerURL, u"http");
    QString site;
    QString mail;
    QString name;
    QString text;
    if (by.WebSite.contains(u'.')) {
        // It is the dealer's address whose scheme is looked for, and the reporter's that is cut.
        site = dealerHasScheme ? hostOf(by.WebSite) : by.WebSite;
        mail = by.Email;
        name = by.ReporterName;
        text = logo() + u"<center><font face=arial size =2>This report is generated by : <a href=http://"_s +
               site + u">"_s + by.CompanyName + u"</a>\r\n"_s;
    } else {
        site = dealerHasScheme ? hostOf(dealer.DealerURL) : dealer.DealerURL;
        mail = dealer.DealerEmail;
        name = u"Marovia Software"_s;
        text = u"<center><font face=arial size =2>This report is generated by : <a href=http://"_s + site +
               u">Marovia Relay</a> of Kestrune Pty Ltd\r\n"_s;
    }
    return text +
           u"<br>\r\n"
           "Email: <a href=mailto:"_s +
           mail + u">"_s + name +
           u"</a> \r\n"
           "Web: <a href=http://"_s +
           site + u">"_s + site + u"</a></center>\r\n"_s;
}

} // namespace sondrel
