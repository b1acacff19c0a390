// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/desktop.h"

namespace sondrel {

/// The desktop that a person sits at: message boxes, pointer, beep and default programs of Qt.
class QtDesktop final : public Desktop
{
public:
    MessageAnswer showMessage(const MessageBox &box) override;
    QString askText(const TextQuestion &question) override;
    QString pickFile(FileQuestion &question) override;
    void beginWait() override;
    void endWait() override;
    void resetPointer() override;
    void beep() override;
    bool open(const QString &target, ShowMode mode) override;
    bool canOpen(const QString &file) override;
    void runPendingEvents() override;

private:
    void pauseWaits();
    void resumeWaits();

    int m_waiting = 0;
    int m_paused = 0; // waits that begin again behind a box
};

} // namespace sondrel
