// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QApplication>

#include <functional>

namespace sondrel {

/// The toolkit's application. What a handler of an event throws past its own catch ends that handler, and not
/// the program.
class ProgramApplication final : public QApplication
{
public:
    ProgramApplication(int &argc, char **argv);

    std::function<void(const std::exception &)> onError;

    bool notify(QObject *receiver, QEvent *event) override;
};

} // namespace sondrel
