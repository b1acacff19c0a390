// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QObject>
#include <QString>

#include <memory>

class QLocalServer;

namespace sondrel {

/// Sees to it that one program works on a folder, since two would write over each other's files. The system
/// itself holds the claim, and drops it when the process ends, however it ends.
class SingleInstance final : public QObject
{
    Q_OBJECT

public:
    /// The folder in the system's spelling.
    explicit SingleInstance(const QString &folder);
    ~SingleInstance() override;

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

    QString m_name;
    std::unique_ptr<QLocalServer> m_server;
    bool m_heard = false;
};

} // namespace sondrel
