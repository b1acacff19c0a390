// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"
#include "mail/mime_message.h"
#include "mail/smtp_session.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <optional>

namespace sondrel {

/// One mail: its properties become one message, which goes out in the background. Keep it until Completed.
class clsSendMail final : public QObject
{
    Q_OBJECT

public:
    explicit clsSendMail(ApplicationContext &app);
    ~clsSendMail() override;

    /// Error numbers of Completed; others are those of the session.
    enum : qint32 { InvalidAddress = 30003, InternalFailure = 30004, Cancelled = 30006 };

    QString From; // a read request goes there too
    QString CC;
    QString Host;
    QString Port;
    qint16 TimeOut = 0; // without effect
    QString Username;   // of the proxy
    QString Password;
    QString SMTPUsername;
    QString SMTPPassword;
    QString Subject;
    QString BodyTEXT;
    QString BodyHTML;
    bool RequestRead = false;
    /// Paths of the files; one that is missing is passed over.
    std::optional<QStringList> Attachment;
    QString Organization; // without effect
    QString Mailer;       // without effect
    bool Authentication = false;
    /// "text", or anything else for text with HTML.
    QString MsgFormat;
    qint32 TotalBytes = 0;
    QString EmailToSend;    // without effect
    qint32 IdleTime = 0;    // without effect
    bool SendGroup = false; // without effect
    QString Proxy;          // empty for none
    QString ProxyPort;
    QString ReplyTo;

    QString ToRecipient() const { return m_recipient; }
    /// One address, or the path of a list file, which leaves the address as it was.
    void setToRecipient(const QString &value);
    qint16 Priority() const { return m_priority; }
    /// 1 high, 2 normal, 3 low; the header's number is stored.
    void setPriority(qint16 value);
    /// What ReplaceCustomField replaces, and by what.
    void setCustomFields(const std::optional<QStringList> &names, const std::optional<QStringList> &values);

    /// Composes and starts. The texts of the properties change in place: they are wrapped and encoded.
    void SendMail();
    /// Cuts off what is under way; Completed follows at once.
    void Disconnect();
    void FormatMessage();
    QString WrapWord(const QString &text) const;
    void WriteSendMailLog(const QString &text);
    QString ReplaceCustomField(QString text);
    /// "ALL", "first-last" or a count.
    void getNumberToSend(qint32 &count, qint32 &first, qint32 &last, const QString &range);

    /// The wrapping and encoding that SendMail does before it composes.
    void prepareTexts();
    const MimeMessage &message() const { return m_message; }

Q_SIGNALS:
    /// The end of a sending; number 0 when nothing is to be told.
    void Completed(qint32 number, const QString &text);
    /// The server has refused; Completed follows when the session is closed.
    void SendMailError(qint32 number, const QString &text);

private:
    enum class RecipientKind : qint16 { Address = 1, ListFile = 2 };

    bool isText() const;
    void composeBody();
    void composeHeaders();
    void composeAttachments();
    QByteArray boundary(const char *tail) const;
    MimePart textPart() const;
    std::shared_ptr<OutgoingMessage> outgoing() const;
    void start();
    void onDone(qint32 task, qint16 error, const QString &text);
    void onFailedTask(qint32 task, qint16 error, const QString &text);
    void onFinishedTask(qint32 task);

    ApplicationContext &m_app;
    std::unique_ptr<SmtpSession> m_oSmtp;
    MimeMessage m_message;
    std::shared_ptr<OutgoingMessage> m_outgoing; // until the session takes it
    QString m_composeProblem;
    QString m_progress;
    ErrorLog m_log;
    bool m_logging = true;
    RecipientKind m_recipientKind = RecipientKind::Address;
    QString m_recipient;
    QString m_listFile;
    qint16 m_priority = 0;
    QString m_transferEncoding;
    std::optional<QStringList> m_fieldNames;
    std::optional<QStringList> m_fieldValues;
};

} // namespace sondrel
