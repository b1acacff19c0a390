// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "lookup/clsConnect.h"
#include "lookup/listing_file.h"
#include "lookup/page_text.h"

#include <optional>

namespace sondrel {

/// How an engine's listings stand in its pages.
struct ListingForm
{
    QString EngineName;
    QString EngineKey; // occurs in the addresses of the engine itself
    QString SectionStart;
    QString SectionEnd;
    QString beginTitle;
    QString endTitle;
    QString beginURL;
    QString endURL;
};

/// Goes over the listings of a result block, passing over those without a title, without an address, and of
/// the engine itself.
class ListingWalk
{
public:
    /// page outlives the walk.
    ListingWalk(ApplicationContext &app, const ListingForm &form, const PageText &page, Piece block);

    /// The next listing; nothing when there is none. Its URL can be empty, where nothing is left of it.
    std::optional<Listing> next();

private:
    std::optional<Piece> nextSection();
    std::optional<Listing> listingIn(const PageText &page, Piece section);
    QString cleanURL(QString url);

    clsConnect m_connect;
    const PageText &m_page;
    Piece m_rest;
    QString m_engineKey;
    QString m_sectionEnd;
    Needle m_sectionStart;
    Needle m_sectionStop;
    Needle m_beginTitle;
    Needle m_endTitle;
    Needle m_beginURL;
    Needle m_endURL;
    bool m_walks; // false when the engine has no section strings
    bool m_endBelongsToListing;
    bool m_numbersTitles;
    bool m_wrapsTargets;
};

} // namespace sondrel
