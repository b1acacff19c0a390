#include "core/settings_file.h"

#include "core/failure.h"
#include "tests/support/printing.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

const QString Key = u"Software\\Vendor\\Product"_s;

QString failureOf(const QByteArray &bytes)
{
    try {
        readSettings(bytes);
        return QString();
    } catch (const Failure &failure) {
        return failure.text();
    }
}

struct TextRow
{
    const char *name;
    QString text;
};

void PrintTo(const TextRow &row, std::ostream *out)
{
    *out << row.name;
}

class SettingsText : public testing::TestWithParam<TextRow>
{
};

const TextRow textRows[] = {
    {"empty", u""_s},
    {"plain", u"Finder UK"_s},
    {"accents", u"Caf\u00e9 \u4e2d\u6587"_s},
    {"outsideTheFirstPlane", u"\U0001F50D"_s},
    {"slash", u"tcp/ip"_s},
    {"backslash", u"a\\b"_s},
    {"equals", u"a=b"_s},
    {"brackets", u"[a] ]b["_s},
    {"comment", u";a"_s},
    {"hash", u"#a"_s},
    {"percent", u"50% %41 %u0041"_s},
    {"mark", u"@bytes:00"_s},
    {"blanksAround", u"  a  "_s},
    {"blankAlone", u" "_s},
    {"lineEnds", u"a\r\nb\n"_s},
    {"tabAndNul", QString(u"a\tb"_s + QChar(0) + u"c"_s)},
    {"quotes", u"\"a\" 'b'"_s},
    {"unpairedSurrogates", QString(u"a"_s + QChar(0xD800) + u"b"_s + QChar(0xDC00))},
    {"byteOrderMark", u"\uFEFFa"_s},
    {"noCharacters", u"\uFFFE\uFFFF"_s},
    {"long", QString(5000, u'x')},
};

} // namespace

TEST_P(SettingsText, survivesAsAValue)
{
    SettingsTree tree;
    tree.createKey(Key);
    tree.setValue(Key, u"Name"_s, GetParam().text);
    const auto value = readSettings(writeSettings(tree)).value(Key, u"Name"_s);
    ASSERT_TRUE(value);
    EXPECT_EQ(value->toString(), GetParam().text);
}

TEST_P(SettingsText, survivesAsAName)
{
    SettingsTree tree;
    tree.createKey(Key);
    tree.setValue(Key, GetParam().text, u"value"_s);
    const auto value = readSettings(writeSettings(tree)).value(Key, GetParam().text);
    ASSERT_TRUE(value);
    EXPECT_EQ(value->toString(), u"value"_s);
}

INSTANTIATE_TEST_SUITE_P(Rows, SettingsText, testing::ValuesIn(textRows),
                         [](const auto &row) { return std::string(row.param.name); });

TEST(SettingsFile, keepsEveryUnitInKeysNamesAndValues)
{
    SettingsTree tree;
    for (int block = 0; block < 0x10000; block += 64) {
        QString text;
        for (int unit = block; unit < block + 64; ++unit)
            text += QChar(unit);
        tree.createKey(text);
        tree.setValue(text, text, text);
    }
    const QByteArray bytes = writeSettings(tree);
    EXPECT_EQ(writeSettings(readSettings(bytes)), bytes);
}

TEST(SettingsFile, keepsTheTypeOfAValue)
{
    SettingsTree tree;
    tree.createKey(Key);
    tree.setValue(Key, u"Text"_s, u"5"_s);
    tree.setValue(Key, u"Number"_s, -5);
    tree.setValue(Key, u"Bytes"_s, QByteArray("\0\xff", 2));
    const SettingsTree read = readSettings(writeSettings(tree));
    EXPECT_EQ(read.value(Key, u"Text"_s)->typeId(), QMetaType::QString);
    EXPECT_EQ(*read.value(Key, u"Number"_s), QVariant(-5));
    EXPECT_EQ(*read.value(Key, u"Bytes"_s), QVariant(QByteArray("\0\xff", 2)));
}

TEST(SettingsFile, keepsKeysWithoutValues)
{
    SettingsTree tree;
    tree.createKey(Key);
    EXPECT_TRUE(readSettings(writeSettings(tree)).hasKey(Key));
}

TEST(SettingsFile, hasTheFormThatAHandWouldWrite)
{
    SettingsTree tree;
    tree.createKey(Key);
    tree.setValue(Key, u"Proxy"_s, u"proxy.example"_s);
    tree.setValue(Key, u"Limit"_s, 5);
    EXPECT_EQ(writeSettings(tree), "[Software\\Vendor\\Product]\n"
                                   "Limit=@integer:5\n"
                                   "Proxy=proxy.example\n"
                                   "\n");
}

TEST(SettingsFile, readsWhatAHandHasWritten)
{
    const SettingsTree tree = readSettings("; my settings\r\n\r\n# more\r\n [software\\VENDOR\\product] \r\n"
                                           "  Proxy = proxy.example  \r\nPROXY=other.example");
    EXPECT_EQ(tree.value(Key, u"proxy"_s)->toString(), u"other.example"_s);
}

TEST(SettingsFile, readsNothingFromAnEmptyFile)
{
    EXPECT_TRUE(readSettings("").keys().empty());
}

TEST(SettingsFile, namesTheLineThatIsNoSetting)
{
    EXPECT_EQ(failureOf("[A]\nx=1\nnonsense\n"), u"line 3 is neither a key nor a value"_s);
    EXPECT_EQ(failureOf("x=1\n"), u"line 1 is neither a key nor a value"_s);
    EXPECT_EQ(failureOf("[A\n"), u"line 1 is neither a key nor a value"_s);
    EXPECT_EQ(failureOf("[A]\nx=%4"), u"line 2 is neither a key nor a value"_s);
    EXPECT_EQ(failureOf("[A]\nx=%zz"), u"line 2 is neither a key nor a value"_s);
    EXPECT_EQ(failureOf("[A]\nx=%u12"), u"line 2 is neither a key nor a value"_s);
    EXPECT_EQ(failureOf("[A%]\n"), u"line 1 is neither a key nor a value"_s);
    EXPECT_EQ(failureOf("[A]\nx=@bytes:0"), u"line 2 is neither a key nor a value"_s);
    EXPECT_EQ(failureOf("[A]\nx=@bytes:0g"), u"line 2 is neither a key nor a value"_s);
    EXPECT_EQ(failureOf("[A]\nx=@integer:99999999999"), u"line 2 is neither a key nor a value"_s);
    EXPECT_EQ(failureOf("[A]\nx=@colour:1"), u"line 2 is neither a key nor a value"_s);
}

TEST(SettingsFile, refusesWhatIsNoText)
{
    EXPECT_EQ(failureOf("[A]\nx=\xff\xfe\n"), u"it is not UTF-8 text"_s);
    EXPECT_EQ(failureOf("[A]\nx=\xc3"), u"it is not UTF-8 text"_s);
}

TEST(SettingsFile, readsOrRefusesWhateverAFileHolds)
{
    const QByteArray valid = "[A\\B]\nx=1%41\ny=@integer:5\n[C]\nz=@bytes:00ff\n";
    QRandomGenerator random(1); // the same bytes each time
    int read = 0;
    int refused = 0;
    for (int round = 0; round < 5000; ++round) {
        QByteArray bytes = valid;
        for (int change = random.bounded(1, 6); change > 0; --change)
            bytes[random.bounded(static_cast<int>(bytes.size()))] = static_cast<char>(random.bounded(256));
        try {
            const QByteArray again = writeSettings(readSettings(bytes));
            ASSERT_EQ(writeSettings(readSettings(again)), again) << bytes.toHex().constData();
            ++read;
        } catch (const Failure &) {
            ++refused;
        }
    }
    EXPECT_GT(read, 100);
    EXPECT_GT(refused, 100);
}
