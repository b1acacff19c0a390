#include "lookup/frmRanking.h"

#include "core/text_fold.h"

#include <QPointer>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int ConnectInterval = 100;
constexpr int CancelInterval = 800;

enum ErrorCode : int { NoError = 0, TimedOut = 10200, InvalidConnections = 10300 };

} // namespace

struct frmRanking::Slot
{
    QString URL;
    QString SubmitMethod;
    QByteArray Data;
    QString PostData;
    SlotStatus Status = SlotStatus::Running;
    std::unique_ptr<HttpControl> Http1;
    std::unique_ptr<ClockTimer> TmrConnect;
    std::unique_ptr<ClockTimer> tmrHttpTimeout;
};

frmRanking::frmRanking(ApplicationContext &app)
    : m_app(app), m_tmrCancel(app.clock.createTimer(CancelInterval, [this] { onCancel(); }))
{
}

frmRanking::~frmRanking() = default;

void frmRanking::load()
{
    getSocketSetting();
    if (Connections <= 0) {
        Q_EMIT Completed(0, InvalidConnections, "Invalid Connection Value"_ba);
        return;
    }
    reportFailure(m_app, u"frmRanking_Load_Error: "_s, [this] {
        m_slots.clear();
        m_pool = m_app.http.createPool();
        for (int index = 1; index <= Connections; ++index)
            m_slots.push_back(createSlot(index));
    });
}

std::unique_ptr<frmRanking::Slot> frmRanking::createSlot(int index)
{
    auto slot = std::make_unique<Slot>();
    slot->Http1 = m_pool->createControl();
    slot->Http1->UserAgent = userAgent(m_app);
    slot->TmrConnect = m_app.clock.createTimer(ConnectInterval, [this, index] { onConnect(index); });
    slot->tmrHttpTimeout = m_app.clock.createTimer(0, [this, index] { onHttpTimeout(index); });
    m_setting.applyProxy(*slot->Http1);
    connect(slot->Http1.get(), &HttpControl::stateChanged, this, [this, index] { onState(index); });
    return slot;
}

frmRanking::Slot &frmRanking::slotAt(int index)
{
    if (index < 1 || index > static_cast<int>(m_slots.size()))
        throw Failure(u"There is no connection %1"_s.arg(index));
    return *m_slots[static_cast<std::size_t>(index - 1)];
}

ClockTimer &frmRanking::TmrConnect(int index)
{
    return *slotAt(index).TmrConnect;
}

void frmRanking::getSocketSetting()
{
    reportFailure(m_app, u"frmRanking_GetsocketSetting error :  "_s, [this] { m_setting.read(m_app); });
}

void frmRanking::resetSocket1(int index)
{
    Slot &slot = slotAt(index);
    slot.Data.clear();
    slot.PostData.clear();
    slot.Status = SlotStatus::Running;
}

void frmRanking::Connect(int index, const QString &url, const QString &method, const QString &postData)
{
    reportFailure(m_app, u"frmRanking_Connect_Error: "_s, [&] {
        Slot &slot = slotAt(index);
        if (slot.Http1->State() != HttpControl::Closed)
            return;
        resetSocket1(index);
        slot.URL = url;
        slot.SubmitMethod = method;
        slot.PostData = postData;
        slot.tmrHttpTimeout->setInterval(m_setting.timeOutInterval());
        slot.Http1->FollowOption = true;
        slot.Http1->Url = slot.URL;
        slot.Http1->Blocking = false;
        slot.Http1->Timeout = 0;
        slot.tmrHttpTimeout->setEnabled(true);
        try {
            if (equalsIgnoringCase(slot.SubmitMethod, u"POST"))
                slot.Http1->Post(m_app.toBytes(slot.PostData));
            else
                slot.Http1->Get();
        } catch (...) {
            // A slot that fails here stays silent, so its time-out must not tell of a lost event either.
            slot.tmrHttpTimeout->setEnabled(false);
            throw;
        }
    });
}

void frmRanking::onState(int index)
{
    Slot &slot = slotAt(index);
    if (slot.Http1->State() != HttpControl::Closed)
        return;
    slot.tmrHttpTimeout->setEnabled(false);
    m_app.desktop.resetPointer();
    slot.Data = slot.Http1->Body();
    if (slot.Status == SlotStatus::UnloadWhenClosed) {
        if (close())
            Q_EMIT Unloaded();
    } else if (slot.Status != SlotStatus::Cancelled) {
        // The handler may start the slot anew, or destroy it; else a long page would stay until it does.
        const QByteArray data = std::exchange(slot.Data, {});
        Q_EMIT Completed(index, NoError, data);
    }
}

void frmRanking::onHttpTimeout(int index)
{
    Slot &slot = slotAt(index);
    slot.tmrHttpTimeout->setEnabled(false);
    if (slot.Http1->State() != HttpControl::Closed)
        slot.Http1->Abort();
    else
        Q_EMIT Completed(index, TimedOut, "Time out"_ba);
}

void frmRanking::onConnect(int index)
{
    Slot &slot = slotAt(index);
    slot.TmrConnect->setEnabled(false);
    // Copies: Connect empties the slot first.
    const QString url = slot.URL;
    const QString method = slot.SubmitMethod;
    const QString postData = slot.PostData;
    Connect(index, url, method, postData);
}

void frmRanking::Disconnect()
{
    const QPointer<frmRanking> alive(this);
    reportFailure(m_app, u"frmRanking_Disconnect_error: "_s, [&] {
        // While events run a transfer may complete, and its handler start the slot again or destroy the pool.
        for (std::size_t i = 0; alive && i < m_slots.size(); ++i) {
            Slot &slot = *m_slots[i];
            if (slot.Http1->State() == HttpControl::Closed)
                continue;
            slot.Status = SlotStatus::Cancelled;
            slot.Http1->Abort();
            if (alive)
                m_app.desktop.runPendingEvents();
        }
        if (alive)
            m_tmrCancel->setEnabled(true);
    });
}

void frmRanking::onCancel()
{
    for (const auto &slot : m_slots) {
        const int state = slot->Http1->State();
        if (state != HttpControl::Closed && state != HttpControl::Closing)
            return;
    }
    m_tmrCancel->setEnabled(false);
    Q_EMIT Cancelled();
}

bool frmRanking::close()
{
    for (const auto &slot : m_slots) {
        if (!slot->Http1->Busy())
            continue;
        slot->Status = SlotStatus::UnloadWhenClosed; // first: the end may be told from inside Abort
        slot->Http1->Abort();
        return false;
    }
    return true;
}

} // namespace sondrel
