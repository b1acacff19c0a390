// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "automation/scheduler.h"
#include "tests/support/lookup_world.h"

#include <QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace sondrel {

/// A main window of plain values.
class PlainView final : public SchedulerView
{
public:
    explicit PlainView(ApplicationContext &app) : m_app(app) {}

    QStringList names;
    std::shared_ptr<clsAccount> account;
    QString engine;
    std::unique_ptr<LookupSession> session;
    QStringList nodes;

    std::vector<std::shared_ptr<clsAccount>> refreshed;
    QString autoRun = QStringLiteral("as it was");
    QList<int> opened;
    /// The session that a node opens has been made.
    std::function<void(LookupSession &)> onOpened;
    /// When set, asking for the projects throws Failure with this text; likewise the tree, the panel,
    /// the session.
    QString failProjects;
    QString failNodes;
    QString failAutoRun;
    QString failShown;

    QStringList projects() const override
    {
        check(failProjects);
        return names;
    }
    std::shared_ptr<clsAccount> CurrentAccount() const override { return account; }
    QString CurrentEngine() const override { return engine; }
    LookupSession *shownSession() const override
    {
        check(failShown);
        return session.get();
    }
    void showResults(const std::shared_ptr<clsAccount> &shown) override
    {
        refreshed.push_back(shown);
        account = shown;
        session->Account = shown;
        session->open();
    }
    void showAutoRun(const QString &text) override
    {
        check(failAutoRun);
        autoRun = text;
    }
    QStringList nodeKeys() const override
    {
        check(failNodes);
        return nodes;
    }
    void openNode(int position) override
    {
        opened.append(position);
        show(nodes.at(position - 1).mid(6)); // behind "Engine"
        if (onOpened)
            onOpened(*session);
    }

    /// Shows the project on an engine.
    void show(const QString &engineName)
    {
        engine = engineName;
        if (!session)
            session = std::make_unique<LookupSession>(m_app);
        session->Account = account;
        session->EngineName = engineName;
        session->open();
    }

private:
    static void check(const QString &failure)
    {
        if (!failure.isEmpty())
            throw Failure(failure);
    }

    ApplicationContext &m_app;
};

/// A scheduler in a world where every request is answered with a page that lists the tracked site.
class SchedulerTest : public testing::Test
{
protected:
    SchedulerTest() : reports(world.app), view(world.app), scheduler(world.app, view, reports)
    {
        reports.ResetReporter();
        world.write(QStringLiteral("menutemplate.html"), "<a href=enginesummary.html>[AccountName]</a>");
        world.http.autoAnswer = [](const ScriptedHttp::Request &) {
            return LookupWorld::page({"http://site.example/"});
        };
        QObject::connect(&scheduler, &Scheduler::runFinished,
                         [this](const QString &project) { finished.append(project); });
    }

    /// A project as its dialog would have saved it, known to the view.
    std::shared_ptr<clsAccount> addProject(const QString &name, const QStringList &engines,
                                           const std::function<void(clsAccount &)> &change = {})
    {
        auto project = std::make_shared<clsAccount>(world.app);
        project->Name = name;
        project->LinksNum = 1;
        project->SchedulerEnable = true;
        project->NextLookup = world.clock.today();
        project->StartTime = QStringLiteral("09:00:00 AM");
        project->URLs.emplace();
        project->URLs->Add({QStringLiteral("site.example"), false}, QStringLiteral("site.example"));
        project->Engine.emplace();
        for (const QString &engineName : engines)
            project->Engine->Add(engineName, engineName);
        if (change)
            change(*project);
        project->SaveSettings();
        world.write(QStringLiteral("Projects/%1/Keywords.dat").arg(name), "shoes;-1\r\nboots;-1\r\n");
        view.names.append(name);
        world.takeLog();
        return project;
    }

    /// Passes time and lets everything happen that is to happen in it.
    void pass(qint64 milliseconds)
    {
        for (qint64 done = 0; done < milliseconds; done += 100) {
            world.clock.advance(100);
            settle();
        }
    }
    static void settle()
    {
        for (int i = 0; i < 10; ++i)
            QCoreApplication::processEvents();
    }

    QDate nextLookup(const QString &name)
    {
        clsAccount stored(world.app);
        stored.Name = name;
        stored.GetSettings();
        return stored.NextLookup;
    }

    LookupWorld world;
    ReportSet reports;
    PlainView view;
    Scheduler scheduler;
    QStringList finished;
};

} // namespace sondrel
