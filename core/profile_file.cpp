#include "core/profile_file.h"

#include "core/existing_file.h"
#include "core/text_fold.h"

#include <algorithm>
#include <cmath>
#include <numeric>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qsizetype LongestValue = 559;   // characters
constexpr qsizetype LongestCharacter = 4; // bytes
constexpr int Utf8 = 65001;
constexpr QByteArrayView ByteOrderMark("\xEF\xBB\xBF");

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\t';
}

bool isLineEnd(char byte)
{
    return byte == '\r' || byte == '\n';
}

QByteArrayView trimmed(QByteArrayView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

QByteArrayView withoutQuotes(QByteArrayView value)
{
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return quoted ? value.sliced(1, value.size() - 2) : value;
}

// The text between "[" and the last "]", so that a name may hold brackets itself.
std::optional<QByteArrayView> sectionName(QByteArrayView content)
{
    if (content.isEmpty() || content.front() != '[')
        return std::nullopt;
    const qsizetype close = content.lastIndexOf(']');
    if (close < 0)
        return std::nullopt;
    return trimmed(content.sliced(1, close - 1));
}

// The number that a name spells in its shortest form, else 0.
qint64 wholeNumber(QByteArrayView name)
{
    constexpr qsizetype MostDigits = 18;
    if (name.isEmpty() || name.size() > MostDigits || name.front() == '0')
        return 0;
    qint64 number = 0;
    for (const char digit : name) {
        if (digit < '0' || digit > '9')
            return 0;
        number = number * 10 + (digit - '0');
    }
    return number;
}

std::size_t hashOf(int section, const QVarLengthArray<char16_t, 64> &name)
{
    return qHashBits(name.constData(), static_cast<std::size_t>(name.size()) * sizeof(char16_t),
                     qHash(section, QHashSeed::globalSeed()));
}

} // namespace

ProfileFile::ProfileFile(const CodePage &codePage) : ProfileFile(codePage, QByteArrayView()) {}

ProfileFile::ProfileFile(const CodePage &codePage, QByteArrayView bytes)
    : m_codePage(&codePage), m_bytes(bytes.toByteArray())
{
    if (m_bytes.startsWith(ByteOrderMark)) {
        m_start = ByteOrderMark.size();
        m_codePage = CodePage::find(Utf8).get(); // known pages live as long as the program
    }
    foldBytes();
    parse();
}

ProfileFile ProfileFile::load(ApplicationContext &app, const QString &path)
{
    return ProfileFile(app.codePage(), readIfThere(app.files, path).value_or(QByteArray()));
}

// What each byte of a name folds to. Bytes above ASCII of a page whose characters have several are never
// asked for.
void ProfileFile::foldBytes()
{
    std::array<char, 256> bytes;
    std::iota(reinterpret_cast<unsigned char *>(bytes.begin()),
              reinterpret_cast<unsigned char *>(bytes.end()), static_cast<unsigned char>(0));
    const QString text = m_codePage->isSingleByte()
                             ? m_codePage->fromBytes(QByteArrayView(bytes.data(), bytes.size()))
                             : QString();
    for (std::size_t byte = 0; byte < bytes.size(); ++byte)
        m_foldedByte[byte] = foldSeldom(text.isEmpty() ? static_cast<char16_t>(byte)
                                                       : text[static_cast<qsizetype>(byte)].unicode());
}

// Only the headers are looked for; the lines of a section are told apart when somebody asks for them.
void ProfileFile::parse()
{
    m_sections.emplace_back().begin = m_start;
    const QByteArrayView all(m_bytes);
    qsizetype lineFeed = -1;
    if (m_start < all.size()) {
        const Line first{m_start, -1, endOfLine(m_start, all.size(), lineFeed)};
        if (const qsizetype size = contentOf(first).size(); m_start + size < first.end)
            m_lineEnd = m_bytes.sliced(m_start + size, first.end - m_start - size);
    }
    for (qsizetype bracket = all.indexOf('[', m_start); bracket >= 0;) {
        qsizetype next = bracket + 1;
        if (const qsizetype begin = behindBlanks(bracket); begin >= 0) {
            const Line line{begin, -1, endOfLine(begin, all.size(), lineFeed)};
            if (const auto name = sectionName(trimmed(contentOf(line)))) {
                m_sections.back().end = begin;
                addSection(line, *name);
                m_sections.back().begin = line.end;
            }
            next = line.end;
        }
        bracket = next < all.size() ? all.indexOf('[', next) : -1;
    }
    m_sections.back().end = all.size();
}

// Where the line begins of which the blanks in front of the place are all; -1 when there is more.
qsizetype ProfileFile::behindBlanks(qsizetype place) const
{
    while (place > m_start && isBlank(m_bytes[place - 1]))
        --place;
    return place == m_start || isLineEnd(m_bytes[place - 1]) ? place : -1;
}

void ProfileFile::splitIntoLines(int section) const
{
    const qsizetype end = m_sections[static_cast<std::size_t>(section)].end;
    qsizetype lineFeed = -1;
    while (m_sections[static_cast<std::size_t>(section)].begin < end)
        addLine(section, endOfLine(m_sections[static_cast<std::size_t>(section)].begin, end, lineFeed));
}

// Behind the line's end: CR LF, LF, or CR alone. What stands behind the given end is not looked at: a last
// line without an end has lines behind it that were written since. lineFeed remembers the next LF, so that
// none is sought twice.
qsizetype ProfileFile::endOfLine(qsizetype begin, qsizetype end, qsizetype &lineFeed) const
{
    const QByteArrayView bytes = QByteArrayView(m_bytes).first(end);
    if (lineFeed < begin) {
        lineFeed = bytes.indexOf('\n', begin);
        if (lineFeed < 0)
            lineFeed = end;
    }
    const qsizetype carriageReturn = bytes.sliced(begin, lineFeed - begin).indexOf('\r');
    if (carriageReturn >= 0 && begin + carriageReturn + 1 < lineFeed)
        return begin + carriageReturn + 1;
    return std::min(lineFeed + 1, end);
}

// The next line of a section goes from its bytes to its lines.
void ProfileFile::addLine(int inSection, qsizetype end) const
{
    Section &section = m_sections[static_cast<std::size_t>(inSection)];
    Line line{section.begin, -1, end};
    const QByteArrayView content = contentOf(line);
    const QByteArrayView text = trimmed(content);
    if (!text.isEmpty() && text.front() != ';') {
        if (const qsizetype equals = content.indexOf('='); equals >= 0)
            line.equals = section.begin + equals;
    }
    section.begin = end;
    section.lines.push_back(line);
    if (line.equals >= 0 && inSection > 0) // no section, no key
        indexKey(inSection, static_cast<int>(section.lines.size()) - 1);
}

void ProfileFile::addSection(Line header, QByteArrayView name)
{
    const FoldedName key = folded(name);
    const QString text(reinterpret_cast<const QChar *>(key.constData()), key.size());
    if (!m_sectionByName.contains(text))
        m_sectionByName.insert(text, static_cast<int>(m_sections.size()));
    m_sections.push_back({header, 0, 0, {}});
}

// The line without its end.
QByteArrayView ProfileFile::contentOf(const Line &line) const
{
    QByteArrayView content = QByteArrayView(m_bytes).sliced(line.begin, line.end - line.begin);
    if (content.endsWith('\n'))
        content.chop(1);
    if (content.endsWith('\r'))
        content.chop(1);
    return content;
}

QByteArrayView ProfileFile::nameOf(const Line &line) const
{
    return trimmed(QByteArrayView(m_bytes).sliced(line.begin, line.equals - line.begin));
}

QByteArrayView ProfileFile::valueOf(const Line &line) const
{
    return trimmed(contentOf(line).sliced(line.equals + 1 - line.begin));
}

ProfileFile::FoldedName ProfileFile::folded(QByteArrayView name) const
{
    FoldedName result;
    const bool byByte = m_codePage->isSingleByte() ||
                        std::all_of(name.begin(), name.end(), [](char byte) { return (byte & 0x80) == 0; });
    if (byByte) {
        result.resize(name.size());
        std::transform(name.begin(), name.end(), result.begin(),
                       [this](char byte) { return m_foldedByte[static_cast<unsigned char>(byte)]; });
        return result;
    }
    const QString text = m_codePage->fromBytes(name);
    result.resize(text.size());
    std::transform(text.begin(), text.end(), result.begin(),
                   [](QChar unit) { return foldCase(unit.unicode()); });
    return result;
}

// As the name's bytes would be folded.
ProfileFile::FoldedName ProfileFile::foldedText(QStringView name) const
{
    const bool plain =
        std::all_of(name.begin(), name.end(), [](QChar unit) { return unit >= u' ' && unit < QChar(0x7F); });
    if (!plain)
        return folded(trimmed(toBytes(name)));
    name = trimBlanks(name);
    FoldedName result(name.size());
    std::transform(name.begin(), name.end(), result.begin(),
                   [this](QChar unit) { return m_foldedByte[unit.unicode()]; });
    return result;
}

// The bytes of a text on one line of the file.
QByteArray ProfileFile::toBytes(QStringView text) const
{
    QByteArray bytes = m_codePage->toBytes(text);
    bytes.replace("\r\n", " ");
    std::replace_if(
        bytes.begin(), bytes.end(), [](char byte) { return isLineEnd(byte) || byte == '\0'; }, ' ');
    return bytes;
}

const ProfileFile::Line &ProfileFile::lineOf(const Key &key) const
{
    return m_sections[static_cast<std::size_t>(key.section)].lines[static_cast<std::size_t>(key.line)];
}

int ProfileFile::findSection(const FoldedName &name) const
{
    return m_sectionByName.value(
        QString::fromRawData(reinterpret_cast<const QChar *>(name.constData()), name.size()), -1);
}

// The slot that holds the key, or the one where it belongs.
std::size_t ProfileFile::slotOf(int section, const FoldedName &name, std::size_t hash) const
{
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
        if (m_slots[slot] < 0)
            return slot;
        const Key &key = m_keys[static_cast<std::size_t>(m_slots[slot])];
        if (key.hash == hash && key.section == section && folded(nameOf(lineOf(key))) == name)
            return slot;
    }
}

const ProfileFile::Line *ProfileFile::findKey(int section, const FoldedName &name) const
{
    splitIntoLines(section);
    if (m_slots.empty())
        return nullptr;
    const int key = m_slots[slotOf(section, name, hashOf(section, name))];
    return key < 0 ? nullptr : &lineOf(m_keys[static_cast<std::size_t>(key)]);
}

void ProfileFile::indexKey(int section, int line) const
{
    if (2 * (m_keys.size() + 1) > m_slots.size())
        growIndex();
    Key key{0, section, line};
    const FoldedName name = folded(nameOf(lineOf(key)));
    key.hash = hashOf(section, name);
    int &slot = m_slots[slotOf(section, name, key.hash)];
    if (slot >= 0)
        return; // the first of two equal keys wins
    slot = static_cast<int>(m_keys.size());
    m_keys.push_back(key);
}

void ProfileFile::growIndex() const
{
    constexpr std::size_t FirstSize = 64; // a power of two, as all that follow
    constexpr std::size_t Growth = 4;
    std::vector<int> slots(std::max(FirstSize, Growth * m_slots.size()), -1);
    const std::size_t mask = slots.size() - 1;
    for (std::size_t key = 0; key < m_keys.size(); ++key) {
        std::size_t slot = m_keys[key].hash & mask;
        while (slots[slot] >= 0)
            slot = (slot + 1) & mask;
        slots[slot] = static_cast<int>(key);
    }
    m_slots = std::move(slots);
}

QString ProfileFile::read(const QString &section, const QString &key) const
{
    return this->section(section).read(key);
}

ProfileFile::SectionView ProfileFile::section(const QString &name) const
{
    return SectionView(*this, findSection(foldedText(name)));
}

QString ProfileFile::SectionView::read(const QString &key) const
{
    const Line *line = exists() ? m_file.findKey(m_section, m_file.foldedText(key)) : nullptr;
    if (!line)
        return {};
    QByteArrayView value = withoutQuotes(m_file.valueOf(*line));
    if (const qsizetype end = value.indexOf('\0'); end >= 0)
        value.truncate(end);
    // No more bytes than the longest value can have are worth decoding.
    value.truncate(std::min(value.size(), LongestValue * LongestCharacter));
    QString text = m_file.m_codePage->fromBytes(value);
    text.truncate(std::min(text.size(), LongestValue));
    text.truncate(trimBlanksRight(text).size());
    return text;
}

std::vector<qint64> ProfileFile::numberedKeys(const QString &section, double last) const
{
    std::vector<qint64> numbers;
    const int inSection = findSection(foldedText(section));
    if (inSection < 0)
        return numbers;
    splitIntoLines(inSection);
    for (const Line &line : m_sections[static_cast<std::size_t>(inSection)].lines) {
        const qint64 number = line.equals < 0 ? 0 : wholeNumber(nameOf(line));
        if (number > 0 && static_cast<double>(number) <= last)
            numbers.push_back(number);
    }
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

// Puts a line behind all others in memory; where it stands in the file is told by who holds it. The "=" is
// counted from the line's begin.
ProfileFile::Line ProfileFile::appended(const QByteArray &text, qsizetype equals)
{
    const qsizetype begin = m_bytes.size();
    m_bytes += text;
    return {begin, equals < 0 ? -1 : begin + equals, m_bytes.size()};
}

// The file's last line may have no end; one that gets a successor needs it.
void ProfileFile::closeLine(Line &line)
{
    if (line.end == line.begin || isLineEnd(m_bytes[line.end - 1]))
        return;
    line = appended(m_bytes.sliced(line.begin, line.end - line.begin) + m_lineEnd,
                    line.equals < 0 ? -1 : line.equals - line.begin);
}

void ProfileFile::write(const QString &section, const QString &key, const QString &value)
{
    const int inSection = sectionToWrite(trimmed(toBytes(section)).toByteArray());
    const QByteArray keyBytes = trimmed(toBytes(key)).toByteArray();
    auto &lines = m_sections[static_cast<std::size_t>(inSection)].lines;
    if (const Line *old = findKey(inSection, folded(keyBytes)))
        replaceValue(lines[static_cast<std::size_t>(old - lines.data())], toBytes(value));
    else
        addKey(inSection, keyBytes, toBytes(value));
}

int ProfileFile::sectionToWrite(const QByteArray &name)
{
    if (const int known = findSection(folded(name)); known >= 0)
        return known;
    splitIntoLines(static_cast<int>(m_sections.size()) - 1);
    Section &last = m_sections.back();
    closeLine(last.lines.empty() ? last.header : last.lines.back());
    addSection(appended('[' + name + ']' + m_lineEnd), name);
    return static_cast<int>(m_sections.size()) - 1;
}

// The key, the blanks and the line's own end stay.
void ProfileFile::replaceValue(Line &line, const QByteArray &value)
{
    const qsizetype size = contentOf(line).size();
    const QByteArray text = m_bytes.sliced(line.begin, line.end - line.begin);
    const qsizetype equals = line.equals - line.begin;
    qsizetype head = equals + 1;
    while (head < size && isBlank(text[head]))
        ++head;
    line = appended(text.first(head) + value + text.sliced(size), equals);
}

// Behind the section's last line; blank lines between this section and the next stay between them.
void ProfileFile::addKey(int section, const QByteArray &key, const QByteArray &value)
{
    Section &place = m_sections[static_cast<std::size_t>(section)];
    auto after = place.lines.end();
    while (after != place.lines.begin() && trimmed(contentOf(*(after - 1))).isEmpty())
        --after;
    closeLine(after == place.lines.begin() ? place.header : *(after - 1));
    const auto added = place.lines.insert(after, appended(key + '=' + value + m_lineEnd, key.size()));
    indexKey(section, static_cast<int>(added - place.lines.begin()));
}

QByteArray ProfileFile::bytes() const
{
    QByteArray result = m_bytes.first(m_start);
    result.reserve(m_bytes.size());
    const auto add = [&](const Line &line) {
        result.append(m_bytes.constData() + line.begin, line.end - line.begin);
    };
    for (const Section &section : m_sections) {
        add(section.header);
        std::for_each(section.lines.begin(), section.lines.end(), add);
        add({section.begin, -1, section.end});
    }
    return result;
}

void ProfileFile::save(ApplicationContext &app, const QString &path) const
{
    app.files.writeAll(path, bytes());
}

} // namespace sondrel
