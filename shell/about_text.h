// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// What the about box says.
struct AboutText
{
    QString Title;
    QString Version;
    QString Dealer;
    QString Email;
    QString Web;
    /// What the last two lines lead to.
    QString EmailAddress;
    QString WebAddress;

    bool operator==(const AboutText &) const = default;
};
AboutText aboutText(ApplicationContext &app);

} // namespace sondrel
