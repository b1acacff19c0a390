#include "project/clsKeyword.h"

#include "core/existing_file.h"
#include "core/text_fold.h"
#include "core/values.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr QStringView FieldMark = u";#";
constexpr qsizetype ListingFields = 3; // URL, title, page

} // namespace

void clsKeyword::ChangeURL(ApplicationContext &app, const QString &url, const QString &account)
{
    reportFailure(app, u"clsKeyword_ChangeURL error: "_s, [&] {
        URL = url;
        const QString name = Keyword + u".dat"_s;
        if (url.isEmpty() || !HostPath::isFileName(account) || !HostPath::isFileName(name))
            return;
        const auto bytes = readIfThere(app.files, app.appFile({u"Results"_s, account, name}));
        if (!bytes)
            return;
        const QString text = app.fromBytes(*bytes);
        bool matched = false;
        int counter = 1;
        for (QStringView line : QStringTokenizer(text, u'\n')) {
            if (line.endsWith(u'\r'))
                line.chop(1);
            const auto fields = line.split(FieldMark);
            if (fields.size() != ListingFields)
                continue;
            const bool matches = containsIgnoringCase(fields[0], url) || containsIgnoringCase(url, fields[0]);
            if (matched && !matches)
                return;
            if (matches && !matched) {
                matched = true;
                LastPosition = CurPos;
                CurPos = QString::number(counter);
                Change = numberText(counter - leadingNumber(LastPosition));
            }
            ++counter;
        }
    });
}

} // namespace sondrel
