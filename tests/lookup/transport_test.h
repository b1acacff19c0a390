// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "lookup/curl_http_control.h"
#include "tests/support/loopback_server.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace sondrel {

/// A loopback server and a pool of real controls.
class TransportTest : public testing::Test
{
protected:
    TransportTest() : transport([](QStringView text) { return text.toLatin1(); })
    {
        pool = transport.createPool();
        control = addControl();
    }

    /// A further control of the pool, which counts its ends.
    HttpControl *addControl()
    {
        controls.push_back(pool->createControl());
        HttpControl *added = controls.back().get();
        added->UserAgent = QStringLiteral("Test/1.0");
        QObject::connect(added, &HttpControl::stateChanged, [this] { ++ended; });
        return added;
    }

    bool waitForEnds(int count)
    {
        return waitUntil([this, count] { return ended >= count; });
    }

    /// Gets a page of the server with the first control and waits for it.
    QByteArray get(const QString &path) { return getAddress(server.url(path)); }
    QByteArray getAddress(const QString &address)
    {
        const int before = ended;
        control->Url = address;
        control->Get();
        EXPECT_TRUE(waitForEnds(before + 1));
        EXPECT_EQ(control->State(), HttpControl::Closed);
        return control->Body();
    }

    /// Every request gets these bytes, then the end of its connection.
    void answerAndClose(const QByteArray &bytes)
    {
        server.handler = [bytes](const LoopbackServer::Request &, const LoopbackServer::Peer &peer) {
            peer.send(bytes);
            peer.close();
        };
    }
    void answer(const QByteArray &bytes)
    {
        server.handler = [bytes](const LoopbackServer::Request &, const LoopbackServer::Peer &peer) {
            peer.send(bytes);
        };
    }

    LoopbackServer server;
    CurlTransport transport;
    std::unique_ptr<HttpPool> pool;
    std::vector<std::unique_ptr<HttpControl>> controls;
    HttpControl *control;
    int ended = 0;
};

} // namespace sondrel
