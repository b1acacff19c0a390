// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QFrame>

class QLabel;

namespace sondrel {

/// A strip across the main window that tells of the last change that could not be stored, until it is closed.
/// Nobody has to answer it: lookups that nobody watches go on behind it.
class UnwrittenBar final : public QFrame
{
    Q_OBJECT

public:
    explicit UnwrittenBar(QWidget *parent = nullptr);

    void tell(const QString &problem);

private:
    QLabel *m_text;
};

} // namespace sondrel
