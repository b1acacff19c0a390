// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "calc/uno_text.h"

#include <QObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>

namespace sondrel {

/// An office program of our own: started when it is first needed, with a profile that nobody else uses, and
/// ended with this object or with the program. Its steps run on a thread of their own, while the caller's
/// events go on.
class Office final : public QObject
{
    Q_OBJECT

public:
    /// How long a step may take before the office counts as hung, and is ended.
    explicit Office(std::chrono::milliseconds patience);
    ~Office() override;

    void setPatience(std::chrono::milliseconds patience) { m_patience = patience; }

    /// Runs a step on the office, which is started when it is not there; what fails comes as
    /// SpreadsheetError.
    void run(const std::function<void()> &step);

    // For steps only.
    const css::uno::Reference<css::frame::XDesktop2> &desktop() const { return m_desktop; }
    const css::uno::Reference<css::uno::XComponentContext> &context() const { return m_context; }

    /// How often it has come up so far.
    int starts() const { return m_starts; }
    /// True while it runs and has not ended since that start.
    bool isAt(int start) const { return m_connected && m_starts == start; }

    qint64 processId() const { return m_process.processId(); }

private:
    void start();
    void newProfile();
    void onFinished(int code, QProcess::ExitStatus status);
    void connectToIt();
    void await(const std::function<void()> &work);
    void stop();

    std::chrono::milliseconds m_patience;
    std::unique_ptr<QTemporaryDir> m_profile;
    QString m_pipe;
    QProcess m_process;
    QThread m_thread;
    QObject m_worker; // lives on the thread
    int m_restarts = 0;
    int m_starts = 0;
    std::atomic<bool> m_ended = false;
    std::atomic<bool> m_lost = false; // a call has found nobody
    bool m_connected = false;
    bool m_hung = false;
    css::uno::Reference<css::uno::XComponentContext> m_context;
    css::uno::Reference<css::frame::XDesktop2> m_desktop;
};

} // namespace sondrel
