#include "lookup/frmHTTP.h"

#include <gtest/gtest.h>

#include <ostream>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

struct UrlRow
{
    const char *name;
    QString url;
    QString host;
    QString file;
};

void PrintTo(const UrlRow &row, std::ostream *out)
{
    *out << row.name;
}

class TransferUrl : public testing::TestWithParam<UrlRow>
{
};

struct DotRow
{
    const char *name;
    QString text;
    bool want;
};

void PrintTo(const DotRow &row, std::ostream *out)
{
    *out << row.name;
}

class DotAddress : public testing::TestWithParam<DotRow>
{
};

} // namespace

TEST_P(TransferUrl, comesApartIntoHostAndFile)
{
    EXPECT_EQ(frmHTTP::GetHostFromURL(GetParam().url), GetParam().host);
    EXPECT_EQ(frmHTTP::GetFileFromURL(GetParam().url), GetParam().file);
}

INSTANTIATE_TEST_SUITE_P(
    Rule, TransferUrl,
    testing::Values(UrlRow{"empty", u""_s, u""_s, u""_s},
                    UrlRow{"host alone", u"http://a.example"_s, u"a.example"_s, u""_s},
                    UrlRow{"root", u"http://a.example/"_s, u"a.example"_s, u""_s},
                    UrlRow{"path", u"http://a.example/b/c.html"_s, u"a.example"_s, u"b/c.html"_s},
                    UrlRow{"port and user", u"http://u:p@a.example:81/b"_s, u"u:p@a.example:81"_s, u"b"_s},
                    UrlRow{"query with slashes", u"http://a.example/x?u=http://b/c"_s, u"a.example"_s,
                           u"x?u=http://b/c"_s},
                    UrlRow{"slashes without scheme", u"//a.example/b"_s, u"a.example"_s, u"b"_s},
                    UrlRow{"no scheme", u"a.example/b"_s, u"a.example"_s, u"b"_s},
                    UrlRow{"only a later //", u"a.example//b/c"_s, u"b"_s, u"c"_s},
                    UrlRow{"query behind the host", u"http://a.example?x/y"_s, u"a.example?x"_s, u"y"_s}));

TEST_P(DotAddress, isFourPlainNumbers)
{
    EXPECT_EQ(frmHTTP::IsDotAddress(GetParam().text), GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(
    Rule, DotAddress,
    testing::Values(DotRow{"lowest", u"0.0.0.0"_s, true}, DotRow{"highest", u"255.255.255.255"_s, true},
                    DotRow{"blanks at the ends", u"  10.0.0.1 "_s, true}, DotRow{"empty", u""_s, false},
                    DotRow{"three parts", u"1.2.3"_s, false}, DotRow{"five parts", u"1.2.3.4.5"_s, false},
                    DotRow{"empty part", u"1..3.4"_s, false}, DotRow{"closing dot", u"1.2.3.4."_s, false},
                    DotRow{"leading zero", u"01.2.3.4"_s, false}, DotRow{"double zero", u"00.0.0.0"_s, false},
                    DotRow{"too high", u"1.2.3.256"_s, false},
                    DotRow{"far too high", u"1.2.3.99999999999"_s, false},
                    DotRow{"sign", u"1.2.3.+4"_s, false}, DotRow{"inner blank", u"1. 2.3.4"_s, false},
                    DotRow{"text behind", u"1.2.3.4/x"_s, false}, DotRow{"letters", u"a.b.c.d"_s, false},
                    DotRow{"other digits", u"\u0661.2.3.4"_s, false}));
