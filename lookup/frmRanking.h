// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/http_control.h"
#include "lookup/socket_setting.h"

#include <QObject>

#include <memory>
#include <vector>

namespace sondrel {

/// The pool of parallel connections of a lookup: up to ten slots, counted from 1, each with one transfer and
/// its time-out. It has no window; it hosts timers and controls.
class frmRanking final : public QObject
{
    Q_OBJECT

public:
    explicit frmRanking(ApplicationContext &app);
    ~frmRanking() override;

    /// Number of slots; set before load().
    qint16 Connections = 0;

    /// Makes the slots. Emits Completed(0, 10300, "Invalid Connection Value") when Connections is not
    /// positive.
    void load();
    /// Starts a transfer in a slot; dropped without a word while the slot is busy.
    void Connect(int index, const QString &url, const QString &method, const QString &postData = {});
    /// Cancels all slots; Cancelled follows once all are closed.
    void Disconnect();
    void resetSocket1(int index);
    void getSocketSetting();
    /// Closes the pool: true when nothing was under way. Otherwise the first busy transfer is aborted; when
    /// that has ended the pool closes anew, and emits Unloaded once nothing is under way any more.
    bool close();

    /// The timer that starts a slot's last transfer again. Nothing turns it on at present.
    ClockTimer &TmrConnect(int index);

Q_SIGNALS:
    /// A transfer is over. The handler may call Connect for the same slot, Disconnect, or have the pool
    /// destroyed.
    void Completed(int index, int errorCode, const QByteArray &data);
    void Cancelled();
    void Unloaded();

private:
    struct Slot;

    Slot &slotAt(int index);
    std::unique_ptr<Slot> createSlot(int index);
    void onState(int index);
    void onHttpTimeout(int index);
    void onConnect(int index);
    void onCancel();

    ApplicationContext &m_app;
    SocketSetting m_setting;
    std::unique_ptr<HttpPool> m_pool;
    std::vector<std::unique_ptr<Slot>> m_slots;
    std::unique_ptr<ClockTimer> m_tmrCancel;
};

} // namespace sondrel
