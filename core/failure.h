// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

#include <exception>

namespace sondrel {

/// The exception of a failing step. Its text is complete where it is thrown: what was tried, on what, and
/// what the system said.
class Failure : public std::exception
{
public:
    explicit Failure(QString text);

    const QString &text() const { return m_text; }
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    QString m_text;
    QByteArray m_utf8;
};

/// The text of any exception, as it goes into the error log.
QString errorText(const std::exception &error);

} // namespace sondrel
