#include "lookup/frmHTTP.h"
#include "probe/operations.h"

#include <QEventLoop>

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

namespace {

// Keeps the page and ends the loop that waits for it.
class PageKeeper final : public HttpClient
{
public:
    void ProcessData(int received, const QByteArray &page) override
    {
        status = received;
        body = page;
        loop.quit();
    }
    void setDisconnected(bool) override { loop.quit(); }

    QEventLoop loop;
    int status = 0;
    QByteArray body;
};

QJsonObject fetch(const Call &call)
{
    PageKeeper keeper;
    frmHTTP http(call.app);
    http.Object = &keeper;
    http.SubmitMethod = call.text(1);
    http.PostData = call.text(2);
    http.Connect1(call.text(0));
    keeper.loop.exec();
    QJsonObject result = answer(call.app.fromBytes(keeper.body));
    result.insert(u"status"_s, keeper.status);
    return result;
}

} // namespace

void addTransferOperations(Operations &operations)
{
    operations.insert(u"IsDotAddress"_s,
                      [](const Call &call) { return answer(frmHTTP::IsDotAddress(call.text(0))); });
    operations.insert(u"GetFileFromURL"_s,
                      [](const Call &call) { return answer(frmHTTP::GetFileFromURL(call.text(0))); });
    operations.insert(u"Fetch"_s, fetch);
}

} // namespace sondrel::probe
