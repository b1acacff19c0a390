#include "keywords/clsKeywordBuilder.h"

#include "core/profile_file.h"
#include "keywords/suggestions.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

const QString Title = u"Keyword Builder"_s;

EngineRow rowOf(ApplicationContext &app, const QString &engine)
{
    return readEngineRow(ProfileFile::load(app, app.EngineDataFile), engine);
}

} // namespace

clsKeywordBuilder::clsKeywordBuilder(ApplicationContext &app)
    : m_app(app), m_http(std::make_unique<frmHTTP>(app))
{
}

clsKeywordBuilder::~clsKeywordBuilder() = default;

void clsKeywordBuilder::Connect()
{
    reportFailure(m_app, u"clsKeywordBuilder_Connect Error:  "_s, [this] {
        if (!m_http)
            throw Failure(u"The connection has been closed"_s);
        m_http->Object = this;
        const QString url = suggestionAddress(rowOf(m_app, EngineName), Keyword);
        FormKeywordBuilder->showProgress(1);
        FormKeywordBuilder->showStatus(u"Retrieving data from the search engine ..."_s);
        m_http->Connect1(url);
    });
}

void clsKeywordBuilder::Disconnect()
{
    if (m_http)
        m_http->Disconnect();
    // A fetch that never began has no end that could be told.
    if (!m_http || m_http->isIdle())
        Disconnected = true;
}

void clsKeywordBuilder::CloseHTTPForm()
{
    m_http.reset();
}

void clsKeywordBuilder::ProcessData(int, const QByteArray &body)
{
    reportFailure(m_app, u"clsKeywordBuilder_ProcessData error:  "_s, [&] {
        if (body.isEmpty()) {
            m_app.desktop.showMessage(
                {Title, u"Connection error. Please try again"_s, MessageIcon::Critical});
            return;
        }
        GetResult(m_app.fromBytes(body));
        m_app.desktop.showMessage({Title, u"Retrieving data completed."_s, MessageIcon::Information});
        FormKeywordBuilder->showProgress(3);
    });
    FormKeywordBuilder->DownLoadCompleted();
}

void clsKeywordBuilder::GetResult(const QString &text)
{
    reportFailure(m_app, u"clsKeywordBuilder_GetResult: "_s, [&] {
        FormKeywordBuilder->showProgress(2);
        readSuggestions(m_app, rowOf(m_app, EngineName), text,
                        [this](const QString &keyword, const QString &count) {
                            FormKeywordBuilder->addSuggestion(keyword, count);
                        });
    });
}

} // namespace sondrel
