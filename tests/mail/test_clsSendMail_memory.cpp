#include "mail/clsSendMail.h"

#include "tests/support/failing_allocation.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

// These routines fail by a lack of memory alone.

namespace sondrel {

namespace {

// Whether a step leaves the tag in the log when its memory runs out, in runs that fail ever later.
template <typename Step>
bool leaves(World &world, const QString &tag, Step &&step)
{
    for (int successes = 0; successes < 400; ++successes) {
        {
            const FailingAllocation failing(successes);
            step();
            if (!failing.happened())
                return false;
        }
        if (world.takeLog().startsWith(tag))
            return true;
    }
    return false;
}

TEST(LackOfMemory, endsTheComposingOfAMessage)
{
    World world;
    clsSendMail mail(world.app);
    mail.MsgFormat = u"html"_s;
    mail.BodyTEXT = u"text"_s;
    EXPECT_TRUE(leaves(world, u"FormatMessage_Error: "_s, [&] { mail.FormatMessage(); }));
}

TEST(LackOfMemory, isToldInsteadOfSendingHalfAMessage)
{
    World world;
    clsSendMail mail(world.app);
    mail.setToRecipient(u"client@site.example"_s);
    mail.BodyTEXT = u"text"_s;
    qint32 number = 0;
    QObject::connect(&mail, &clsSendMail::Completed, [&](qint32 error) { number = error; });
    EXPECT_TRUE(leaves(world, u"FormatMessage_Error: "_s, [&] { mail.SendMail(); }));
    EXPECT_EQ(number, 30004);
    EXPECT_TRUE(world.smtp.conversations.empty());
}

TEST(LackOfMemory, endsTheReplacingOfFields)
{
    World world;
    clsSendMail mail(world.app);
    mail.setCustomFields(QStringList{u"[name]"_s}, QStringList{u"Ann"_s});
    EXPECT_TRUE(
        leaves(world, u"ReplaceCustomField_Error: "_s, [&] { mail.ReplaceCustomField(u"Dear [name]"_s); }));
}

} // namespace

} // namespace sondrel
