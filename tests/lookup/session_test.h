// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "lookup/lookup_session.h"
#include "tests/support/lookup_world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace sondrel {

/// A session on the scripted transport that keeps what it tells.
class Session : public testing::Test
{
protected:
    Session()
    {
        world.writeKeywords({QStringLiteral("boots"), QStringLiteral("travel"), QStringLiteral("tea")});
        make();
    }

    void make()
    {
        session = std::make_unique<LookupSession>(world.app);
        session->Account = world.account;
        session->EngineName = QStringLiteral("Finder");
        session->open();
        using Panel = LookupSession::Panel;
        QObject::connect(session.get(), &LookupSession::Completed, [this] { events.push_back("Completed"); });
        QObject::connect(session.get(), &LookupSession::rowsChanged, [this] { events.push_back("rows"); });
        QObject::connect(session.get(), &LookupSession::stateChanged, [this] { events.push_back("state"); });
        QObject::connect(session.get(), &LookupSession::stopping, [this] { events.push_back("stopping"); });
        QObject::connect(session.get(), &LookupSession::ended,
                         [this](bool finished) { events.push_back(finished ? "finished" : "stopped"); });
        QObject::connect(
            session.get(), &LookupSession::panelChanged, [this](Panel panel, const QString &text) {
                panels.push_back((panel == Panel::First ? "first: " : "description: ") + text.toStdString());
            });
    }

    void answerAll(const QByteArray &page = LookupWorld::page({"http://site.example/"}))
    {
        for (std::size_t i = answered; i < world.http.requests.size(); ++i) {
            answered = i + 1;
            world.http.answer(i, page);
        }
    }

    static std::vector<SelectedRow> rows(const QStringList &keywords)
    {
        std::vector<SelectedRow> result;
        for (const QString &keyword : keywords)
            result.push_back({keyword, true});
        return result;
    }

    QStringList asked() const
    {
        QStringList urls;
        for (const auto &request : world.http.requests)
            urls.append(request.url);
        return urls;
    }

    LookupWorld world;
    std::unique_ptr<LookupSession> session;
    std::vector<std::string> events;
    std::vector<std::string> panels;
    std::size_t answered = 0;
};

} // namespace sondrel
