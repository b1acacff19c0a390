// The pane that tries an engine's strings out on a page.
#include "engines/frmEngineBuilder.h"

#include "core/shown_text.h"
#include "lookup/engine_trial.h"
#include "shell/hint_tree.h"

#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

// What is wrong with a string that is to mark the list of results; nothing when it does.
QString markProblem(const QString &name, const QString &mark, bool found)
{
    if (mark.isEmpty())
        return u"The %1 is empty."_s.arg(name);
    return found ? QString() : u"The %1 is not in the page."_s.arg(name);
}

// What a person needs to know in front of the listings; the first problem is the one to solve first.
QString trialText(const EngineRow &engine, const EngineTrial &trial)
{
    QStringList parts;
    QString problem = markProblem(u"Results Start String"_s, engine.ResultStartString, trial.hasResultStart);
    if (problem.isEmpty())
        problem = markProblem(u"Results End String"_s, engine.ResultEndString, trial.hasResultEnd);
    if (!problem.isEmpty())
        parts.append(problem);
    const auto count = trial.listings.size();
    parts.append(count == 0   ? u"No listing found."_s
                 : count == 1 ? u"1 listing found."_s
                              : u"%1 listings found."_s.arg(count));
    if (!trial.count.isEmpty())
        parts.append(u"Matches: %1."_s.arg(trial.count));
    else if (!trial.countText.isEmpty())
        parts.append(
            u"The text between the Matches strings is no number: %1"_s.arg(trial.countText.left(60)));
    else
        parts.append(u"No number of matches found."_s);
    if (trial.next.isEmpty())
        parts.append(u"Without Next Page1 a lookup reads one page."_s);
    else if (trial.hasNextLink)
        parts.append(u"Next page: %1"_s.arg(trial.next));
    else
        parts.append(u"No link to a next page found."_s);
    return parts.join(u'\n');
}

} // namespace

void frmEngineBuilder::pickPage()
{
    reportFailure(app(), u"frmEngineBuilder_pickPage error: "_s, [this] {
        FileQuestion question;
        question.filter = u"Web pages (*.html;*.htm;*.txt)|*.html;*.htm;*.txt|All Files (*.*)|*.*"_s;
        const QString path = app().desktop.pickFile(question);
        if (path.isEmpty())
            return;
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            const QString problem = u"The page cannot be read: "_s + path + u": "_s + file.errorString();
            app().desktop.showMessage({windowTitle(), problem, MessageIcon::Exclamation});
            throw Failure(problem);
        }
        // Links of a saved page are completed as if the engine had just sent it.
        setPage(file.readAll(), QFileInfo(path).fileName(), m_engineURL->text() + m_query->text());
    });
}

void frmEngineBuilder::setPage(const QByteArray &bytes, const QString &name, const QString &url)
{
    m_page = bytes;
    m_pageName = name;
    m_pageUrl = url;
    tryOut();
}

void frmEngineBuilder::tryOut()
{
    reportFailure(app(), u"frmEngineBuilder_tryOut error: "_s, [this] {
        m_trial->clear();
        if (m_pageName.isEmpty()) {
            m_trialText->setText(tr("No page yet. Get the source of a search above, or pick a saved page."));
            return;
        }
        const WaitCursor wait(app().desktop);
        const FetchedPage page{m_page, PageText(app().fromBytes(m_page))};
        const EngineRow engine = m_builder.asCatalogued(entered());
        const EngineTrial trial = tryEngine(app(), engine, page, m_pageUrl);
        m_trialText->setText(m_pageName + u'\n' + shownText(app(), trialText(engine, trial)));
        for (const TrialListing &listing : trial.listings) {
            const QString number = listing.position == 0 ? QString() : QString::number(listing.position);
            m_trial->addRow({number, shownText(app(), listing.title), shownText(app(), listing.url)})
                ->setTextAlignment(0, Qt::AlignRight | Qt::AlignVCenter);
        }
    });
}

} // namespace sondrel
