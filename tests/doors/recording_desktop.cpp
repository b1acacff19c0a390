#include "tests/doors/recording_desktop.h"

#include "core/failure.h"

namespace sondrel {

MessageAnswer RecordingDesktop::showMessage(const MessageBox &box)
{
    if (failing)
        throw Failure(QStringLiteral("The message cannot be shown"));
    boxes.push_back(box);
    if (box.buttons == MessageButtons::Ok)
        return MessageAnswer::Ok;
    if (answers.empty())
        return answer;
    const MessageAnswer next = answers.front();
    answers.erase(answers.begin());
    return next;
}

QString RecordingDesktop::askText(const TextQuestion &question)
{
    if (failing)
        throw Failure(QStringLiteral("The message cannot be shown"));
    textQuestions.push_back(question);
    if (texts.empty())
        return {};
    QString text = texts.front();
    texts.erase(texts.begin());
    return text;
}

QString RecordingDesktop::pickFile(FileQuestion &question)
{
    questions.push_back(question);
    if (files.empty())
        return {};
    QString file = files.front();
    files.erase(files.begin());
    return file;
}

void RecordingDesktop::beginWait()
{
    if (pointerFails)
        throw Failure(QStringLiteral("There is no pointer"));
    ++waits;
    ++waiting;
}

void RecordingDesktop::endWait()
{
    // One that has been reset is over already.
    if (waiting > 0)
        --waiting;
}

void RecordingDesktop::resetPointer()
{
    ++resets;
    waiting = 0;
}

void RecordingDesktop::beep()
{
    ++beeps;
}

bool RecordingDesktop::open(const QString &target, ShowMode mode)
{
    opened.emplace_back(target, mode);
    return opens;
}

bool RecordingDesktop::canOpen(const QString &)
{
    return hasReaders;
}

void RecordingDesktop::runPendingEvents()
{
    ++pendingEventRuns;
    if (onPendingEvents)
        onPendingEvents();
}

} // namespace sondrel
