#include "shell/url_form.h"

#include "core/clsFileController.h"
#include "core/entered_text.h"
#include "core/existing_file.h"
#include "core/modCommon.h"

#include <QSet>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString fileOfKnownURLs(const ApplicationContext &app)
{
    return app.SystemDirectory + u"qltULs.dat"_s;
}

// A "|" would end the URL in the project's file and lose all of them; a line end would divide it.
bool breaksFiles(const QString &url)
{
    return std::any_of(url.begin(), url.end(),
                       [](QChar unit) { return unit == u'|' || unit.category() == QChar::Other_Control; });
}

} // namespace

std::vector<KnownURL> loadKnownURLs(ApplicationContext &app, const Collection<clsURL> *chosen)
{
    QSet<QString> spellings;
    if (chosen) {
        for (const clsURL &url : *chosen)
            spellings.insert(url.URL);
    }
    const auto lines = LoadFileAsCollection(app, fileOfKnownURLs(app));
    std::vector<KnownURL> rows;
    if (!lines) {
        readIfThere(app.files, fileOfKnownURLs(app)); // tells what is wrong with a file that is there
        return rows;
    }
    for (const QString &url : *lines)
        rows.push_back({url, spellings.contains(url)});
    return rows;
}

void saveKnownURLs(ApplicationContext &app, const std::vector<KnownURL> &rows)
{
    QString text;
    for (const KnownURL &row : rows) {
        if (!row.URL.isEmpty())
            text += row.URL + u"\r\n"_s;
    }
    if (!clsFileController(app).saveTextFile(fileOfKnownURLs(app), text))
        throw Failure(u"The list of known URLs cannot be written: "_s + fileOfKnownURLs(app));
}

std::optional<QString> typedURL(const ApplicationContext &app, const QString &text)
{
    if (breaksFiles(text.trimmed()))
        return std::nullopt;
    QString url = enteredLine(text);
    // Letters that the code page lacks would come back from the file as "?".
    if (!IsValidDomainName(url) || app.fromBytes(app.toBytes(url)) != url)
        return std::nullopt;
    if (const qsizetype scheme = url.indexOf("://"_L1); scheme >= 0)
        url = url.sliced(scheme + 3).trimmed();
    return url.isEmpty() ? std::nullopt : std::optional(url);
}

Collection<clsURL> checkedURLs(const std::vector<KnownURL> &rows)
{
    Collection<clsURL> urls;
    for (const KnownURL &row : rows) {
        if (row.Checked && !row.URL.isEmpty())
            urls.Add({row.URL, false}, row.URL);
    }
    return urls;
}

} // namespace sondrel
