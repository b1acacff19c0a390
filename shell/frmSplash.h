// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

#include <QFrame>

#include <memory>

namespace sondrel {

/// What is seen while the program comes up: title, version, vendor and the maker's logo, which a dealer's
/// copy covers. It stands above all other windows without taking the focus, and goes by itself.
class frmSplash final : public QFrame
{
    Q_OBJECT

public:
    explicit frmSplash(ApplicationContext &app);

Q_SIGNALS:
    /// The window's time is over.
    void finished();

private:
    QWidget *newLogo();

    std::unique_ptr<ClockTimer> Timer1;
};

} // namespace sondrel
