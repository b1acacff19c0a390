// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

namespace sondrel {

enum class MessageIcon { None, Information, Question, Exclamation, Critical };
enum class MessageButtons { Ok, YesNo };
enum class MessageAnswer { Ok, Yes, No };

/// What one message box says.
struct MessageBox
{
    QString title;
    QString text;
    MessageIcon icon = MessageIcon::None;
    MessageButtons buttons = MessageButtons::Ok;

    bool operator==(const MessageBox &) const = default;
};

/// What a box asks that takes a line of text.
struct TextQuestion
{
    QString title;
    QString prompt;

    bool operator==(const TextQuestion &) const = default;
};

/// How an opened document's window is to come up.
enum class ShowMode { Normal = 1, Maximised = 3, Show = 5, Default = 10 };

enum class FilePick { Open, Save };

/// What a file picker asks for.
struct FileQuestion
{
    FilePick kind = FilePick::Open;
    /// Pairs of a name and patterns: "Text Files (*.txt)|*.txt|All Files (*.*)|*.*".
    QString filter;
    QString folder;      // where it starts
    QString name;        // to start with, for saving
    int filterIndex = 1; // of the pair in use, counted from 1; handed back

    bool operator==(const FileQuestion &) const = default;
};

/// The door to the desktop: message boxes, file pickers, wait cursor, beep, opening of documents and
/// addresses.
class Desktop
{
public:
    virtual ~Desktop() = default;

    /// Shows the box and waits for the answer.
    virtual MessageAnswer showMessage(const MessageBox &box) = 0;
    /// Asks for a line of text; empty when the person gave up.
    virtual QString askText(const TextQuestion &question) = 0;
    /// Asks for a file, in the system's spelling; empty when the person gave up.
    virtual QString pickFile(FileQuestion &question) = 0;
    /// Wait cursors nest: it shows from the first beginWait to the matching endWait.
    virtual void beginWait() = 0;
    virtual void endWait() = 0;
    /// Back to the normal pointer, whatever number of waits had begun.
    virtual void resetPointer() = 0;
    virtual void beep() = 0;
    /// Opens a document or address in the desktop's default program. False when there is none.
    virtual bool open(const QString &target, ShowMode mode) = 0;
    /// Whether a program for documents like this file is set up.
    virtual bool canOpen(const QString &file) = 0;
    /// Lets pending events run once.
    virtual void runPendingEvents() = 0;
};

/// Shows the wait cursor for as long as it lives.
class WaitCursor
{
public:
    explicit WaitCursor(Desktop &desktop) : m_desktop(desktop) { m_desktop.beginWait(); }
    ~WaitCursor() { m_desktop.endWait(); }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;

private:
    Desktop &m_desktop;
};

} // namespace sondrel
