// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "optimizer/modHTMLParse.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace sondrel {

/// Told which step of an optimizer run has been reached, from 1 to 16.
using OptimizerSteps = std::function<void(int step)>;

/// The shares of a text that a keyword should have, from low to high.
struct DensityBand
{
    float low = 0;
    float high = 0;

    bool operator==(const DensityBand &) const = default;
};

enum class Verdict { TooFew, Good, TooMany };

/// How often a keyword stands in a text.
struct KeywordUse
{
    QString keyword; // as the page writes it
    qint16 matches = 0;
    QString density; // in percent
    Verdict verdict = Verdict::TooFew;

    bool operator==(const KeywordUse &) const = default;
};

/// What the optimizer finds on a page, with the advice that follows from it.
struct PageAnalysis
{
    QString siteURL; // as it was typed
    QString address; // as it is shown
    qsizetype pageLength = 0;
    MetaTags tags;
    qint32 bodyWords = 0; // one more than there are
    qint16 descriptionWords = 0;
    DensityBand bodyBand;
    DensityBand descriptionBand;
    bool isFrameset = false;

    QString keywordAdvice;
    QString descriptionAdvice;
    QString titleAdvice;
    QString contentsAdvice;
    QString frameWarning;
    QString frameAdvice;
    std::vector<KeywordUse> descriptionRows;
    std::vector<KeywordUse> bodyRows;
    QString reasons; // why the page might not be indexed
};

/// Judges a page. Throws Failure ("Overflow") when a count passes its range.
PageAnalysis analysePage(ApplicationContext &app, const QString &siteURL, const QString &pageText,
                         const OptimizerSteps &step = {});

// The parts of the judgement.

/// One more than there are words, none counting 0.
qint32 countBodyWords(const QString &body);
/// Throws Failure ("Overflow") beyond the range.
qint16 countDescriptionWords(const QString &description);
DensityBand bodyBandOf(qint32 words);
/// By the length in characters, though the density divides by words.
DensityBand descriptionBandOf(qsizetype length);
std::vector<KeywordUse> keywordUses(const QString &keywords, const QString &text, qint32 words,
                                    DensityBand band);

} // namespace sondrel
