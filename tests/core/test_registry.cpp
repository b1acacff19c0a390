#include "core/registry.h"

#include "core/file_settings_store.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QDir>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class Registry : public testing::Test
{
protected:
    World world;
    ApplicationContext &app = world.app;
    const QString key = app.RegPreference;

    QVariant get(const QString &name, int type, const QVariant &fallback)
    {
        return GetRegistryValue(app, key, name, type, fallback);
    }
    void set(const QString &name, int type, const QVariant &value)
    {
        CreateRegistryKey(app, key);
        SetRegistryValue(app, key, name, type, value);
    }
};

} // namespace

TEST_F(Registry, tellsWhetherAKeyWasThere)
{
    EXPECT_FALSE(CreateRegistryKey(app, key));
    EXPECT_TRUE(CreateRegistryKey(app, key));
    EXPECT_TRUE(CreateRegistryKey(app, u"SOFTWARE\\Kestrune"_s));
}

TEST_F(Registry, keepsValuesOfEveryType)
{
    set(u"Text"_s, RegistryString, u"Caf\u00e9"_s);
    set(u"Bytes"_s, RegistryBytes, QByteArray("\0\1\xff", 3));
    set(u"Number"_s, RegistryInteger, -7);
    EXPECT_EQ(get(u"Text"_s, RegistryString, u""_s), QVariant(u"Caf\u00e9"_s));
    EXPECT_EQ(get(u"Bytes"_s, RegistryBytes, QByteArray()), QVariant(QByteArray("\0\1\xff", 3)));
    EXPECT_EQ(get(u"Number"_s, RegistryInteger, 0), QVariant(-7));
    EXPECT_EQ(world.takeLog(), u""_s);
}

TEST_F(Registry, givesTheDefaultForAMissingKeyOrValue)
{
    EXPECT_EQ(GetRegistryText(app, key, u"Port"_s, u"8080"_s), u"8080"_s);
    CreateRegistryKey(app, key);
    EXPECT_EQ(GetRegistryText(app, key, u"Port"_s, u"8080"_s), u"8080"_s);
    EXPECT_EQ(get(u"Port"_s, RegistryInteger, 25), QVariant(25));
    EXPECT_EQ(world.takeLog(), u""_s);
}

TEST_F(Registry, givesTheDefaultForAnEmptyValue)
{
    set(u"Port"_s, RegistryString, u""_s);
    set(u"Bytes"_s, RegistryBytes, QByteArray());
    EXPECT_EQ(GetRegistryText(app, key, u"Port"_s, u"8080"_s), u"8080"_s);
    EXPECT_EQ(get(u"Port"_s, RegistryInteger, 25), QVariant(25));
    EXPECT_EQ(get(u"Bytes"_s, RegistryBytes, QByteArray("x")), QVariant(QByteArray("x")));
    EXPECT_EQ(world.takeLog(), u""_s);
}

TEST_F(Registry, convertsAValueToTheTypeThatIsWritten)
{
    set(u"A"_s, RegistryInteger, u" 1,240 "_s);
    set(u"B"_s, RegistryString, 12);
    set(u"C"_s, RegistryBytes, u"\u00e9\u20ac"_s);
    set(u"D"_s, RegistryString, QByteArray("\xe9\x80"));
    EXPECT_EQ(*world.settings.value(key, u"A"_s), QVariant(1240));
    EXPECT_EQ(*world.settings.value(key, u"B"_s), QVariant(u"12"_s));
    EXPECT_EQ(*world.settings.value(key, u"C"_s), QVariant(QByteArray("\xe9\x80")));
    EXPECT_EQ(*world.settings.value(key, u"D"_s), QVariant(u"\u00e9\u20ac"_s));
}

TEST_F(Registry, convertsAValueToTheTypeThatIsRead)
{
    set(u"A"_s, RegistryString, u"12"_s);
    EXPECT_EQ(get(u"A"_s, RegistryInteger, 0), QVariant(12));
    EXPECT_EQ(get(u"A"_s, RegistryBytes, QByteArray()), QVariant(QByteArray("12")));
    set(u"B"_s, RegistryInteger, 5);
    EXPECT_EQ(get(u"B"_s, RegistryString, u""_s), QVariant(u"5"_s));
    EXPECT_EQ(get(u"B"_s, RegistryBytes, QByteArray()), QVariant(QByteArray("5")));
    set(u"C"_s, RegistryBytes, QByteArray("7"));
    EXPECT_EQ(get(u"C"_s, RegistryInteger, 0), QVariant(7));
}

TEST_F(Registry, keeps1024BytesOfAString)
{
    set(u"A"_s, RegistryString, QString(1024, u'a') + u"b"_s);
    set(u"B"_s, RegistryString, QString(1024, u'a'));
    EXPECT_EQ(GetRegistryText(app, key, u"A"_s, u""_s), QString(1024, u'a'));
    EXPECT_EQ(GetRegistryText(app, key, u"B"_s, u""_s), QString(1024, u'a'));
}

TEST_F(Registry, cutsNoCharacterOfSeveralBytes)
{
    world.setPreference(u"CodePage"_s, u"936"_s);
    set(u"A"_s, RegistryString, u"a"_s + QString(600, QChar(0x554a)));
    EXPECT_EQ(GetRegistryText(app, key, u"A"_s, u""_s), u"a"_s + QString(511, QChar(0x554a)));
    world.setPreference(u"CodePage"_s, u"65001"_s);
    set(u"B"_s, RegistryString, u"abc"_s + u"\U0001F50D"_s.repeated(300));
    EXPECT_EQ(GetRegistryText(app, key, u"B"_s, u""_s), u"abc"_s + u"\U0001F50D"_s.repeated(255));
}

TEST_F(Registry, keeps4096BytesOfRawData)
{
    set(u"A"_s, RegistryBytes, QByteArray(5000, 'a'));
    EXPECT_EQ(get(u"A"_s, RegistryBytes, QByteArray()), QVariant(QByteArray(4096, 'a')));
    set(u"B"_s, RegistryBytes, QString(5000, u'a'));
    EXPECT_EQ(get(u"B"_s, RegistryBytes, QByteArray()), QVariant(QByteArray(4096, 'a')));
}

TEST_F(Registry, cutsWhatIsStoredLonger)
{
    world.setPreference(u"A"_s, QString(2000, u'a'));
    EXPECT_EQ(GetRegistryText(app, key, u"A"_s, u""_s).size(), 1024);
}

TEST_F(Registry, doesNotReadAnUnknownType)
{
    set(u"A"_s, RegistryString, u"a"_s);
    EXPECT_EQ(get(u"A"_s, 2, u"default"_s), QVariant(u"default"_s));
    EXPECT_EQ(world.takeLog(), u"RegistryAPI_GetRegistryValue: Unsupported value type"_s);
}

TEST_F(Registry, doesNotWriteAnUnknownType)
{
    set(u"A"_s, 2, u"a"_s);
    EXPECT_FALSE(world.settings.value(key, u"A"_s));
    EXPECT_EQ(world.takeLog(), u""_s);
}

TEST_F(Registry, writesNothingUnderAKeyThatDoesNotExist)
{
    SetRegistryValue(app, key, u"A"_s, RegistryString, u"a"_s);
    SetRegistryValue(app, key, u"A"_s, RegistryInteger, u"no number"_s);
    EXPECT_FALSE(world.settings.hasKey(key));
    EXPECT_EQ(world.takeLog(), u""_s);
}

TEST_F(Registry, logsAValueThatCannotBeConverted)
{
    set(u"A"_s, RegistryInteger, u"twelve"_s);
    EXPECT_EQ(world.takeLog(), u"RegistryAPI_SetRegistryValue:  Type mismatch"_s);
    EXPECT_FALSE(world.settings.value(key, u"A"_s));
    set(u"A"_s, RegistryString, u"99999999999"_s);
    EXPECT_EQ(get(u"A"_s, RegistryInteger, 3), QVariant(3));
    EXPECT_EQ(world.takeLog(), u"RegistryAPI_GetRegistryValue: Overflow"_s);
}

TEST_F(Registry, logsASettingsStoreThatCannotBeRead)
{
    world.settings.broken = true;
    EXPECT_FALSE(CreateRegistryKey(app, key));
    EXPECT_EQ(world.takeLog(), u"RegistryAPI_CreateRegistryKey:  The settings cannot be read"_s);
    EXPECT_EQ(GetRegistryText(app, key, u"Port"_s, u"8080"_s), u"8080"_s);
    EXPECT_EQ(world.takeLog(), u"RegistryAPI_GetRegistryValue: The settings cannot be read"_s);
    SetRegistryValue(app, key, u"Port"_s, RegistryString, u"1"_s);
    EXPECT_EQ(world.takeLog(), u"RegistryAPI_SetRegistryValue:  The settings cannot be read"_s);
}

TEST_F(Registry, takesEngineNamesOfAnyKind)
{
    for (const QString &name : {u"a/b"_s, u"a=b"_s, u"[Finder]"_s, u"50%"_s, u"Caf\u00e9 Finder"_s}) {
        set(name, RegistryString, name);
        EXPECT_EQ(GetRegistryText(app, key, name.toUpper(), u""_s), name);
    }
}

TEST_F(Registry, leavesADamagedFileAsItIs)
{
    const QString file = world.folder.filePath(u"settings.ini"_s);
    FileSettingsStore settings(file);
    ApplicationContext damaged(world.app.AppPath, world.app.SystemDirectory,
                               Doors{world.clock, world.desktop, settings, world.http}, app.locale);
    ASSERT_TRUE(QDir().mkpath(file));
    EXPECT_EQ(GetRegistryText(damaged, key, u"Port"_s, u"8080"_s), u"8080"_s);
    EXPECT_EQ(world.takeLog(), u"RegistryAPI_GetRegistryValue: Cannot read the settings file \""_s + file +
                                   u"\": it is not a file"_s);
}
