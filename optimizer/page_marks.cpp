#include "optimizer/page_marks.h"

#include "core/text_fold.h"
#include "optimizer/folded_stretches.h"

#include <algorithm>
#include <array>

namespace sondrel {

namespace {

struct Mark
{
    QStringView text;
    bool PageMarks::*isThere;
};

constexpr auto Marks = std::to_array<Mark>({
    {u"<javascript>", &PageMarks::javaScriptTag},
    {u"<a ", &PageMarks::linkTag},
    {u"http", &PageMarks::http},
    {u"<frameset", &PageMarks::framesetTag},
    {u"http-equiv=\"refresh\"", &PageMarks::refresh},
});

constexpr qsizetype LongestMark = std::max_element(Marks.begin(), Marks.end(), [](Mark left, Mark right) {
                                      return left.text.size() < right.text.size();
                                  })->text.size();

} // namespace

PageMarks PageMarks::of(QStringView page)
{
    PageMarks marks;
    forEachFoldedStretch(page, LongestMark, [&](const FoldedStretch &stretch) {
        for (const Mark &mark : Marks) {
            bool &isThere = marks.*mark.isThere;
            isThere = isThere || indexOfExactly(stretch.text, mark.text) >= 0;
        }
    });
    return marks;
}

} // namespace sondrel
