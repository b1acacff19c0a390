#include "core/values.h"

#include "core/failure.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const QLocale American(QLocale::English, QLocale::UnitedStates);
const QDate Day(2026, 11, 15);

/// The text of the Failure that the step throws; empty when it throws none.
template <typename Step>
QString failureOf(Step &&step)
{
    try {
        step();
        return QString();
    } catch (const Failure &failure) {
        return failure.text();
    }
}

struct NumericRow
{
    const char *name;
    QString text;
    bool numeric;
    double leading;
};

void PrintTo(const NumericRow &row, std::ostream *out)
{
    *out << row.name;
}

const NumericRow numericRows[] = {
    {"empty", u""_s, false, 0},
    {"blank", u" "_s, false, 0},
    {"digits", u"12"_s, true, 12},
    {"spacesAround", u" \t12\r\n"_s, true, 12},
    {"noBreakSpace", u"\u00a012"_s, false, 0},
    {"spaceInside", u"1 2"_s, false, 1},
    {"plus", u"+3"_s, true, 3},
    {"minus", u"-3"_s, true, -3},
    {"signAlone", u"-"_s, false, 0},
    {"twoSigns", u"--3"_s, false, 0},
    {"signBehind", u"3-"_s, false, 3},
    {"spaceBehindSign", u"- 3"_s, false, 0},
    {"thousands", u"1,240,000"_s, true, 1},
    {"commasAnywhere", u"1,2,,3"_s, true, 1},
    {"commaInFront", u",5"_s, true, 0},
    {"commaAlone", u","_s, false, 0},
    {"commaAtEnd", u"5,"_s, true, 5},
    {"commaBehindPoint", u"1.2,3"_s, false, 1.2},
    {"commaInExponent", u"1e2,3"_s, false, 100},
    {"fraction", u"1.25"_s, true, 1.25},
    {"pointAtEnd", u"5."_s, true, 5},
    {"pointInFront", u".5"_s, true, 0.5},
    {"pointAlone", u"."_s, false, 0},
    {"twoPoints", u"1.2.3"_s, false, 1.2},
    {"signAndPoint", u"-.5"_s, true, -0.5},
    {"exponent", u"1e3"_s, true, 1000},
    {"exponentUpper", u"15E-1"_s, true, 1.5},
    {"exponentPlus", u"1e+2"_s, true, 100},
    {"exponentWithoutDigits", u"1e"_s, false, 1},
    {"exponentSignAlone", u"1e+"_s, false, 1},
    {"exponentAlone", u"e3"_s, false, 0},
    {"lettersBehind", u"12a"_s, false, 12},
    {"lettersInFront", u"a12"_s, false, 0},
    {"hexadecimal", u"0x10"_s, false, 0},
    {"infinity", u"inf"_s, false, 0},
    {"notANumber", u"nan"_s, false, 0},
    {"foreignDigits", u"\u0663"_s, false, 0},
    {"nulBehind", QString(u"12"_s + QChar(0)), false, 12},
    {"leadingZeros", u"007"_s, true, 7},
    {"far", u"1e400"_s, true, std::numeric_limits<double>::infinity()},
    {"near", u"1e-400"_s, true, 0},
};

class NumericText : public testing::TestWithParam<NumericRow>
{
};

struct IntegerRow
{
    const char *name;
    QString text;
    std::optional<int> value; // none: Overflow
};

void PrintTo(const IntegerRow &row, std::ostream *out)
{
    *out << row.name;
}

class SmallInteger : public testing::TestWithParam<IntegerRow>
{
};

const IntegerRow integerRows[] = {
    {"plain", u"12"_s, 12},
    {"thousands", u"1,240"_s, 1240},
    {"spaces", u" 5\t"_s, 5},
    {"halfToEvenDown", u"2.5"_s, 2},
    {"halfToEvenUp", u"3.5"_s, 4},
    {"negativeHalf", u"-2.5"_s, -2},
    {"exponent", u"1e4"_s, 10000},
    {"highest", u"32767"_s, 32767},
    {"highestByRounding", u"32767.4"_s, 32767},
    {"roundedOver", u"32767.5"_s, {}},
    {"above", u"32768"_s, {}},
    {"lowest", u"-32768"_s, -32768},
    {"roundedToLowest", u"-32768.5"_s, -32768},
    {"below", u"-32769"_s, {}},
    {"far", u"1e400"_s, {}},
};

struct BooleanRow
{
    const char *name;
    QString text;
    std::optional<bool> value; // none: Type mismatch
};

void PrintTo(const BooleanRow &row, std::ostream *out)
{
    *out << row.name;
}

class StrictBoolean : public testing::TestWithParam<BooleanRow>
{
};

const BooleanRow booleanRows[] = {
    {"true", u"True"_s, true},
    {"false", u"False"_s, false},
    {"trueAnyCase", u"tRUE"_s, true},
    {"falseAnyCase", u"FALSE"_s, false},
    {"trueWithSpaces", u" True "_s, true},
    {"one", u"1"_s, true},
    {"minusOne", u"-1"_s, true},
    {"zero", u"0"_s, false},
    {"zeroFraction", u"0.0"_s, false},
    {"fraction", u"0.3"_s, true},
    {"thousands", u"1,000"_s, true},
    {"empty", u""_s, {}},
    {"yes", u"yes"_s, {}},
    {"wordBehind", u"False|x"_s, {}},
    {"quoted", u"\"True\""_s, {}},
};

} // namespace

TEST_P(NumericText, isTold)
{
    EXPECT_EQ(isNumeric(GetParam().text), GetParam().numeric);
}

TEST_P(NumericText, givesItsLeadingNumber)
{
    EXPECT_EQ(leadingNumber(GetParam().text), GetParam().leading);
}

INSTANTIATE_TEST_SUITE_P(Rows, NumericText, testing::ValuesIn(numericRows),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_P(SmallInteger, isReadStrictly)
{
    std::optional<int> value;
    const QString failure = failureOf([&] { value = toInt16(GetParam().text); });
    EXPECT_EQ(value, GetParam().value);
    EXPECT_EQ(failure, GetParam().value ? u""_s : u"Overflow"_s);
}

INSTANTIATE_TEST_SUITE_P(Rows, SmallInteger, testing::ValuesIn(integerRows),
                         [](const auto &row) { return std::string(row.param.name); });

TEST_P(StrictBoolean, isRead)
{
    std::optional<bool> value;
    const QString failure = failureOf([&] { value = toBoolean(GetParam().text); });
    EXPECT_EQ(value, GetParam().value);
    EXPECT_EQ(failure, GetParam().value ? u""_s : u"Type mismatch"_s);
}

INSTANTIATE_TEST_SUITE_P(Rows, StrictBoolean, testing::ValuesIn(booleanRows),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(Values, refuseTextsThatAreNoNumbers)
{
    EXPECT_EQ(failureOf([] { toInt16(u""); }), u"Type mismatch"_s);
    EXPECT_EQ(failureOf([] { toInt16(u"12a"); }), u"Type mismatch"_s);
    EXPECT_EQ(failureOf([] { toInt32(u"direct"); }), u"Type mismatch"_s);
}

TEST(Values, keepTheRangeOf32Bits)
{
    EXPECT_EQ(toInt32(u"2147483647"), 2147483647);
    EXPECT_EQ(toInt32(u"-2,147,483,648"), std::numeric_limits<qint32>::min());
    EXPECT_EQ(failureOf([] { toInt32(u"2147483648"); }), u"Overflow"_s);
}

TEST(Values, roundHalvesToEven)
{
    EXPECT_EQ(roundToInt16(0.5), 0);
    EXPECT_EQ(roundToInt16(1.5), 2);
    EXPECT_EQ(roundToInt32(-1.5), -2);
    EXPECT_EQ(roundToInt32(2.4999), 2);
}

TEST(Values, refuseToRoundBeyondTheRange)
{
    EXPECT_EQ(failureOf([] { roundToInt16(40000); }), u"Overflow"_s);
    EXPECT_EQ(failureOf([] { roundToInt32(-1e300); }), u"Overflow"_s);
    EXPECT_EQ(failureOf([] { roundToInt32(std::numeric_limits<double>::quiet_NaN()); }), u"Overflow"_s);
}

TEST(Values, writeBooleansAsWords)
{
    EXPECT_EQ(booleanText(true), u"True"_s);
    EXPECT_EQ(booleanText(false), u"False"_s);
}

TEST(Values, writeNumbersWithoutSuperfluousDigits)
{
    EXPECT_EQ(numberText(3), u"3"_s);
    EXPECT_EQ(numberText(-3), u"-3"_s);
    EXPECT_EQ(numberText(2.5), u"2.5"_s);
    EXPECT_EQ(numberText(1240000), u"1240000"_s);
    EXPECT_EQ(numberText(-0.0), u"0"_s);
    EXPECT_EQ(numberText(0.1 + 0.2), u"0.3"_s);
}

TEST(Dates, followTheAmericanForms)
{
    EXPECT_EQ(shortDate(American, Day), u"11/15/2026"_s);
    EXPECT_EQ(longDate(American, Day), u"Sunday, November 15, 2026"_s);
    EXPECT_EQ(generalDate(American, QDateTime(Day, QTime(10, 0))), u"11/15/2026 10:00:00 AM"_s);
    EXPECT_EQ(generalDate(American, QDateTime(Day, QTime(0, 5, 9))), u"11/15/2026 12:05:09 AM"_s);
    EXPECT_EQ(generalDate(American, QDateTime(Day, QTime(23, 59, 59))), u"11/15/2026 11:59:59 PM"_s);
}

TEST(Dates, followTheFormsOfOtherLocales)
{
    const QDateTime when(Day, QTime(22, 3, 4));
    EXPECT_EQ(generalDate(QLocale(u"de_DE"_s), when), u"15.11.2026 22:03:04"_s);
    EXPECT_EQ(generalDate(QLocale(u"en_GB"_s), when), u"15/11/2026 22:03:04"_s);
    EXPECT_EQ(generalDate(QLocale(u"sv_SE"_s), when), u"2026-11-15 22:03:04"_s);
    EXPECT_EQ(longDate(QLocale(u"fr_FR"_s), Day), u"dimanche 15 novembre 2026"_s);
}

TEST(Dates, giveTheYearFourDigits)
{
    EXPECT_EQ(shortDate(QLocale(u"de_DE"_s), QDate(1907, 1, 2)), u"02.01.1907"_s);
    EXPECT_EQ(shortDate(QLocale(u"en_US"_s), QDate(1907, 1, 2)), u"1/2/1907"_s);
}

TEST(Dates, nameNoZone)
{
    const QDateTime when(Day, QTime(22, 3, 4));
    EXPECT_EQ(generalDate(QLocale(u"es_ES"_s), when), u"15/11/2026 22:03:04"_s);
    EXPECT_EQ(generalDate(QLocale(u"zh_CN"_s), when), u"2026/11/15 22:03:04"_s);
}

TEST(Dates, keepLettersThatALocaleWritesBetweenTheDigits)
{
    EXPECT_EQ(generalDate(QLocale(u"fr_CA"_s), QDateTime(Day, QTime(22, 3, 4))),
              u"2026-11-15 22 h 03 min 04 s"_s);
}

TEST(Dates, holdAsciiDigitsAndBlanksInEveryLocale)
{
    const auto locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyTerritory);
    ASSERT_GT(locales.size(), 100);
    for (const QLocale &locale : locales) {
        const QString date = shortDate(locale, Day);
        EXPECT_TRUE(date.contains(u"2026"_s) && date.contains(u"15"_s))
            << qPrintable(locale.name()) << ": " << qPrintable(date);
        for (const QChar unit : date)
            EXPECT_FALSE(unit != u' ' && unit.isSpace()) << qPrintable(locale.name());
    }
}
