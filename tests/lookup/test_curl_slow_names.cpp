#include "tests/lookup/transport_test.h"

#include <QSemaphore>

#include <dlfcn.h>
#include <netdb.h>

#include <cstring>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

constexpr auto SlowName = "slow.invalid";
constexpr int Patience = 5'000; // ms, of the name server's customer

QSemaphore asked;
QSemaphore nameServer;
QSemaphore left;
QStringList warnings;

} // namespace

// The name server of one host is out of reach.
extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char *host, const char *service,
                                                                  const addrinfo *hints, addrinfo **result)
{
    if (host && std::strcmp(host, SlowName) == 0) {
        asked.release();
        nameServer.tryAcquire(1, Patience);
        left.release();
        return EAI_AGAIN;
    }
    using Function = decltype(getaddrinfo);
    static auto *const real = reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    return real(host, service, hints, result);
}

namespace {

class SlowNames : public TransportTest
{
protected:
    SlowNames()
    {
        warnings.clear();
        qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &text) { warnings.append(text); });
        control->Url = u"http://%1/"_s.arg(QLatin1StringView(SlowName));
        control->Get();
        EXPECT_TRUE(waitUntil([] { return asked.tryAcquire(); }));
    }
    ~SlowNames() override
    {
        qInstallMessageHandler(nullptr);
        nameServer.release();
        EXPECT_TRUE(left.tryAcquire(1, Patience));
    }
};

} // namespace

TEST_F(SlowNames, areNotWaitedForWhenATransferIsCutOff)
{
    control->Abort();
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_EQ(warnings, QStringList()); // of a closed socket that is still being watched
    EXPECT_EQ(left.available(), 0);
    EXPECT_EQ(control->Body(), QByteArray());
}

TEST_F(SlowNames, areNotWaitedForWhenThePoolGoes)
{
    controls.clear();
    pool.reset();
    EXPECT_EQ(left.available(), 0);
}
