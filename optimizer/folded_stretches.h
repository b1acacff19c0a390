// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/text_fold.h"

#include <algorithm>

namespace sondrel {

/// A part of a text, folded.
struct FoldedStretch
{
    QString text; // begins where the stretch does and goes on behind its end by the length of a needle
    qsizetype begin = 0;
    qsizetype end = 0; // both in the whole text
};

/// Calls use(const FoldedStretch &) for each part of a text, from its begin to its end. Whoever looks for
/// several needles in one part after the other finds it near the processor, where a long text, and a folded
/// copy of it, do not stay. longestNeedle is the length of the longest one.
template <typename Use>
void forEachFoldedStretch(QStringView text, qsizetype longestNeedle, Use use)
{
    constexpr qsizetype Usual = 0x4000;
    const qsizetype size = std::max(Usual, longestNeedle); // so that nothing is folded more than twice
    for (qsizetype begin = 0; begin < text.size(); begin += size) {
        const qsizetype end = std::min(begin + size, text.size());
        const qsizetype reach = std::min(end + longestNeedle, text.size());
        use(FoldedStretch{folded(text.sliced(begin, reach - begin)), begin, end});
    }
}

} // namespace sondrel
