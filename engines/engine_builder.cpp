#include "engines/engine_builder.h"

#include "core/entered_text.h"
#include "core/existing_file.h"
#include "core/modCommon.h"
#include "core/profile_file.h"
#include "core/text_fold.h"
#include "engines/kept_copy.h"
#include "engines/numbered_list.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto LineEnd = "\r\n"_L1;
const QString Title = u"Engine Builder"_s;

QString numbered(const QStringList &values)
{
    QString lines;
    for (qsizetype i = 0; i < values.size(); ++i)
        lines += QString::number(i + 1) + u'=' + values[i] + LineEnd;
    return lines;
}

// A block and, behind its last line, a blank one.
QString closed(const QString &block)
{
    return block.endsWith(LineEnd) ? block + LineEnd : block;
}

QString sectionText(ApplicationContext &app, const clsEngineData &engine)
{
    QString text = u'[' + engine.EngineName + u']' + LineEnd;
    for (const auto &[field, key, written] : engineDataKeys()) {
        text += written + engine.*field + LineEnd;
        if (field == &clsEngineData::EngineURL)
            text += u"Host ="_s + GetHostFromURL(app, engine.EngineURL) + LineEnd;
    }
    return text;
}

} // namespace

const QStringList &EngineBuilder::markets()
{
    static const QStringList names{u"US/Global"_s, u"UK/European"_s, u"Australia/NZ"_s, u"Asia"_s,
                                   u"Others"_s};
    return names;
}

const QStringList &EngineBuilder::submitMethods()
{
    static const QStringList names{u"Get"_s, u"Post"_s};
    return names;
}

void EngineBuilder::add(const clsEngineData &engine)
{
    m_engines.Add(engine, engine.EngineName);
    m_names.append(engine.EngineName);
}

void EngineBuilder::LoadEngines()
{
    try {
        const auto bytes = readIfThere(m_app.files, enginesFile());
        if (!bytes)
            return;
        const ProfileFile file(m_app.codePage(), *bytes);
        for (const QString &market : unbrokenList(file, u"Markets"_s)) {
            for (const QString &name : unbrokenList(file, market)) {
                clsEngineData engine;
                engine.Market = market;
                engine.EngineName = trimBlanks(name).toString();
                for (const auto &[field, key, written] : engineDataKeys())
                    engine.*field = trimBlanks(file.read(name, key)).toString();
                add(engine);
            }
        }
    } catch (const std::exception &error) {
        m_stopped = true;
        const QString problem = errorText(error);
        m_app.WriteErrorLog(u"frmEngineBuilder_loadEngines error: "_s + problem);
        m_app.desktop.showMessage({Title, u"loadCustomEngineError: "_s + problem});
    }
}

bool EngineBuilder::IsEngineNameUsed(const QString &name) const
{
    const clsEngine *catalogue = m_app.EngineCatalogue;
    const qint16 index = name.isEmpty() || !catalogue ? qint16(0) : catalogue->GetEngineIndex(name);
    if (index == 0)
        return false;
    // An engine of the user's own that has been removed here is still known to the catalogue.
    return index < catalogue->DefaultEngineNum() || !m_engines.HasKey(name);
}

std::optional<QString> EngineBuilder::AddNew()
{
    std::optional<QString> added;
    reportFailure(m_app, u"frmEngineBuilder_AddNew error: "_s, [&] {
        const QString title = u"Create a new engine"_s;
        const auto ask = [&](const QString &prompt) {
            return enteredLine(m_app.desktop.askText({title, prompt}));
        };
        QString name = ask(u"Please enter the name of the new engine you want to create: "_s);
        while (IsEngineNameUsed(name))
            name = ask(u"This engine name is already exsit in the engine database. "
                       "Please choose a different name."_s);
        if (name.isEmpty())
            return;
        clsEngineData engine;
        engine.EngineName = name;
        add(engine);
        added = name;
    });
    return added;
}

void EngineBuilder::SaveObject(const QString &name, clsEngineData entered)
{
    reportFailure(m_app, u"frmEngineBuilder_SaveObject error: "_s, [&] {
        clsEngineData *engine = name.isEmpty() ? nullptr : m_engines.find(name);
        if (!engine)
            return;
        // An engine without a name would hide all that stand behind it in its market.
        if (trimBlanks(entered.EngineName).isEmpty())
            entered.EngineName = engine->EngineName;
        entered.QueryKeyword2 = engine->QueryKeyword2;
        *engine = std::move(entered);
    });
}

void EngineBuilder::remove(const QString &name)
{
    m_engines.Remove(name);
    m_names.removeIf([&](const QString &key) { return equalsIgnoringCase(key, name); });
}

QString EngineBuilder::GetMarketEngines(const QString &market) const
{
    QString lines;
    reportFailure(m_app, u"frmEngineBuilder_ErrorHabndler error; "_s, [&] {
        QStringList names;
        for (const clsEngineData &engine : m_engines) {
            if (equalsIgnoringCase(engine.Market, market))
                names.append(engine.EngineName);
        }
        lines = numbered(names);
    });
    return lines;
}

QString EngineBuilder::CovertEngineDataColToString() const
{
    QString text;
    reportFailure(m_app, u"frmEngineBuilder_CovertEngineDataColToString error: "_s, [&] {
        for (const clsEngineData &engine : m_engines)
            text += sectionText(m_app, engine);
    });
    return text;
}

QString EngineBuilder::fileText() const
{
    QString text = closed(u"[Markets]"_s + LineEnd + numbered(markets()));
    if (m_engines.isEmpty())
        return text;
    QString sections;
    for (const QString &market : markets()) {
        const QString engines = GetMarketEngines(market);
        if (!engines.isEmpty())
            sections += u'[' + market + u']' + LineEnd + engines;
    }
    return text + closed(sections) + closed(CovertEngineDataColToString());
}

void EngineBuilder::SaveFile()
{
    reportFailure(m_app, u"frmEngineBuilder_SaveFile error: "_s, [&] {
        if (m_stopped)
            keepForGood(m_app, enginesFile());
        replaceKeepingCopy(m_app, enginesFile(), m_app.toBytes(fileText()));
        m_stopped = false;
    });
}

EngineRow EngineBuilder::asCatalogued(const clsEngineData &engine) const
{
    const QByteArray section = m_app.toBytes(sectionText(m_app, engine));
    EngineRow row = readEngineRow(ProfileFile(m_app.codePage(), section), engine.EngineName);
    row.Market = engine.Market;
    row.EngineName = trimBlanks(engine.EngineName).toString();
    return row;
}

SearchAddress dividedSearchAddress(ApplicationContext &app, const QString &url)
{
    const QString host = GetHostFromURL(app, url);
    return {u"http://"_s + host, replacedIgnoringCase(host, u"www.", {}), u'/' + GetPathAfterHost(url)};
}

} // namespace sondrel
