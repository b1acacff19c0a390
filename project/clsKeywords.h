// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/collection.h"
#include "project/clsKeyword.h"

#include <QSet>

namespace sondrel {

/// The keywords of one project with their results on one engine, and the two files that hold them:
/// Keywords.dat for the terms, shared by all engines, and one result file per engine.
class clsKeywords
{
public:
    explicit clsKeywords(ApplicationContext &app) : m_app(app) {}

    QString Engine;
    QString AccountName;
    Collection<clsKeyword> Keywords;

    qsizetype Count() const { return Keywords.Count(); }
    QString GetKeyword(qsizetype index) const;
    void RemoveAll();
    void Remove(qsizetype index);
    void Remove(const QString &key);
    /// Adds a new row before the position, or at the end for -1. Errors, such as a duplicate key, are
    /// ignored.
    void Add(const QString &key, const QString &keywordText, qsizetype index);
    void AddKeyword(const clsKeyword &keyword, qsizetype index);

    /// Reads the terms; makes the project's folders when they are missing.
    void LoadKeywords();
    void SaveKeywords();
    /// Adds the engine's stored results to the rows, and the rows of further hits.
    void FillKeywordsLookupValue();
    void SaveKeywordResults();
    /// A second reader of the result file, for lines of nine fields.
    void LoadKeywordResults();

    /// Changes one field of a row and what follows from it; a missing row is made. False when it was missing.
    bool UpdateObject(const QString &keyword, const QString &field, const QString &value);
    /// True when the text is the Keyword of a row. An absent collection is null, and a failure.
    bool InKeywordsCollection(const QString &text, const Collection<clsKeyword> *collection) const;
    QString GetCurrencySign() const;
    void CleanBids(const QString &keyword);

    /// Result file name of an engine: "(", ")", "," and "." removed, and ".dat".
    static QString resultFileName(const QString &engine);

private:
    QString projectFile(const QString &name) const;
    QString resultFile() const;
    std::optional<QByteArray> read(const QString &path);
    void needRead(const QString &path) const;
    void write(const QString &path, const QString &text);

    ApplicationContext &m_app;
    // Files that are there and could not be read; saving over them would lose what they hold.
    QSet<QString> m_unread;
    bool m_cutShort = false; // the terms behind the one that ended the load are in their file only
};

} // namespace sondrel
