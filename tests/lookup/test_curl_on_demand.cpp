#include "lookup/curl_http_control.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace sondrel;

namespace {

bool isLoaded()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read what the process has loaded");
    return maps.readAll().contains("libcurl");
}

TEST(CurlOnDemand, isNotLoadedBeforeTheFirstPool)
{
    CurlTransport transport([](QStringView text) { return text.toUtf8(); });
    EXPECT_FALSE(isLoaded());
    transport.createPool();
    EXPECT_TRUE(isLoaded());
}

} // namespace
