// sondrel-probe: calls the program's own operations line by line, without a window. A tool for tests.
#include "core/file_settings_store.h"
#include "core/system_clock.h"
#include "lookup/curl_http_control.h"
#include "mail/curl_smtp_session.h"
#include "probe/operations.h"
#include "tests/doors/manual_clock.h"
#include "tests/doors/recording_desktop.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <cstdio>
#include <iostream>
#include <string>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

// The date and time are given, the timers are real: a lookup takes the time it takes.
class PinnedClock final : public Clock
{
public:
    explicit PinnedClock(QDateTime when) : m_when(std::move(when)) {}
    QDateTime now() const override { return m_when.isValid() ? m_when : m_system.now(); }
    std::unique_ptr<ClockTimer> createTimer(int interval, std::function<void()> onTick) override
    {
        return m_system.createTimer(interval, std::move(onTick));
    }

private:
    QDateTime m_when;
    SystemClock m_system;
};

QString iconName(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::Information:
        return u"information"_s;
    case MessageIcon::Question:
        return u"question"_s;
    case MessageIcon::Exclamation:
        return u"exclamation"_s;
    case MessageIcon::Critical:
        return u"critical"_s;
    case MessageIcon::None:
        break;
    }
    return QString();
}

QJsonArray boxesAsJson(const std::vector<MessageBox> &boxes)
{
    QJsonArray result;
    for (const MessageBox &box : boxes) {
        result.append(QJsonObject{
            {u"title"_s, box.title},
            {u"text"_s, box.text},
            {u"icon"_s, iconName(box.icon)},
            {u"buttons"_s, box.buttons == MessageButtons::YesNo ? u"yesno"_s : u"ok"_s},
        });
    }
    return result;
}

// What has been added to Error.log since the last call.
class LogReader
{
public:
    explicit LogReader(const ApplicationContext &app) : m_app(app) { takeNews(); }
    QString takeNews()
    {
        QFile file(m_app.AppPath + u"/Error.log"_s);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        file.seek(m_read);
        const QByteArray news = file.readAll();
        m_read += news.size();
        return m_app.fromBytes(news.startsWith("\r\n") ? news.mid(2) : news);
    }

private:
    const ApplicationContext &m_app;
    qint64 m_read = 0;
};

QString replaceToken(QString text, const QString &folder)
{
    return text.replace("{APP}"_L1, folder);
}

QJsonValue withFolder(const QJsonValue &value, const QString &folder)
{
    if (value.isString())
        return replaceToken(value.toString(), folder);
    if (value.isArray()) {
        QJsonArray result;
        for (const QJsonValue item : value.toArray())
            result.append(withFolder(item, folder));
        return result;
    }
    if (value.isObject()) {
        QJsonObject result;
        const QJsonObject object = value.toObject();
        for (auto it = object.begin(); it != object.end(); ++it)
            result.insert(replaceToken(it.key(), folder), withFolder(it.value(), folder));
        return result;
    }
    return value;
}

probe::Operations allOperations()
{
    probe::Operations operations;
    probe::addTextOperations(operations);
    probe::addEncodingOperations(operations);
    probe::addProfileOperations(operations);
    probe::addExtractionOperations(operations);
    probe::addAnalysisOperations(operations);
    probe::addCatalogueOperations(operations);
    probe::addKeywordOperations(operations);
    probe::addProjectOperations(operations);
    probe::addTransferOperations(operations);
    probe::addLookupOperations(operations);
    probe::addSettingsOperations(operations);
    probe::addReportOperations(operations);
    probe::addOptimizerOperations(operations);
    probe::addMailOperations(operations);
    return operations;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({
        {u"app"_s, u"Stands in for the application folder."_s, u"folder"_s},
        {u"system"_s, u"Stands in for the system directory."_s, u"folder"_s},
        {u"registry"_s, u"Stands in for the settings store."_s, u"file"_s},
        {u"ca"_s, u"Certificates that mail servers are trusted by."_s, u"file"_s},
        {u"smtps-port"_s, u"Stands in for the port of mail servers that begin with TLS."_s, u"port"_s},
        {u"today"_s, u"Stands in for the clock, as 2026-11-15T10:00:00."_s, u"time"_s},
    });
    parser.process(application);

    const QTemporaryDir temporary;
    const auto place = [&](const QString &option, const QString &fallback) {
        const QString given = parser.value(option);
        return given.isEmpty() ? temporary.filePath(fallback) : QDir(given).absolutePath();
    };
    const QString appFolder = place(u"app"_s, u"app"_s);
    const QString systemFolder = place(u"system"_s, u"system"_s);
    if (!QDir().mkpath(appFolder) || !QDir().mkpath(systemFolder)) {
        std::fputs("sondrel-probe: cannot make its folders\n", stderr);
        return 1;
    }

    PinnedClock clock(QDateTime::fromString(parser.value(u"today"_s), Qt::ISODate));
    RecordingDesktop desktop;
    FileSettingsStore settings(place(u"registry"_s, u"settings.ini"_s));
    ApplicationContext *context = nullptr;
    CurlTransport transport([&context](QStringView text) { return context->toBytes(text); });
    SmtpOptions mailOptions;
    mailOptions.caFile = parser.value(u"ca"_s);
    if (parser.isSet(u"smtps-port"_s))
        mailOptions.implicitTlsPort = parser.value(u"smtps-port"_s).toInt();
    CurlSmtpTransport mail(mailOptions);
    ApplicationContext app(appFolder, systemFolder, Doors{clock, desktop, settings, transport, &mail},
                           QLocale(QLocale::English, QLocale::UnitedStates));
    context = &app;

    const probe::Operations operations = allOperations();
    LogReader log(app);
    std::string line;
    while (std::getline(std::cin, line)) {
        const QJsonObject request =
            withFolder(QJsonDocument::fromJson(QByteArray::fromStdString(line)).object(), app.AppPath)
                .toObject();
        QJsonObject result;
        const auto operation = operations.constFind(request.value(u"op"_s).toString());
        if (operation == operations.constEnd()) {
            result = {{u"error"_s, u"unknown op"_s}};
        } else {
            desktop.boxes.clear();
            desktop.answer =
                request.value(u"answer"_s).toString() == "no"_L1 ? MessageAnswer::No : MessageAnswer::Yes;
            try {
                result = (*operation)({app, request.value(u"args"_s).toArray(), request});
            } catch (const std::exception &error) {
                result = {{u"error"_s, errorText(error)}};
            }
            if (const QString news = log.takeNews(); !news.isEmpty())
                result.insert(u"log"_s, news);
            if (!desktop.boxes.empty())
                result.insert(u"boxes"_s, boxesAsJson(desktop.boxes));
        }
        std::cout << QJsonDocument(result).toJson(QJsonDocument::Compact).toStdString() << std::endl;
    }
    return 0;
}
