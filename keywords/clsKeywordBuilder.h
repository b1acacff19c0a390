// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "lookup/frmHTTP.h"

#include <memory>

namespace sondrel {

/// Who shows what clsKeywordBuilder fetches.
class KeywordBuilderForm
{
public:
    virtual ~KeywordBuilderForm() = default;

    /// How far it is: 1, 2 or 3.
    virtual void showProgress(int step) = 0;
    virtual void showStatus(const QString &text) = 0;
    /// Throws Failure when the keyword is there already.
    virtual void addSuggestion(const QString &keyword, const QString &count) = 0;
    /// The fetch is over, for good or ill.
    virtual void DownLoadCompleted() = 0;
};

/// One fetch of the suggestions for a keyword from an engine's service.
class clsKeywordBuilder final : public HttpClient
{
public:
    explicit clsKeywordBuilder(ApplicationContext &app);
    ~clsKeywordBuilder() override;

    KeywordBuilderForm *FormKeywordBuilder = nullptr; // outlives this
    QString EngineName;
    QString Keyword;
    /// True when a cancel has come to its end.
    bool Disconnected = false;

    void Connect();
    void Disconnect();
    void CloseHTTPForm();
    void ProcessData(int status, const QByteArray &body) override;
    void setDisconnected(bool disconnected) override { Disconnected = disconnected; }

    /// Hands the suggestions of an answer to the form. What it finds in front of a failure stays.
    void GetResult(const QString &text);

private:
    ApplicationContext &m_app;
    std::unique_ptr<frmHTTP> m_http;
};

} // namespace sondrel
