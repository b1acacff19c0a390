#include "lookup/decode_html.h"
#include "tests/lookup/plain_walk.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

TEST(DecodeHTMLString, decodesMarksAndDropsTheRest)
{
    struct Row
    {
        const char *name;
        QString text, decoded;
    };
    const Row rows[] = {
        {"nothing to decode", u"http://a.example/b"_s, u"http://a.example/b"_s},
        {"all marks",
         u"%7E%2E%2D%21%23%24%5E%2C%2F%26%28%29%2B%60%3D%7B%7D%7C%5B%5D%5C%5F%3A%27%3B%3C%3E%3F"_s,
         u"~.-!#$^,/&()+`={}|[]\\_:';<>?"_s},
        {"lower case", u"%7e%5f%5F%2f"_s, u"~__/"_s},
        {"blank", u"a%20b"_s, u"ab"_s},
        {"letters and bytes above ASCII", u"%41%C3%A9b"_s, u"b"_s},
        {"at sign and asterisk", u"%40%2Ax%22"_s, u"x"_s},
        {"plus", u"a+b"_s, u"a+b"_s},
        {"percent itself", u"%25"_s, u""_s},
        {"percent before a code", u"%252Fx"_s, u"/x"_s},
        {"percent before a percent before a code", u"%25252Fx"_s, u"/x"_s},
        {"at the end", u"ab%"_s, u"ab"_s},
        {"cut short at the end", u"ab%2"_s, u"ab"_s},
        {"two at the end", u"ab%%"_s, u"ab"_s},
        {"no digits", u"%zz%Zzx"_s, u"x"_s},
        {"a code that begins within another", u"%2%20F%2Fx"_s, u"20F/x"_s},
        {"joined by what is dropped", u"%zz %%zz2Fx"_s, u" /x"_s},
        {"a code that overlaps itself", u"%a%a%bc"_s, u"a"_s},
        {"accented letters in another case", u"%\u00e9\u00c9x%\u00c9\u00e9y"_s, u"xy"_s},
        {"a wrapped address", u"http://a.example/?u=http%3A%2F%2Fb.example%2F%3Fq%3D1%26r%3D2"_s,
         u"http://a.example/?u=http://b.example/?q=1&r=2"_s},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(DecodeHTMLString(row.text), row.decoded) << row.name;
        EXPECT_EQ(plain::DecodeHTMLString(row.text), row.decoded) << row.name << ", plainly";
    }
}

TEST(DecodeHTMLString, agreesWithThePlainRuleOnRandomTexts)
{
    std::mt19937 random(20261115);
    const QString alphabets[] = {u"%2"_s, u"%25"_s, u"%2f5"_s, u"%%%2357aAfF/x"_s};
    for (int round = 0; round < 20'000; ++round) {
        const QString &alphabet = alphabets[random() % std::size(alphabets)];
        QString text(static_cast<qsizetype>(random() % 40), Qt::Uninitialized);
        for (QChar &unit : text)
            unit = alphabet[static_cast<qsizetype>(random() % static_cast<unsigned>(alphabet.size()))];
        ASSERT_EQ(DecodeHTMLString(text), plain::DecodeHTMLString(text)) << text.toStdString();
    }
}

// Each of these would take minutes if the text were gone through anew for every code.
TEST(DecodeHTMLString, comesToTheEndOfHostileAddresses)
{
    QString nested = u"%"_s;
    for (int i = 0; i < 100'000; ++i)
        nested += u"25"_s;
    QString distinct;
    for (int i = 0; i < 100'000; ++i) {
        distinct += u'%';
        distinct += QChar(0x4000 + i % 0x3000);
        distinct += QChar(0x4000 + i / 0x3000);
    }
    EXPECT_EQ(DecodeHTMLString(QString(300'001, u'%')), QString());
    EXPECT_EQ(DecodeHTMLString(nested), QString());
    EXPECT_EQ(DecodeHTMLString(distinct), QString());
}
