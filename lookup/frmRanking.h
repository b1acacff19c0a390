// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "core/http_control.h"

#include <QObject>

#include <memory>
#include <vector>

namespace sondrel {

/// The pool of parallel connections of a lookup: up to ten slots, counted from 1, each with one transfer and its
/// time-out. It has no window; it hosts timers and controls.
class frmRanking final : public QObject
{
    Q_OBJECT

public:
    explicit frmRanking(ApplicationContext &app);
    ~frmRanking() override;

    /// Number of slots; set before load().
    qint16 Connections = 0;

    /// Makes the slots. Emits Completed(0, 10300, "Invalid Connection Value") when Connections is not positive.
    void load();
    /// Starts a transfer in a slot; dropped without a word while the slot is busy.
    void Connect(int index, const QString &url, const QString &method, const QString &postData = {});
    /// Cancels all slots; Cancelled follows once all are closed.
    void Disconnect();
    void resetSocket1(int index);
    void getSocketSetting();
    /// Closes the pool: true when nothing was under way. Otherwise the first busy transfer is aborted, and the pool
    /// emits Unloaded once that has ended.
    bool close();

Q_SIGNALS:
    /// A transfer is over. The handler may call Connect for the same slot, Disconnect, or have the pool destroyed.
    void Completed(int index, int errorCode, const QByteArray &data);
    void Cancelled();
    void Unloaded();
};

} // namespace sondrel
