#include "mail/clsSendMail.h"

#include "core/modStartUp.h"
#include "core/text_fold.h"
#include "core/uucode.h"
#include "core/values.h"
#include "mail/mail_address.h"
#include "mail/mail_header.h"
#include "mail/mail_text.h"

#include <QPointer>
#include <QUuid>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qint64 LongestLog = 32000; // bytes
constexpr int LoginKind = 1;
constexpr int TextInProgress = 50; // characters of the body that a log line shows
const QString SevenBit = u"7bit"_s;
const QString EightBit = u"8bit"_s;
const QString QuotedPrintable = u"Quoted-Printable"_s;
constexpr auto Charset = "charset=\"iso-8859-1\"";

QString logPath(ApplicationContext &app)
{
    const QString path = app.appFile({u"sendmail.log"_s});
    return app.files.find(path).value_or(path);
}

QByteArray newMessageID(const QString &from)
{
    const std::vector<MailAddress> senders = parseAddresses(from);
    QByteArray host("localhost");
    if (!senders.empty() && senders.front().mailbox.contains(u'@')) {
        const QByteArray text = senders.front().mailbox.section(u'@', -1).toLatin1();
        const bool isHost = !text.isEmpty() && text.size() < 256 && std::ranges::all_of(text, [](char c) {
            return QByteArrayView("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-")
                .contains(c);
        });
        host = isHost ? text : host;
    }
    return "<" + QUuid::createUuid().toByteArray(QUuid::WithoutBraces) + "@" + host + ">";
}

QString fileName(const QString &path)
{
    const auto slash = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
    return path.sliced(slash + 1);
}

} // namespace

clsSendMail::clsSendMail(ApplicationContext &app) : m_app(app), m_log(logPath(app))
{
    reportFailure(m_app, u"Class_Initialize_Error: "_s, [&] {
        const QString log = m_app.appFile({u"sendmail.log"_s});
        if (m_app.files.size(log) > LongestLog)
            m_app.files.remove(log);
        if (!m_app.smtp)
            throw Failure(u"There is no way to send mail"_s);
        m_oSmtp = m_app.smtp->createSession();
        connect(m_oSmtp.get(), &SmtpSession::Debug, this, [this](const QString &text) {
            if (m_logging)
                WriteSendMailLog(text);
        });
        connect(m_oSmtp.get(), &SmtpSession::Done, this, &clsSendMail::onDone);
    });
}

clsSendMail::~clsSendMail() = default;

void clsSendMail::setToRecipient(const QString &value)
{
    const bool onServer = value.contains("\\\\"_L1) && !value.contains(u'@');
    if (onServer || value.contains(":\\"_L1)) {
        m_listFile = value;
        m_recipientKind = RecipientKind::ListFile;
        return;
    }
    m_recipient = value;
    m_recipientKind = RecipientKind::Address;
    TotalBytes = 1;
}

void clsSendMail::setPriority(qint16 value)
{
    const int number = value * 2;
    m_priority = number > 1 ? roundToInt16(number - 1) : qint16(3);
}

void clsSendMail::setCustomFields(const std::optional<QStringList> &names,
                                  const std::optional<QStringList> &values)
{
    m_fieldNames = names;
    m_fieldValues = values;
}

void clsSendMail::SendMail()
{
    try {
        m_progress = u"SendMail Start: "_s + m_recipient;
        if (m_recipient.indexOf(u'@') < 2) {
            Q_EMIT Completed(InvalidAddress, u"Invalid email address: "_s + m_recipient);
            return;
        }
        prepareTexts();
        m_progress = u"SendMail FormatMessage... "_s;
        FormatMessage();
        if (!m_composeProblem.isEmpty())
            throw Failure(m_composeProblem);
        m_outgoing = outgoing();
        start();
    } catch (const std::exception &error) {
        const QString server = u"SMTP Server: %1 Port: %2"_s.arg(Host, Port);
        m_app.WriteErrorLog(u"SendMail_Error: "_s + errorText(error) + u", "_s + server + u"\r\n"_s +
                            m_progress);
        Q_EMIT Completed(InternalFailure, u"SendMail_Error: "_s + errorText(error) + u" "_s + server);
    }
}

void clsSendMail::prepareTexts()
{
    m_progress = u"SendMail initilise setting: "_s + MsgFormat;
    if (MsgFormat.isEmpty())
        MsgFormat = u"text"_s;
    m_transferEncoding = SevenBit;
    m_progress = u"SendMail set default value: "_s +
                 BodyTEXT.first(std::min<qsizetype>(TextInProgress, BodyTEXT.size()));
    BodyTEXT = WrapWord(BodyTEXT);
    if (!BodyHTML.isEmpty())
        BodyHTML = QuotedPrintableEncode(m_app, BodyHTML);
    m_progress = u"SendMail formating message: "_s +
                 BodyTEXT.first(std::min<qsizetype>(TextInProgress, BodyTEXT.size()));
    if (BodyTEXT.isEmpty())
        return;
    m_transferEncoding = CharSet(m_app, BodyTEXT);
    if (m_transferEncoding == EightBit) {
        m_transferEncoding = QuotedPrintable;
        BodyTEXT = QuotedPrintableEncode(m_app, BodyTEXT);
    }
}

void clsSendMail::start()
{
    if (!m_oSmtp)
        throw Failure(u"There is no way to send mail"_s);
    m_progress = u"SendMail set Authentication login details: %1, ****"_s.arg(SMTPUsername);
    m_oSmtp->AuthenticationMode = Authentication ? 1 : 0;
    if (Authentication) {
        m_oSmtp->AuthenticationKind = LoginKind;
        m_oSmtp->User = SMTPUsername;
        m_oSmtp->Password = SMTPPassword;
    }
    m_progress = u"SendMail set proxy or firewall: %1, %2, %3, ****"_s.arg(Proxy, ProxyPort, Username);
    if (!Proxy.isEmpty()) {
        m_oSmtp->ProxyServer = Proxy;
        m_oSmtp->ProxyPort = roundToInt32(leadingNumber(ProxyPort));
        m_oSmtp->ProxyUser = Username;
        m_oSmtp->ProxyPassword = Password;
    }
    m_progress = u"SendMail connect to the mail server: %1, %2"_s.arg(Host, Port);
    m_oSmtp->Server = Host;
    m_oSmtp->Port = roundToInt32(leadingNumber(Port));
    m_oSmtp->Connect();
}

void clsSendMail::Disconnect()
{
    reportFailure(m_app, u"Disconnect_Error: "_s, [&] {
        if (!m_oSmtp || m_oSmtp->State() == SmtpSession::Idle)
            return;
        m_oSmtp->Abort();
        m_outgoing.reset();
        Q_EMIT Completed(Cancelled, u"Stop, cancel by user."_s);
    });
}

bool clsSendMail::isText() const
{
    return equalsIgnoringCase(MsgFormat, u"text");
}

QByteArray clsSendMail::boundary(const char *tail) const
{
    return "----=_NextPart_" + m_app.clock.now().toString(u"yyyy_MMdd_HHmmss"_s).toLatin1() + tail;
}

MimePart clsSendMail::textPart() const
{
    MimePart part;
    part.ContentType = "text";
    part.ContentSubtype = "plain";
    part.ContentParameters = Charset;
    part.ContentTransferEncoding = m_transferEncoding.toLatin1();
    part.Body = m_app.toBytes(BodyTEXT);
    return part;
}

void clsSendMail::FormatMessage()
{
    m_composeProblem.clear();
    try {
        m_message = MimeMessage();
        composeBody();
        composeHeaders();
        composeAttachments();
    } catch (const std::exception &error) {
        m_composeProblem = errorText(error);
        m_app.WriteErrorLog(u"FormatMessage_Error: "_s + m_composeProblem);
    }
}

void clsSendMail::composeBody()
{
    MimePart &message = m_message;
    if (isText()) {
        message = textPart();
        // A plain message says nothing of its content; readers take it for what it is.
        if (m_transferEncoding.isEmpty() || m_transferEncoding == SevenBit) {
            const QByteArray body = message.Body;
            message = MimePart();
            message.Body = body;
        }
        return;
    }
    MimePart html;
    html.ContentType = "text";
    html.ContentSubtype = "html";
    html.ContentParameters = Charset;
    html.ContentTransferEncoding = "quoted-printable";
    html.Body = m_app.toBytes(BodyHTML);
    message.ContentType = "multipart";
    message.ContentSubtype = "alternative";
    message.Boundary = boundary(".3849423");
    message.Parts = {textPart(), html};
}

void clsSendMail::composeHeaders()
{
    m_message.From = readableSender(firstLine(From));
    if (RequestRead)
        m_message.DispositionNotificationTo = m_message.From;
    m_message.ReplyTo = ReplyTo;
    m_message.To = m_recipient;
    m_message.Cc = CC;
    m_message.Subject = Subject;
    if (!isText())
        m_message.MIMEVersion = "1.0";
    m_message.ExtraHeaders = {
        {"X-Mailer", m_app.deployment.Title + versionText()},
        {"X-Priority", QString::number(m_priority)},
    };
    const QString level = m_priority == 1   ? u"High"_s
                          : m_priority == 3 ? u"Normal"_s
                          : m_priority == 5 ? u"Low"_s
                                            : QString();
    if (!level.isEmpty())
        m_message.ExtraHeaders.emplace_back("X-MSMail-Priority", level);
    m_message.Date = m_app.clock.now();
    m_message.MessageID = newMessageID(m_message.From);
}

void clsSendMail::composeAttachments()
{
    if (!Attachment)
        return;
    MimePart body;
    std::swap(body, static_cast<MimePart &>(m_message));
    if (isText()) {
        body.ContentSubtype = "plain";
        body.ContentTransferEncoding = m_transferEncoding.toLatin1();
    }
    m_message.Parts.push_back(std::move(body));
    for (const QString &entry : std::as_const(*Attachment)) {
        const QString path = trimBlanks(entry).toString();
        if (!path.isEmpty() && m_app.files.fileExists(path))
            m_message.attachFile(m_app.files.find(path).value_or(path), fileName(path));
    }
    m_message.ContentType = "multipart";
    m_message.ContentSubtype = "mixed";
    m_message.Boundary = boundary(".MIX394928");
}

std::shared_ptr<OutgoingMessage> clsSendMail::outgoing() const
{
    auto message = std::make_shared<OutgoingMessage>();
    const std::vector<MailAddress> senders = parseAddresses(m_message.From);
    if (!senders.empty())
        message->sender = wireMailbox(senders.front().mailbox);
    for (const QString &value : {m_recipient, CC}) {
        for (const MailAddress &address : parseAddresses(firstLine(value)))
            message->recipients.append(wireMailbox(address.mailbox));
    }
    message->content = streamOf(m_message);
    return message;
}

QString clsSendMail::WrapWord(const QString &text) const
{
    return wrapWords(text);
}

void clsSendMail::WriteSendMailLog(const QString &text)
{
    m_log.write(m_app.toBytes(text));
}

QString clsSendMail::ReplaceCustomField(QString text)
{
    reportFailure(m_app, u"ReplaceCustomField_Error: "_s, [&] {
        if (!m_fieldNames || !m_fieldValues)
            return;
        const auto count = std::min(m_fieldNames->size(), m_fieldValues->size());
        for (qsizetype i = 0; i < count; ++i) {
            QString &value = (*m_fieldValues)[i];
            if (m_transferEncoding == QuotedPrintable)
                value = QuotedPrintableEncode(m_app, value);
            text = replacedIgnoringCase(text, m_fieldNames->at(i), value);
        }
    });
    return text;
}

void clsSendMail::getNumberToSend(qint32 &count, qint32 &first, qint32 &last, const QString &range)
{
    count = first = last = 0;
    reportFailure(m_app, u"getNumberToSend_Error: "_s, [&] {
        if (equalsIgnoringCase(range, u"ALL"))
            return;
        const qsizetype dash = range.indexOf(u'-');
        if (dash < 0) {
            count = toInt32(range);
            return;
        }
        first = toInt32(QStringView(range).first(dash));
        last = toInt32(QStringView(range).sliced(dash + 1));
        count = first > last ? 0 : last - first;
    });
}

void clsSendMail::onDone(qint32 task, qint16 error, const QString &text)
{
    const QString where = u" Host: "_s + Host + u" To: "_s + m_recipient;
    reportFailure(m_app, u"m_oSmtp_Done_Error: "_s, [&] {
        try {
            if (error == 0)
                onFinishedTask(task);
            else
                onFailedTask(task, error, text);
        } catch (const std::exception &problem) {
            throw Failure(QString::number(error) + u" - "_s + errorText(problem) + where);
        }
    });
}

void clsSendMail::onFailedTask(qint32 task, qint16 error, const QString &text)
{
    constexpr qint32 SendToList = 5;
    if (task == SmtpSession::ConnectTask) {
        m_outgoing.reset();
        Q_EMIT Completed(error, u"Error on Connect: "_s + text + u" server: "_s + m_oSmtp->Server);
    } else if (task == SmtpSession::SendTask || task == SendToList) {
        const QPointer<clsSendMail> alive(this);
        Q_EMIT SendMailError(
            error, u"Error on SendMail <%1>: %2 server: %3"_s.arg(m_recipient, text, m_oSmtp->Server));
        if (alive)
            m_oSmtp->Disconnect();
    }
}

void clsSendMail::onFinishedTask(qint32 task)
{
    if (task == SmtpSession::ConnectTask) {
        m_oSmtp->Send(std::exchange(m_outgoing, nullptr));
    } else if (task == SmtpSession::DisconnectTask) {
        m_logging = true;
        Q_EMIT Completed(0, QString());
    } else {
        m_oSmtp->Disconnect();
    }
}

} // namespace sondrel
