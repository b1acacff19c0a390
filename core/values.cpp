#include "core/values.h"

#include "core/failure.h"
#include "core/text_fold.h"

#include <QRegularExpression>

#include <cmath>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

bool isDigit(QChar unit)
{
    return unit >= u'0' && unit <= u'9';
}

bool isSpace(QChar unit)
{
    return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
}

QStringView withoutLeadingSpaces(QStringView text)
{
    while (!text.isEmpty() && isSpace(text.front()))
        text = text.sliced(1);
    return text;
}

QStringView withoutSpaces(QStringView text)
{
    while (!text.isEmpty() && isSpace(text.back()))
        text.chop(1);
    return withoutLeadingSpaces(text);
}

enum class Commas { Stop, Pass };

// The length of the number that the text begins with; 0 when it begins with none.
qsizetype lengthOfNumber(QStringView text, Commas commas)
{
    qsizetype at = 0;
    const auto next = [&](char16_t one, char16_t other) {
        return at < text.size() && (text[at] == one || text[at] == other);
    };
    const auto passDigits = [&](Commas between) {
        qsizetype digits = 0;
        for (; at < text.size(); ++at) {
            if (isDigit(text[at]))
                ++digits;
            else if (between == Commas::Stop || text[at] != u',')
                break;
        }
        return digits;
    };

    if (next(u'+', u'-'))
        ++at;
    qsizetype digits = passDigits(commas);
    if (next(u'.', u'.')) {
        ++at;
        digits += passDigits(Commas::Stop);
    }
    if (digits == 0)
        return 0;
    if (next(u'e', u'E')) {
        const qsizetype mantissa = at;
        ++at;
        if (next(u'+', u'-'))
            ++at;
        if (passDigits(Commas::Stop) == 0)
            at = mantissa;
    }
    return at;
}

// Only for texts that have the form of a number; gives infinity beyond the range.
double parsed(QStringView number)
{
    return number.isEmpty() ? 0 : QLocale::c().toDouble(number);
}

double strictNumber(QStringView text)
{
    if (!isNumeric(text))
        throw Failure(u"Type mismatch"_s);
    return parsed(withoutSpaces(text).toString().remove(u','));
}

template <typename Integer>
Integer rounded(double value)
{
    const double whole = std::nearbyint(value); // halves to even, the default rounding of the processor
    if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max()))
        throw Failure(u"Overflow"_s);
    return static_cast<Integer>(whole);
}

// Applies the change to what stands outside of quotation marks in a date or time form.
template <typename Change>
QString changedOutsideQuotes(const QString &form, Change &&change)
{
    QStringList parts = form.split(u'\'');
    for (qsizetype i = 0; i < parts.size(); i += 2)
        change(parts[i]);
    return parts.join(u'\'');
}

// Some locales use blanks, digits or invisible marks that 8-bit files cannot hold.
QString plain(const QString &text)
{
    QString result;
    const auto characters = text.toUcs4();
    for (const char32_t character : characters) {
        if (QChar::isSpace(character))
            result += u' ';
        else if (const int digit = QChar::digitValue(character); digit >= 0)
            result += QChar(u'0' + digit);
        else if (QChar::category(character) != QChar::Other_Format)
            result += QString::fromUcs4(&character, 1);
    }
    return result.simplified();
}

} // namespace

bool isNumeric(QStringView text)
{
    text = withoutSpaces(text);
    return !text.isEmpty() && lengthOfNumber(text, Commas::Pass) == text.size();
}

double leadingNumber(QStringView text)
{
    text = withoutLeadingSpaces(text);
    return parsed(text.first(lengthOfNumber(text, Commas::Stop)));
}

qint16 toInt16(QStringView text)
{
    return rounded<qint16>(strictNumber(text));
}

qint32 toInt32(QStringView text)
{
    return rounded<qint32>(strictNumber(text));
}

qint16 roundToInt16(double value)
{
    return rounded<qint16>(value);
}

qint32 roundToInt32(double value)
{
    return rounded<qint32>(value);
}

bool toBoolean(QStringView text)
{
    const QStringView word = withoutSpaces(text);
    if (equalsIgnoringCase(word, u"True"))
        return true;
    if (equalsIgnoringCase(word, u"False"))
        return false;
    return strictNumber(text) != 0;
}

QString booleanText(bool value)
{
    return value ? u"True"_s : u"False"_s;
}

QString numberText(double value)
{
    return QString::number(value + 0.0, 'g', 15); // the sum takes the sign from a zero
}

QString shortDate(const QLocale &locale, QDate date)
{
    const QString form = changedOutsideQuotes(locale.dateFormat(QLocale::ShortFormat), [](QString &part) {
        if (!part.contains("yyyy"_L1))
            part.replace("yy"_L1, "yyyy"_L1);
    });
    return plain(locale.toString(date, form));
}

QString longDate(const QLocale &locale, QDate date)
{
    return plain(locale.toString(date, QLocale::LongFormat));
}

QString generalDate(const QLocale &locale, const QDateTime &when)
{
    // The long time of a locale names a zone, which nobody wants in a log or a footer.
    static const QRegularExpression zone(u",?\\s*[(\\[]?t+[)\\]]?"_s);
    const QString form = changedOutsideQuotes(locale.timeFormat(QLocale::LongFormat),
                                              [](QString &part) { part.remove(zone); });
    return plain(shortDate(locale, when.date()) + u' ' + locale.toString(when.time(), form));
}

} // namespace sondrel
