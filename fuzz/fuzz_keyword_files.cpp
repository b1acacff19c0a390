// Bytes of any kind as a project's keyword and result files.
#include "fuzz/target.h"
#include "project/clsKeywords.h"
#include "tests/doors/offline_program.h"

#include <QDir>
#include <QTemporaryDir>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using namespace sondrel::fuzz;

namespace {

const auto Account = u"P"_s;
const auto Engine = u"E(1)"_s;

struct Files
{
    // In memory where there is such a place: every run writes them anew.
    QTemporaryDir folder{QDir(u"/dev/shm"_s).exists() ? u"/dev/shm/sondrel-XXXXXX"_s : QString()};
    OfflineProgram program{folder.path()};
    ApplicationContext &app = program.app;
    QString terms = app.appFile({u"Projects"_s, Account, u"Keywords.dat"_s});
    QString results = app.appFile({u"Projects"_s, Account, clsKeywords::resultFileName(Engine)});

    Files() { app.files.makeFolder(app.appFile({u"Projects"_s, Account})); }
};

clsKeywords named(ApplicationContext &app)
{
    clsKeywords keywords(app);
    keywords.AccountName = Account;
    keywords.Engine = Engine;
    return keywords;
}

} // namespace

// A NUL divides the keyword file from the result file.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static Files files;
    const QByteArrayView bytes(data, static_cast<qsizetype>(size));
    const qsizetype cut = std::max<qsizetype>(bytes.indexOf('\0'), 0);
    files.app.files.writeUnflushed(files.terms, bytes.first(cut));
    files.app.files.writeUnflushed(files.results, bytes.sliced(cut));

    clsKeywords keywords = named(files.app);
    keywords.LoadKeywords();
    keywords.FillKeywordsLookupValue();
    for (qsizetype row = 1; row <= std::min<qsizetype>(keywords.Count(), 20); ++row) {
        const QString term = keywords.GetKeyword(row);
        check(keywords.UpdateObject(term, u"LastPos"_s, QString()));
        check(keywords.UpdateObject(term, u"CurPos"_s, QString::number(row)));
        keywords.Keywords.at(row).ChangeURL(files.app, term, Account);
    }
    keywords.LoadKeywordResults();
    named(files.app).LoadKeywordResults();
    return 0;
}
