// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "keywords/keyword_list.h"
#include "project/clsAccount.h"

#include <QStringList>

// What the dialog that adds keywords decides and answers.

namespace sondrel {

/// How the dialog was left.
enum class AddKeywordsAction : qint32 { None = 0, Ok = 1, Cancelled = 2, Import = 3 };

struct AddKeywordsAnswer
{
    AddKeywordsAction action = AddKeywordsAction::None;
    QString newKeywords;    // of OK
    QString importFileName; // of Import
    QString separetor;

    bool operator==(const AddKeywordsAnswer &) const = default;
};

struct AddKeywordsButtons
{
    bool ok = false;
    bool import = false;

    bool operator==(const AddKeywordsButtons &) const = default;
};

AddKeywordsButtons addKeywordsButtons(bool updateStatus, const QString &typed);

/// What the list of delimiters offers; the first one stands for line ends.
QStringList delimiterChoices();

/// The project's URLs as addresses to fetch.
QStringList accountAddresses(const clsAccount *account);
bool isFetchable(const QString &address);

/// The keywords of a page's meta tag, trimmed, empty ones included.
QStringList pageKeywords(ApplicationContext &app, const QByteArray &page);

/// The typed text directly followed by the list, one entry a line.
QString joinedKeywords(const QString &typed, const QStringList &listed);

/// The keywords of an answer; reads the file of an import. Throws Failure when it cannot be read.
QStringList enteredKeywords(ApplicationContext &app, const AddKeywordsAnswer &answer,
                            const TextProgress &progress = {});

} // namespace sondrel
