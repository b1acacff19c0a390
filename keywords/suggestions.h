// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QStringList>

#include <functional>

namespace sondrel {

class ProfileFile;

/// How the suggestion service of an engine is asked, and how its answers are read.
struct SuggestionForm
{
    QString QuerySuggest1;
    QString QuerySuggest2;
    QString SuggestStartString;
    QString SuggestEndString;
    QString SuggestSectionStart;
    QString SuggestSectionEnd;
    QString beginCountSection;
    QString endCountSection;
    QString begineKeywordSection;
    QString endKeywordSection;
};

/// The engines that have a suggestion service.
QStringList suggestionEngines(const ProfileFile &engineData);
/// What the engine's section tells. All empty for an unknown engine.
SuggestionForm suggestionForm(const ProfileFile &engineData, const QString &engine);

/// The address that asks for suggestions. Blanks within the keyword become "+"; nothing else is escaped.
QString suggestionAddress(const SuggestionForm &form, const QString &keyword);

/// Hands over each suggestion of a page with its count, in order, until one lacks a part. Searches mind the
/// case. What take throws ends the reading too, and is passed on.
void readSuggestions(ApplicationContext &app, const SuggestionForm &form, QStringView page,
                     const std::function<void(const QString &keyword, const QString &count)> &take);

} // namespace sondrel
