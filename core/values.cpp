#include "core/values.h"

#include "core/failure.h"
#include "core/text_fold.h"

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
    return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n';
}

double parse(QStringView text)
{
    QString digits = text.toString();
    digits.remove(u',');
    return QLocale::c().toDouble(digits);
}

template <typename Integer>
Integer rounded(double value)
{
    const double whole = std::nearbyint(value); // halves to even, the default rounding of the processor
    if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max()))
        throw Failure(u"Overflow"_s);
    return static_cast<Integer>(whole);
}

template <typename Integer>
Integer strictly(QStringView text)
{
    if (!isNumeric(text))
        throw Failure(u"Type mismatch"_s);
    return rounded<Integer>(leadingNumber(text.toString().remove(u',')));
}

} // namespace

bool isNumeric(QStringView text)
{
    text = text.trimmed();
    qsizetype at = 0;
    const auto here = [&] { return at < text.size() ? text[at] : QChar(); };
    bool digits = false;
    if (here() == u'+' || here() == u'-')
        ++at;
    for (; isDigit(here()) || here() == u','; ++at)
        digits = digits || isDigit(here());
    if (here() == u'.') {
        ++at;
        for (; isDigit(here()); ++at)
            digits = true;
    }
    if (!digits)
        return false;
    if (here() == u'e' || here() == u'E') {
        ++at;
        if (here() == u'+' || here() == u'-')
            ++at;
        const qsizetype begin = at;
        while (isDigit(here()))
            ++at;
        if (at == begin)
            return false;
    }
    return at == text.size();
}

double leadingNumber(QStringView text)
{
    QString number;
    qsizetype at = 0;
    const auto skipBlanks = [&] {
        while (at < text.size() && isSpace(text[at]))
            ++at;
    };
    const auto here = [&] { return at < text.size() ? text[at] : QChar(); };
    const auto takeDigits = [&] {
        bool any = false;
        for (; isDigit(here()); ++at) {
            number += here();
            any = true;
        }
        return any;
    };
    skipBlanks();
    if (here() == u'+' || here() == u'-')
        number += text[at++];
    bool digits = takeDigits();
    if (here() == u'.') {
        number += text[at++];
        digits = takeDigits() || digits;
    }
    if (!digits)
        return 0;
    if (here() == u'e' || here() == u'E') {
        const QString mantissa = number;
        number += text[at++];
        if (here() == u'+' || here() == u'-')
            number += text[at++];
        if (!takeDigits())
            number = mantissa;
    }
    return parse(number);
}

qint16 toInt16(QStringView text)
{
    return strictly<qint16>(text);
}

qint32 toInt32(QStringView text)
{
    return strictly<qint32>(text);
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
    const QStringView trimmed = trimBlanks(text);
    if (equalsIgnoringCase(trimmed, u"True"))
        return true;
    if (equalsIgnoringCase(trimmed, u"False"))
        return false;
    if (!isNumeric(text))
        throw Failure(u"Type mismatch"_s);
    return leadingNumber(text.toString().remove(u',')) != 0;
}

QString booleanText(bool value)
{
    return value ? u"True"_s : u"False"_s;
}

QString numberText(double value)
{
    return QString::number(value, 'g', 15);
}

QString shortDate(const QLocale &locale, QDate date)
{
    QString form = locale.dateFormat(QLocale::ShortFormat);
    if (!form.contains("yyyy"_L1))
        form.replace("yy"_L1, "yyyy"_L1);
    return locale.toString(date, form);
}

QString longDate(const QLocale &locale, QDate date)
{
    return locale.toString(date, QLocale::LongFormat);
}

QString generalDate(const QLocale &locale, const QDateTime &when)
{
    // The long time of a locale may name a zone, which nobody wants in a log or a footer.
    QString form = locale.timeFormat(QLocale::LongFormat);
    form = form.remove(u't').trimmed();
    if (form.isEmpty())
        form = u"HH:mm:ss"_s;
    // CLDR puts a narrow no-break blank before AM and PM, which 8-bit files cannot hold.
    const QString time = locale.toString(when.time(), form).replace(QChar(0x202F), u' ');
    return shortDate(locale, when.date()) + u' ' + time;
}

} // namespace sondrel
