// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

// Header lines: ASCII, folded, each with its line end. No value can break one.

namespace sondrel {

/// The value as one line: an address or name ends at its first line end, which nobody meant to be part of it.
QString firstLine(const QString &value);

/// A header of free text. What is not plain ASCII goes in encoded words.
QByteArray textHeader(const QByteArray &name, const QString &value);

/// A header of addresses, as the caller wrote them; names that are not plain ASCII go in encoded words.
/// Throws Failure when an address is too long for a line.
QByteArray addressHeader(const QByteArray &name, const QString &value);

/// A header whose value is ours.
QByteArray plainHeader(const QByteArray &name, const QByteArray &value);

/// The moment in the form of the Date header.
QByteArray mailDate(const QDateTime &when);

/// A parameter behind a content field: ; name="value", in the extended form when it is not plain ASCII.
QByteArray parameter(const QByteArray &name, const QString &value);

} // namespace sondrel
