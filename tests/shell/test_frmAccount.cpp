#include "tests/shell/account_dialog_test.h"

#include <QDateEdit>
#include <QLabel>
#include <QTimeEdit>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

TEST_F(AccountDialog, hasFourTabsAndOpensTheFirst)
{
    tabs().setCurrentIndex(3);
    dialog.show();
    QStringList captions;
    for (int tab = 0; tab < tabs().count(); ++tab)
        captions.append(tabs().tabText(tab));
    EXPECT_EQ(captions.join(u' '), u"Details Engines Scheduler Report"_s);
    EXPECT_EQ(tabs().currentIndex(), 0);
}

struct CaptionCase
{
    const char *name;
    QStringView caption;
};

TEST_F(AccountDialog, labelsItsFields)
{
    const CaptionCase cases[] = {
        {"txtAccountName", u"Project name:"},
        {"lvwURLs", u"Your domain(s) to be searched:"},
        {"cboLinks", u"Number of matches links to scan:"},
        {"dtStartDate", u"Starting date:"},
        {"dtpScheduleTimer", u"Starting time:"},
        {"txtEmail", u"Send  to:"},
        {"txtCC", u"CC:"},
        {"txtSubject", u"Subject:"},
    };
    for (const CaptionCase &field : cases) {
        const auto &widget = control<QWidget>(dialog, QString::fromLatin1(field.name));
        QString caption;
        for (const QLabel *label : dialog.findChildren<QLabel *>()) {
            if (label->buddy() == &widget)
                caption = label->text();
        }
        EXPECT_EQ(caption, field.caption.toString()) << field.name;
        EXPECT_FALSE(widget.accessibleName().isEmpty()) << field.name;
    }
}

TEST_F(AccountDialog, captionsItsButtons)
{
    const CaptionCase cases[] = {
        {"cmdAdd", u"&Add URL"},
        {"cmdDelete", u"&Delete"},
        {"cmdCompetitor", u"Set As Competitor"},
        {"chkSchedulerEnable", u"Enable scheduler"},
        {"optDate0", u"Weekly"},
        {"optDate1", u"Fortnight"},
        {"optDate2", u"Monthly"},
        {"optDate3", u"Quarterly"},
        {"chkSentReport", u"&Send ranking report by email when complete"},
        {"optReportFormat0", u"Text"},
        {"optReportFormat1", u"HTML"},
        {"chkEngineSummary", u"Engine->Keyword summary report"},
        {"chkKeywordURL", u"Keyword->URL summary report"},
        {"chkKeywordSummary", u"Keyword summary report"},
        {"chkRankingDetails", u"Ranking details report"},
        {"chkRemoveUnRanking", u"Do not include non-ranking keywords in the report"},
        {"chkTopPosOnly", u"Display top position only(don't show duplicate position)"},
        {"cmdOK", u"OK"},
        {"cmdCancel", u"Cancel"},
    };
    for (const CaptionCase &button : cases)
        EXPECT_EQ(control<QAbstractButton>(dialog, QString::fromLatin1(button.name)).text(),
                  button.caption.toString());
    EXPECT_EQ(urls().headerItem()->text(0), u"URLs"_s);
}

TEST_F(AccountDialog, opensEmptyForANewProject)
{
    dialog.show();
    EXPECT_EQ(text(u"txtAccountName"_s).text(), QString());
    EXPECT_FALSE(text(u"txtAccountName"_s).isReadOnly());
    EXPECT_EQ(control<QComboBox>(dialog, u"cboLinks"_s).currentText(), u"10"_s);
    EXPECT_EQ(control<QComboBox>(dialog, u"cboLinks"_s).count(), 10);
    EXPECT_EQ(control<QDateEdit>(dialog, u"dtStartDate"_s).date(), Today);
    EXPECT_EQ(urls().topLevelItemCount(), 0);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(AccountDialog, showsAnExistingProjectWithItsNameLocked)
{
    account->SchedulerEnable = account->SentReport = true;
    account->EngineSummaryReport = account->KeywordURL = account->KeywordSummaryReport = true;
    account->RankingDetailReport = account->ExcludeUnRanking = account->TopPosOnly = true;
    open();
    EXPECT_EQ(text(u"txtAccountName"_s).text(), u"Shop"_s);
    EXPECT_TRUE(text(u"txtAccountName"_s).isReadOnly());
    EXPECT_EQ(control<QComboBox>(dialog, u"cboLinks"_s).currentText(), u"35"_s);
    EXPECT_EQ(shownUrls(), u"www.site.example other.example third.example"_s);
    EXPECT_EQ(competitors(), u"other.example"_s);
    EXPECT_TRUE(checked(u"optDate2"_s) && checked(u"optReportFormat1"_s));
    EXPECT_EQ(control<QDateEdit>(dialog, u"dtStartDate"_s).date(), Today.addDays(3));
    EXPECT_EQ(control<QTimeEdit>(dialog, u"dtpScheduleTimer"_s).time(), QTime(21, 30));
    EXPECT_EQ(text(u"txtEmail"_s).text(), u"ab@cd.example"_s);
    EXPECT_EQ(text(u"txtCC"_s).text(), u"copy@cd.example"_s);
    EXPECT_EQ(text(u"txtSubject"_s).text(), u"Positions"_s);
    for (const auto &box :
         {u"chkSchedulerEnable"_s, u"chkSentReport"_s, u"chkEngineSummary"_s, u"chkKeywordURL"_s,
          u"chkKeywordSummary"_s, u"chkRankingDetails"_s, u"chkRemoveUnRanking"_s, u"chkTopPosOnly"_s})
        EXPECT_TRUE(checked(box)) << box.toStdString();
}

TEST_F(AccountDialog, buildsAnOpenTreeOfMarketsWithSortedEngines)
{
    open();
    ASSERT_EQ(engines().topLevelItemCount(), 2);
    const QTreeWidgetItem &global = *engines().topLevelItem(0);
    EXPECT_EQ(nodeKey(&global), u"RootGlobal"_s);
    EXPECT_TRUE(global.isExpanded());
    ASSERT_EQ(global.childCount(), 2);
    EXPECT_EQ(nodeKey(global.child(0)), u"EngineAlpha"_s);
    EXPECT_EQ(global.child(1)->text(0), u"Zeta"_s);
    EXPECT_EQ(engines().topLevelItem(1)->text(0), u"China"_s);
    EXPECT_EQ(engines().currentItem(), &global);
}

TEST_F(AccountDialog, checksTheProjectsEnginesOnly)
{
    open();
    const QTreeWidgetItem &global = *engines().topLevelItem(0);
    EXPECT_EQ(global.checkState(0), Qt::Unchecked);
    EXPECT_EQ(global.child(0)->checkState(0), Qt::Checked);
    EXPECT_EQ(global.child(1)->checkState(0), Qt::Unchecked);
}

TEST_F(AccountDialog, copiesAMarketsCheckToItsEngines)
{
    open();
    QTreeWidgetItem &global = *engines().topLevelItem(0);
    clickCheckBox(&global);
    EXPECT_EQ(global.checkState(0), Qt::Checked);
    EXPECT_EQ(global.child(0)->checkState(0), Qt::Checked);
    EXPECT_EQ(global.child(1)->checkState(0), Qt::Checked);
    EXPECT_EQ(engines().topLevelItem(1)->child(0)->checkState(0), Qt::Unchecked);
}

TEST_F(AccountDialog, leavesMarketAndOthersWhenOneEngineIsUnchecked)
{
    open();
    QTreeWidgetItem &global = *engines().topLevelItem(0);
    clickCheckBox(&global);
    clickCheckBox(global.child(0));
    EXPECT_EQ(global.child(0)->checkState(0), Qt::Unchecked);
    EXPECT_EQ(global.child(1)->checkState(0), Qt::Checked);
    EXPECT_EQ(global.checkState(0), Qt::Checked);
}

TEST_F(AccountDialog, checksAMarketBySpace)
{
    open();
    toFront(1);
    QTest::keyClick(&engines(), Qt::Key_Space);
    EXPECT_EQ(engines().topLevelItem(0)->child(1)->checkState(0), Qt::Checked);
}

TEST_F(AccountDialog, enablesTheScheduleByItsCheckBox)
{
    open();
    toFront(2);
    for (const bool on : {true, false}) {
        click(dialog, u"chkSchedulerEnable"_s);
        for (const auto &name : {u"optDate0"_s, u"optDate1"_s, u"optDate2"_s, u"optDate3"_s, u"dtStartDate"_s,
                                 u"dtpScheduleTimer"_s})
            EXPECT_EQ(isEnabled(dialog, name), on) << name.toStdString();
    }
}

TEST_F(AccountDialog, enablesTheReportByItsCheckBox)
{
    open();
    toFront(3);
    for (const bool on : {true, false}) {
        click(dialog, u"chkSentReport"_s);
        for (const auto &name :
             {u"optReportFormat0"_s, u"optReportFormat1"_s, u"txtEmail"_s, u"txtCC"_s, u"txtSubject"_s,
              u"chkEngineSummary"_s, u"chkKeywordURL"_s, u"chkKeywordSummary"_s, u"chkRankingDetails"_s})
            EXPECT_EQ(isEnabled(dialog, name), on) << name.toStdString();
        EXPECT_TRUE(isEnabled(dialog, u"chkRemoveUnRanking"_s) && isEnabled(dialog, u"chkTopPosOnly"_s));
    }
}

TEST_F(AccountDialog, hasNothingToSetForWhatIsSwitchedOff)
{
    open();
    EXPECT_FALSE(isEnabled(dialog, u"dtStartDate"_s));
    EXPECT_FALSE(isEnabled(dialog, u"txtEmail"_s));
}

TEST_F(AccountDialog, isCancelledByItsButtonAndByItsCloseBox)
{
    open();
    click(dialog, u"cmdCancel"_s);
    EXPECT_TRUE(dialog.Cancelled());
    EXPECT_FALSE(dialog.isVisible());
    dialog.show();
    dialog.close();
    EXPECT_TRUE(dialog.Cancelled());
}

class NewAccount : public AccountDialog
{
protected:
    void typeProject(const QString &name)
    {
        dialog.show();
        type(dialog, u"txtAccountName"_s, name);
        whenModal<frmURLs>([](frmURLs &picker) {
            type(picker, u"txtURLs"_s, u"www.site.example"_s);
            QTest::keyClick(&picker, Qt::Key_Return);
            QTest::keyClick(&picker, Qt::Key_Return);
        });
        click(dialog, u"cmdAdd"_s);
        type(dialog, u"cboLinks"_s, u"35"_s);
        clickCheckBox(engines().topLevelItem(0)->child(0));
        click(dialog, u"cmdOK"_s);
    }
};

TEST_F(NewAccount, isMadeByTyping)
{
    typeProject(u"My shop"_s);
    EXPECT_FALSE(dialog.Cancelled());
    EXPECT_FALSE(dialog.isVisible());
    clsAccount loaded(world.app);
    loaded.Name = u"My shop"_s;
    loaded.GetSettings();
    EXPECT_EQ(loaded.LinksNum, 35);
    ASSERT_TRUE(loaded.URLs && loaded.Engine);
    EXPECT_EQ(loaded.URLs->at(1), (clsURL{u"www.site.example"_s, false}));
    EXPECT_EQ(loaded.Engine->at(1), u"Alpha"_s);
    EXPECT_EQ(loaded.StartDate, Today);
    EXPECT_EQ(loaded.StartTime, u"12:00:00 PM"_s);
    EXPECT_EQ(world.takeLog(), QString());
}

TEST_F(NewAccount, asksBeforeItReplacesAProjectOfItsName)
{
    const QByteArray old = "[Schedler]\r\nNumLink=70\r\n";
    world.write(u"Projects/My shop/My shop.dat"_s, old);
    world.desktop.answer = MessageAnswer::No;
    typeProject(u" my SHOP "_s);
    ASSERT_EQ(world.desktop.boxes.size(), 1U);
    EXPECT_EQ(world.desktop.boxes[0].buttons, MessageButtons::YesNo);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(tabs().currentIndex(), 0);
    EXPECT_EQ(world.read(u"Projects/My shop/My shop.dat"_s), old);

    world.desktop.answer = MessageAnswer::Yes;
    click(dialog, u"cmdOK"_s);
    EXPECT_FALSE(dialog.Cancelled());
    EXPECT_TRUE(world.read(u"Projects/My shop/My shop.dat"_s).contains("NumLink=35"));
}

TEST_F(AccountDialog, savesItsControlsOnOK)
{
    open();
    toFront(2);
    click(dialog, u"chkSchedulerEnable"_s);
    click(dialog, u"optDate0"_s);
    control<QDateEdit>(dialog, u"dtStartDate"_s).setDate(Today);
    toFront(3);
    click(dialog, u"chkSentReport"_s);
    click(dialog, u"optReportFormat0"_s);
    type(dialog, u"txtSubject"_s, u"News"_s);
    click(dialog, u"chkTopPosOnly"_s);
    click(dialog, u"cmdOK"_s);
    EXPECT_FALSE(dialog.Cancelled());
    EXPECT_TRUE(account->SchedulerEnable && account->SentReport && account->TopPosOnly);
    EXPECT_EQ(account->Frequency, 0);
    EXPECT_EQ(account->NextLookup, Today);
    EXPECT_EQ(account->ReportFormat, 0);
    EXPECT_EQ(account->Subject, u"News"_s);
    EXPECT_TRUE(account->URLs->at(u"other.example"_s).IsCompetitor);
    EXPECT_TRUE(world.has(u"Projects/Shop/Shop.dat"_s));
}

TEST_F(AccountDialog, takesWhatIsPasted)
{
    dialog.show();
    paste(dialog, u"txtAccountName"_s, u"  My shop\r\n"_s);
    whenModal<frmURLs>([](frmURLs &picker) {
        paste(picker, u"txtURLs"_s, u" http://www.site.example\r\n"_s);
        QTest::keyClick(&picker, Qt::Key_Return);
        QTest::keyClick(&picker, Qt::Key_Return);
    });
    click(dialog, u"cmdAdd"_s);
    clickCheckBox(engines().topLevelItem(0)->child(0));
    toFront(3);
    click(dialog, u"chkSentReport"_s);
    paste(dialog, u"txtEmail"_s, u"\tann@site.example\r\nbob@site.example\r\n"_s);
    paste(dialog, u"txtCC"_s, u" cy@site.example "_s);
    paste(dialog, u"txtSubject"_s, u"Weekly\nreport\n"_s);
    click(dialog, u"cmdOK"_s);
    EXPECT_TRUE(world.desktop.boxes.empty());
    EXPECT_EQ(account->Name, u"My shop"_s);
    EXPECT_TRUE(account->URLs->HasKey(u"www.site.example"_s));
    EXPECT_EQ(account->ReportTo, u"ann@site.example, bob@site.example"_s);
    EXPECT_EQ(account->CC, u"cy@site.example"_s);
    EXPECT_EQ(account->Subject, u"Weekly report"_s);
}

} // namespace
} // namespace sondrel
