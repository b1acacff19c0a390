// What all dialogs have in common.
#include "core/registry.h"
#include "engines/frmEngineBuilder.h"
#include "engines/frmUpdateEngines.h"
#include "keywords/frmAddkeywords.h"
#include "keywords/frmKeywordBuilder.h"
#include "optimizer/frmOptimizer.h"
#include "project/clsAccount.h"
#include "shell/frmAbout.h"
#include "shell/frmAccount.h"
#include "shell/frmPreference.h"
#include "shell/frmSendReport.h"
#include "shell/frmURLs.h"
#include "tests/shell/dialog_test.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTabWidget>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {
namespace {

using MakeDialog = std::function<std::unique_ptr<ProgramDialog>(ApplicationContext &)>;

struct DialogCase
{
    const char *name;
    MakeDialog make;
    QString defaultButton = u"cmdOK"_s;
};

class Dialogs : public testing::TestWithParam<DialogCase>
{
protected:
    Dialogs() : dialog(GetParam().make(world.app)) {}

    // Every page in turn.
    void forEachPage(const std::function<void()> &look)
    {
        auto *tabs = dialog->findChild<QTabWidget *>();
        for (int tab = 0; tab < (tabs ? tabs->count() : 1); ++tab) {
            if (tabs)
                tabs->setCurrentIndex(tab);
            QApplication::processEvents();
            look();
        }
    }

    CatalogueWorld world;
    std::unique_ptr<ProgramDialog> dialog;
};

template <typename Dialog>
MakeDialog making()
{
    return [](ApplicationContext &app) { return std::make_unique<Dialog>(app); };
}

std::unique_ptr<ProgramDialog> accountDialog(ApplicationContext &app)
{
    auto dialog = std::make_unique<frmAccount>(app);
    dialog->setAccount(std::make_shared<clsAccount>(app));
    return dialog;
}

// Half as long again, as a translation may be.
void lengthen(QWidget &dialog)
{
    const auto longer = [](const QString &text) {
        return text.isEmpty() ? text : text + QString(text.size() / 2, u'e');
    };
    for (auto *label : dialog.findChildren<QLabel *>())
        label->setText(longer(label->text()));
    for (auto *button : dialog.findChildren<QAbstractButton *>()) {
        if (!button->text().isEmpty())
            button->setText(longer(button->text()));
    }
}

QSize wantedSize(const QWidget &widget)
{
    const auto *label = qobject_cast<const QLabel *>(&widget);
    return label && label->wordWrap() ? QSize(0, label->heightForWidth(label->width()))
                                      : widget.sizeHint().boundedTo(widget.maximumSize());
}

QString tooSmall(const QWidget &widget)
{
    const QSize wanted = wantedSize(widget);
    return widget.width() < wanted.width() || widget.height() < wanted.height()
               ? widget.objectName() + u" %1x%2 instead of %3x%4; "_s.arg(widget.width())
                                           .arg(widget.height())
                                           .arg(wanted.width())
                                           .arg(wanted.height())
               : QString();
}

TEST_P(Dialogs, cutNoCaptionOfAnyLengthInALargeFont)
{
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    dialog->setFont(font);
    lengthen(*dialog);
    dialog->show();
    dialog->resize(dialog->sizeHint());
    QString cut;
    forEachPage([&] {
        for (const auto *label : dialog->findChildren<QLabel *>())
            cut += label->isVisible() ? tooSmall(*label) : QString();
        for (const auto *button : dialog->findChildren<QAbstractButton *>())
            cut += button->isVisible() && !button->text().isEmpty() ? tooSmall(*button) : QString();
    });
    EXPECT_EQ(cut, QString());
}

TEST_P(Dialogs, giveEveryControlAName)
{
    dialog->show();
    QString nameless;
    forEachPage([&] {
        for (const QWidget *widget : dialog->findChildren<QWidget *>()) {
            const auto *button = qobject_cast<const QAbstractButton *>(widget);
            const auto *label = qobject_cast<const QLabel *>(widget);
            const bool isPart = widget->objectName().startsWith(u"qt_"_s) ||
                                qobject_cast<QComboBox *>(widget->parentWidget());
            if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus || label || isPart ||
                qobject_cast<const QTabWidget *>(widget))
                continue;
            if (widget->accessibleName().isEmpty() && (!button || button->text().isEmpty()))
                nameless += widget->objectName() + u"("_s +
                            QString::fromLatin1(widget->metaObject()->className()) + u") "_s;
        }
    });
    EXPECT_EQ(nameless, QString());
}

TEST_P(Dialogs, haveOneDefaultButtonAtMost)
{
    dialog->show();
    int defaults = 0;
    for (const auto *button : dialog->findChildren<QPushButton *>())
        defaults += button->isDefault() ? 1 : 0;
    if (GetParam().defaultButton.isEmpty()) { // Enter is for the field one begins in
        EXPECT_EQ(defaults, 0);
        return;
    }
    EXPECT_EQ(defaults, 1);
    EXPECT_TRUE(control<QPushButton>(*dialog, GetParam().defaultButton).isDefault());
}

TEST_P(Dialogs, comeUpCentred)
{
    dialog->show();
    const QRect screen = dialog->screen()->geometry();
    EXPECT_NEAR(dialog->x() + dialog->width() / 2, screen.center().x(), 2);
    EXPECT_LE(2 * dialog->y() + dialog->height(), screen.height()); // one may fill the screen
}

TEST_P(Dialogs, rememberTheSizeTheyWereGiven)
{
    dialog->show();
    const QSize wanted = (dialog->size() + QSize(40, 20)).boundedTo(dialog->screen()->availableSize());
    dialog->resize(wanted);
    dialog->reject();
    const auto again = GetParam().make(world.app);
    again->show();
    EXPECT_EQ(again->size(), wanted);
}

TEST_P(Dialogs, storeNoSizeThatNobodyChose)
{
    dialog->show();
    dialog->reject();
    EXPECT_EQ(
        GetRegistryText(world.app, world.app.RegPreference, dialog->objectName() + u"Size"_s, u"none"_s),
        u"none"_s);
}

TEST_P(Dialogs, fitOnTheScreenWhateverIsStored)
{
    for (const auto &stored : {u"99999,99999"_s, u"1,1"_s, u"x"_s, u"-5,7"_s}) {
        world.setPreference(dialog->objectName() + u"Size"_s, stored);
        const auto opened = GetParam().make(world.app);
        opened->show();
        EXPECT_LE(opened->width(), opened->screen()->availableSize().width()) << stored.toStdString();
        EXPECT_LE(opened->height(), opened->screen()->availableSize().height()) << stored.toStdString();
        EXPECT_GE(opened->width(), opened->minimumSizeHint().width()) << stored.toStdString();
    }
}

TEST_P(Dialogs, areReachedByTabAlone)
{
    dialog->show();
    forEachPage([&] {
        std::vector<QWidget *> wanted;
        for (QWidget *widget : dialog->findChildren<QWidget *>()) {
            const bool inner = widget->focusProxy() || qobject_cast<QComboBox *>(widget->parentWidget()) ||
                               widget->objectName().startsWith(u"qt_"_s);
            if (widget->isVisible() && widget->isEnabled() && !inner &&
                (qobject_cast<QLineEdit *>(widget) || qobject_cast<QPushButton *>(widget)))
                wanted.push_back(widget);
        }
        std::vector<QWidget *> reached;
        QWidget *walker = dialog.get();
        do {
            if (walker->focusPolicy() & Qt::TabFocus)
                reached.push_back(walker);
            walker = walker->nextInFocusChain();
        } while (walker != dialog.get());
        for (QWidget *widget : wanted)
            EXPECT_NE(std::find(reached.begin(), reached.end(), widget), reached.end())
                << widget->objectName().toStdString();
    });
}

template <typename Dialog>
std::unique_ptr<ProgramDialog> preparedDialog(ApplicationContext &app)
{
    auto dialog = std::make_unique<Dialog>(app);
    dialog->Prepare();
    return dialog;
}

INSTANTIATE_TEST_SUITE_P(
    All, Dialogs,
    testing::Values(DialogCase{"frmAbout", making<frmAbout>()}, DialogCase{"frmAccount", accountDialog},
                    DialogCase{"frmAddkeywords", preparedDialog<frmAddkeywords>, QString()},
                    DialogCase{"frmEngineBuilder", making<frmEngineBuilder>(), QString()},
                    DialogCase{"frmKeywordBuilder", preparedDialog<frmKeywordBuilder>, u"cmdGet"_s},
                    DialogCase{"frmOptimizer", making<frmOptimizer>(), u"cmdRenovator"_s},
                    DialogCase{"frmPreference", making<frmPreference>()},
                    DialogCase{"frmSendReport", making<frmSendReport>(), u"cmdSend"_s},
                    DialogCase{"frmUpdateEngines", making<frmUpdateEngines>(), u"cmdStart"_s},
                    DialogCase{"frmURLs", making<frmURLs>()}),
    [](const auto &info) { return info.param.name; });

} // namespace
} // namespace sondrel
