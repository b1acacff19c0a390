#include "shell/text_ex.h"

#include <QVariant>
#include <QWidget>

namespace sondrel {

namespace {

QString throughCodePage(const QString &text, int codePage)
{
    try {
        const auto page = CodePage::find(codePage);
        const qsizetype null = text.indexOf(QChar(0));
        return page ? page->fromBytes(page->toBytes(null < 0 ? text : text.first(null))) : QString();
    } catch (const std::exception &) {
        return text; // in the wrong characters, which is better than none
    }
}

} // namespace

void TextEx(QWidget &control, const QString &text, int codePage)
{
    // Editors for long texts have one property for plain text and another for markup.
    for (const char *property : {"plainText", "text"}) {
        if (control.metaObject()->indexOfProperty(property) < 0)
            continue;
        control.setProperty(property, throughCodePage(text, codePage));
        control.update();
        return;
    }
}

} // namespace sondrel
