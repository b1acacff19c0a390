#include "mail/mail_address.h"

#include "core/failure.h"
#include "tests/support/printing.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

struct Row
{
    const char *name;
    QString value;
    std::vector<MailAddress> addresses;
};

class Addresses : public testing::TestWithParam<Row>
{
};

TEST_P(Addresses, areRead)
{
    EXPECT_EQ(parseAddresses(GetParam().value), GetParam().addresses);
}

INSTANTIATE_TEST_SUITE_P(
    Values, Addresses,
    testing::Values(
        Row{"Empty", u""_s, {}}, Row{"Bare", u" a@b.example "_s, {{u""_s, u"a@b.example"_s}}},
        Row{"Named", u"Ann B <a@b.example>"_s, {{u"Ann B"_s, u"a@b.example"_s}}},
        Row{"Quoted", u"\"Smith, \\\"Ann\\\"\" <a@b.example>"_s, {{u"Smith, \"Ann\""_s, u"a@b.example"_s}}},
        Row{"Comment", u"a@b.example (Ann (of us))"_s, {{u"Ann (of us)"_s, u"a@b.example"_s}}},
        Row{"List",
            u"a@b.example; \"C, D\" <c@d.example>, , e@f.example"_s,
            {{u""_s, u"a@b.example"_s}, {u"C, D"_s, u"c@d.example"_s}, {u""_s, u"e@f.example"_s}}},
        Row{"NoMailbox", u"\"Ann\" <>"_s, {{u"Ann"_s, u""_s}}},
        Row{"Open", u"Ann <a@b.example"_s, {{u"Ann"_s, u"a@b.example"_s}}}),
    [](const auto &row) { return row.param.name; });

struct SenderRow
{
    const char *name;
    QString value;
    QString readable;
};

class Senders : public testing::TestWithParam<SenderRow>
{
};

TEST_P(Senders, areReadable)
{
    EXPECT_EQ(readableSender(GetParam().value), GetParam().readable);
}

INSTANTIATE_TEST_SUITE_P(
    Values, Senders,
    testing::Values(
        SenderRow{"Empty", u""_s, u""_s}, SenderRow{"Bare", u"a@b.example"_s, u"a@b.example"_s},
        SenderRow{"Named", u"Ann B. <a@b.example>"_s, u"Ann B. <a@b.example>"_s},
        SenderRow{"WithoutABlank", u"J\u00F6rg<a@b.example>"_s, u"J\u00F6rg<a@b.example>"_s},
        SenderRow{"Quoted", u"\"Smith, \\\"Ann\\\"\" <a@b.example>"_s,
                  u"\"Smith, \\\"Ann\\\"\" <a@b.example>"_s},
        SenderRow{"Comment", u"Ann (Sales, UK) <a@b.example>"_s, u"Ann (Sales, UK) <a@b.example>"_s},
        SenderRow{"Comma", u"Smith, Ann<a@b.example>"_s, u"\"Smith, Ann\" <a@b.example>"_s},
        SenderRow{"Semicolon", u" Shop; Co <a@b.example> "_s, u"\"Shop; Co\" <a@b.example>"_s},
        SenderRow{"Backslash", u"A\\B<a@b.example>"_s, u"\"A\\\\B\" <a@b.example>"_s},
        SenderRow{"QuoteInQuotes", u"\"An\"n\" <a@b.example>"_s, u"\"An\\\"n\" <a@b.example>"_s},
        SenderRow{"OpenQuote", u"24\" screens<a@b.example>"_s, u"\"24\\\" screens\" <a@b.example>"_s},
        SenderRow{"OpenComment", u"Ann :( <a@b.example>"_s, u"\"Ann :(\" <a@b.example>"_s},
        SenderRow{"Angle", u"a < b<a@b.example>"_s, u"\"a < b\" <a@b.example>"_s},
        SenderRow{"List", u"a@b.example, Bob <c@d.example>"_s, u"a@b.example, Bob <c@d.example>"_s},
        SenderRow{"Open", u"Smith, Ann <a@b.example"_s, u"Smith, Ann <a@b.example"_s}),
    [](const auto &row) { return row.param.name; });

TEST(WireMailbox, turnsTheHostIntoAscii)
{
    EXPECT_EQ(wireMailbox(u"ann@b\u00FCro.example"_s), "ann@xn--bro-hoa.example");
}

TEST(WireMailbox, refusesWhatIsNoPlainMailbox)
{
    for (const QString &mailbox : {u"a b@c.example"_s, u"a>@c.example"_s, u"a\r\n@c.example"_s,
                                   u"\u00E9@c.example"_s, QString(500, u'a')})
        EXPECT_THROW(wireMailbox(mailbox), Failure) << mailbox.toStdString();
}

} // namespace
