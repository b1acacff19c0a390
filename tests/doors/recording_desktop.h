// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/desktop.h"

#include <QString>

#include <functional>
#include <utility>
#include <vector>

namespace sondrel {

/// A desktop that keeps what it was asked for and answers from a queue.
class RecordingDesktop final : public Desktop
{
public:
    std::vector<MessageBox> boxes;
    std::vector<std::pair<QString, ShowMode>> opened;
    int waits = 0;   // wait cursors begun in all
    int waiting = 0; // and not yet ended
    int resets = 0;
    int beeps = 0;
    int pendingEventRuns = 0;

    /// Answers to yes/no boxes, first one first; answer is given when none is left.
    std::vector<MessageAnswer> answers;
    MessageAnswer answer = MessageAnswer::Yes;
    bool opens = true;
    /// Whether it has a program for every document.
    bool hasReaders = true;
    /// While set, showing a message throws Failure.
    bool failing = false;
    /// While set, a wait cursor throws Failure.
    bool pointerFails = false;
    /// What happens while pending events run.
    std::function<void()> onPendingEvents;

    /// File questions so far, and the answers to the next ones; none left gives up.
    std::vector<FileQuestion> questions;
    std::vector<QString> files;

    /// Questions for a text so far, and the answers to the next ones; none left gives up.
    std::vector<TextQuestion> textQuestions;
    std::vector<QString> texts;

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
};

} // namespace sondrel
