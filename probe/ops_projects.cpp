#include "probe/catalogue_fixture.h"
#include "probe/operations.h"
#include "project/clsAccount.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

namespace {

// Every field of a project: the same list reads and writes the objects.
template <typename Account, typename Visit>
void visitFields(Account &project, Visit &&visit)
{
    visit(u"ReportFormat"_s, project.ReportFormat);
    visit(u"Frequency"_s, project.Frequency);
    visit(u"Name"_s, project.Name);
    visit(u"SchedulerEnable"_s, project.SchedulerEnable);
    visit(u"LastLookup"_s, project.LastLookup);
    visit(u"NextLookup"_s, project.NextLookup);
    visit(u"StartDate"_s, project.StartDate);
    visit(u"StartTime"_s, project.StartTime);
    visit(u"SentReport"_s, project.SentReport);
    visit(u"ReportTo"_s, project.ReportTo);
    visit(u"LinksNum"_s, project.LinksNum);
    visit(u"Engine"_s, project.Engine);
    visit(u"URLs"_s, project.URLs);
    visit(u"Subject"_s, project.Subject);
    visit(u"CC"_s, project.CC);
    visit(u"EngineSummaryReport"_s, project.EngineSummaryReport);
    visit(u"KeywordURL"_s, project.KeywordURL);
    visit(u"KeywordSummaryReport"_s, project.KeywordSummaryReport);
    visit(u"RankingDetailReport"_s, project.RankingDetailReport);
    visit(u"ExcludeUnRanking"_s, project.ExcludeUnRanking);
    visit(u"TopPosOnly"_s, project.TopPosOnly);
}

QJsonValue asJson(bool value)
{
    return value;
}
QJsonValue asJson(qint16 value)
{
    return value;
}
QJsonValue asJson(qint32 value)
{
    return value;
}
QJsonValue asJson(const QString &value)
{
    return value;
}
QJsonValue asJson(QDate value)
{
    return value.toString(Qt::ISODate);
}
QJsonValue asJson(const clsURL &value)
{
    return QJsonObject{{u"URL"_s, value.URL}, {u"IsCompetitor"_s, value.IsCompetitor}};
}
template <typename Item>
QJsonValue asJson(const std::optional<Collection<Item>> &items)
{
    if (!items)
        return QJsonValue();
    QJsonArray result;
    for (const Item &item : *items)
        result.append(asJson(item));
    return result;
}

void take(bool &field, const QJsonValue &value)
{
    field = value.toBool();
}
void take(qint16 &field, const QJsonValue &value)
{
    field = static_cast<qint16>(value.toInt());
}
void take(qint32 &field, const QJsonValue &value)
{
    field = value.toInt();
}
void take(QString &field, const QJsonValue &value)
{
    field = value.toString();
}
void take(QDate &field, const QJsonValue &value)
{
    field = QDate::fromString(value.toString(), Qt::ISODate);
}
void take(clsURL &field, const QJsonValue &value)
{
    field = {value[u"URL"_s].toString(), value[u"IsCompetitor"_s].toBool()};
}
const QString &keyOf(const QString &item)
{
    return item;
}
const QString &keyOf(const clsURL &item)
{
    return item.URL;
}
template <typename Item>
void take(std::optional<Collection<Item>> &field, const QJsonValue &value)
{
    if (!value.isArray()) {
        field.reset();
        return;
    }
    field.emplace();
    for (const QJsonValue element : value.toArray()) {
        Item item;
        take(item, element);
        const QString key = keyOf(item);
        field->Add(std::move(item), key);
    }
}

QString settingsFile(const Call &call, const QString &name)
{
    return call.app.appFile({u"Projects"_s, name, name + u".dat"_s});
}

QJsonObject loadProject(const Call &call)
{
    const CatalogueFixture catalogue(call.app, call.request.value(u"engines"_s).toString());
    clsAccount project(call.app);
    project.Name = call.text(0);
    const QString path = settingsFile(call, project.Name);
    writeFixture(call.app, path, call.app.toBytes(call.text(1)));
    project.GetSettings();
    QJsonObject fields;
    visitFields(project, [&](const QString &name, const auto &value) { fields.insert(name, asJson(value)); });
    const QString text = call.app.fromBytes(call.app.files.readAll(path));
    removeFixture(call.app, path);
    return {{u"result"_s, fields}, {u"text"_s, text}};
}

QJsonObject saveProject(const Call &call)
{
    const QJsonObject fields = call.args.at(0).toObject();
    clsAccount project(call.app);
    visitFields(project, [&](const QString &name, auto &field) {
        if (const QJsonValue value = fields.value(name); !value.isUndefined())
            take(field, value);
    });
    const QString path = settingsFile(call, project.Name);
    removeFixture(call.app, path);
    project.SaveSettings();
    const QString text = call.app.fromBytes(call.app.files.readAll(path));
    removeFixture(call.app, path);
    return answer(text);
}

QJsonObject setNextLookupDate(const Call &call)
{
    clsAccount project(call.app);
    project.Name = u"probe"_s;
    const QString path = settingsFile(call, project.Name);
    writeFixture(call.app, path, QByteArray());
    project.Frequency = call.number(0);
    project.SetNextLookupDate(QDate::fromString(call.text(1), Qt::ISODate));
    removeFixture(call.app, path);
    return answer(asJson(project.NextLookup));
}

} // namespace

void addProjectOperations(Operations &operations)
{
    operations.insert(u"LoadProject"_s, loadProject);
    operations.insert(u"SaveProject"_s, saveProject);
    operations.insert(u"SetNextLookupDate"_s, setNextLookupDate);
}

} // namespace sondrel::probe
