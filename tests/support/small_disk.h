// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

namespace sondrel {

/// A file system of its own over a folder, which other processes do not see unless they are started from here
/// afterwards. Only who may mount has one: ask isThere().
class SmallDisk
{
public:
    SmallDisk(const QString &folder, qint64 bytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    bool isThere() const { return m_there; }
    /// Leaves no room for another byte.
    void fill() const;
    /// Makes room again.
    void empty() const;

private:
    QString m_folder;
    bool m_there = false;
};

} // namespace sondrel
