#include "optimizer/page_analysis.h"

#include "core/modUtilit.h"
#include "core/text_fold.h"
#include "optimizer/folded_stretches.h"
#include "optimizer/frame_urls.h"
#include "optimizer/indexing_reasons.h"
#include "optimizer/page_address.h"
#include "optimizer/page_advice.h"

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// Occurrences of one text in another that do not overlap, anywhere in it.
struct Occurrences
{
    QString needle;
    qsizetype at = 0; // how far they have been counted
    qsizetype count = 0;

    // Counts those that begin in this part of the text.
    void countIn(const FoldedStretch &stretch)
    {
        if (needle.isEmpty())
            return;
        const qsizetype size = stretch.end - stretch.begin + needle.size() - 1;
        const QStringView reached = QStringView(stretch.text).first(std::min(size, stretch.text.size()));
        while (at < stretch.end) {
            const qsizetype hit = indexOfExactly(reached, needle, at - stretch.begin);
            if (hit >= 0)
                ++count;
            at = hit < 0 ? stretch.end : stretch.begin + hit + needle.size();
        }
    }
};

void countAll(std::vector<Occurrences> &keywords, QStringView text)
{
    qsizetype longest = 0;
    for (const Occurrences &keyword : keywords)
        longest = std::max(longest, keyword.needle.size());
    forEachFoldedStretch(text, longest, [&](const FoldedStretch &stretch) {
        for (Occurrences &keyword : keywords)
            keyword.countIn(stretch);
    });
}

Verdict verdictOf(float density, DensityBand band)
{
    if (density < band.low)
        return Verdict::TooFew;
    return density <= band.high ? Verdict::Good : Verdict::TooMany;
}

KeywordUse useOf(const QString &keyword, qsizetype count, qint32 words, DensityBand band)
{
    KeywordUse use;
    use.keyword = keyword;
    use.matches = shortCount(count);
    // The share itself is rounded to the even hundredth, and bounds are compared with the outcome in single
    // precision.
    constexpr double Hundredths = 100;
    const double share = words > 0 ? static_cast<double>(use.matches) / words : 0;
    const double percent = std::nearbyint(share * Hundredths);
    const auto density = static_cast<float>(percent / Hundredths);
    use.density = QString::number(static_cast<qint64>(percent)) + u'%';
    use.verdict = verdictOf(density, band);
    return use;
}

} // namespace

qint32 countBodyWords(const QString &body)
{
    return body.isEmpty() ? 0 : static_cast<qint32>(body.count(u' ') + 2);
}

qint16 countDescriptionWords(const QString &description)
{
    return description.isEmpty() ? qint16(0) : shortCount(description.count(u' ') + 1);
}

DensityBand bodyBandOf(qint32 words)
{
    if (words < 300)
        return {0.05F, 0.1F};
    return words <= 800 ? DensityBand{0.03F, 0.05F} : DensityBand{0.01F, 0.03F};
}

DensityBand descriptionBandOf(qsizetype length)
{
    if (length < 20)
        return {0.2F, 0.3F};
    return length <= 100 ? DensityBand{0.1F, 0.2F} : DensityBand{0.05F, 0.1F};
}

std::vector<KeywordUse> keywordUses(const QString &keywords, const QString &text, qint32 words,
                                    DensityBand band)
{
    const QStringList names = keywords.split(u',', Qt::SkipEmptyParts);
    std::vector<Occurrences> occurrences;
    for (const QString &name : names)
        occurrences.push_back({folded(CollapseSpaces(trimBlanks(name).toString()))});
    countAll(occurrences, text);
    std::vector<KeywordUse> uses;
    for (qsizetype i = 0; i < names.size(); ++i)
        uses.push_back(useOf(names[i], occurrences[static_cast<std::size_t>(i)].count, words, band));
    return uses;
}

PageAnalysis analysePage(ApplicationContext &app, const QString &siteURL, const QString &pageText,
                         const OptimizerSteps &step)
{
    const auto reach = [&](int number) {
        if (step)
            step(number);
    };
    PageAnalysis page;
    page.siteURL = siteURL;
    page.address = pageAddress(siteURL);
    page.pageLength = pageText.size();
    page.tags = retrieveMetaTag(app, pageText);
    page.bodyWords = countBodyWords(page.tags.body);
    page.descriptionWords = countDescriptionWords(page.tags.description);
    page.bodyBand = bodyBandOf(page.bodyWords);
    page.descriptionBand = descriptionBandOf(page.tags.description.size());
    reach(3);
    reach(4);
    reach(5);
    page.keywordAdvice = keywordAdvice(page.tags.keywords);
    reach(6);
    reach(7);
    page.descriptionAdvice = descriptionAdvice(page.tags.description);
    reach(8);
    page.titleAdvice = titleAdvice(page.tags.title);
    const PageMarks marks = PageMarks::of(pageText);
    page.isFrameset = marks.framesetTag;
    if (page.isFrameset)
        page.frameWarning = frameWarning();
    page.contentsAdvice = contentsAdvice(page.bodyWords);
    reach(9);
    if (page.isFrameset)
        page.frameAdvice = frameAdvice(GetFramesetURL(app, pageText, siteURL));
    page.bodyRows = keywordUses(page.tags.keywords, page.tags.body, page.bodyWords, page.bodyBand);
    page.descriptionRows =
        keywordUses(page.tags.keywords, page.tags.description, page.descriptionWords, page.descriptionBand);
    reach(10);
    page.reasons = indexingReasons(marks, siteURL, page.bodyWords, app.deployment.ExampleURL);
    return page;
}

} // namespace sondrel
