// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/collection.h"

#include <QStringList>

#include <vector>

namespace sondrel {

class clsKeywords;

/// One suggested keyword, with what the service says of its use.
struct Suggestion
{
    QString Keyword;
    QString Count;

    bool operator==(const Suggestion &) const = default;
};

/// Rows of suggestions; no keyword stands there twice.
class SuggestionList
{
public:
    /// Throws Failure when the keyword is there already.
    void add(const QString &keyword, const QString &count)
    {
        m_rows.Add({keyword, count}, QStringLiteral("Key") + keyword);
    }
    void clear() { m_rows.clear(); }
    /// Removes rows, by their positions from 0, ascending.
    void remove(const QList<int> &rows);
    int count() const { return static_cast<int>(m_rows.Count()); }
    /// Counted from 0.
    const Suggestion &row(int row) const { return m_rows.at(row + 1); }
    const Collection<Suggestion> &rows() const { return m_rows; }

private:
    Collection<Suggestion> m_rows;
};

/// What has been looked up is kept in files of the folder KeywordBuilder: the keywords in one, and the
/// suggestions of each engine for each keyword.

/// The keywords that have been looked up; empty when there is no such file. Throws Failure.
QStringList loadSuggestionKeywords(ApplicationContext &app);
/// Throws Failure, as the next two do.
void saveSuggestionKeywords(ApplicationContext &app, const QStringList &keywords);

/// The kept suggestions; nothing for a missing file. A line without a count, or without a keyword, is passed
/// over.
std::vector<Suggestion> loadSuggestions(ApplicationContext &app, const QString &engine,
                                        const QString &keyword);
/// Makes the folders, and writes the rows that have a keyword. Where there is none the file stays as it was.
void saveSuggestions(ApplicationContext &app, const QString &engine, const QString &keyword,
                     const Collection<Suggestion> &rows);

/// Adds suggestions to the keywords of a project, or brings the count of those up to date that are there. The
/// number of suggestions.
int addSuggestions(const ApplicationContext &app, const std::vector<Suggestion> &rows, clsKeywords &keywords);

} // namespace sondrel
