// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVarLengthArray>

#include <array>
#include <optional>
#include <vector>

namespace sondrel {

/// An INI-form file in memory, read and changed key by key: sections in square brackets, "key=value" lines,
/// in the system code page. Names ignore case and blanks round them; the first of equal sections and keys
/// wins; a value wholly in quotation marks loses them. A file that begins with the byte order mark of UTF-8
/// is one of UTF-8. A section is parsed when it is first asked for; lines that are not changed stay as they
/// are.
class ProfileFile
{
public:
    /// A file without a line.
    explicit ProfileFile(const CodePage &codePage);
    ProfileFile(const CodePage &codePage, QByteArrayView bytes);
    /// Reads the file; a missing one is empty. Throws Failure when it is there and cannot be read.
    static ProfileFile load(ApplicationContext &app, const QString &path);

    /// At most 559 characters, cut at a NUL, trimmed on the right; empty when there is no such section or
    /// key.
    QString read(const QString &section, const QString &key) const;

    /// One section, for those who read much of it. It must not outlive the file, nor a change of it.
    class SectionView
    {
    public:
        bool exists() const { return m_section >= 0; }
        /// As ProfileFile::read.
        QString read(const QString &key) const;

    private:
        friend class ProfileFile;
        SectionView(const ProfileFile &file, int section) : m_file(file), m_section(section) {}

        const ProfileFile &m_file;
        int m_section; // -1 when there is none
    };
    SectionView section(const QString &name) const;

    /// The numbers from 1 up to last that are keys of the section, ascending. A count in a file may be any
    /// number; this finds what it covers without trying them all.
    std::vector<qint64> numberedKeys(const QString &section, double last) const;
    /// Replaces the value in its line, or adds the key at the end of its section, or the section at the end
    /// of the file. Line ends and NULs in the texts become blanks, as a line cannot hold them.
    void write(const QString &section, const QString &key, const QString &value);

    QByteArray bytes() const;
    /// Replaces the file on disk, atomically. Throws Failure.
    void save(ApplicationContext &app, const QString &path) const;

private:
    // A range of m_bytes that includes the line's end. Values are decoded when they are asked for.
    struct Line
    {
        qsizetype begin = 0;
        qsizetype equals = -1; // of the first "=", when the line is one of a key
        qsizetype end = 0;
    };
    struct Section
    {
        Line header;         // empty for the lines before the first header
        qsizetype begin = 0; // of the bytes that are not yet told apart
        qsizetype end = 0;
        std::vector<Line> lines;
    };
    struct Key
    {
        std::size_t hash;
        int section;
        int line;
    };
    using FoldedName = QVarLengthArray<char16_t, 64>;

    void foldBytes();
    void parse();
    qsizetype endOfLine(qsizetype begin, qsizetype end, qsizetype &lineFeed) const;
    qsizetype behindBlanks(qsizetype place) const;
    void splitIntoLines(int section) const;
    void addLine(int inSection, qsizetype end) const;
    void addSection(Line header, QByteArrayView name);
    QByteArrayView contentOf(const Line &line) const;
    QByteArrayView nameOf(const Line &line) const;
    QByteArrayView valueOf(const Line &line) const;
    FoldedName folded(QByteArrayView name) const;
    FoldedName foldedText(QStringView name) const;
    QByteArray toBytes(QStringView text) const;

    const Line &lineOf(const Key &key) const;
    int findSection(const FoldedName &name) const;
    const Line *findKey(int section, const FoldedName &name) const;
    std::size_t slotOf(int section, const FoldedName &name, std::size_t hash) const;
    void indexKey(int section, int line) const;
    void growIndex() const;

    Line appended(const QByteArray &text, qsizetype equals = -1);
    void closeLine(Line &line);
    int sectionToWrite(const QByteArray &name);
    void replaceValue(Line &line, const QByteArray &value);
    void addKey(int section, const QByteArray &key, const QByteArray &value);

    const CodePage *m_codePage;
    QByteArray m_bytes;    // the file, and behind it the lines that were written
    qsizetype m_start = 0; // behind a byte order mark
    QByteArray m_lineEnd{"\r\n"};
    std::array<char16_t, 256> m_foldedByte;
    mutable std::vector<Section> m_sections; // with what is parsed later, as the two below
    QHash<QString, int> m_sectionByName;
    mutable std::vector<Key> m_keys;
    mutable std::vector<int> m_slots; // open addressing: a position in m_keys, or -1
};

} // namespace sondrel
