#include "lookup/wire_address.h"

#include <gtest/gtest.h>

#include <ostream>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

QByteArray latin(QStringView text)
{
    return text.toLatin1();
}

struct AddressRow
{
    const char *name;
    QString address;
    const char *want;
};

void PrintTo(const AddressRow &row, std::ostream *out)
{
    *out << row.name;
}

class WireAddress : public testing::TestWithParam<AddressRow>
{
};

} // namespace

TEST_P(WireAddress, holdsPrintableAsciiOnly)
{
    EXPECT_EQ(wireAddress(GetParam().address, latin), GetParam().want);
}

INSTANTIATE_TEST_SUITE_P(
    Rule, WireAddress,
    testing::Values(
        AddressRow{"empty", u""_s, ""}, AddressRow{"blank", u"  "_s, ""},
        AddressRow{"plain", u"http://a.example/x?q=1%20+&b=~"_s, "http://a.example/x?q=1%20+&b=~"},
        AddressRow{"ends", u" \t\r\nhttp://a.example/ \r\n"_s, "http://a.example/"},
        AddressRow{"inner blanks", u"http://a.example/a b?q=c d"_s, "http://a.example/a%20b?q=c%20d"},
        AddressRow{"accents", u"http://a.example/caf\u00e9?q=\u00fc"_s, "http://a.example/caf%E9?q=%FC"},
        AddressRow{"line end", u"http://a.example/a\r\nX: y"_s, "http://a.example/a%0D%0AX:%20y"},
        AddressRow{"line end in the host", u"http://a\r\n.example/"_s, "http://a%0D%0A.example/"},
        AddressRow{"zero", u"http://a.example/a\0b"_s, "http://a.example/a%00b"},
        AddressRow{"delete", u"http://a.example/\u007f/b"_s, "http://a.example/%7F/b"},
        AddressRow{"host of another script", u"http://m\u00fcnchen.example:81/\u00fc"_s,
                   "http://xn--mnchen-3ya.example:81/%FC"},
        AddressRow{"user before such a host", u"http://u\u00fc:p@m\u00fcnchen.example"_s,
                   "http://u%FC:p@xn--mnchen-3ya.example"},
        AddressRow{"no scheme", u"a.example/b c"_s, "a.example/b%20c"}));

TEST(WireAddress, asksForBytesOnlyWhenItNeedsThem)
{
    const TextEncoder never = [](QStringView) -> QByteArray { throw std::logic_error("asked"); };
    EXPECT_EQ(wireAddress(u"http://a.example/b c"_s, never), "http://a.example/b%20c");
}

TEST(WireHeaderValue, staysOneLine)
{
    EXPECT_EQ(wireHeaderValue(u"Own\r\nX-Other: 1\u00e9"_s, latin), "OwnX-Other: 1\xe9");
}
