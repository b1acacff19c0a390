// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArrayView>
#include <QString>

namespace sondrel {

/// Error.log, opened at the first record and kept open until the process ends. Records are written at once
/// and unbuffered, so a crash loses none.
class ErrorLog
{
public:
    /// path in the system's spelling.
    explicit ErrorLog(QString path);
    ~ErrorLog();
    ErrorLog(const ErrorLog &) = delete;
    ErrorLog &operator=(const ErrorLog &) = delete;

    /// Appends CR LF and the text, in one write. Failures are swallowed: a log write may never raise.
    void write(QByteArrayView text) noexcept;

private:
    QString m_path;
    int m_handle = -1;
};

} // namespace sondrel
