// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/application_context.h"

namespace sondrel {

/// Code page conversion by number, and percent-encoding of UTF-8. A packed byte string holds raw bytes two to
/// a 16-bit unit, low byte first; conversions of it stop at the first zero byte.
class clsCodePage
{
public:
    explicit clsCodePage(ApplicationContext &app) : m_app(app) {}

    /// Text to a packed byte string of that code page, followed by zero bytes up to twice its size. Flags are
    /// 0.
    QString WToA(const QString &text, int codePage, qint32 flags) const;
    /// A packed byte string to text; an unknown code page is taken as the system's.
    QString AToW(const QString &packed, int codePage, qint32 flags) const;
    /// Text through the system code page to bytes, and these read in another code page.
    QString CovertToWideChar(const QString &text, int codePage) const;
    /// UTF-8, percent-encoded but for letters and digits, a blank as "+".
    QString ConvertUnicodeToUTF8(const QString &text) const;
    /// Every 16-bit unit on its own as one to three bytes; surrogates are not paired.
    QByteArray WideCharToUTF8(const QString &text) const;
    QString fURLEncode(const QByteArray &bytes) const;

    /// Logical shifts of 32 bits; a count of 32 or more gives 0.
    static qint32 LShift(qint32 value, int count);
    static qint32 RShift(qint32 value, int count);
    /// 2 to the power of index (31 is the sign bit); throws Failure outside 0 to 31.
    static qint32 Pow2(int index);

private:
    ApplicationContext &m_app;
};

} // namespace sondrel
