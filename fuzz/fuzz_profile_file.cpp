// Bytes of any kind as a profile file, read and written, in every kind of code page.
#include "core/profile_file.h"
#include "fuzz/target.h"

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;
using namespace sondrel::fuzz;

namespace {

// Names as they stand in the file, so that the reader finds something.
std::pair<QString, QString> namesIn(const QString &text)
{
    const auto between = [&](char16_t open, char16_t close) {
        const qsizetype begin = text.indexOf(open);
        const qsizetype end = text.indexOf(close, begin + 1);
        return end > begin ? text.sliced(begin + 1, end - begin - 1) : QString();
    };
    return {between(u'[', u']'), between(u'\n', u'=')};
}

} // namespace

// The first byte chooses a code page, the second where the written value is cut from the file.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const int codePages[] = {1252, 936, 65001};
    if (size < 2)
        return 0;
    const auto &page = *CodePage::find(codePages[data[0] % std::size(codePages)]);
    const QByteArrayView bytes(data + 2, static_cast<qsizetype>(size - 2));
    ProfileFile file(page, bytes);
    check(file.bytes() == bytes);
    const QString text = page.fromBytes(bytes);
    const auto [section, key] = namesIn(text);
    check(file.read(section, key).size() <= 559);
    for (const qint64 number : file.numberedKeys(section, 1e9))
        file.read(section, QString::number(number));
    const QString value = text.mid(data[1], 300);
    // The program's own keys are words and numbers; one that begins a header or a note would be none. NUL is
    // written as a blank.
    const QString name = QString(key).replace(QChar(u'\0'), u' ').trimmed();
    if (!name.startsWith(u'[') && !name.startsWith(u';'))
        file.write(section, key, value);
    file.write(u"S"_s, u"k"_s, value);
    const QString read = file.read(u"S"_s, u"k"_s);
    // What was written is what a program that starts later reads.
    const QByteArray written = file.bytes();
    const ProfileFile again(page, written);
    check(again.bytes() == written);
    check(again.read(u"S"_s, u"k"_s) == read);
    return 0;
}
