// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "shell/program_dialog.h"

namespace sondrel {

/// The about box: title, version and the vendor's details.
class frmAbout final : public ProgramDialog
{
    Q_OBJECT

public:
    explicit frmAbout(ApplicationContext &app, QWidget *parent = nullptr);

protected:
    void load() override {}
};

} // namespace sondrel
