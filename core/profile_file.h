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
/// wins; a value wholly in quotation marks loses them. It is parsed once; lines that are not changed stay as
/// they are.
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
        Line header; // empty for the lines before the first header
        std::vector<Line> lines;
    };
    struct Key
    {
        int section;
        int line;
        int next; // the next key of the same hash, or -1
    };
    using FoldedName = QVarLengthArray<char16_t, 64>;

    void parse();
    qsizetype endOfLine(qsizetype begin, qsizetype &lineFeed) const;
    void addLine(qsizetype begin, qsizetype end);
    void addSection(Line header, QByteArrayView name);
    QByteArrayView contentOf(const Line &line) const;
    QByteArrayView nameOf(const Line &line) const;
    QByteArrayView valueOf(const Line &line) const;
    FoldedName folded(QByteArrayView name) const;
    QByteArray toBytes(const QString &text) const;

    int findSection(const FoldedName &name) const;
    int findKey(int section, const FoldedName &name) const;
    std::size_t hashOf(int section, const FoldedName &name) const;
    void indexKey(int section, int line);

    Line appended(const QByteArray &text);
    void closeLine(Line &line);

    const CodePage *m_codePage;
    QByteArray m_bytes;    // the file, and behind it the lines that were written
    qsizetype m_start = 0; // behind a byte order mark
    QByteArray m_lineEnd{"\r\n"};
    std::array<char16_t, 256> m_foldedByte;
    std::vector<Section> m_sections;
    QHash<QString, int> m_sectionByName;
    std::vector<Key> m_keys;
    QHash<std::size_t, int> m_keyByHash;
};

} // namespace sondrel
