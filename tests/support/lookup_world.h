// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "engines/clsEngine.h"
#include "project/clsAccount.h"
#include "project/clsKeywords.h"
#include "tests/support/world.h"

namespace sondrel {

/// A world with a catalogue of made-up engines and a project that tracks site.example and rival.example, and
/// is content with the first page of results.
class LookupWorld : public World
{
public:
    LookupWorld();

    clsEngine engines;
    std::shared_ptr<clsAccount> account;

    /// Keywords.dat of the project.
    void writeKeywords(const QStringList &keywords) const;

    /// One listing of a result page of the engine "Finder".
    static QByteArray listing(const QByteArray &url, const QByteArray &title = "Title");
    /// A result page of the engine "Finder"; next is the address of the next page, empty for none.
    static QByteArray page(const QByteArrayList &urls, const QByteArray &next = {},
                           const QByteArray &count = "2,340");
    /// Ten listings of sites that nobody tracks.
    static QByteArrayList fillers(int count = 10);
};

} // namespace sondrel
