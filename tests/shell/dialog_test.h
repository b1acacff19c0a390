// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "engines/clsEngine.h"
#include "tests/support/printing.h"
#include "tests/support/world.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace sondrel {

/// A control by its name; the test fails hard without it.
template <typename Control>
Control &control(const QWidget &window, const QString &name)
{
    auto *found = window.findChild<Control *>(name);
    if (!found)
        throw std::runtime_error("no such control: " + name.toStdString());
    return *found;
}

inline void click(const QWidget &window, const QString &name)
{
    auto &button = control<QAbstractButton>(window, name);
    // Round buttons and boxes take clicks at their mark, which stands at their beginning.
    const QPoint place(std::min(button.width() / 2, button.height() / 2), button.height() / 2);
    QTest::mouseClick(&button, Qt::LeftButton, {}, place);
}

inline void type(const QWidget &window, const QString &name, const QString &text)
{
    auto &named = control<QWidget>(window, name);
    auto *list = qobject_cast<QComboBox *>(&named);
    auto &field = list ? *list->lineEdit() : control<QLineEdit>(window, name);
    field.selectAll();
    if (text.isEmpty())
        QTest::keyClick(&field, Qt::Key_Delete);
    else
        QTest::keyClicks(&field, text);
}

/// Pastes the text over what the field holds.
inline void paste(const QWidget &window, const QString &name, const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
    auto &field = control<QLineEdit>(window, name);
    field.selectAll();
    field.paste();
}

inline bool isEnabled(const QWidget &window, const QString &name)
{
    return control<QWidget>(window, name).isEnabled();
}

/// Does something to the next modal window, as a person would who sits before it.
template <typename Window>
void whenModal(std::function<void(Window &)> act, int patience = 500)
{
    QTimer::singleShot(patience == 500 ? 0 : 10, qApp, [act, patience] {
        if (auto *window = qobject_cast<Window *>(QApplication::activeModalWidget()))
            act(*window);
        else if (patience > 0)
            whenModal(act, patience - 1); // it is still coming up
        else
            ADD_FAILURE() << "no such window came up";
    });
}

/// A world with a small catalogue: two markets, the engines of the first not in the order of their names.
class CatalogueWorld : public World
{
public:
    CatalogueWorld() : catalogue(app)
    {
        writeEngineData("[Markets]\r\n1=Global\r\n2=China\r\n[Global]\r\n1=Zeta\r\n2=Alpha\r\n"
                        "[China]\r\n1=Gamma\r\n");
        catalogue.loadEngineData();
        app.EngineCatalogue = &catalogue;
        takeLog(); // the first load always leaves a line
    }

    clsEngine catalogue;
};

} // namespace sondrel
