#include "project/clsKeywords.h"

#include "core/existing_file.h"
#include "core/modUtilit.h"
#include "core/text_fold.h"
#include "core/values.h"
#include "engines/kept_copy.h"

#include <QHash>
#include <QVarLengthArray>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr auto Projects = "Projects"_L1;
constexpr auto TermsFile = "Keywords.dat"_L1;
constexpr auto LineEnd = "\r\n"_L1;
constexpr char16_t FieldMark = u';';
constexpr qsizetype ResultFields = 8;

// The fields of a line, up to a number of them that is enough for its reader.
using Fields = QVarLengthArray<QStringView, ResultFields + 2>;

Fields fieldsOf(QStringView line)
{
    Fields fields;
    for (const QStringView field : QStringTokenizer(line, FieldMark)) {
        if (fields.size() == fields.capacity())
            break;
        fields.append(field);
    }
    return fields;
}

// Gives each line that has a first field to the step.
template <typename Step>
void forEachLine(const QString &text, Step &&step)
{
    for (const QStringView line : QStringTokenizer(text, LineEnd)) {
        if (const Fields fields = fieldsOf(line); !fields[0].isEmpty())
            step(fields);
    }
}

void setResults(clsKeyword &row, const Fields &fields)
{
    row.Count = fields[1].toString();
    row.CurPos = fields[2].toString();
    row.Page = fields[3].toString();
    row.LastPosition = fields[4].toString();
    row.Change = fields[5].toString();
    row.URL = fields[6].toString();
    row.Status = fields[7].toString();
}

// Where a row is to be added: at the end for -1 alone; there is no position 0.
qsizetype positionOf(qsizetype index)
{
    constexpr qsizetype AtTheEnd = -1;
    return index == AtTheEnd ? AtTheEnd : std::max<qsizetype>(index, 0);
}

// Whether a number stands between the first "(" and the first ")".
bool isFurtherHit(QStringView keyword)
{
    const qsizetype open = keyword.indexOf(u'(');
    const qsizetype close = keyword.indexOf(u')');
    return open >= 0 && close > open && isNumeric(trimBlanks(keyword.sliced(open + 1, close - open - 1)));
}

void setPosition(clsKeyword &row, const QString &value)
{
    row.CurPos = value;
    if (value.isEmpty()) {
        if (!row.LastPosition.isEmpty()) {
            row.Change = u'-' + row.LastPosition;
            row.Page.clear();
        }
        return;
    }
    if (row.LastPosition.isEmpty()) {
        row.Change = value + u'+';
        return;
    }
    const double rise = leadingNumber(row.LastPosition) - leadingNumber(value);
    row.Change = rise > 0 ? u'+' + numberText(rise) : numberText(rise);
}

} // namespace

QString clsKeywords::GetKeyword(qsizetype index) const
{
    return Keywords.at(index).Keyword;
}

void clsKeywords::RemoveAll()
{
    Keywords.clear();
}

void clsKeywords::Remove(qsizetype index)
{
    Keywords.Remove(index);
}

void clsKeywords::Remove(const QString &key)
{
    Keywords.Remove(key);
}

void clsKeywords::Add(const QString &key, const QString &keywordText, qsizetype index)
{
    clsKeyword row;
    row.Keyword = keywordText;
    try {
        Keywords.Add(std::move(row), key, positionOf(index));
    } catch (const std::exception &) {
        // A row that is there already stays as it is.
        return;
    }
}

void clsKeywords::AddKeyword(const clsKeyword &keyword, qsizetype index)
{
    try {
        Keywords.Add(keyword, keyword.Keyword, positionOf(index));
    } catch (const std::exception &) {
        // As above.
        return;
    }
}

QString clsKeywords::resultFileName(const QString &engine)
{
    QString name = engine;
    name.removeIf([](QChar unit) { return unit == u'(' || unit == u')' || unit == u',' || unit == u'.'; });
    return name + u".dat"_s;
}

// Makes the project's folder when it is missing.
QString clsKeywords::projectFile(const QString &name) const
{
    m_app.files.makeFolder(m_app.appFile({Projects, AccountName}));
    return m_app.appFile({Projects, AccountName, name});
}

// Nothing when the names cannot be those of files: then there is none.
QString clsKeywords::resultFile() const
{
    const QString name = resultFileName(Engine);
    if (!HostPath::isFileName(AccountName) || !HostPath::isFileName(name))
        return {};
    return m_app.appFile({Projects, AccountName, name});
}

std::optional<QByteArray> clsKeywords::read(const QString &path)
{
    m_unread.insert(path);
    auto bytes = readIfThere(m_app.files, path);
    m_unread.remove(path);
    return bytes;
}

void clsKeywords::needRead(const QString &path) const
{
    if (m_unread.contains(path))
        throw Failure(u"\""_s + path + u"\" could not be read, so nothing is saved over it"_s);
}

// One line end more than the lines have, as every text file of the program.
void clsKeywords::write(const QString &path, const QString &text)
{
    needRead(path);
    m_app.files.writeAll(path, m_app.toBytes(text) + "\r\n");
}

void clsKeywords::LoadKeywords()
{
    reportFailure(m_app, u"clsKeywords_LoadKeywords error : "_s, [this] {
        const QString path = projectFile(TermsFile);
        if (isThere(m_app.files, path))
            Keywords.clear();
        const auto bytes = read(path);
        m_cutShort = bytes.has_value();
        if (!bytes)
            return;
        forEachLine(m_app.fromBytes(*bytes), [this](const Fields &fields) {
            clsKeyword row;
            if (fields.size() >= 2) {
                row.Keyword = fields[0].toString();
                row.Optimize = toInt32(fields[1]) != 0;
            }
            const QString key = row.Keyword;
            Keywords.Add(std::move(row), key);
        });
        m_cutShort = false;
    });
}

void clsKeywords::SaveKeywords()
{
    const WaitCursor wait(m_app.desktop);
    reportFailure(m_app, u"clsKeywords_SaveKeywords"_s, [this] {
        QString text;
        for (const clsKeyword &row : Keywords) {
            QString stripped = row.Keyword;
            if (!StripRowSuffix(stripped))
                text += row.Keyword + FieldMark + (row.Optimize ? "-1"_L1 : "0"_L1) + LineEnd;
        }
        const QString path = projectFile(TermsFile);
        needRead(path);
        if (m_cutShort)
            keepForGood(m_app, path);
        write(path, text);
        m_cutShort = false;
    });
}

void clsKeywords::FillKeywordsLookupValue()
{
    reportFailure(m_app, u"clsKeywords_FillKeywordsValueFromLookup error: "_s, [this] {
        const QString path = resultFile();
        if (Keywords.isEmpty() || path.isEmpty())
            return;
        const auto bytes = read(path);
        if (!bytes)
            return;
        // By the texts, not by the keys: an edited row keeps its key.
        QHash<QString, qsizetype> positions;
        positions.reserve(Count());
        qsizetype position = 0;
        for (const clsKeyword &row : Keywords) {
            ++position;
            if (const QString name = folded(row.Keyword); !positions.contains(name))
                positions.insert(name, position);
        }
        forEachLine(m_app.fromBytes(*bytes), [&](const Fields &fields) {
            if (fields.size() < ResultFields)
                return;
            const QString name = folded(fields[0]);
            if (const auto known = positions.constFind(name); known != positions.constEnd()) {
                setResults(Keywords.at(*known), fields);
            } else if (isFurtherHit(fields[0])) {
                clsKeyword row;
                row.Keyword = fields[0].toString();
                setResults(row, fields);
                const qsizetype before = Count();
                AddKeyword(row, -1);
                if (Count() > before)
                    positions.insert(name, Count());
            }
        });
    });
}

void clsKeywords::SaveKeywordResults()
{
    reportFailure(m_app, u"clsKeywords_SaveKeywordResults"_s, [this] {
        m_app.files.makeFolder(m_app.appFile({Projects}));
        if (AccountName.isEmpty())
            return;
        const WaitCursor wait(m_app.desktop);
        const QString path = projectFile(resultFileName(Engine));
        needRead(projectFile(TermsFile)); // without the terms there are no rows, and the results would go
        QString text;
        for (const clsKeyword &row : Keywords) {
            for (const QString *field :
                 {&row.Keyword, &row.Count, &row.CurPos, &row.Page, &row.LastPosition, &row.Change, &row.URL})
                text += *field + FieldMark;
            text += row.Status + LineEnd;
        }
        write(path, text);
    });
}

void clsKeywords::LoadKeywordResults()
{
    reportFailure(m_app, u"clsKeywords_LoadKeywordResults: "_s, [this] {
        const QString path = resultFile();
        const auto bytes = path.isEmpty() ? std::nullopt : read(path);
        if (!bytes)
            return;
        forEachLine(m_app.fromBytes(*bytes), [this](const Fields &fields) {
            clsKeyword row;
            if (fields.size() > ResultFields) {
                row.Keyword = fields[0].toString();
                setResults(row, fields);
            }
            const QString key = u"Key"_s + row.Keyword;
            Keywords.Add(std::move(row), key);
        });
    });
}

bool clsKeywords::UpdateObject(const QString &keyword, const QString &field, const QString &value)
{
    const auto is = [&](QStringView name) { return equalsIgnoringCase(field, name); };
    clsKeyword *row = Keywords.find(keyword);
    if (!row) {
        clsKeyword added;
        added.Keyword = keyword;
        if (is(u"CurPos")) {
            added.CurPos = value;
            added.Status = m_app.today();
        }
        AddKeyword(added, -1);
        return false;
    }
    if (is(u"Count"))
        row->Count = value;
    else if (is(u"LastPos"))
        row->LastPosition = row->CurPos;
    else if (is(u"CurPos"))
        setPosition(*row, value);
    else if (is(u"Page"))
        row->Page = value;
    else if (is(u"URL"))
        row->URL = value;
    else if (is(u"Status"))
        row->Status = value;
    return true;
}

bool clsKeywords::InKeywordsCollection(const QString &text, const Collection<clsKeyword> *collection) const
{
    bool found = false;
    reportFailure(m_app, u"clsKeywords_InKeywordsCollection error:  "_s, [&] {
        if (!collection)
            throw Failure(u"There is no collection of keywords"_s);
        for (const clsKeyword &row : *collection)
            found = found || equalsIgnoringCase(row.Keyword, text);
    });
    return found;
}

QString clsKeywords::GetCurrencySign() const
{
    constexpr qint16 EuroSign = 128; // in the code page
    const auto is = [&](QStringView name) { return equalsIgnoringCase(Engine, name); };
    if (is(u"Overture(UK)") || is(u"Espotting"))
        return u"\u00a3"_s;
    if (is(u"Overture(DE)"))
        return m_app.codePage().fromAnsiValue(EuroSign);
    return u"$"_s;
}

void clsKeywords::CleanBids(const QString &keyword)
{
    Q_UNUSED(keyword);
}

} // namespace sondrel
