#include "keywords/keyword_list.h"

#include "core/text_fold.h"

#include <QSet>
#include <QStringDecoder>

#include <algorithm>
#include <optional>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int KeywordsPerStep = 2000; // between two words of progress

bool isLineEnd(QChar unit)
{
    return unit == u'\r' || unit == u'\n';
}

// Without blanks and line ends at its ends: these belong to the way in which keywords are listed.
QStringView trimmedPiece(QStringView piece)
{
    const auto isOutside = [](QChar unit) { return unit == u' ' || unit == u'\t' || isLineEnd(unit); };
    while (!piece.isEmpty() && isOutside(piece.front()))
        piece = piece.sliced(1);
    while (!piece.isEmpty() && isOutside(piece.back()))
        piece.chop(1);
    return piece;
}

// Takes pieces of a text for keywords.
class KeywordList
{
public:
    void add(QStringView piece)
    {
        const QString keyword = trimmedPiece(piece).toString();
        if (keyword.isEmpty())
            return;
        QString key = folded(keyword);
        if (m_known.contains(key))
            return;
        m_known.insert(std::move(key));
        keywords.append(keyword);
    }

    QStringList keywords;

private:
    QSet<QString> m_known;
};

// Where the next delimiter stands, and how long it is; nothing when there is none.
std::optional<std::pair<qsizetype, qsizetype>> nextDelimiter(QStringView text, QStringView delimiter,
                                                             qsizetype from)
{
    if (!delimiter.isEmpty()) {
        const qsizetype at = indexOfIgnoringCase(text, delimiter, from);
        return at < 0 ? std::nullopt : std::optional(std::pair(at, delimiter.size()));
    }
    const auto *const end = std::find_if(text.begin() + from, text.end(), isLineEnd);
    return end == text.end() ? std::nullopt : std::optional(std::pair(end - text.begin(), qsizetype(1)));
}

std::optional<QString> decoded(QStringDecoder::Encoding encoding, QByteArrayView bytes)
{
    QStringDecoder decoder(encoding, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(std::move(text));
}

// UTF-16 without a mark shows by the zero bytes of its first character.
std::optional<QStringDecoder::Encoding> wideEncoding(QByteArrayView bytes)
{
    if (bytes.size() < 2 || bytes.size() % 2 != 0)
        return std::nullopt;
    const auto first = static_cast<unsigned char>(bytes[0]);
    const auto second = static_cast<unsigned char>(bytes[1]);
    if ((first == 0xFF && second == 0xFE) || (first != 0 && second == 0))
        return QStringDecoder::Utf16LE;
    if ((first == 0xFE && second == 0xFF) || (first == 0 && second != 0))
        return QStringDecoder::Utf16BE;
    return std::nullopt;
}

} // namespace

QStringList splitKeywords(const QString &text, const QString &delimiter, const TextProgress &progress)
{
    KeywordList list;
    qsizetype begin = 0;
    qsizetype told = 0;
    while (const auto found = nextDelimiter(text, delimiter, begin)) {
        list.add(QStringView(text).sliced(begin, found->first - begin));
        begin = found->first + found->second;
        if (progress && list.keywords.size() >= told + KeywordsPerStep) {
            told = list.keywords.size();
            progress(begin, text.size());
        }
    }
    list.add(QStringView(text).sliced(begin));
    if (progress)
        progress(text.size(), text.size());
    return std::move(list.keywords);
}

QString keywordFileText(const ApplicationContext &app, const QByteArray &bytes)
{
    QString text;
    if (const auto wide = wideEncoding(bytes))
        text = decoded(*wide, bytes).value_or(app.fromBytes(bytes));
    else
        text = decoded(QStringDecoder::Utf8, bytes).value_or(app.fromBytes(bytes));
    return text.startsWith(QChar::ByteOrderMark) ? text.sliced(1) : text;
}

} // namespace sondrel
