#include "probe/keyword_rows.h"

#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

QJsonArray rowsAsJson(const Collection<clsKeyword> &rows)
{
    QJsonArray result;
    for (const clsKeyword &row : rows) {
        result.append(QJsonObject{
            {u"Keyword"_s, row.Keyword},
            {u"Optimize"_s, row.Optimize},
            {u"CurPos"_s, row.CurPos},
            {u"Page"_s, row.Page},
            {u"LastPosition"_s, row.LastPosition},
            {u"Change"_s, row.Change},
            {u"Count"_s, row.Count},
            {u"Status"_s, row.Status},
            {u"URL"_s, row.URL},
        });
    }
    return result;
}

Collection<clsKeyword> rowsFromJson(const QJsonArray &rows)
{
    Collection<clsKeyword> result;
    for (const QJsonValue value : rows) {
        const QJsonObject fields = value.toObject();
        const auto text = [&](const QString &name) { return fields.value(name).toString(); };
        clsKeyword row;
        row.Keyword = text(u"Keyword"_s);
        row.Optimize = fields.value(u"Optimize"_s).toBool(true);
        row.CurPos = text(u"CurPos"_s);
        row.Page = text(u"Page"_s);
        row.LastPosition = text(u"LastPosition"_s);
        row.Change = text(u"Change"_s);
        row.Count = text(u"Count"_s);
        row.Status = text(u"Status"_s);
        row.URL = text(u"URL"_s);
        if (!result.HasKey(row.Keyword))
            result.Add(row, row.Keyword);
    }
    return result;
}

} // namespace sondrel::probe
