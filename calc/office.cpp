#include "calc/office.h"

#include "calc/uno_text.h"
#include "reports/spreadsheet.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTimer>
#include <QUrl>
#include <QUuid>

#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <rtl/bootstrap.hxx>

#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr int NotInstalled = 429; // the numbers that automation has always given
constexpr int NotResponding = 462;
constexpr int Failed = 1004;
constexpr int MostRestarts = 3;

// The folder of the office's programs: where its command leads, or where Debian puts it.
QString programFolder()
{
    const QString command = QStandardPaths::findExecutable(u"soffice"_s);
    for (const QString &folder :
         {command.isEmpty() ? QString() : QFileInfo(QFileInfo(command).canonicalFilePath()).path(),
          u"/usr/lib/libreoffice/program"_s}) {
        if (!folder.isEmpty() && QFileInfo(folder + u"/soffice.bin"_s).isExecutable())
            return folder;
    }
    throw SpreadsheetError(NotInstalled, u"No spreadsheet program was found"_s);
}

// What the office calls the build that it is; empty when it does not say.
QByteArray buildId()
{
    constexpr QByteArrayView Key = "buildid=";
    QFile version(programFolder() + u"/versionrc"_s);
    if (!version.open(QIODevice::ReadOnly))
        return {};
    while (!version.atEnd()) {
        const QByteArray line = version.readLine().trimmed();
        if (line.startsWith(Key))
            return line.sliced(Key.size());
    }
    return {};
}

// A profile that bears the mark of this build is taken as it is. Without it the office would throw away what
// a former build has left, and start again.
void markProfile(const QString &profile)
{
    const QString folder = profile + u"/user/extensions"_s;
    QFile mark(folder + u"/buildid"_s);
    if (QDir().mkpath(folder) && mark.open(QIODevice::WriteOnly))
        mark.write(buildId());
}

// The program's types must be known before the first context is made: a client without them crashes.
css::uno::Reference<css::uno::XComponentContext> localContext()
{
    static const auto context = [] {
        const QString types = programFolder() + u"/types/offapi.rdb"_s;
        rtl::Bootstrap::set("URE_MORE_TYPES", toUno(QUrl::fromLocalFile(types).toString()));
        return cppu::defaultBootstrap_InitialComponentContext();
    }();
    return context;
}

} // namespace

Office::Office(std::chrono::milliseconds patience) : m_patience(patience)
{
    m_thread.start();
    m_worker.moveToThread(&m_thread);
    connect(&m_process, &QProcess::finished, this, &Office::onFinished);
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    // No office is left behind by a program that is killed.
    const pid_t parent = ::getpid();
    m_process.setChildProcessModifier([parent] {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent)
            ::_exit(1);
    });
}

Office::~Office()
{
    stop();
    m_thread.quit();
    m_thread.wait();
}

void Office::newProfile()
{
    m_profile = std::make_unique<QTemporaryDir>();
    if (!m_profile->isValid())
        throw SpreadsheetError(Failed, m_profile->errorString());
    markProfile(m_profile->path());
}

void Office::start()
{
    if (!m_profile)
        newProfile();
    m_ended = false;
    m_hung = false;
    m_pipe = u"sondrel"_s + QUuid::createUuid().toString(QUuid::Id128);
    m_process.start(programFolder() + u"/soffice.bin"_s,
                    {u"-env:UserInstallation="_s + QUrl::fromLocalFile(m_profile->path()).toString(),
                     u"--headless"_s, u"--norestore"_s, u"--nologo"_s, u"--nodefault"_s,
                     u"--accept=pipe,name="_s + m_pipe + u";urp"_s});
}

// A fresh profile makes the office ask to be started again, and a broken one makes it abort.
void Office::onFinished(int code, QProcess::ExitStatus status)
{
    const bool wantsRestart = status == QProcess::NormalExit && (code == 81 || code == 79);
    const bool aborted = status == QProcess::CrashExit && code == SIGABRT;
    if (!m_connected && !m_hung && (wantsRestart || aborted) && m_restarts < MostRestarts) {
        m_restarts += aborted ? MostRestarts : 1;
        if (aborted)
            newProfile();
        start();
        return;
    }
    m_connected = false;
    m_ended = true;
}

// On the thread: until the office listens.
void Office::connectToIt()
{
    const auto context = localContext();
    const auto resolver = css::bridge::UnoUrlResolver::create(context);
    while (!m_ended) {
        try {
            m_context.set(resolver->resolve(
                              toUno(u"uno:pipe,name="_s + m_pipe + u";urp;StarOffice.ComponentContext"_s)),
                          css::uno::UNO_QUERY_THROW);
            m_desktop = css::frame::Desktop::create(m_context);
            return;
        } catch (const css::connection::NoConnectException &) {
            QThread::msleep(20);
        }
    }
    throw SpreadsheetError(Failed, u"The spreadsheet program has ended"_s);
}

void Office::run(const std::function<void()> &step)
{
    if (!m_connected) {
        m_context.clear();
        m_desktop.clear();
        m_restarts = 0;
        if (m_process.state() == QProcess::NotRunning)
            start();
        await([this] { connectToIt(); });
        m_connected = true;
        ++m_starts;
    }
    await(step);
}

// Events of the caller run until the work on the thread is done.
void Office::await(const std::function<void()> &work)
{
    std::exception_ptr failure;
    bool done = false;
    QObject here;
    QMetaObject::invokeMethod(&m_worker, [&] {
        try {
            work();
        } catch (const css::lang::DisposedException &) {
            m_lost = true;
            failure =
                std::make_exception_ptr(SpreadsheetError(Failed, u"The spreadsheet program has ended"_s));
        } catch (const css::uno::Exception &error) {
            const QString text = fromUno(error.Message);
            failure = std::make_exception_ptr(
                SpreadsheetError(Failed, text.isEmpty() ? u"The spreadsheet program has failed"_s : text));
        } catch (...) {
            failure = std::current_exception();
        }
        QMetaObject::invokeMethod(
            &here, [&done] { done = true; }, Qt::QueuedConnection);
    });
    QTimer watchdog;
    watchdog.setSingleShot(true);
    connect(&watchdog, &QTimer::timeout, this, [this] {
        m_hung = true;
        m_ended = true;
        m_process.kill(); // ends the call that does not come back
    });
    watchdog.start(m_patience);
    QEventLoop loop;
    while (!done)
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    if (m_lost.exchange(false)) {
        m_connected = false;
        m_process.kill(); // whatever is left of it
        m_process.waitForFinished(5000);
    }
    if (failure && m_hung)
        throw SpreadsheetError(NotResponding, u"The spreadsheet program does not answer"_s);
    if (failure)
        std::rethrow_exception(failure);
}

void Office::stop()
{
    const bool wasConnected = std::exchange(m_connected, false);
    m_process.disconnect(this);
    if (m_process.state() == QProcess::NotRunning) {
        QMetaObject::invokeMethod(&m_worker, [this] {
            m_desktop.clear();
            m_context.clear();
        });
        return;
    }
    m_ended = true;
    QMetaObject::invokeMethod(&m_worker, [this, wasConnected] {
        try {
            if (wasConnected && m_desktop.is())
                m_desktop->terminate();
        } catch (const css::uno::Exception &) {
            // It goes all the same.
        }
        m_desktop.clear();
        m_context.clear();
    });
    if (!wasConnected || !m_process.waitForFinished(5000)) {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
}

} // namespace sondrel
