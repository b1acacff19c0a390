// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "engines/clsEngine.h"
#include "project/clsAccount.h"
#include "tests/support/bad_files.h"

#include <gtest/gtest.h>

namespace sondrel {

/// A program with three engines and a project "Garden" that is not on disk yet.
class ProjectWorld : public testing::Test
{
protected:
    ProjectWorld() : engines(world.app), project(world.app)
    {
        world.writeEngineData("[Markets]\n1=Global\n[Global]\n1=Finder\n2=Perla\n3=Hunt, Inc.\n");
        engines.loadEngineData();
        world.app.EngineCatalogue = &engines;
        world.takeLog();
        project.Name = QStringLiteral("Garden");
    }

    void addURL(const QString &url, bool isCompetitor = false)
    {
        if (!project.URLs)
            project.URLs.emplace();
        project.URLs->Add({url, isCompetitor}, url);
    }

    void addEngine(const QString &name)
    {
        if (!project.Engine)
            project.Engine.emplace();
        project.Engine->Add(name, name);
    }

    QStringList urls() const
    {
        QStringList result;
        for (const clsURL &url : project.URLs.value())
            result.append((url.IsCompetitor ? u'!' : u' ') + url.URL);
        return result;
    }

    QStringList engineNames() const
    {
        QStringList result;
        for (const QString &name : project.Engine.value())
            result.append(name);
        return result;
    }

    const QString file = QStringLiteral("Projects/Garden/Garden.dat");
    World world;
    clsEngine engines;
    clsAccount project;
};

} // namespace sondrel
