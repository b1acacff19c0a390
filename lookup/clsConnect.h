// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/collection.h"
#include "lookup/page_text.h"

namespace sondrel {

/// The scanning kit: pulls parts out of a result page by begin and end strings. Nothing parses HTML. Searches
/// ignore case; a failing routine logs its tag and gives what it has so far.
class clsConnect
{
public:
    explicit clsConnect(ApplicationContext &app) : m_app(app) {}

    // Nothing reads these three.
    qint32 TimeOut = 0;
    bool Cache = false;
    qint32 Security = 0;
    QString ActionMarker;
    QString ActionDelimiter; // where the address behind the marker has no quotation mark

    /// Cuts the next section out of text and shortens text. See PageText::takeSection.
    QString FindSection(QString &text, const QString &beginStr, const QString &endStr);
    /// What stands between the two strings, as plain text on one line without quotation marks; empty without
    /// a begin string to look for.
    QString GetRankingElement(const QString &text, const QString &beginStr, const QString &endStr);
    /// The same for a page that has been folded already.
    QString GetRankingElement(const PageText &page, Piece in, const Needle &begin, const Needle &end);
    /// The engine's total count as it writes it, without blanks: what stands between the two strings, or
    /// behind the first "of" there.
    QString GetMatchesCounts(const QString &text, const QString &beginStr, const QString &endStr);
    QString GetMatchesCounts(const PageText &page, Piece in, const Needle &begin, const Needle &end);

    /// The address behind ActionMarker; text is shortened to what follows it.
    QString FindActionURL(QString &text);
    /// The value of the first "href=".
    QString FindhrefURL(const QString &text);
    QString GetErrorMessage(qint32 code, const QString &message);

    /// The items of second and, behind them, those of first.
    template <typename Item>
    static Collection<Item> AddCollection(const Collection<Item> &first, const Collection<Item> &second)
    {
        Collection<Item> both;
        for (const auto *part : {&second, &first}) {
            for (const Item &item : *part)
                both.Add(item);
        }
        return both;
    }

private:
    ApplicationContext &m_app;
};

} // namespace sondrel
