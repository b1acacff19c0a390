#include "shell/account_form.h"

#include "project/clsAccount.h"
#include "tests/support/printing.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

const QDate Today(2026, 11, 15);

AccountForm goodForm()
{
    AccountForm form;
    form.AccountName = u"Shop"_s;
    form.URLs = {{u"www.site.example"_s, false}};
    form.Engines = {{u"RootGlobal"_s, u"Global"_s, {}, false},
                    {u"EngineAlpha"_s, u"Alpha"_s, u"RootGlobal"_s, true}};
    form.StartDate = Today;
    return form;
}

Collection<QString> names(const QStringList &texts)
{
    Collection<QString> collection;
    for (const QString &text : texts)
        collection.Add(text);
    return collection;
}

clsAccount fullAccount(World &world)
{
    clsAccount account(world.app);
    account.Name = u"Shop"_s;
    account.ReportFormat = 1;
    account.Frequency = 2;
    account.SchedulerEnable = true;
    account.StartDate = QDate(2026, 12, 24);
    account.StartTime = u"09:30:15 PM"_s;
    account.SentReport = true;
    account.ReportTo = u"me@site.example"_s;
    account.CC = u"you@site.example"_s;
    account.Subject = u"Positions"_s;
    account.LinksNum = 35;
    account.EngineSummaryReport = account.KeywordURL = account.KeywordSummaryReport = true;
    account.RankingDetailReport = account.ExcludeUnRanking = account.TopPosOnly = true;
    return account;
}

TEST(AccountForm, offersTenToOneHundredLinks)
{
    EXPECT_EQ(linkCounts().join(u' '), u"10 20 30 40 50 60 70 80 90 100"_s);
}

TEST(AccountForm, beginsANewProjectWithTenLinksAndToday)
{
    World world;
    const AccountForm form = accountForm(world.app, clsAccount(world.app));
    AccountForm wanted;
    wanted.StartDate = Today;
    wanted.Frequency = 0;
    wanted.ReportFormat = 0;
    EXPECT_EQ(form, wanted);
    EXPECT_TRUE(form.IsNew);
    EXPECT_EQ(form.Links, u"10"_s);
}

TEST(AccountForm, showsEverythingOfAnExistingProject)
{
    World world;
    AccountForm wanted;
    wanted.AccountName = u"Shop"_s;
    wanted.IsNew = false;
    wanted.Links = u"35"_s;
    wanted.SchedulerEnable = wanted.SentReport = true;
    wanted.Frequency = 2;
    wanted.ReportFormat = 1;
    wanted.StartDate = QDate(2026, 12, 24);
    wanted.ScheduleTimer = QTime(21, 30, 15);
    wanted.Email = u"me@site.example"_s;
    wanted.CC = u"you@site.example"_s;
    wanted.Subject = u"Positions"_s;
    wanted.EngineSummary = wanted.KeywordURL = wanted.KeywordSummary = true;
    wanted.RankingDetails = wanted.RemoveUnRanking = wanted.TopPosOnly = true;
    EXPECT_EQ(accountForm(world.app, fullAccount(world)), wanted);
}

TEST(AccountForm, choosesNoButtonForANumberThatHasNone)
{
    World world;
    clsAccount account = fullAccount(world);
    account.Frequency = 4;
    account.ReportFormat = -1;
    const AccountForm form = accountForm(world.app, account);
    EXPECT_EQ(form.Frequency, std::nullopt);
    EXPECT_EQ(form.ReportFormat, std::nullopt);
}

TEST(AccountForm, buildsTheTreeInTheCataloguesOrder)
{
    World world;
    const auto chosen = names({u" beta "_s});
    const std::vector<EngineNode> wanted{
        {u"RootGlobal"_s, u"Global"_s, {}, false},
        {u"EngineAlpha"_s, u"Alpha"_s, u"RootGlobal"_s, false},
        {u"EngineBeta"_s, u"Beta"_s, u"RootGlobal"_s, true},
        {u"RootChina"_s, u"China"_s, {}, false},
        {u"EngineGamma(CN)"_s, u"Gamma(CN)"_s, u"RootChina"_s, false},
    };
    EXPECT_EQ(
        engineNodes(world.app, names({u"Global|Alpha"_s, u"Global|Beta"_s, u"China|Gamma(CN)"_s}), &chosen),
        wanted);
}

TEST(AccountForm, skipsCatalogueNamesWithoutABar)
{
    World world;
    EXPECT_TRUE(engineNodes(world.app, names({u"Alpha"_s}), nullptr).empty());
}

TEST(AccountForm, putsAnEngineUnderAMarketThatIsThereAlready)
{
    World world;
    const auto nodes =
        engineNodes(world.app, names({u"Global|Alpha"_s, u"China|Beta"_s, u"global|Mine"_s}), nullptr);
    ASSERT_EQ(nodes.size(), 5U);
    EXPECT_TRUE(equalsIgnoringCase(nodes[4].MarketKey, u"RootGlobal"));
}

TEST(AccountForm, enablesScheduleAndReportByTheirCheckBoxes)
{
    AccountForm form;
    EXPECT_EQ(accountEnabled(form), (AccountEnabled{false, false}));
    form.SchedulerEnable = true;
    EXPECT_EQ(accountEnabled(form), (AccountEnabled{true, false}));
    form.SentReport = true;
    EXPECT_EQ(accountEnabled(form), (AccountEnabled{true, true}));
}

struct FaultCase
{
    const char *name;
    std::function<void(AccountForm &)> spoil;
    QString message;
    AccountTab tab;
    AccountField focus;
};

class AccountFaults : public testing::TestWithParam<FaultCase>
{
};

TEST_P(AccountFaults, stopAtTheirTabAndField)
{
    World world;
    AccountForm form = goodForm();
    GetParam().spoil(form);
    const auto fault = accountFault(world.app, form);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->Message, GetParam().message);
    EXPECT_EQ(fault->Tab, GetParam().tab);
    EXPECT_EQ(fault->Focus, GetParam().focus);
}

const QString NoName = u"Please enter a Project Name."_s;
const QString BadName = u"Invalid project name. The project name can not contain: '\\ / : * ? \" < >|'."_s;
const QString NoUrl = u"Please add an URL."_s;
const QString NoLinks = u"Please specify the number of links you want to scan."_s;
const QString NoEngine = u"Please select the engines you want to rank."_s;
const QString TooEarly =
    u"Your start date can not be earlier than today's date. Please select a valid date and try "
    "again. "_s;
const QString NoMail = u"Please enter a valid email address."_s;

// Every step is spoiled together with all behind it, so that the order shows.
void spoilMail(AccountForm &form)
{
    form.SentReport = true;
    form.Email = u"a@b"_s;
}
void spoilDate(AccountForm &form)
{
    spoilMail(form);
    form.SchedulerEnable = true;
    form.StartDate = Today.addDays(-1);
}
void spoilEngines(AccountForm &form)
{
    spoilDate(form);
    form.Engines[1].Checked = false;
}
void spoilLinks(AccountForm &form)
{
    spoilEngines(form);
    form.Links = u"abc"_s;
}
void spoilUrls(AccountForm &form)
{
    spoilLinks(form);
    form.URLs.clear();
}
void named(AccountForm &form, const QString &name)
{
    spoilUrls(form);
    form.AccountName = name;
}

INSTANTIATE_TEST_SUITE_P(
    Order, AccountFaults,
    testing::Values(
        FaultCase{"noName", [](AccountForm &f) { named(f, {}); }, NoName, AccountTab::Details,
                  AccountField::Name},
        FaultCase{"blankName", [](AccountForm &f) { named(f, u"  "_s); }, NoName, AccountTab::Details,
                  AccountField::Name},
        FaultCase{"slashInName", [](AccountForm &f) { named(f, u"a/b"_s); }, BadName, AccountTab::Details,
                  AccountField::Name},
        FaultCase{"nameOfNoFolder", [](AccountForm &f) { named(f, u".."_s); }, BadName, AccountTab::Details,
                  AccountField::Name},
        FaultCase{"nameTooLongForAFile", [](AccountForm &f) { named(f, QString(252, u'n')); }, BadName,
                  AccountTab::Details, AccountField::Name},
        FaultCase{"nameThatTheListOfProjectsCannotHold", [](AccountForm &f) { named(f, u"日本"_s); }, BadName,
                  AccountTab::Details, AccountField::Name},
        FaultCase{"noUrl", spoilUrls, NoUrl, AccountTab::Details, AccountField::URLs},
        FaultCase{"linksAreText", spoilLinks, NoLinks, AccountTab::Details, AccountField::Links},
        FaultCase{"linksAreEmpty", [](AccountForm &f) { f.Links.clear(); }, NoLinks, AccountTab::Details,
                  AccountField::Links},
        FaultCase{"moreLinksThanAProjectHolds", [](AccountForm &f) { f.Links = u"99999"_s; }, NoLinks,
                  AccountTab::Details, AccountField::Links},
        FaultCase{"noEngine", spoilEngines, NoEngine, AccountTab::Engines, AccountField::Engines},
        FaultCase{"marketAlone",
                  [](AccountForm &f) { std::swap(f.Engines[0].Checked, f.Engines[1].Checked); }, NoEngine,
                  AccountTab::Engines, AccountField::Engines},
        FaultCase{"yesterday", spoilDate, TooEarly, AccountTab::Scheduler, AccountField::StartDate},
        FaultCase{"noMail", spoilMail, NoMail, AccountTab::Report, AccountField::Email}),
    [](const auto &info) { return info.param.name; });

struct GoodCase
{
    const char *name;
    std::function<void(AccountForm &)> change;
};

class GoodAccounts : public testing::TestWithParam<GoodCase>
{
};

TEST_P(GoodAccounts, haveNoFault)
{
    World world;
    AccountForm form = goodForm();
    GetParam().change(form);
    EXPECT_FALSE(accountFault(world.app, form));
    EXPECT_EQ(world.takeLog(), QString());
}

INSTANTIATE_TEST_SUITE_P(
    Forms, GoodAccounts,
    testing::Values(GoodCase{"asItIs", [](AccountForm &) {}},
                    GoodCase{"typedLinks", [](AccountForm &f) { f.Links = u"35"_s; }},
                    GoodCase{"yesterdayWithoutScheduler",
                             [](AccountForm &f) { f.StartDate = Today.addDays(-1); }},
                    GoodCase{"schedulerFromToday", [](AccountForm &f) { f.SchedulerEnable = true; }},
                    GoodCase{"anyCopyAddress",
                             [](AccountForm &f) {
                                 f.SentReport = true;
                                 f.Email = u"ab@cd.example"_s;
                                 f.CC = u"nobody"_s;
                             }},
                    GoodCase{"badAddressWithoutReport", [](AccountForm &f) { f.Email = u"a@b"_s; }},
                    GoodCase{"marketWhoseKeyHoldsEngine",
                             [](AccountForm &f) {
                                 f.Engines = {{u"RootMy engines"_s, u"My engines"_s, {}, true}};
                             }}),
    [](const auto &info) { return info.param.name; });

TEST(AccountForm, logsAStartDateThatHasGoneBy)
{
    World world;
    AccountForm form = goodForm();
    spoilDate(form);
    accountFault(world.app, form);
    EXPECT_EQ(world.takeLog(),
              u"Please select a valid date: SelectedDate=11/14/2026, TodayDate=11/15/2026"_s);
}

TEST(AccountForm, assignsEverything)
{
    World world;
    AccountForm form = accountForm(world.app, fullAccount(world));
    form.AccountName = u" Shop "_s;
    form.URLs = {{u"www.site.example"_s, false}, {u"other.example"_s, true}};
    form.Engines = goodForm().Engines;
    clsAccount account(world.app);
    AssignAccountProperty(world.app, form, account);
    EXPECT_EQ(account.Name, u"Shop"_s);
    EXPECT_TRUE(account.SchedulerEnable && account.SentReport);
    EXPECT_EQ(account.ReportFormat, 1);
    EXPECT_EQ(account.Frequency, 2);
    EXPECT_EQ(account.StartDate, QDate(2026, 12, 24));
    EXPECT_EQ(account.StartTime, u"09:30:15 PM"_s);
    EXPECT_EQ(account.NextLookup, account.StartDate);
    EXPECT_EQ(account.LinksNum, 35);
    EXPECT_EQ(account.ReportTo, u"me@site.example"_s);
    EXPECT_EQ(account.CC, u"you@site.example"_s);
    EXPECT_EQ(account.Subject, u"Positions"_s);
    EXPECT_TRUE(account.EngineSummaryReport && account.KeywordURL && account.KeywordSummaryReport);
    EXPECT_TRUE(account.RankingDetailReport && account.ExcludeUnRanking && account.TopPosOnly);
    ASSERT_TRUE(account.URLs && account.Engine);
    EXPECT_EQ(account.URLs->at(u"WWW.site.example"_s), (clsURL{u"www.site.example"_s, false}));
    EXPECT_EQ(account.URLs->at(2), (clsURL{u"other.example"_s, true}));
    EXPECT_EQ(account.Engine->Count(), 1);
    EXPECT_EQ(account.Engine->at(u"alpha"_s), u"Alpha"_s);
}

TEST(AccountForm, restartsTheScheduleWhetherOrNotAnythingChanged)
{
    World world;
    clsAccount account = fullAccount(world);
    account.NextLookup = QDate(2027, 1, 24);
    AccountForm form = accountForm(world.app, account);
    AssignAccountProperty(world.app, form, account);
    EXPECT_EQ(account.NextLookup, QDate(2026, 12, 24));
}

TEST(AccountForm, takesQuarterlyForNoFrequencyAndKeepsTheFormatForNone)
{
    World world;
    clsAccount account(world.app);
    account.ReportFormat = 7;
    AccountForm form = goodForm();
    AssignAccountProperty(world.app, form, account);
    EXPECT_EQ(account.Frequency, 3);
    EXPECT_EQ(account.ReportFormat, 7);
}

struct LinksCase
{
    const char *name;
    QString text;
    qint16 links;
};

class AccountLinks : public testing::TestWithParam<LinksCase>
{
};

TEST_P(AccountLinks, areTheLeadingNumberRounded)
{
    World world;
    clsAccount account(world.app);
    AccountForm form = goodForm();
    form.Links = GetParam().text;
    AssignAccountProperty(world.app, form, account);
    EXPECT_EQ(account.LinksNum, GetParam().links);
}

INSTANTIATE_TEST_SUITE_P(Texts, AccountLinks,
                         testing::Values(LinksCase{"whole", u"35"_s, 35}, LinksCase{"half", u"12.5"_s, 12},
                                         LinksCase{"oddHalf", u"13.5"_s, 14},
                                         LinksCase{"comma", u"1,240"_s, 1}, LinksCase{"text", u"abc"_s, 0}),
                         [](const auto &info) { return info.param.name; });

TEST(AccountForm, logsWhatCannotBeAssignedAndKeepsWhatStandsBehindIt)
{
    World world;
    clsAccount account(world.app);
    account.Subject = u"old"_s;
    AccountForm form = goodForm();
    form.Subject = u"new"_s;
    form.Engines = {{u"RootEngine"_s, u"Alpha"_s, {}, true},
                    {u"EngineAlpha"_s, u"Alpha"_s, u"RootEngine"_s, true}};
    AssignAccountProperty(world.app, form, account);
    EXPECT_TRUE(world.takeLog().startsWith(u"frmAccount_AssignAccountProperty error: This key is already"_s));
    EXPECT_TRUE(account.URLs);
    EXPECT_FALSE(account.Engine);
    EXPECT_EQ(account.Subject, u"old"_s);
}

TEST(AccountForm, replacesTheWholeMarkingByTheSelection)
{
    std::vector<clsURL> urls{{u"a"_s, true}, {u"b"_s, false}, {u"c"_s, true}};
    setCompetitors(urls, {false, true, true});
    EXPECT_EQ(urls, (std::vector<clsURL>{{u"a"_s, false}, {u"b"_s, true}, {u"c"_s, true}}));
}

} // namespace
} // namespace sondrel
