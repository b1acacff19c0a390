// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/native_file.h"

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <optional>

namespace sondrel {

/// Sees to it that one program works on a folder, since two would write over each other's files. The system
/// itself holds the claim, and drops it when the process ends, however it ends.
///
/// A socket with a name and no file, asked directly: the toolkit's own class for it comes with nine libraries
/// that every start would load for nothing else.
class SingleInstance final : public QObject
{
    Q_OBJECT

public:
    /// The folder in the system's spelling.
    explicit SingleInstance(const QString &folder);

    /// Claims the folder. False when another process of this user has it; that one has been told to come
    /// forward then.
    bool claim();
    /// Whether the other process said that it heard.
    bool wasHeard() const { return m_heard; }

Q_SIGNALS:
    /// Another start of the program wants the window to come forward.
    void raiseWanted();

private:
    enum class Other { Told, Silent, Foreign };

    Other tellOther();
    void serve();

    QByteArray m_name;
    NativeFile m_server;
    std::optional<QSocketNotifier> m_callers;
    bool m_heard = false;
};

} // namespace sondrel
