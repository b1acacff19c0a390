#include "core/clsFileController.h"

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

QString clsFileController::openTextFile(const QString &path) const
{
    const WaitCursor wait(m_app.desktop);
    try {
        if (m_app.files.fileExists(path))
            return m_app.fromBytes(m_app.files.readAll(path));
    } catch (const std::exception &) {
        // Callers take a file that cannot be read for an empty one.
        return {};
    }
    return {};
}

bool clsFileController::saveTextFile(const QString &path, const QString &text, bool ask) const
{
    if (path.isEmpty())
        return false;
    try {
        if (ask && m_app.files.fileExists(path) &&
            m_app.desktop.showMessage(
                {u"Save File"_s, u"The file "_s + path + u" already existing, do you want to replace it?"_s,
                 MessageIcon::Question, MessageButtons::YesNo}) == MessageAnswer::No)
            return false;
        const WaitCursor wait(m_app.desktop);
        m_app.files.writeAll(path, m_app.toBytes(text) + "\r\n");
        return true;
    } catch (const std::exception &) {
        // The caller learns of it by the result.
        return false;
    }
}

} // namespace sondrel
