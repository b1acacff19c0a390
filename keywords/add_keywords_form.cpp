#include "keywords/add_keywords_form.h"

#include "core/text_fold.h"
#include "optimizer/modHTMLParse.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString lineDelimiter()
{
    return u"One keyword per line"_s;
}

// Pages come in UTF-8 these days, and are read in the system code page.
QString asWritten(const ApplicationContext &app, const QString &keywords)
{
    const QByteArray bytes = app.toBytes(keywords);
    return app.fromBytes(bytes) == keywords ? keywordFileText(app, bytes) : keywords;
}

} // namespace

AddKeywordsButtons addKeywordsButtons(bool updateStatus, const QString &typed)
{
    return {!typed.isEmpty(), !updateStatus};
}

QStringList delimiterChoices()
{
    return {lineDelimiter(), u","_s, u"."_s, u"|"_s, u";"_s, u":"_s, u"#"_s};
}

QStringList accountAddresses(const clsAccount *account)
{
    QStringList addresses;
    if (account && account->URLs) {
        for (const clsURL &url : *account->URLs)
            addresses.append(url.URL.startsWith("http"_L1) ? url.URL : u"http://"_s + url.URL);
    }
    return addresses;
}

bool isFetchable(const QString &address)
{
    return address.contains(u'.');
}

QStringList pageKeywords(ApplicationContext &app, const QByteArray &page)
{
    const QString found = asWritten(app, retrieveMetaTag(app, app.fromBytes(page)).keywords);
    QStringList keywords;
    if (!found.isEmpty()) {
        for (const QString &piece : found.split(found.contains(u',') ? u',' : u' '))
            keywords.append(trimBlanks(piece).toString());
    }
    return keywords;
}

QString joinedKeywords(const QString &typed, const QStringList &listed)
{
    QString text = typed;
    for (QString entry : listed)
        text += entry.replace(u';', u' ') + u"\r\n"_s;
    return text;
}

QStringList enteredKeywords(ApplicationContext &app, const AddKeywordsAnswer &answer,
                            const TextProgress &progress)
{
    switch (answer.action) {
    case AddKeywordsAction::Ok:
        // Nobody means the prompt itself.
        if (answer.newKeywords == lineDelimiter())
            break;
        return splitKeywords(answer.newKeywords, {}, progress);
    case AddKeywordsAction::Import:
        return splitKeywords(keywordFileText(app, app.files.readAll(answer.importFileName)),
                             answer.separetor == lineDelimiter() ? QString() : answer.separetor, progress);
    case AddKeywordsAction::Cancelled:
    case AddKeywordsAction::None:
        break;
    }
    return {};
}

} // namespace sondrel
