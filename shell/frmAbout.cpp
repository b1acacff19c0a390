#include "shell/frmAbout.h"

#include "core/modCommon.h"
#include "shell/about_text.h"
#include "shell/program_icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QLabel *newLine(const QString &name, const QString &text)
{
    auto *line = new QLabel;
    line->setObjectName(name);
    line->setTextFormat(Qt::PlainText);
    line->setText(text);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    line->setFocusPolicy(Qt::ClickFocus);
    return line;
}

// A line whose end opens what it names. The text is a dealer's, and no markup.
QLabel *newLink(const QString &name, const QString &line, const QString &shown, const QString &target)
{
    if (shown.isEmpty())
        return newLine(name, line);
    auto *link = new QLabel;
    link->setObjectName(name);
    link->setTextFormat(Qt::RichText);
    link->setText(line.chopped(shown.size()).toHtmlEscaped() +
                  u"<a href=\"%1\">%2</a>"_s.arg(target.toHtmlEscaped(), shown.toHtmlEscaped()));
    link->setTextInteractionFlags(Qt::TextBrowserInteraction);
    link->setToolTip(target.toHtmlEscaped());
    link->setAccessibleName(line);
    return link;
}

QLabel *newTitle(const QString &text)
{
    QLabel *title = newLine(u"lblTitle"_s, text);
    constexpr double Larger = 1.4;
    QFont font = title->font();
    font.setBold(true);
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * Larger);
    title->setFont(font);
    return title;
}

} // namespace

frmAbout::frmAbout(ApplicationContext &app, QWidget *parent) : ProgramDialog(app, u"frmAbout"_s, parent)
{
    const AboutText text = aboutText(app);
    setWindowTitle(text.Title);
    auto *picture = new QLabel;
    const int side = fontMetrics().height() * 4;
    picture->setPixmap(applicationIcon().pixmap(side, side));
    auto *email = newLink(u"lblEmail"_s, text.Email, text.EmailAddress, u"mailto:"_s + text.EmailAddress);
    auto *web = newLink(u"lblWeb"_s, text.Web, text.WebAddress, AddHTTPToURL(app, text.WebAddress));
    for (QLabel *link : {email, web})
        connect(link, &QLabel::linkActivated, this,
                [this](const QString &target) { ShellOpenDocument(this->app(), target, ShowMode::Normal); });
    auto *ok = new QPushButton(tr("OK"));
    ok->setObjectName(u"cmdOK"_s);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto *lines = new QVBoxLayout;
    lines->addWidget(newTitle(app.deployment.Title));
    lines->addWidget(newLine(u"lblVersion"_s, text.Version));
    lines->addSpacing(fontMetrics().height());
    lines->addWidget(newLine(u"lblDealer"_s, text.Dealer));
    lines->addWidget(email);
    lines->addWidget(web);
    lines->addStretch();
    auto *top = new QHBoxLayout;
    top->setSpacing(fontMetrics().height());
    top->addWidget(picture, 0, Qt::AlignTop);
    top->addLayout(lines, 1);
    auto *bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(ok);
    auto *layout = new QVBoxLayout(this);
    const int margin = fontMetrics().height();
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->addLayout(top, 1);
    layout->addSpacing(margin);
    layout->addLayout(bottom);
    ok->setFocus();
}

} // namespace sondrel
