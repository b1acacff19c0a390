// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include <QString>

class QCheckBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollArea;
class QTabWidget;
class QWidget;

// The parts that the dialogs are built of.

namespace sondrel {

/// A page for a tab, which scrolls where the screen is too small for it.
QScrollArea *newPage(QWidget *content);

/// Fields below each other, their captions in front or, where these are long, above.
QFormLayout *newForm();
/// A label for a field, which is also its name for a screen reader.
QLabel *newCaption(const QString &text, QWidget *field);
void addField(QFormLayout &form, const QString &caption, QWidget *field);

QLineEdit *newLineEdit(const QString &name, const QString &tip = {});
QCheckBox *newCheckBox(const QString &name, const QString &caption, const QString &tip = {});
/// A button that never becomes the default one.
QPushButton *newButton(const QString &name, const QString &caption, const QString &tip);

/// Brings a tab and a field on it to the front; a field that can be used gets the focus.
void bringToFront(QTabWidget &tabs, int tab, QWidget &field);

} // namespace sondrel
