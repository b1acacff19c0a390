#include "keywords/suggestion_list.h"

#include "core/clsFileController.h"
#include "core/existing_file.h"
#include "core/shown_text.h"
#include "project/clsKeywords.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto LineEnd = "\r\n"_L1;
const QString Folder = u"KeywordBuilder"_s;
const QString KeywordsFile = u"Keywords.dat"_s;

QString fileName(const QString &keyword)
{
    return keyword + u".dat"_s;
}

QStringList linesOf(const QString &text)
{
    return text.split(LineEnd, Qt::SkipEmptyParts);
}

// A service answers in UTF-8; the project keeps what a person would type, as far as its files can hold that.
QString keywordOf(const ApplicationContext &app, const QString &stored)
{
    const QString shown = shownText(app, stored);
    return app.fromBytes(app.toBytes(shown)) == shown ? shown : stored;
}

} // namespace

void SuggestionList::remove(const QList<int> &rows)
{
    for (auto row = rows.crbegin(); row != rows.crend(); ++row)
        m_rows.Remove(*row + 1);
}

QStringList loadSuggestionKeywords(ApplicationContext &app)
{
    const auto bytes = readIfThere(app.files, app.appFile({Folder, KeywordsFile}));
    return bytes ? linesOf(app.fromBytes(*bytes)) : QStringList();
}

void saveSuggestionKeywords(ApplicationContext &app, const QStringList &keywords)
{
    QString text;
    for (const QString &keyword : keywords) {
        if (!keyword.isEmpty())
            text += keyword + LineEnd;
    }
    app.files.makeFolder(app.appFile({Folder}));
    app.files.writeAll(app.appFile({Folder, KeywordsFile}), app.toBytes(text));
}

std::vector<Suggestion> loadSuggestions(ApplicationContext &app, const QString &engine,
                                        const QString &keyword)
{
    std::vector<Suggestion> rows;
    if (engine.isEmpty() || keyword.isEmpty() || !HostPath::isFileName(engine) ||
        !HostPath::isFileName(fileName(keyword)))
        return rows;
    const auto bytes = readIfThere(app.files, app.appFile({Folder, engine, fileName(keyword)}));
    if (!bytes)
        return rows;
    for (const QString &line : linesOf(app.fromBytes(*bytes))) {
        const QStringList fields = line.split(u';');
        if (fields.size() > 1 && !fields[0].isEmpty())
            rows.push_back({fields[0], fields[1]});
    }
    return rows;
}

void saveSuggestions(ApplicationContext &app, const QString &engine, const QString &keyword,
                     const Collection<Suggestion> &rows)
{
    if (engine.isEmpty() || keyword.isEmpty())
        return;
    QString text;
    for (const Suggestion &row : rows) {
        if (!row.Keyword.isEmpty())
            text += row.Keyword + u';' + row.Count + LineEnd;
    }
    app.files.makeFolder(app.appFile({Folder, engine}));
    const QString file = app.appFile({Folder, engine, fileName(keyword)});
    if (!text.isEmpty() && !clsFileController(app).saveTextFile(file, text))
        throw Failure(u"The suggestions cannot be written to "_s + file);
}

int addSuggestions(const ApplicationContext &app, const std::vector<Suggestion> &rows, clsKeywords &keywords)
{
    int count = 0;
    for (const Suggestion &row : rows) {
        const QString keyword = keywordOf(app, row.Keyword);
        // One that is new gets its row by the first call, and its count by the second.
        if (!keywords.UpdateObject(keyword, u"Count"_s, row.Count))
            keywords.UpdateObject(keyword, u"Count"_s, row.Count);
        ++count;
    }
    return count;
}

} // namespace sondrel
