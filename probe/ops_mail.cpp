#include "mail/clsSendMail.h"
#include "probe/operations.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace sondrel::probe {

namespace {

QJsonObject numberToSend(const Call &call)
{
    qint32 count = 0;
    qint32 first = 0;
    qint32 last = 0;
    clsSendMail(call.app).getNumberToSend(count, first, last, call.text(0));
    return answer(QJsonArray{count, first, last});
}

using Setter = std::function<void(clsSendMail &, const QJsonValue &)>;

Setter text(QString clsSendMail::*member)
{
    return [member](clsSendMail &mail, const QJsonValue &value) { mail.*member = value.toString(); };
}

Setter flag(bool clsSendMail::*member)
{
    return [member](clsSendMail &mail, const QJsonValue &value) { mail.*member = value.toBool(); };
}

template <typename Number>
Setter number(Number clsSendMail::*member)
{
    return [member](clsSendMail &mail, const QJsonValue &value) {
        mail.*member = static_cast<Number>(value.toInt());
    };
}

void setAttachment(clsSendMail &mail, const QJsonValue &value)
{
    if (!value.isArray())
        return;
    mail.Attachment.emplace();
    for (const QJsonValue path : value.toArray())
        mail.Attachment->append(path.toString());
}

const QHash<QString, Setter> &setters()
{
    static const QHash<QString, Setter> table{
        {u"Attachment"_s, setAttachment},
        {u"Authentication"_s, flag(&clsSendMail::Authentication)},
        {u"BodyHTML"_s, text(&clsSendMail::BodyHTML)},
        {u"BodyTEXT"_s, text(&clsSendMail::BodyTEXT)},
        {u"CC"_s, text(&clsSendMail::CC)},
        {u"EmailToSend"_s, text(&clsSendMail::EmailToSend)},
        {u"From"_s, text(&clsSendMail::From)},
        {u"Host"_s, text(&clsSendMail::Host)},
        {u"IdleTime"_s, number(&clsSendMail::IdleTime)},
        {u"Mailer"_s, text(&clsSendMail::Mailer)},
        {u"MsgFormat"_s, text(&clsSendMail::MsgFormat)},
        {u"Organization"_s, text(&clsSendMail::Organization)},
        {u"Password"_s, text(&clsSendMail::Password)},
        {u"Port"_s, text(&clsSendMail::Port)},
        {u"Priority"_s,
         [](clsSendMail &mail, const QJsonValue &value) {
             mail.setPriority(static_cast<qint16>(value.toInt()));
         }},
        {u"Proxy"_s, text(&clsSendMail::Proxy)},
        {u"ProxyPort"_s, text(&clsSendMail::ProxyPort)},
        {u"ReplyTo"_s, text(&clsSendMail::ReplyTo)},
        {u"RequestRead"_s, flag(&clsSendMail::RequestRead)},
        {u"SMTPPassword"_s, text(&clsSendMail::SMTPPassword)},
        {u"SMTPUsername"_s, text(&clsSendMail::SMTPUsername)},
        {u"SendGroup"_s, flag(&clsSendMail::SendGroup)},
        {u"Subject"_s, text(&clsSendMail::Subject)},
        {u"TimeOut"_s, number(&clsSendMail::TimeOut)},
        {u"ToRecipient"_s,
         [](clsSendMail &mail, const QJsonValue &value) { mail.setToRecipient(value.toString()); }},
        {u"TotalBytes"_s, number(&clsSendMail::TotalBytes)},
        {u"Username"_s, text(&clsSendMail::Username)},
    };
    return table;
}

void setProperties(clsSendMail &mail, const QJsonObject &properties)
{
    for (auto it = properties.begin(); it != properties.end(); ++it) {
        if (const auto setter = setters().constFind(it.key()); setter != setters().constEnd())
            (*setter)(mail, it.value());
    }
}

QJsonObject formatMessage(const Call &call)
{
    clsSendMail mail(call.app);
    setProperties(mail, call.args.at(0).toObject());
    mail.prepareTexts();
    mail.FormatMessage();
    return answer(call.app.fromBytes(streamOf(mail.message()).readAll()));
}

// Sends it for good; the events, in order, and the times that it took. "cancel_after_ms" stops it then.
QJsonObject sendMail(const Call &call)
{
    clsSendMail mail(call.app);
    setProperties(mail, call.args.at(0).toObject());
    QEventLoop loop;
    QJsonArray events;
    QObject::connect(&mail, &clsSendMail::SendMailError, &loop, [&](qint32 number, const QString &text) {
        events.append(QJsonArray{u"SendMailError"_s, number, text});
    });
    QObject::connect(&mail, &clsSendMail::Completed, &loop, [&](qint32 number, const QString &text) {
        events.append(QJsonArray{u"Completed"_s, number, text});
        loop.quit();
    });
    QElapsedTimer elapsed;
    elapsed.start();
    // How long the event loop stands still at most.
    QElapsedTimer turn;
    qint64 longest = 0;
    QTimer turning;
    QObject::connect(&turning, &QTimer::timeout, &loop, [&] { longest = std::max(longest, turn.restart()); });
    turn.start();
    turning.start(1);
    QTimer::singleShot(0, &mail, &clsSendMail::SendMail);
    if (const QJsonValue after = call.request.value(u"cancel_after_ms"_s); after.isDouble())
        QTimer::singleShot(after.toInt(), Qt::PreciseTimer, &mail, &clsSendMail::Disconnect);
    loop.exec();
    QJsonObject result = answer(events);
    result.insert(u"block_ms"_s, std::max(longest, turn.elapsed()));
    result.insert(u"ms"_s, elapsed.elapsed());
    return result;
}

} // namespace

void addMailOperations(Operations &operations)
{
    operations.insert(u"WrapWord"_s,
                      [](const Call &call) { return answer(clsSendMail(call.app).WrapWord(call.text(0))); });
    operations.insert(u"getNumberToSend"_s, numberToSend);
    operations.insert(u"FormatMessage"_s, formatMessage);
    operations.insert(u"SendMail"_s, sendMail);
}

} // namespace sondrel::probe
