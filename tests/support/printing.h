// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <ostream>

// How GoogleTest shows Qt's values when an expectation fails; it finds these by the namespace of their
// arguments.

QT_BEGIN_NAMESPACE

inline void PrintTo(const QByteArray &bytes, std::ostream *out)
{
    *out << '"' << bytes.toPercentEncoding(" !\"#$&'()*+,/:;<=>?@[\\]^`{|}\r\n\t").constData() << '"';
}

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toUtf8().constData() << '"';
}

inline void PrintTo(const QVariant &value, std::ostream *out)
{
    *out << value.typeName() << ' ';
    PrintTo(value.toString(), out);
}

QT_END_NAMESPACE
