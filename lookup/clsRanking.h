// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "lookup/clsSearchKeyword.h"
#include "lookup/frmRanking.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

namespace sondrel {

/// One run: looks a list of keywords up on one engine for one project, through up to ten connections at a
/// time. Called in this order: setKeywordsObject, setAccount, SetVariable, Connect. A handler of its signals
/// may destroy it.
class clsRanking final : public QObject
{
    Q_OBJECT

public:
    explicit clsRanking(ApplicationContext &app);
    ~clsRanking() override;

    qint16 Pages = 0;

    /// Target of all results; also names the engine. Outlives the run.
    void setKeywordsObject(clsKeywords *keywords);
    /// The project, with its tracked URLs and the number of links to scan. Outlives the run.
    void setAccount(const clsAccount *account);
    /// Prepares one search per keyword; ends at the first failure, which is logged.
    void SetVariable(const QStringList &keywords);
    /// Starts the run.
    void Connect();
    /// Cancels the run; Cancelled follows once all connections are closed.
    void Disconnect();
    /// Drops the connection pool and what is under way in it.
    void CloseHTTPForm();

Q_SIGNALS:
    /// The run is over, or there was nothing to do.
    void Completed();
    /// Once at the start and once per finished keyword.
    void Progress();
    void Cancelled();

private:
    static constexpr int MaximumConnections = 10;

    clsSearchKeyword &search(int number) { return *m_searches[static_cast<std::size_t>(number - 1)]; }
    int searchCount() const { return static_cast<int>(m_searches.size()); }
    std::unique_ptr<clsSearchKeyword> prepare(const QString &keyword);
    void start(int slot, int number);
    void onCompleted(int slot, int errorCode, const QByteArray &data);
    bool finish(clsSearchKeyword &search, int slot, int errorCode, const QByteArray &data);
    bool continueWithNextPage(clsSearchKeyword &search, int slot, const PageText &page);
    QString nextAddress(clsSearchKeyword &search, const PageText &page) const;

    ApplicationContext &m_app;
    QString m_engineName;
    clsKeywords *m_keywords = nullptr;
    const clsAccount *m_account = nullptr;
    std::vector<std::unique_ptr<clsSearchKeyword>> m_searches;
    std::vector<int> m_slotKeyword; // by slot, both counted from 1
    int m_nextIndex = 1;
    int m_doneCount = 0;
    bool m_cancelled = false;
    std::unique_ptr<frmRanking> m_pool;
};

} // namespace sondrel
