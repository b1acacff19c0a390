#include "core/shown_text.h"

#include <QStringDecoder>

namespace sondrel {

QString shownText(const ApplicationContext &app, const QString &stored)
{
    const QByteArray bytes = app.toBytes(stored);
    if (app.fromBytes(bytes) != stored)
        return stored; // the code page cannot hold it, so it never was bytes of a page
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(bytes);
    return decoder.hasError() ? stored : text;
}

} // namespace sondrel
