#include "lookup/listing_walk.h"

#include "core/text_fold.h"
#include "lookup/decode_html.h"

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString withoutNumber(const QString &title)
{
    qsizetype begin = 0;
    while (begin < title.size() &&
           (title[begin] == u'.' || title[begin] == u' ' || (title[begin] >= u'0' && title[begin] <= u'9')))
        ++begin;
    return title.sliced(begin);
}

} // namespace

// Three engines need a hand of their own: one's end string holds part of the listing, one numbers its titles,
// one wraps the target of a listing in an address of its own.
ListingWalk::ListingWalk(ApplicationContext &app, const ListingForm &form, const PageText &page, Piece block)
    : m_connect(app),
      m_page(page),
      m_rest(block),
      m_engineKey(form.EngineKey),
      m_sectionEnd(form.SectionEnd),
      m_sectionStart(form.SectionStart),
      m_sectionStop(form.SectionEnd),
      m_beginTitle(form.beginTitle),
      m_endTitle(form.endTitle),
      m_beginURL(form.beginURL),
      m_endURL(form.endURL),
      m_walks(!form.SectionStart.isEmpty() || !form.SectionEnd.isEmpty()),
      m_endBelongsToListing(containsIgnoringCase(form.EngineName, u"Sprinks")),
      m_numbersTitles(equalsIgnoringCase(form.EngineName, u"Espotting")),
      m_wrapsTargets(containsIgnoringCase(form.EngineName, u"LookSmart"))
{
}

std::optional<Piece> ListingWalk::nextSection()
{
    if (!m_walks)
        return std::nullopt;
    const Piece before = m_rest;
    const auto section = m_page.takeDelimitedSection(m_rest, m_sectionStart, m_sectionStop);
    // An end string that occurs only in front of, or within, the begin string would give the same rest for
    // ever.
    return m_rest == before ? std::nullopt : section;
}

std::optional<Listing> ListingWalk::next()
{
    while (const auto section = nextSection()) {
        std::optional<Listing> listing;
        if (m_endBelongsToListing) {
            const PageText item(m_page.text(*section) + m_sectionEnd);
            if (item.all().isEmpty())
                return std::nullopt;
            listing = listingIn(item, item.all());
        } else {
            if (section->isEmpty())
                return std::nullopt;
            listing = listingIn(m_page, *section);
        }
        if (listing)
            return listing;
    }
    return std::nullopt;
}

std::optional<Listing> ListingWalk::listingIn(const PageText &page, Piece section)
{
    QString title = m_connect.GetRankingElement(page, section, m_beginTitle, m_endTitle);
    if (title.isEmpty())
        return std::nullopt;
    QString url = m_connect.GetRankingElement(page, section, m_beginURL, m_endURL);
    if (!url.contains(u'.') || containsIgnoringCase(url, m_engineKey))
        return std::nullopt;
    if (m_numbersTitles)
        title = withoutNumber(title);
    return Listing{cleanURL(std::move(url)), std::move(title)};
}

QString ListingWalk::cleanURL(QString url)
{
    if (!containsIgnoringCase(url, u"http"))
        url.prepend("http://"_L1);
    url = DecodeHTMLString(url);
    if (const qsizetype blank = url.indexOf(u' '); blank >= 0)
        url.truncate(blank);
    if (m_wrapsTargets && containsIgnoringCase(url, u"&url="))
        url = m_connect.GetRankingElement(url, u"&url="_s, u"&"_s);
    return url;
}

} // namespace sondrel
