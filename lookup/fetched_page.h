// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QByteArray>
#include <QString>

namespace sondrel {

/// A page as it was received, and the text that it is in the system code page.
struct FetchedPage
{
    QByteArray bytes;
    QString text;
};

} // namespace sondrel
