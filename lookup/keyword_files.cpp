#include "lookup/keyword_files.h"

#include "core/report_folder.h"
#include "core/uucode.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

QString folderBelow(QString path, const QString &name)
{
    path.chop(1);
    return HostPath::compose(path, {name});
}

} // namespace

KeywordFiles::KeywordFiles(ApplicationContext &app, const QString &resultsPath, const QString &reportsPath,
                           const QString &engineName, const QString &projectName, const QString &keyword)
    : m_app(app),
      m_resultsFolder(folderBelow(resultsPath, engineName)),
      m_reportsFolder(folderBelow(reportsPath, projectName)),
      m_stem(engineName + u'_' + EncodedString(app, QString(keyword).replace(u' ', u'_'))),
      m_listing(HostPath::checkedName(EncodedString(app, keyword) + u".dat"_s)),
      m_report(HostPath::checkedName(m_stem + u".html"_s))
{
}

QString KeywordFiles::pageName(int page) const
{
    return m_stem + u"_p"_s + QString::number(page) + u".html"_s;
}

void KeywordFiles::openFolders()
{
    m_results.emplace(m_app.files.folder(m_resultsFolder));
    if (const auto reports = m_app.files.knownFolder(m_reportsFolder)) {
        m_reports.emplace(*reports);
    } else {
        ensureReportsFolder(m_app);
        m_reports.emplace(m_app.files.folder(m_reportsFolder));
    }
}

void KeywordFiles::savePage(int page, const QByteArray &bytes)
{
    const QString name = HostPath::checkedName(pageName(page));
    openFolders();
    m_reports->writeUnflushed(name, bytes, "\r\n");
    linkBrowserNames(m_app, m_reportsFolder + u'\\' + name);
}

void KeywordFiles::openAnew()
{
    m_openListing.emplace(m_results.value().openAnew(m_listing));
    m_openReport.emplace(m_reports.value().openAnew(m_report));
    linkBrowserNames(m_app, m_reportsFolder + u'\\' + m_report);
}

void KeywordFiles::open()
{
    m_openListing.emplace(m_results.value().openToAppend(m_listing));
    m_openReport.emplace(m_reports.value().openToAppend(m_report));
    linkBrowserNames(m_app, m_reportsFolder + u'\\' + m_report);
}

void KeywordFiles::append(const QString &listing, const QString &report)
{
    m_openListing.value().append(m_app.toBytes(listing));
    m_openReport.value().append(m_app.toBytes(report));
}

} // namespace sondrel
