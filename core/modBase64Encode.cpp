#include "core/modBase64Encode.h"

#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qsizetype ChunkLength = 54; // a multiple of 3, so that only the last chunk is filled
constexpr auto Alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"_L1;

QChar base64Character(int index)
{
    if (index < 0 || index >= Alphabet.size())
        throw Failure(u"Subscript out of range"_s);
    return Alphabet[index];
}

void appendTriple(QString &out, int first, int second, int third)
{
    out += base64Character(first >> 2);
    out += base64Character(((first & 3) << 4) + (second >> 4));
    out += base64Character(((second & 15) << 2) + (third >> 6));
    out += base64Character(third & 63);
}

} // namespace

QString Base64Encode(ApplicationContext &app, const QString &text)
{
    QString result;
    for (qsizetype begin = 0; begin < text.size(); begin += ChunkLength)
        result += Encode(app, text.mid(begin, ChunkLength));
    return result;
}

QString Encode(ApplicationContext &app, const QString &chunk)
{
    try {
        const CodePage &page = app.codePage();
        const qsizetype fill = (3 - chunk.size() % 3) % 3;
        std::vector<int> values;
        for (const QChar unit : chunk)
            values.push_back(page.ansiValue(unit));
        values.resize(values.size() + static_cast<std::size_t>(fill), ' ');
        QString out;
        for (std::size_t i = 0; i < values.size(); i += 3)
            appendTriple(out, values[i], values[i + 1], values[i + 2]);
        out.chop(fill);
        return out.append(QString(fill, u'='));
    } catch (const std::exception &error) {
        app.desktop.showMessage({u"Error"_s, u"Encode"_s + errorText(error), MessageIcon::Exclamation});
        return {};
    }
}

} // namespace sondrel
