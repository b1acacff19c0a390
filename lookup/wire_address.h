// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace sondrel {

/// Text to the bytes of the system code page.
using TextEncoder = std::function<QByteArray(QStringView)>;

/// An address as it goes to a server: without what is no printable character at its ends; blanks, control
/// characters and the code page's bytes above 127 inside percent-escaped; the name of a host in its ASCII
/// form. Nothing else is touched: escapes stay, and a wrong address stays wrong.
QByteArray wireAddress(const QString &address, const TextEncoder &encode);

/// A header value: the code page's bytes without control characters, so that it stays one line.
QByteArray wireHeaderValue(const QString &value, const TextEncoder &encode);

} // namespace sondrel
