#include "project/settings_date.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const QLocale American(QLocale::English, QLocale::UnitedStates);

// A program in another language.
struct Abroad
{
    explicit Abroad(const QLocale &locale)
        : app(world.app.AppPath, {}, Doors{world.clock, world.desktop, world.settings, world.http}, locale)
    {
    }

    World world;
    ApplicationContext app;
};

struct DateRow
{
    QString text;
    std::optional<QDate> date;
};

void PrintTo(const DateRow &row, std::ostream *out)
{
    *out << row.text.toStdString();
}

class SettingsDateRead : public testing::TestWithParam<DateRow>
{
};

struct TimeRow
{
    QString text;
    QString wanted; // empty: not a time
};

void PrintTo(const TimeRow &row, std::ostream *out)
{
    *out << row.text.toStdString();
}

class SettingsTimeRead : public testing::TestWithParam<TimeRow>
{
};

} // namespace

TEST_P(SettingsDateRead, acceptsWhatNamesADay)
{
    EXPECT_EQ(readSettingsDate(American, GetParam().text), GetParam().date);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, SettingsDateRead,
    testing::Values(
        DateRow{u"November,15 2026"_s, QDate(2026, 11, 15)},
        DateRow{u"  november,05 2026 "_s, QDate(2026, 11, 5)}, DateRow{u"Nov 5, 2026"_s, QDate(2026, 11, 5)},
        DateRow{u"May,01 1999"_s, QDate(1999, 5, 1)}, DateRow{u"15 November 2026"_s, QDate(2026, 11, 15)},
        DateRow{u"15-Nov-26"_s, QDate(2026, 11, 15)}, DateRow{u"December,30 1899"_s, QDate(1899, 12, 30)},
        DateRow{u"February,29 2024"_s, QDate(2024, 2, 29)}, DateRow{u"February,29 2023"_s, std::nullopt},
        DateRow{u"2026-11-15"_s, QDate(2026, 11, 15)}, DateRow{u"11/15/2026"_s, QDate(2026, 11, 15)},
        DateRow{u"15/11/2026"_s, QDate(2026, 11, 15)}, DateRow{u"1/2/30"_s, QDate(1930, 1, 2)},
        DateRow{u"1/2/29"_s, QDate(2029, 1, 2)}, DateRow{u"soon"_s, std::nullopt},
        DateRow{QString(), std::nullopt}, DateRow{u"November"_s, std::nullopt},
        DateRow{u"15"_s, std::nullopt}, DateRow{u"November,15"_s, std::nullopt},
        DateRow{u"November,15 2026 x"_s, std::nullopt}, DateRow{u"15 November,15 2026"_s, std::nullopt},
        DateRow{u"November,15 20266"_s, std::nullopt}, DateRow{u"November,99999999999 2026"_s, std::nullopt},
        DateRow{u"Brumaire,15 2026"_s, std::nullopt}));

TEST(SettingsDate, writesTheMonthInTheLocalesWords)
{
    const QDate date(2026, 8, 5);
    EXPECT_EQ(settingsDate(Abroad(American).app, date), u"August,05 2026"_s);
    EXPECT_EQ(settingsDate(Abroad(QLocale(QLocale::French)).app, date), u"ao\u00fbt,05 2026"_s);
}

TEST(SettingsDate, writesEnglishWhereTheFileCannotHoldTheWords)
{
    Abroad abroad{QLocale(QLocale::Russian)};
    EXPECT_EQ(settingsDate(abroad.app, QDate(2026, 8, 5)), u"August,05 2026"_s);
    abroad.world.setPreference(u"CodePage"_s, u"1251"_s);
    EXPECT_EQ(settingsDate(abroad.app, QDate(2026, 8, 5)), u"\u0430\u0432\u0433\u0443\u0441\u0442,05 2026"_s);
}

TEST(SettingsDate, readsBackWhatItWroteInEveryLanguage)
{
    for (const auto language :
         {QLocale::Arabic,     QLocale::Basque,    QLocale::Bulgarian,  QLocale::Chinese,   QLocale::Croatian,
          QLocale::Czech,      QLocale::Dutch,     QLocale::Finnish,    QLocale::French,    QLocale::German,
          QLocale::Greek,      QLocale::Hebrew,    QLocale::Hindi,      QLocale::Hungarian, QLocale::Italian,
          QLocale::Japanese,   QLocale::Korean,    QLocale::Lithuanian, QLocale::Persian,   QLocale::Polish,
          QLocale::Portuguese, QLocale::Russian,   QLocale::Spanish,    QLocale::Swahili,   QLocale::Thai,
          QLocale::Turkish,    QLocale::Vietnamese}) {
        Abroad abroad{QLocale(language)};
        abroad.world.setPreference(u"CodePage"_s, u"65001"_s);
        for (int month = 1; month <= 12; ++month) {
            const QDate date(2026, month, month);
            const QString text = settingsDate(abroad.app, date);
            EXPECT_EQ(readSettingsDate(abroad.app.locale, text), date) << text.toStdString();
        }
    }
}

TEST(SettingsDate, readsEnglishInEveryLanguage)
{
    EXPECT_EQ(readSettingsDate(QLocale(QLocale::Japanese), u"November,15 2026"), QDate(2026, 11, 15));
    EXPECT_EQ(readSettingsDate(QLocale(QLocale::Finnish), u"May,02 2026"), QDate(2026, 5, 2));
    // Where a short name of November is "may".
    EXPECT_EQ(readSettingsDate(QLocale(QLocale::Basaa), u"May,05 2026"), QDate(2026, 5, 5));
    EXPECT_EQ(readSettingsDate(QLocale(QLocale::Duala), u"May,05 2026"), QDate(2026, 5, 5));
}

TEST(SettingsDate, takesNumbersInTheLocalesOrder)
{
    EXPECT_EQ(readSettingsDate(QLocale(QLocale::German), u"05.11.2026"), QDate(2026, 11, 5));
    EXPECT_EQ(readSettingsDate(American, u"05.11.2026"), QDate(2026, 5, 11));
}

TEST(SettingsDate, writesTheZeroDateForNoDate)
{
    EXPECT_EQ(settingsDate(Abroad(American).app, QDate()), u"December,30 1899"_s);
}

TEST_P(SettingsTimeRead, acceptsTimesOfDay)
{
    const auto time = readSettingsTime(GetParam().text);
    EXPECT_EQ(time ? settingsTime(*time) : QString(), GetParam().wanted);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, SettingsTimeRead,
    testing::Values(TimeRow{u"09:30:00 AM"_s, u"09:30:00 AM"_s}, TimeRow{u"9:05"_s, u"09:05:00 AM"_s},
                    TimeRow{u"14:30:00"_s, u"02:30:00 PM"_s}, TimeRow{u"12:00:00"_s, u"12:00:00 PM"_s},
                    TimeRow{u"12:15 am"_s, u"12:15:00 AM"_s}, TimeRow{u"0:00"_s, u"12:00:00 AM"_s},
                    TimeRow{u" 9 pm "_s, u"09:00:00 PM"_s}, TimeRow{u"9p"_s, u"09:00:00 PM"_s},
                    TimeRow{u"23:59:59"_s, u"11:59:59 PM"_s}, TimeRow{u"24:00"_s, QString()},
                    TimeRow{u"9:60"_s, QString()}, TimeRow{u"9:00:60"_s, QString()},
                    TimeRow{u"9"_s, QString()}, TimeRow{u"noon"_s, QString()}, TimeRow{QString(), QString()},
                    TimeRow{u"123:00"_s, QString()}, TimeRow{u"9:00 x"_s, QString()}));
