// Pages of installed documentation: from disk, and over HTTP, they give the same reports.
#include "lookup/curl_http_control.h"
#include "lookup/frmHTTP.h"
#include "optimizer/optimizer_run.h"
#include "optimizer/page_address.h"
#include "tests/optimizer/plain_scan.h"
#include "tests/support/loopback_server.h"
#include "tests/support/world.h"

#include <gtest/gtest.h>

#include <QDirIterator>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

constexpr int FewestPages = 30;

// Of packages that the program or its tests need anyway.
QStringList documentationPages()
{
    QStringList pages;
    for (const QString &package : {u"libffi8"_s, u"python3"_s, u"xapian-omega"_s, u"python3-aiosmtpd"_s}) {
        QDirIterator files(u"/usr/share/doc/"_s + package, {u"*.html"_s}, QDir::Files | QDir::Readable,
                           QDirIterator::Subdirectories);
        while (files.hasNext())
            pages.append(files.next());
    }
    pages.sort();
    return pages;
}

class NoView final : public OptimizerView
{
public:
    void showProgress(int) override {}
    void showStatus(const QString &) override {}
};

class PageKeeper final : public HttpClient
{
public:
    void ProcessData(int, const QByteArray &page) override { body = page; }
    void setDisconnected(bool) override {}

    std::optional<QByteArray> body;
};

class RealPages : public testing::Test
{
protected:
    RealPages()
        : transport([this](QStringView text) { return app.toBytes(text); }),
          app(world.app.AppPath, world.app.SystemDirectory,
              Doors{world.clock, world.desktop, world.settings, transport}, world.app.locale),
          http(app)
    {
        server.handler = [](const LoopbackServer::Request &request, const LoopbackServer::Peer &peer) {
            QFile file(QString::fromUtf8(request.target));
            peer.send(file.open(QIODevice::ReadOnly) ? LoopbackServer::response(file.readAll())
                                                     : LoopbackServer::response("none", {}, "404 Not Found"));
        };
    }

    void SetUp() override
    {
        pages = documentationPages();
        if (pages.size() < FewestPages)
            GTEST_SKIP() << "this system leaves the documentation of its packages out";
    }

    QString fetched(const QString &address)
    {
        PageKeeper keeper;
        http.Object = &keeper;
        http.Connect1(address);
        EXPECT_TRUE(waitUntil([&] { return keeper.body.has_value(); }));
        http.Object = nullptr;
        return app.fromBytes(keeper.body.value_or(QByteArray()));
    }

    // The report without the address of the page.
    QString report(const QString &address, const QString &text)
    {
        OptimizerRun run{address, text, {}, {}, {}};
        EXPECT_EQ(processPage(app, run, view), OptimizerOutcome::Done) << address.toStdString();
        EXPECT_EQ(app.files.readAll(run.file), app.toBytes(run.document));
        return run.document.replace(address, u"[address]"_s);
    }

    World world;
    LoopbackServer server;
    CurlTransport transport;
    ApplicationContext app;
    frmHTTP http;
    NoView view;
    QStringList pages;
};

TEST_F(RealPages, giveTheSameReportsFromDiskAndOverHttp)
{
    for (const QString &page : pages) {
        const QString address = server.url(page);
        const QString local = report(page, localPageText(app, page));
        EXPECT_EQ(report(address, fetched(address)), local) << page.toStdString();
        EXPECT_TRUE(local.startsWith(u"<html><head>\r\n<title>Web Site Optimizer for: [address]</title>"_s));
    }
    EXPECT_EQ(world.takeLog(), QString());
    EXPECT_TRUE(world.desktop.boxes.empty());
    EXPECT_EQ(world.desktop.opened.size(), 2U * static_cast<std::size_t>(pages.size()));
}

TEST_F(RealPages, areCutAsThePlainScanCutsThem)
{
    for (const QString &page : pages) {
        const QString text = localPageText(app, page);
        EXPECT_EQ(retrieveMetaTag(app, text), plainScan(text)) << page.toStdString();
    }
}

} // namespace
} // namespace sondrel
