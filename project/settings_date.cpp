#include "project/settings_date.h"

#include "core/text_fold.h"

#include <QRegularExpression>

#include <utility>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int Months = 12;
constexpr QDate ZeroDate = QDate::fromJulianDay(2415019); // 1899-12-30, what a date is before it is set

QString format(const QLocale &locale, QDate date)
{
    const QString month = locale.standaloneMonthName(date.month());
    return month + QString::asprintf(",%02d %04d", date.day(), date.year());
}

bool isSeparator(QChar unit)
{
    return unit.isSpace() || unit == u',' || unit == u'.' || unit == u'/' || unit == u'-';
}

bool isDigit(QChar unit)
{
    return unit >= u'0' && unit <= u'9';
}

// The month whose name the text begins with, and the length of that name. The longest name wins: in some
// languages that of the first month begins those of the tenth to twelfth. Of equal ones a whole name does:
// some abbreviate November as "may".
std::pair<int, qsizetype> monthAt(const QLocale &locale, QStringView text)
{
    std::pair<int, qsizetype> best{0, 0};
    for (const auto form : {QLocale::LongFormat, QLocale::ShortFormat}) {
        for (const QLocale &language : {locale, QLocale::c()}) {
            for (int month = 1; month <= Months; ++month) {
                for (const QString &name :
                     {language.standaloneMonthName(month, form), language.monthName(month, form)}) {
                    if (name.size() > best.second && startsWithIgnoringCase(text, name))
                        best = {month, name.size()};
                }
            }
        }
    }
    return best;
}

// The numbers of a text that holds nothing else but separators between them.
std::optional<std::vector<QStringView>> numbersIn(QStringView text)
{
    std::vector<QStringView> numbers;
    for (qsizetype at = 0; at < text.size();) {
        if (isSeparator(text[at])) {
            ++at;
            continue;
        }
        const qsizetype begin = at;
        while (at < text.size() && isDigit(text[at]))
            ++at;
        if (at == begin)
            return std::nullopt;
        numbers.push_back(text.sliced(begin, at - begin));
    }
    return numbers;
}

std::optional<QDate> dateOf(QStringView year, int month, QStringView day)
{
    constexpr int LastOfThisCentury = 29; // years of two digits are 1930 to 2029
    constexpr qsizetype MostDigits = 4;
    if (year.size() > MostDigits || day.size() > 2)
        return std::nullopt;
    int number = year.toInt();
    if (year.size() <= 2)
        number += number <= LastOfThisCentury ? 2000 : 1900;
    const QDate date(number, month, day.toInt());
    return date.isValid() ? std::optional(date) : std::nullopt;
}

std::optional<QDate> dateOfNumbers(const QLocale &locale, const std::vector<QStringView> &numbers)
{
    if (numbers.size() != 3)
        return std::nullopt;
    if (numbers[0].size() > 2)
        return dateOf(numbers[0], numbers[1].toInt(), numbers[2]);
    const QString order = locale.dateFormat(QLocale::ShortFormat);
    QStringView day = numbers[1];
    QStringView month = numbers[0];
    if (order.indexOf(u'd') < order.indexOf(u'M'))
        std::swap(day, month);
    if (month.toInt() > Months)
        std::swap(day, month);
    return dateOf(numbers[2], month.toInt(), day);
}

} // namespace

QString settingsDate(const ApplicationContext &app, QDate date)
{
    if (!date.isValid())
        date = ZeroDate;
    QString local = format(app.locale, date);
    const bool survives =
        app.fromBytes(app.toBytes(local)) == local && readSettingsDate(app.locale, local) == date;
    return survives ? local : format(QLocale::c(), date);
}

std::optional<QDate> readSettingsDate(const QLocale &locale, QStringView text)
{
    text = text.trimmed();
    // A day may stand before the month's name.
    qsizetype nameAt = 0;
    while (nameAt < text.size() && isDigit(text[nameAt]))
        ++nameAt;
    QStringView before = text.first(nameAt);
    while (nameAt < text.size() && isSeparator(text[nameAt]))
        ++nameAt;
    auto [month, length] = monthAt(locale, text);
    if (month > 0)
        before = QStringView();
    else
        std::tie(month, length) = monthAt(locale, text.sliced(nameAt));
    if (month == 0) {
        const auto numbers = numbersIn(text);
        return numbers ? dateOfNumbers(locale, *numbers) : std::nullopt;
    }
    const auto rest = numbersIn(text.sliced((before.isEmpty() ? 0 : nameAt) + length));
    if (!rest || rest->size() != (before.isEmpty() ? 2U : 1U))
        return std::nullopt;
    return dateOf(rest->back(), month, before.isEmpty() ? rest->front() : before);
}

QString settingsTime(QTime time)
{
    return QLocale::c().toString(time, u"hh:mm:ss AP"_s);
}

std::optional<QTime> readSettingsTime(const QString &text)
{
    static const QRegularExpression form(
        u"^(\\d{1,2})(?:\\s*:\\s*(\\d{1,2}))?(?:\\s*:\\s*(\\d{1,2}))?\\s*(?:([ap])m?)?$"_s,
        QRegularExpression::CaseInsensitiveOption);
    constexpr int Noon = 12;
    const auto match = form.match(text.trimmed());
    if (!match.hasMatch() || (match.captured(2).isEmpty() && match.captured(4).isEmpty()))
        return std::nullopt;
    int hour = match.captured(1).toInt();
    const QString half = match.captured(4).toLower();
    if (half == "a"_L1 && hour == Noon)
        hour = 0;
    else if (half == "p"_L1 && hour < Noon)
        hour += Noon;
    const QTime time(hour, match.captured(2).toInt(), match.captured(3).toInt());
    return time.isValid() ? std::optional(time) : std::nullopt;
}

} // namespace sondrel
