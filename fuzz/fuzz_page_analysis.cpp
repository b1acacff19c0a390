// Pages of any kind through the optimizer: the quick scan gives what the plain one gives, and every page ends
// in a report or in a plain failure.
#include "fuzz/target.h"
#include "optimizer/optimizer_report.h"
#include "tests/doors/offline_program.h"
#include "tests/optimizer/plain_scan.h"

#include <cstdlib>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using namespace sondrel::fuzz;

namespace {

bool titleIsInOrder(const QString &page)
{
    const qsizetype begin = indexOfIgnoringCase(page, u"<title>");
    const qsizetype end = indexOfIgnoringCase(page, u"</title>");
    return begin < 0 || end < 0 || begin < end;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    static TemporaryProgram program;
    // The first line is the address of the page.
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString text = program.app.fromBytes(bytes);
    const qsizetype line = text.indexOf(u'\n');
    const QString page = text.sliced(line + 1);
    if (titleIsInOrder(page) && !(retrieveMetaTag(program.app, page) == plainScan(page)))
        std::abort();
    try {
        const PageAnalysis analysis = analysePage(program.app, text.first(line < 0 ? 0 : line), page);
        const ReportOccasion occasion = reportOccasion(program.app, {}, {});
        if (!OptimizerReport(analysis, occasion).text().endsWith(u"</body></html>"_s))
            std::abort();
    } catch (const Failure &) {
        return 0; // a count beyond its range
    }
    return 0;
}
